#include <settings_core/file_check.hpp>
#include <settings_core/path_lookup.hpp>
#include <settings_core/release_name.hpp>
#include <settings_core/stored_value.hpp>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace vx::core {

namespace {

using ::settings::core::ReleaseChangeTable;

class FileCheck
{
public:
    FileCheck(const SettingsFile& file, const SettingsTree& tree, const ReleaseChangeTable& releases)
        : file_(file), tree_(tree), releases_(releases)
    {}

    std::vector<FileFault> run() &&
    {
        checkRepetition(file_.root().members);
        for (const JsonMember& member : file_.root().members) {
            checkOwnMember(member);
        }
        return std::move(faults_);
    }

private:
    void report(std::size_t offset, const std::string& path, std::string message)
    {
        faults_.push_back({positionAt(file_.text(), offset), path, std::move(message)});
    }

    void checkRepetition(const std::vector<JsonMember>& members)
    {
        std::unordered_map<std::string_view, std::size_t> firsts;
        for (const JsonMember& member : members) {
            const auto [first, isNew] = firsts.try_emplace(member.name, member.offset);
            if (!isNew) {
                report(member.offset, member.name,
                       "is given a second time, first in line " +
                           std::to_string(positionAt(file_.text(), first->second).line) +
                           "; the last one counts: remove the others");
            }
        }
    }

    void checkOwnMember(const JsonMember& member)
    {
        if (member.name == "release") {
            checkRelease(member);
        } else if (member.name == "$schema") {
            return;  // for editors
        } else if (member.name != "settings") {
            report(member.offset, member.name,
                   "means nothing here: a settings file has \"release\" and \"settings\"");
        } else if (&member.value.members == &file_.settings()) {
            checkRepetition(file_.settings());
            for (const JsonMember& setting : file_.settings()) {
                checkSetting(setting);
            }
        }
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
                   "is newer than the newest release known here, " + formatReleaseName(*newest) +
                       ": use the settings of that release with its own tools");
        }
    }

    void checkSetting(const JsonMember& member)
    {
        const Node* node = tree_.find(member.name);
        if (node == nullptr) {
            report(member.offset, member.name,
                   "is no setting; " + explainUnknownPath(tree_, releases_, member.name));
            return;
        }
        switch (node->kind()) {
        case NodeKind::group:
            report(member.offset, member.name, "is a group: give the settings in it one by one");
            break;
        case NodeKind::alias:
            report(member.offset, member.name,
                   "is an alias: write " + node->properties().aliasName() + " instead");
            break;
        case NodeKind::setting:
            for (ValueFault& fault : readStoredValue(*node, member).faults) {
                report(fault.offset, member.name, std::move(fault.message));
            }
            break;
        }
    }

    const SettingsFile& file_;
    const SettingsTree& tree_;
    const ReleaseChangeTable& releases_;
    std::vector<FileFault> faults_;
};

}  // namespace

std::vector<FileFault> checkSettingsFile(std::string text, const SettingsTree& tree,
                                         const ReleaseChangeTable& releases)
{
    const std::string kept = text;
    try {
        const SettingsFile file(std::move(text));
        auto faults = FileCheck(file, tree, releases).run();
        std::stable_sort(faults.begin(), faults.end(), [](const FileFault& left, const FileFault& right) {
            return std::pair(left.position.line, left.position.column) <
                   std::pair(right.position.line, right.position.column);
        });
        return faults;
    } catch (const ParseError& error) {
        return {{positionAt(kept, error.offset()), "", error.what()}};
    }
}

}  // namespace vx::core
