#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <tests/support/soak.hpp>

namespace tests {

/// How many damaged images a test goes through.
[[nodiscard]] inline std::size_t damagedImages()
{
    return runsInFull() ? 10'000 : 1'000;
}

/// Damages bytes as disks, transfers and editors do, by chance but the same in each run.
class Damage
{
public:
    /// The bytes with one to three faults behind `begin`: bits turned, bytes overwritten, a piece lost,
    /// doubled or moved, the end cut off.
    [[nodiscard]] std::string of(std::string_view bytes, std::size_t begin = 0)
    {
        std::string damaged(bytes);
        while (damaged == bytes) {
            for (std::size_t left = 1 + below(3); left > 0; --left) {
                fault(damaged, begin);
            }
        }
        return damaged;
    }

private:
    [[nodiscard]] std::size_t below(std::size_t limit) { return bits_() % limit; }

    void fault(std::string& bytes, std::size_t begin)
    {
        if (bytes.size() <= begin) {
            return;
        }
        const std::size_t at = begin + below(bytes.size() - begin);
        const std::size_t length = 1 + below(std::min<std::size_t>(64, bytes.size() - at));
        const std::size_t other = begin + below(bytes.size() - begin);
        switch (below(6)) {
        case 0:
            bytes[at] = static_cast<char>(bytes[at] ^ static_cast<char>(1U << below(8)));
            break;
        case 1:
            std::generate_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), length,
                            [this] { return static_cast<char>(below(256)); });
            break;
        case 2:
            bytes.erase(at, length);
            break;
        case 3:
            bytes.insert(other, bytes.substr(at, length));
            break;
        case 4:
            bytes.replace(at, length, bytes.substr(other, length));
            break;
        default:
            bytes.resize(at);
            break;
        }
    }

    std::mt19937_64 bits_{20261121};
};

}  // namespace tests
