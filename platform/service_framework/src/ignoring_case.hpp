#pragma once

#include <cppmicroservices/AnyMap.h>

#include <stdexcept>

namespace cppmicroservices {

/// Returns the properties with case-insensitive keys. Throws std::runtime_error when two keys differ only in
/// case.
template <class Properties>
AnyMap ignoringCase(const Properties& properties)
{
    AnyMap result(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS);
    for (const auto& [key, value] : properties) {
        if (!result.emplace(key, value).second) {
            throw std::runtime_error("The properties give the key " + key +
                                     " more than once, differing only in case");
        }
    }
    return result;
}

}  // namespace cppmicroservices
