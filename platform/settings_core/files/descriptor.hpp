#pragma once

// Calls of the system on files, for the sources beside this header.

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vx::core {

/// Throws std::system_error "<action> <file>: <the system's words for errno>".
[[noreturn]] inline void failOnErrno(const char* action, const std::filesystem::path& file)
{
    const int error = errno;
    throw std::system_error(error, std::generic_category(), std::string(action) + " " + file.string());
}

/// Calls a system function again for as long as a signal interrupts it.
template <class Call>
auto retryOnInterrupt(Call&& call)
{
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// An owned file descriptor.
class Descriptor
{
public:
    /// Opens a file; isOpen() and errno tell whether that failed.
    Descriptor(const std::filesystem::path& file, int flags, mode_t mode = 0)
        : descriptor_(
              retryOnInterrupt([&] { return ::open(file.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode); }))
    {}
    /// Takes over a descriptor, or -1.
    explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) {}
    /// Takes over the descriptor; `other` no longer has one.
    Descriptor(Descriptor&& other) noexcept : descriptor_(other.release()) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor()
    {
        if (isOpen()) {
            ::close(descriptor_);
        }
    }

    /// Returns whether there is a descriptor.
    [[nodiscard]] bool isOpen() const noexcept { return descriptor_ != -1; }
    /// Returns the descriptor, or -1.
    [[nodiscard]] int get() const noexcept { return descriptor_; }
    /// Gives up the descriptor, which the caller has to close.
    [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

private:
    int descriptor_;
};

}  // namespace vx::core
