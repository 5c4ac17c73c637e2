#pragma once

#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

namespace tests {

/// How many damaged images a test goes through.
[[nodiscard]] std::size_t damagedImages();

/// Damages bytes as disks, transfers and editors do, by chance but the same in each run.
class Damage
{
public:
    /// The bytes with one to three faults behind `begin`: bits turned, bytes overwritten, a piece lost,
    /// doubled or moved, the end cut off.
    [[nodiscard]] std::string of(std::string_view bytes, std::size_t begin = 0);

private:
    [[nodiscard]] std::size_t below(std::size_t limit) { return bits_() % limit; }
    void fault(std::string& bytes, std::size_t begin);

    std::mt19937_64 bits_{20261121};
};

/// A folder in memory, where that can be had: flushing files costs nothing there. It goes with the object.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] std::filesystem::path file(const char* name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

void writeFile(const std::filesystem::path& file, std::string_view bytes);
[[nodiscard]] std::string readFile(const std::filesystem::path& file);

}  // namespace tests
