#pragma once

#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace cppmicroservices {

class Bundle;
class LDAPFilterData;
class ServiceReferenceBase;

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

    bool Match(const ServiceReferenceBase& reference) const;
    bool Match(const Bundle& bundle) const;
    /// Throws std::runtime_error when two keys differ only in case.
    bool Match(const AnyMap& properties) const;
    /// As Match, but keys are case-sensitive.
    bool MatchCase(const AnyMap& properties) const;

    /// Returns the filter in its normal form, without optional whitespace.
    std::string ToString() const;

    bool operator==(const LDAPFilter& other) const { return ToString() == other.ToString(); }

private:
    std::shared_ptr<const LDAPFilterData> d;
};

US_Framework_EXPORT std::ostream& operator<<(std::ostream& os, const LDAPFilter& filter);

}  // namespace cppmicroservices
