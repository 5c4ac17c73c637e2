#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <string>
#include <system_error>
#include <utility>

namespace cppmicroservices {

/// Thrown when a bundle's library cannot be loaded.
class US_Framework_EXPORT SharedLibraryException final : public std::system_error
{
public:
    explicit SharedLibraryException(std::error_code code, const std::string& what, Bundle origin)
        : std::system_error(code, what), origin_(std::move(origin))
    {}
    ~SharedLibraryException() override;

    Bundle GetBundle() const { return origin_; }

private:
    Bundle origin_;
};

}  // namespace cppmicroservices
