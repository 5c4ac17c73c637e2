#include <lifecycle.hpp>
#include <mutex>
#include <utility>

namespace lifecycle {

namespace {

std::mutex mutex;
std::vector<std::string> events;

}  // namespace

void note(const std::string& event)
{
    const std::lock_guard lock(mutex);
    events.push_back(event);
}

std::vector<std::string> take()
{
    const std::lock_guard lock(mutex);
    return std::exchange(events, {});
}

}  // namespace lifecycle
