#pragma once

// What the fuzz targets share. Each is one source with one LLVMFuzzerTestOneInput; libFuzzer calls it in the
// preset `fuzz`, and replay.cpp in all others.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process, and so the input's run, where a law does not hold. No exception: the targets catch
/// those.
inline void require(bool holds, const char* law, std::string_view about = "")
{
    if (!holds) {
        std::fprintf(stderr, "Does not hold: %s: %.*s\n", law, static_cast<int>(about.size()), about.data());
        std::abort();
    }
}

/// An input taken apart from its front. One that has run out gives zeros and empty texts.
class Bytes
{
public:
    explicit Bytes(std::string_view bytes) : rest_(bytes) {}
    Bytes(const std::uint8_t* data, std::size_t size) : Bytes({reinterpret_cast<const char*>(data), size}) {}

    [[nodiscard]] bool empty() const noexcept { return rest_.empty(); }

    std::size_t below(std::size_t limit)
    {
        if (rest_.empty()) {
            return 0;
        }
        const auto byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return byte % limit;
    }

    /// Up to the next end mark, which is taken too.
    std::string_view until(char mark)
    {
        const std::size_t length = rest_.find(mark);
        const std::string_view text = rest_.substr(0, length);
        rest_.remove_prefix(length == std::string_view::npos ? rest_.size() : length + 1);
        return text;
    }

    [[nodiscard]] std::string_view rest() const noexcept { return rest_; }

private:
    std::string_view rest_;
};

}  // namespace fuzz
