#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/FrameworkExport.h>

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace cppmicroservices {

/// An event that the framework sends to its listeners.
class US_Framework_EXPORT FrameworkEvent
{
public:
    enum Type : std::uint32_t
    {
        FRAMEWORK_STARTED = 0x001,
        FRAMEWORK_ERROR = 0x002,
        FRAMEWORK_WARNING = 0x010,
        FRAMEWORK_INFO = 0x020,
        FRAMEWORK_STOPPED = 0x040,
        FRAMEWORK_WAIT_TIMEDOUT = 0x200
    };

    FrameworkEvent(Type type, const Bundle& bundle, const std::string& message,
                   std::exception_ptr exception = nullptr)
        : type_(type), bundle_(bundle), message_(message), exception_(std::move(exception))
    {}

    Bundle GetBundle() const { return bundle_; }
    std::string GetMessage() const { return message_; }
    std::exception_ptr GetThrowable() const { return exception_; }
    Type GetType() const { return type_; }

private:
    Type type_;
    Bundle bundle_;
    std::string message_;
    std::exception_ptr exception_;
};

}  // namespace cppmicroservices
