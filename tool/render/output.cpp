#include "render/output.hpp"

#include <data/unprintable.hpp>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <unistd.h>
#include <utility>

#include "cli/command_error.hpp"
#include "render/line_layout.hpp"
#include "render/pager.hpp"

namespace vx::tool {

namespace {

constexpr std::size_t flushAt = std::size_t{1} << 16U;

/// SGR (select graphic rendition) parameters, indexed by Style.
constexpr std::array<std::string_view, 7> codes{"", "1", "1;34", "32", "2", "32", "1;31"};

bool isSet(const char* variable)
{
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool terminalHasColours(int descriptor)
{
    return !isSet("NO_COLOR") && !isDumbTerminal() && ::isatty(descriptor) == 1;
}

}  // namespace

bool isDumbTerminal()
{
    const char* terminal = std::getenv("TERM");
    return terminal == nullptr || std::string_view(terminal) == "dumb";
}

Output::Output(int descriptor, std::string name, ColourChoice colour, OutputFormat format)
    : descriptor_(descriptor),
      name_(std::move(name)),
      hasColour_(colour == ColourChoice::always ||
                 (colour == ColourChoice::automatic && terminalHasColours(descriptor))),
      format_(format)
{
    if (isTerminal()) {
        lineWidth_ = terminalWidth();
    }
}

Output& Output::operator<<(std::string_view string)
{
    return *this << Exact{data::escapeUnprintable(string)};
}

Output& Output::operator<<(Exact piece)
{
    buffer_ += piece.bytes;
    if (buffer_.size() >= flushAt && !hasPager_) {
        flush();
    }
    return *this;
}

bool Output::isTerminal() const noexcept
{
    return ::isatty(descriptor_) == 1;
}

Styled Output::styled(Style style, std::string_view string) const
{
    const std::string_view code = codes[static_cast<std::size_t>(style)];
    std::string printable = data::escapeUnprintable(string);
    if (!hasColour_ || code.empty() || printable.empty()) {
        return {std::move(printable)};
    }
    std::string result = "\x1b[";
    return {result.append(code).append("m").append(printable).append("\x1b[0m")};
}

void Output::usePager() noexcept
{
    hasPager_ = isTerminal();
}

void Output::flush()
{
    if (descriptor_ == -1) {
        return;
    }
    if (hasPager_ && !buffer_.empty() && showInPager(buffer_)) {
        buffer_.clear();
    }
    std::string_view rest = buffer_;
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EPIPE) {
            throw ReaderGone();
        } else if (errno != EINTR) {
            throw CommandError(ExitCode::failed, "cannot write " + name_ + ": " + std::strerror(errno) +
                                                     "; the output is incomplete");
        }
    }
    buffer_.clear();
}

}  // namespace vx::tool
