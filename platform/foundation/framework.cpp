#include <foundation/cppmicroservices/framework.hpp>
#include <foundation/host.hpp>
#include <foundation/log/diagnostic_logger.hpp>

#include <boost/log/sources/record_ostream.hpp>

#include <mutex>
#include <stdexcept>
#include <utility>

namespace foundation {

namespace {

/// A thread-safe variable: set by the host, read by any thread.
template <class T>
class Guarded
{
public:
    T exchange(T value)
    {
        const std::lock_guard lock(mutex_);
        return std::exchange(value_, std::move(value));
    }

    [[nodiscard]] T get()
    {
        const std::lock_guard lock(mutex_);
        return value_;
    }

private:
    std::mutex mutex_;
    T value_;
};

using FrameworkHandle = std::shared_ptr<::cppmicroservices::Framework>;

Guarded<FrameworkHandle>& processFramework()
{
    static Guarded<FrameworkHandle> framework;
    return framework;
}

Guarded<host::MessageHook>& messageHook()
{
    static Guarded<host::MessageHook> hook;
    return hook;
}

Guarded<host::MessageHook>& assertionHook()
{
    static Guarded<host::MessageHook> hook;
    return hook;
}

void logFailedAssertion(const std::string& message)
{
    static log::basic_diagnostic_logger<char> logger("foundation::assertion");
    BOOST_LOG_SEV(logger, log::error) << message;
}

}  // namespace

namespace cppmicroservices {

FrameworkHandle getFramework()
{
    if (FrameworkHandle framework = processFramework().get()) {
        return framework;
    }
    throw std::logic_error("This process has no service framework: its host must start one and pass it to "
                           "foundation::host::setFramework first.");
}

namespace detail {

void logMessage(const std::function<std::string()>& makeMessage)
{
    if (const host::MessageHook hook = messageHook().get()) {
        hook(makeMessage());
    }
}

void assertOnFalse(const std::function<bool()>& predicate, const std::string& message)
{
    if (predicate()) {
        return;
    }
    if (const host::MessageHook hook = assertionHook().get()) {
        hook(message);
    } else {
        logFailedAssertion(message);
    }
}

bool isPerConfigService(const ::cppmicroservices::ServiceReferenceBase& reference)
{
    const ::cppmicroservices::Any property = reference.GetProperty(perConfigProperty);
    const bool* marked = ::cppmicroservices::any_cast<bool>(&property);
    return marked != nullptr && *marked;
}

}  // namespace detail

}  // namespace cppmicroservices

namespace host {

void setFramework(FrameworkHandle framework)
{
    processFramework().exchange(std::move(framework));
}

MessageHook setMessageHook(MessageHook hook)
{
    return messageHook().exchange(std::move(hook));
}

MessageHook setAssertionHook(MessageHook hook)
{
    return assertionHook().exchange(std::move(hook));
}

}  // namespace host

}  // namespace foundation
