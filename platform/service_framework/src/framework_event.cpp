#include <cppmicroservices/FrameworkEvent.h>

#include <ostream>

namespace cppmicroservices {

FrameworkEvent::FrameworkEvent(Type type, const Bundle& bundle, const std::string& message,
                               std::exception_ptr exception)
    : type_(type), bundle_(bundle), message_(message), exception_(std::move(exception))
{}

std::ostream& operator<<(std::ostream& os, FrameworkEvent::Type type)
{
    switch (type) {
    case FrameworkEvent::FRAMEWORK_STARTED:
        return os << "STARTED";
    case FrameworkEvent::FRAMEWORK_ERROR:
        return os << "ERROR";
    case FrameworkEvent::FRAMEWORK_WARNING:
        return os << "WARNING";
    case FrameworkEvent::FRAMEWORK_INFO:
        return os << "INFO";
    case FrameworkEvent::FRAMEWORK_STOPPED:
        return os << "STOPPED";
    case FrameworkEvent::FRAMEWORK_WAIT_TIMEDOUT:
        return os << "WAIT_TIMEDOUT";
    }
    return os << "Unknown event type " << static_cast<unsigned int>(type);
}

std::ostream& operator<<(std::ostream& os, const FrameworkEvent& event)
{
    return os << event.GetType() << ' ' << event.GetBundle() << ' ' << event.GetMessage();
}

}  // namespace cppmicroservices
