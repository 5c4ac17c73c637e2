#pragma once

#include <string>

namespace verdix::settings {

/// Names a function in another language.
struct FunctionDescriptor
{
    std::string function;
    std::string language;  ///< "C" or "Java", exactly
    std::string owner;     ///< the library for "C", the class for "Java"
};

}  // namespace verdix::settings
