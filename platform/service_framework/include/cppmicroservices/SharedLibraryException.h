#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/FrameworkConfig.h>

#include <string>
#include <system_error>

namespace cppmicroservices {

/// Thrown when a bundle's library cannot be loaded.
class US_Framework_EXPORT SharedLibraryException final : public std::system_error
{
public:
    explicit SharedLibraryException(std::error_code code, const std::string& what, Bundle origin);
    SharedLibraryException(const SharedLibraryException&);
    ~SharedLibraryException() override;

    Bundle GetBundle() const { return origin_; }

private:
    Bundle origin_;
};

}  // namespace cppmicroservices
