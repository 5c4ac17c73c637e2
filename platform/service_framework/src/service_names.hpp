#pragma once

#include <algorithm>
#include <string_view>

namespace cppmicroservices {

/// A class name as services and components are known by: "::a::B" is a::B.
inline std::string_view withoutLeadingColons(std::string_view name)
{
    name.remove_prefix(std::min(name.find_first_not_of(':'), name.size()));
    return name;
}

}  // namespace cppmicroservices
