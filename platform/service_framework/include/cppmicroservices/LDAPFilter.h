#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <memory>
#include <string>

namespace cppmicroservices {

class LDAPFilterData;

/// A filter for properties in the string representation of RFC 1960, such as
/// (&(objectclass=a::B)(!(service.ranking>=1))). Keys are case-insensitive. An empty filter tests false and
/// matches nothing.
class US_Framework_EXPORT LDAPFilter
{
public:
    LDAPFilter();

    /// Parses a filter. Throws std::invalid_argument, with the reason and the position, when it is malformed.
    LDAPFilter(const std::string& filter);

    explicit operator bool() const noexcept { return d != nullptr; }

    /// Throws std::runtime_error when two keys differ only in case.
    bool Match(const AnyMap& properties) const;
    /// As Match, but keys are case-sensitive.
    bool MatchCase(const AnyMap& properties) const;

    /// Returns the filter in its normal form, without optional whitespace.
    std::string ToString() const;

private:
    std::shared_ptr<const LDAPFilterData> d;
};

}  // namespace cppmicroservices
