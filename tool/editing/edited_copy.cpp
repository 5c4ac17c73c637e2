#include "editing/edited_copy.hpp"

#include <settings_core/files/input_file.hpp>

#include <chrono>
#include <system_error>
#include <utility>

namespace vx::tool {

namespace {

namespace fs = std::filesystem;

fs::path folderOf(const fs::path& stateFolder, const fs::path& settingsFile)
{
    return stateFolder / "edit" / core::resolvedPath(settingsFile).relative_path();
}

}  // namespace

EditedCopy::EditedCopy(const fs::path& stateFolder, const fs::path& settingsFile)
    : before_(folderOf(stateFolder, settingsFile) / "before.json"),
      copy_(folderOf(stateFolder, settingsFile) / "settings.json", std::chrono::milliseconds::zero())
{}

std::optional<std::string> EditedCopy::text() const
{
    return core::readFile(copy_.path());
}

std::optional<std::string> EditedCopy::before() const
{
    return core::readFile(before_);
}

void EditedCopy::begin(const std::optional<std::string>& before, std::string text)
{
    copy_.remove();  // first, so that a copy is never beside the content of another edit
    core::LockedFile original(before_);
    if (before) {
        original.replace(*before);
    } else {
        original.remove();
    }
    copy_.replace(std::move(text));
}

void EditedCopy::discard()
{
    copy_.remove();
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(copy_.path().parent_path(), ignored)) {
        if (entry.is_regular_file(ignored)) {
            fs::remove(entry.path(), ignored);
        }
    }
}

}  // namespace vx::tool
