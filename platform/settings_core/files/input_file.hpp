#pragma once

// Reading of whole files that may be damaged, huge, or no files at all.

#include <foundation/export.hpp>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vx::core {

/// Maximum size of a settings file, in bytes.
inline constexpr std::size_t maximumSettingsFileSize = std::size_t{16} << 20U;
/// Maximum size of an exported tree, in bytes.
inline constexpr std::size_t maximumTreeFileSize = std::size_t{64} << 20U;

/// Returns "regular file", "folder", "FIFO", "socket" or "device", symbolic links followed; empty when there
/// is no such file.
[[nodiscard]] VX_API std::string_view fileKind(const std::filesystem::path& file) noexcept;

/// Throws std::runtime_error with the kind when there is such a file and it is not a regular one.
void requireRegularFile(const std::filesystem::path& file);

/// Returns a file's content, or nothing when the file does not exist. Throws std::system_error that names the
/// file when it cannot be read, std::runtime_error when it is not a regular file or larger than
/// `maximumSize`, which both take no longer than opening it.
[[nodiscard]] VX_API std::optional<std::string> readFile(const std::filesystem::path& file,
                                                         std::size_t maximumSize = maximumSettingsFileSize);

/// The operand by which users name standard input in place of a file.
inline constexpr std::string_view standardInput = "-";

/// Returns how messages name an operand: "standard input" for standardInput, otherwise the operand itself.
[[nodiscard]] VX_API std::string inputName(const std::string& operand);

/// Returns the content of the file, or of standard input, that the operand names. Throws like readFile, and
/// std::system_error when the file does not exist.
[[nodiscard]] VX_API std::string readInput(const std::string& operand,
                                           std::size_t maximumSize = maximumSettingsFileSize);

}  // namespace vx::core
