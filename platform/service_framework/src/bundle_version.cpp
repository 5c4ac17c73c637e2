#include <cppmicroservices/BundleVersion.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <tuple>

namespace cppmicroservices {

namespace {

bool isQualifier(std::string_view string)
{
    return std::ranges::all_of(string, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
               c == '-';
    });
}

[[noreturn]] void throwInvalidVersion(std::string_view string)
{
    throw std::invalid_argument("\"" + std::string(string) +
                                "\" is not a version: write major.minor.micro.qualifier, such as 1.2.3.beta");
}

}  // namespace

BundleVersion::BundleVersion(unsigned int majorVersion, unsigned int minorVersion, unsigned int microVersion,
                             std::string qualifier)
    : major_(majorVersion), minor_(minorVersion), micro_(microVersion), qualifier_(std::move(qualifier))
{
    if (!isQualifier(qualifier_)) {
        throwInvalidVersion(ToString());
    }
}

BundleVersion::BundleVersion(const std::string& version) : BundleVersion(0, 0, 0)
{
    std::string_view rest = version;
    for (unsigned int* part : {&major_, &minor_, &micro_}) {
        const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), *part);
        if (error != std::errc()) {
            throwInvalidVersion(version);
        }
        rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
        if (rest.empty()) {
            return;
        }
        if (rest.front() != '.') {
            throwInvalidVersion(version);
        }
        rest.remove_prefix(1);
    }
    if (rest.empty() || !isQualifier(rest)) {
        throwInvalidVersion(version);
    }
    qualifier_ = rest;
}

std::string BundleVersion::ToString() const
{
    std::string version =
        std::to_string(major_) + "." + std::to_string(minor_) + "." + std::to_string(micro_);
    if (!qualifier_.empty()) {
        version += "." + qualifier_;
    }
    return version;
}

int BundleVersion::Compare(const BundleVersion& other) const
{
    const auto rank = [](const BundleVersion& version) {
        return std::tie(version.major_, version.minor_, version.micro_, version.qualifier_);
    };
    return *this == other ? 0 : rank(*this) < rank(other) ? -1 : 1;
}

std::ostream& operator<<(std::ostream& os, const BundleVersion& version)
{
    return os << version.ToString();
}

}  // namespace cppmicroservices
