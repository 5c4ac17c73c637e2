#pragma once

#include <foundation/verdixdata/array.hpp>

#include <string>

namespace recording {

/// Class, rows and columns, and elements of an array, such as "int32 1-by-2 180 45".
std::string recordedText(const foundation::verdixdata::Array& value);

}  // namespace recording
