#pragma once

#include <cppmicroservices/FrameworkConfig.h>

#include <stdexcept>
#include <string>

namespace cppmicroservices {

/// An error while a service is registered or requested; the type gives the cause.
class US_Framework_EXPORT ServiceException : public std::runtime_error
{
public:
    enum Type
    {
        UNSPECIFIED = 0,
        UNREGISTERED = 1,
        FACTORY_ERROR = 2,
        FACTORY_EXCEPTION = 3,
        REMOTE = 5,
        FACTORY_RECURSION = 6
    };

    ServiceException(const std::string& message, const Type& type = UNSPECIFIED)
        : std::runtime_error(message), type_(type)
    {}
    ~ServiceException() override;

    Type GetType() const noexcept { return type_; }

private:
    Type type_;
};

}  // namespace cppmicroservices
