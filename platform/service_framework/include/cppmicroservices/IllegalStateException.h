#pragma once

#include <cppmicroservices/FrameworkConfig.h>

#include <stdexcept>
#include <string>

namespace cppmicroservices {

/// Thrown by operations on a bundle context that is empty or whose bundle has stopped.
class US_Framework_EXPORT IllegalStateException final : public std::runtime_error
{
public:
    explicit IllegalStateException(const std::string& what) : std::runtime_error(what) {}
    ~IllegalStateException() override;
};

}  // namespace cppmicroservices
