#pragma once

#include <cppmicroservices/FrameworkExport.h>

#include <iosfwd>
#include <string>

namespace cppmicroservices {

/// A version major.minor.micro.qualifier. Missing numbers are 0, a missing qualifier is "".
class US_Framework_EXPORT BundleVersion
{
public:
    static BundleVersion EmptyVersion() { return {0, 0, 0}; }

    BundleVersion(unsigned int majorVersion, unsigned int minorVersion, unsigned int microVersion,
                  std::string qualifier = {});

    /// Parses a string such as "1.2.3.beta". Throws std::invalid_argument, quoting the string, when it is not
    /// a version.
    BundleVersion(const std::string& version);

    unsigned int GetMajor() const noexcept { return major_; }
    unsigned int GetMinor() const noexcept { return minor_; }
    unsigned int GetMicro() const noexcept { return micro_; }
    std::string GetQualifier() const { return qualifier_; }

    std::string ToString() const;

    bool operator==(const BundleVersion&) const = default;

    /// Returns a negative number, 0 or a positive number when this version is lower than, equal to or higher
    /// than other.
    int Compare(const BundleVersion& other) const;

private:
    unsigned int major_;
    unsigned int minor_;
    unsigned int micro_;
    std::string qualifier_;
};

US_Framework_EXPORT std::ostream& operator<<(std::ostream& os, const BundleVersion& version);

}  // namespace cppmicroservices
