#pragma once

#include <settings_core/files/atomic_file.hpp>

#include <filesystem>
#include <optional>
#include <string>

namespace vx::tool {

/// The copy of a settings file on which a text editor works. It stays in the folder edit/<absolute path of
/// the file> under the state folder, for the user only, until it is discarded, so nothing that was edited is
/// lost when the edit fails. While the object exists, no other process can begin to edit the same file.
class EditedCopy
{
public:
    /// Takes over the copy that an earlier edit left, if there is one. Throws std::runtime_error when the
    /// file is being edited already, or when the copy cannot be written.
    EditedCopy(const std::filesystem::path& stateFolder, const std::filesystem::path& settingsFile);

    /// Returns the file to edit, whose name ends in ".json".
    [[nodiscard]] const std::filesystem::path& path() const noexcept { return copy_.path(); }

    /// Returns the text as it is now; nothing if there is no copy. Throws what core::readFile throws.
    [[nodiscard]] std::optional<std::string> text() const;

    /// Returns the content that the settings file had when the edit began; nothing if it did not exist.
    [[nodiscard]] std::optional<std::string> before() const;

    /// Begins an edit of a settings file with this content, with the text that the editor is to show first.
    void begin(const std::optional<std::string>& before, std::string text);

    /// Removes the copy, and what the editor left beside it. Ends the use of this object.
    void discard();

private:
    std::filesystem::path before_;
    core::LockedFile copy_;
};

}  // namespace vx::tool
