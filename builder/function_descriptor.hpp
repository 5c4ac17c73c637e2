#pragma once

#include <string>

namespace verdix::settings {

/// The name of a function in another language.
struct FunctionDescriptor
{
    std::string function;
    std::string language;  ///< "C" or "Java", case-sensitive
    std::string owner;     ///< library for "C", class for "Java"
};

}  // namespace verdix::settings
