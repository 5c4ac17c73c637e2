#include "crash_probe.hpp"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vx::review {

namespace {

/// In seconds; a call takes far less than one.
constexpr unsigned int callTimeLimit = 5;

/// A number that child processes share.
class SharedNumber
{
public:
    SharedNumber() : memory_(::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (memory_ == MAP_FAILED) {
            throw std::bad_alloc();
        }
        number_ = new (memory_) std::atomic<std::size_t>(0);
    }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;
    ~SharedNumber() { ::munmap(memory_, size); }

    [[nodiscard]] std::atomic<std::size_t>& operator*() const { return *number_; }

private:
    static constexpr std::size_t size = sizeof(std::atomic<std::size_t>);

    void* memory_;
    std::atomic<std::size_t>* number_;
};

[[noreturn]] void runChild(std::size_t count, const std::function<void(std::size_t)>& call,
                           const SharedNumber& current)
{
    std::signal(SIGALRM, SIG_DFL);
    for (; *current < count; ++*current) {
        ::alarm(callTimeLimit);
        try {
            call(*current);
        } catch (...) {
            continue;
        }
    }
    ::_exit(0);  // without the destructors and buffers that the parent has, too
}

/// Waits for the child, and returns what the call that was its last one does.
std::string waitFor(pid_t child)
{
    int status = 0;
    while (::waitpid(child, &status, 0) == -1 && errno == EINTR) {
    }
    if (WIFEXITED(status)) {
        return "ends the process (exit status " + std::to_string(WEXITSTATUS(status)) + ")";
    }
    const int signal = WTERMSIG(status);
    return signal == SIGALRM ? "has not returned after " + std::to_string(callTimeLimit) + " s"
                             : std::string("ends the process (") + ::strsignal(signal) + ")";
}

}  // namespace

std::map<std::size_t, std::string> findCrashes(std::size_t count,
                                               const std::function<void(std::size_t)>& call)
{
    const SharedNumber current;
    std::map<std::size_t, std::string> crashes;
    for (; *current < count; ++*current) {
        const pid_t child = ::fork();
        if (child == 0) {
            runChild(count, call, current);
        }
        if (child == -1) {
            break;
        }
        std::string end = waitFor(child);
        if (*current < count) {
            crashes.emplace(*current, std::move(end));
        }
    }
    return crashes;
}

}  // namespace vx::review
