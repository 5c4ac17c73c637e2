#pragma once

#include <cppmicroservices/FrameworkExport.h>

#include <string>

namespace cppmicroservices {

/// A version major.minor.micro.qualifier. Missing numbers are 0, a missing qualifier is "".
class US_Framework_EXPORT BundleVersion
{
public:
    static BundleVersion EmptyVersion() { return {}; }

    /// Parses a string such as "1.2.3.beta". Throws std::invalid_argument, quoting the string, when it is not
    /// a version.
    BundleVersion(const std::string& version);

    std::string ToString() const;

    bool operator==(const BundleVersion&) const = default;

private:
    BundleVersion() = default;

    unsigned int major_ = 0;
    unsigned int minor_ = 0;
    unsigned int micro_ = 0;
    std::string qualifier_;
};

}  // namespace cppmicroservices
