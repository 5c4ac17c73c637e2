#pragma once

#include <cppmicroservices/AnyMap.h>

namespace cppmicroservices {

/// The properties of a service. Keys are case-insensitive.
using ServiceProperties = std::unordered_map<std::string, Any>;

}  // namespace cppmicroservices
