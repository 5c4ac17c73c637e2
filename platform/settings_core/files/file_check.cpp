#include <settings_core/files/file_check.hpp>
#include <settings_core/files/stored_value.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/path_lookup.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace vx::core {

namespace {

using ::settings::core::ReleaseChangeTable;

class FileCheck
{
public:
    FileCheck(const std::filesystem::path& path, const SettingsFile& file, const SettingsTree& tree,
              const ReleaseChangeTable& releases)
        : path_(path), file_(file), tree_(tree), releases_(releases), unknownPaths_(tree, releases)
    {}

    std::vector<Diagnostic> run() &&
    {
        checkDuplicates(file_.root().members);
        for (const JsonMember& member : file_.root().members) {
            checkTopLevelMember(member);
        }
        return std::move(diagnostics_);
    }

    std::vector<Diagnostic> run(const std::set<std::string_view>& paths) &&
    {
        for (const JsonMember& setting : file_.settings()) {
            if (paths.contains(setting.name)) {
                checkSetting(setting);
            }
        }
        return std::move(diagnostics_);
    }

private:
    void report(std::size_t offset, const std::string& path, std::string message)
    {
        diagnostics_.push_back({path, std::move(message), file_.positions().at(offset, path_)});
    }

    void checkDuplicates(const std::vector<JsonMember>& members)
    {
        std::unordered_map<std::string_view, std::size_t> firsts;
        for (const JsonMember& member : members) {
            const auto [first, isNew] = firsts.try_emplace(member.name, member.offset);
            if (!isNew) {
                report(member.offset, member.name,
                       "is a duplicate of the one in line " +
                           std::to_string(file_.positions().at(first->second).line) +
                           "; the last one applies: remove the others");
            }
        }
    }

    void checkTopLevelMember(const JsonMember& member)
    {
        if (member.name == "release") {
            checkRelease(member);
        } else if (member.name == "$schema") {
            return;  // names the JSON schema for text editors
        } else if (member.name == "locked") {
            std::ranges::for_each(member.value.elements, [this](const JsonValue& path) { checkLock(path); });
        } else if (member.name != "settings") {
            reportUnknownMember(member);
        } else if (&member.value.members == &file_.settings()) {  // of duplicates, the one that applies
            checkDuplicates(file_.settings());
            for (const JsonMember& setting : file_.settings()) {
                checkSetting(setting);
            }
        }
    }

    void reportUnknownMember(const JsonMember& member)
    {
        const Node* node = tree_.find(fullPath(tree_, member.name));
        if (node == nullptr && member.name.find('.') == std::string::npos) {
            report(member.offset, member.name,
                   "is an unknown member: a settings file has \"release\", \"locked\" and \"settings\"");
            return;
        }
        const bool isShort = node != nullptr && node->fullName() != member.name;
        report(member.offset, member.name,
               "has no effect here: write it inside \"settings\": { ... }" +
                   (isShort ? ", as " + node->getFullName() : ""));
    }

    void checkRelease(const JsonMember& member)
    {
        const auto release = parseRelease(member.value);
        if (!release) {
            report(member.value.offset, member.name, std::string(invalidReleaseMessage));
            return;
        }
        const auto newest = newestRelease(releases_);
        if (newest && *newest < *release) {
            report(member.value.offset, member.name,
                   "is newer than the newest known release, " + formatReleaseName(*newest) +
                       ": use the tools of that release");
        }
    }

    void checkLock(const JsonValue& element)
    {
        const std::string path = foundation::verdixdata::toUtf8(decodedString(element));
        const Node* node = tree_.find(path);
        if (node == nullptr) {
            report(element.offset, path,
                   "is locked, but is no setting or group; " + unknownPaths_.explain(path));
        } else if (node->kind() == NodeKind::alias) {
            report(element.offset, path,
                   "is locked, but is an alias: write " + node->properties().aliasName() + " instead");
        }
    }

    void checkSetting(const JsonMember& member)
    {
        const Node* node = tree_.find(member.name);
        if (node == nullptr) {
            report(member.offset, member.name,
                   (member.name.empty() ? "\"\" is" : "is") + std::string(" not a setting; ") +
                       unknownPaths_.explain(member.name));
            return;
        }
        switch (node->kind()) {
        case NodeKind::group:
            report(member.offset, member.name, "is a group: list its settings one by one");
            break;
        case NodeKind::alias:
            report(member.offset, member.name,
                   "is an alias: write " + node->properties().aliasName() + " instead");
            break;
        case NodeKind::setting:
            std::ranges::move(readStoredValue(*node, member, path_, file_.positions()).diagnostics,
                              std::back_inserter(diagnostics_));
            break;
        }
    }

    const std::filesystem::path& path_;
    const SettingsFile& file_;
    const SettingsTree& tree_;
    const ReleaseChangeTable& releases_;
    UnknownPaths unknownPaths_;
    std::vector<Diagnostic> diagnostics_;
};

}  // namespace

std::vector<Diagnostic> checkSettingsFile(const std::filesystem::path& file, const std::string& text,
                                          const SettingsTree& tree, const ReleaseChangeTable& releases)
{
    try {
        auto diagnostics = FileCheck(file, SettingsFile(text), tree, releases).run();
        std::ranges::stable_sort(diagnostics, {}, [](const Diagnostic& diagnostic) {
            return std::pair(diagnostic.position.line, diagnostic.position.column);
        });
        return diagnostics;
    } catch (const ParseError& error) {
        return {{"", error.what(), positionAt(text, error.offset(), file)}};
    }
}

std::vector<Diagnostic> checkSettings(const std::filesystem::path& file, const SettingsFile& content,
                                      const std::set<std::string_view>& paths, const SettingsTree& tree,
                                      const ReleaseChangeTable& releases)
{
    return FileCheck(file, content, tree, releases).run(paths);
}

}  // namespace vx::core
