#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tests {

/// A folder in memory, where that can be had: flushing files costs nothing there. It goes with the object.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes a file of this name and returns its path.
    [[nodiscard]] std::string with(std::string_view name, std::string_view bytes) const;

private:
    std::filesystem::path path_;
};

/// Writes a file, and makes the folders above it.
void writeFile(const std::filesystem::path& file, std::string_view bytes);

[[nodiscard]] std::string readFile(const std::filesystem::path& file);

}  // namespace tests
