#pragma once

#include <algorithm>
#include <string_view>

namespace cppmicroservices {

/// Returns a class name without leading colons, the form in which services are registered: "a::B" for
/// "::a::B".
inline std::string_view withoutLeadingColons(std::string_view name)
{
    name.remove_prefix(std::min(name.find_first_not_of(':'), name.size()));
    return name;
}

}  // namespace cppmicroservices
