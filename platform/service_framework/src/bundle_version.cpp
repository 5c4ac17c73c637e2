#include <cppmicroservices/BundleVersion.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string_view>

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

BundleVersion::BundleVersion(const std::string& version)
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

}  // namespace cppmicroservices
