#include <settings_core/files/input_file.hpp>

#include <algorithm>
#include <stdexcept>
#include <sys/stat.h>

#include "descriptor.hpp"

namespace vx::core {

namespace {

namespace fs = std::filesystem;

constexpr const char* cannotRead = "cannot read";
constexpr std::string_view regularFile = "regular file";

std::string_view kindOf(mode_t mode) noexcept
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return regularFile;
    case S_IFDIR:
        return "folder";
    case S_IFIFO:
        return "FIFO";
    case S_IFSOCK:
        return "socket";
    default:
        return "device";
    }
}

[[noreturn]] void failOnSize(const std::string& name, std::size_t maximumSize)
{
    throw std::runtime_error("cannot read " + name + ": it is larger than the maximum of " +
                             std::to_string(maximumSize >> 20U) + " MiB");
}

/// Reads to the end. The size, known or guessed, saves copies: the content may be longer or shorter.
std::string readAll(int descriptor, const std::string& name, std::size_t size, std::size_t maximumSize)
{
    std::string content;
    std::size_t used = 0;
    for (ssize_t count = 1; count != 0; used += static_cast<std::size_t>(count)) {
        if (used == content.size()) {
            content.resize(used == 0 ? size + 1 : std::min(2 * used, maximumSize + 1));
        }
        count = retryOnInterrupt(
            [&] { return ::read(descriptor, content.data() + used, content.size() - used); });
        if (count < 0) {
            failOnErrno(cannotRead, name);
        }
        if (used + static_cast<std::size_t>(count) > maximumSize) {
            failOnSize(name, maximumSize);
        }
    }
    content.resize(used);
    return content;
}

}  // namespace

std::string_view fileKind(const fs::path& file) noexcept
{
    struct stat status = {};
    return ::stat(file.c_str(), &status) == 0 ? kindOf(status.st_mode) : std::string_view();
}

void requireRegularFile(const fs::path& file)
{
    const std::string_view kind = fileKind(file);
    if (!kind.empty() && kind != regularFile) {
        throw std::runtime_error("cannot read " + file.string() + ": it is a " + std::string(kind) +
                                 ", not a regular file");
    }
}

std::optional<std::string> readFile(const fs::path& file, std::size_t maximumSize)
{
    requireRegularFile(file);  // before it is opened: opening a device may have effects
    const Descriptor opened(file, O_RDONLY | O_NONBLOCK);
    if (!opened.isOpen()) {
        if (errno == ENOENT || errno == ENOTDIR) {
            return std::nullopt;
        }
        failOnErrno(cannotRead, file);
    }
    struct stat status = {};
    if (::fstat(opened.get(), &status) != 0) {
        failOnErrno(cannotRead, file);
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > maximumSize) {
        failOnSize(file.string(), maximumSize);
    }
    return readAll(opened.get(), file.string(), size, maximumSize);
}

std::string inputName(const std::string& operand)
{
    return operand == standardInput ? "standard input" : operand;
}

std::string readInput(const std::string& operand, std::size_t maximumSize)
{
    if (operand == standardInput) {
        constexpr std::size_t pipeSize = 65536;
        return readAll(STDIN_FILENO, inputName(operand), pipeSize, maximumSize);
    }
    std::optional<std::string> content = readFile(operand, maximumSize);
    if (!content) {
        errno = ENOENT;
        failOnErrno(cannotRead, operand);
    }
    return *std::move(content);
}

}  // namespace vx::core
