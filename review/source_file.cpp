#include "source_file.hpp"

#include <settings_core/releases/release_history.hpp>

namespace vx::review {

namespace {

struct Location
{
    std::string_view path;
    std::string_view file;
};

/// Paths that are not defined in the file named after their top group. The first match counts, so longer
/// paths come first.
constexpr Location locations[] = {
    {"verdix.desktop.commandhistory", "commandhistory"},
    {"verdix.desktop.variables", "variables"},
    {"verdix.desktop.workspace", "workspace"},
    {"verdix.desktop", "apps"},
    {"verdix.editor.language", "editor_languages"},
    {"verdix.online", "connector"},
    {"verdix.DeleteFilesPermanently", "root"},
    {"verdix.G11nLanguagePref", "root"},
    {"verdix.UserPath", "root"},
    {"verdix.dump", "root"},
    {"verdix.qorv", "root"},
    {"verdix.workingfolder", "root"},
    {"verdix.class", "root"},
    {"verdix.string", "root"},
    {"verdix.vexo", "root"},
    {"verdix.toolboxpathcache", "root"},
    {"verdix.videoreader", "root"},
    {"verdix.unittest", "root"},
    {"verdix.diagnostics", "root"},
    {"verdix.project", "root"},
    {"verdix.sourcecontrol", "root"},
};

std::string_view fileStem(std::string_view path)
{
    for (const auto& [group, file] : locations) {
        if (core::isAtOrUnder(path, group)) {
            return file;
        }
    }
    const std::size_t begin = path.find('.') + 1;
    const std::size_t end = path.find('.', begin);
    return path.substr(begin, end - begin);
}

}  // namespace

std::string sourceFileOf(std::string_view path)
{
    return "tree/" + std::string(fileStem(path)) + ".cpp";
}

}  // namespace vx::review
