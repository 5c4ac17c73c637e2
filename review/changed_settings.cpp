#include "changed_settings.hpp"

#include <settings_core/files/text_position.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/tree/suggestions.hpp>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <locale>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "source_file.hpp"

namespace vx::review {

namespace {

using core::Diagnostic;

std::vector<std::string_view> propertyKinds()
{
    std::vector<std::string_view> labels{kindLabel(DifferenceKind::moved)};
    for (std::size_t kind = 0; kind < differenceKindCount; ++kind) {
        if (isPropertyKind(static_cast<DifferenceKind>(kind))) {
            labels.push_back(kindLabel(static_cast<DifferenceKind>(kind)));
        }
    }
    return labels;
}

std::string join(const std::vector<std::string_view>& names)
{
    std::string list;
    for (const std::string_view name : names) {
        list.append(list.empty() ? "" : ", ").append(name);
    }
    return list;
}

class ListCheck
{
public:
    ListCheck(const ChangedSettings& changedSettings, const ReleaseTree& live)
        : file_(changedSettings.file),
          entries_(changedSettings.entries),
          live_(live),
          history_(live.releaseChanges),
          suggestions_(live.tree)
    {}

    std::vector<Diagnostic> run(const std::vector<Difference>& differences) &&
    {
        for (const ChangedSetting& entry : entries_) {
            for (const std::string& kind : entry.kinds) {
                unused_.emplace(entry.path, kind);
            }
        }
        for (const Difference& difference : differences) {
            if (unused_.erase({difference.path, std::string(kindLabel(difference.kind))}) == 0) {
                addUnlisted(difference);
            }
        }
        for (const auto& [path, unlisted] : unlisted_) {
            report(path, unlisted, sourceFileOf(path));
        }
        std::ranges::for_each(entries_, [this](const ChangedSetting& entry) { checkEntry(entry); });
        return std::move(diagnostics_);
    }

private:
    void report(const ChangedSetting& entry, std::string message)
    {
        diagnostics_.push_back({entry.path, std::move(message), {.file = file_, .line = entry.line}});
    }

    /// The differences of a setting that are not listed.
    struct Unlisted
    {
        std::string kinds = {};    ///< as in the list
        std::string changes = {};  ///< for people
    };

    void addUnlisted(const Difference& difference)
    {
        const std::string kind(kindLabel(difference.kind));
        if (difference.kind == DifferenceKind::moved) {
            report(difference.path, {kind, describeDifference(difference)}, std::string(releaseTableFile));
            return;
        }
        auto& [kinds, changes] = unlisted_[difference.path];
        kinds += (kinds.empty() ? "" : ",") + kind;
        changes += (changes.empty() ? "" : "; ") + kind + " changed: " + describeDifference(difference);
    }

    void report(const std::string& path, const Unlisted& unlisted, std::string file)
    {
        diagnostics_.push_back({path,
                                unlisted.changes + "; if that is intended, add the line \"" + path + "  " +
                                    unlisted.kinds + "  REASON\" to " + file_ + ", otherwise fix it",
                                {.file = std::move(file)}});
    }

    void checkEntry(const ChangedSetting& entry)
    {
        if (live_.tree.find(entry.path) == nullptr) {
            reportMissing(entry);
            return;
        }
        for (const std::string& kind : entry.kinds) {
            checkKind(entry, kind);
        }
        if (entry.kinds.empty()) {
            report(entry, "the line needs kinds and a reason: path  kind,kind  reason");
        } else if (entry.reason.empty() || entry.reason == "REASON") {
            report(entry, "the line needs a reason after the kinds, for the release notes");
        } else if (core::validUtf8PrefixLength(entry.reason) < entry.reason.size() ||
                   std::ranges::any_of(entry.reason, boost::algorithm::is_cntrl(std::locale::classic())))
        {
            report(entry, "the reason has characters that are not printable UTF-8: replace them");
        }
    }

    void reportMissing(const ChangedSetting& entry)
    {
        const auto steps = history_.changesFrom(entry.path);
        if (!steps.empty()) {
            report(entry, "is not in the tree: " + describeSteps(steps) +
                              (steps.back().to.empty() ? "; remove this line" : "; list the new path"));
            return;
        }
        const auto similar = suggestions_.suggest(entry.path);
        report(entry, "is not in the tree" + (similar.empty() ? "" : "; " + core::didYouMean(similar)));
    }

    void checkKind(const ChangedSetting& entry, const std::string& kind)
    {
        const auto known = propertyKinds();
        if (kind.empty()) {
            report(entry, "a comma must be between two kinds, without spaces: kind,kind");
        } else if (std::ranges::find(known, kind) == known.end()) {
            const auto similar = core::suggestNames(kind, known);
            report(entry, "unknown kind \"" + kind + "\"" +
                              (similar.empty() ? "." : "; " + core::didYouMean(similar)) +
                              " Kinds: " + join(known));
        } else if (unused_.contains({entry.path, kind})) {
            report(entry, kind + " is listed but did not change: remove it");
        } else if (!listed_.emplace(entry.path, kind).second) {
            report(entry, kind + " is listed twice: remove it here");
        }
    }

    using PathAndKind = std::pair<std::string, std::string>;

    const std::string& file_;
    const std::vector<ChangedSetting>& entries_;
    const ReleaseTree& live_;
    const core::ReleaseHistory history_;
    core::PathSuggestions suggestions_;
    std::set<PathAndKind> unused_;
    std::map<std::string, Unlisted> unlisted_;  // by path
    std::set<PathAndKind> listed_;
    std::vector<Diagnostic> diagnostics_;
};

}  // namespace

ChangeReasons::ChangeReasons(const ChangedSettings& changedSettings)
{
    for (const ChangedSetting& entry : changedSettings.entries) {
        for (const std::string& kind : entry.kinds) {
            reasons_.emplace(PathAndKind(entry.path, kind), entry.reason);
        }
    }
}

std::string_view ChangeReasons::of(const Difference& difference) const
{
    const auto found = reasons_.find({difference.path, kindLabel(difference.kind)});
    return found == reasons_.end() ? std::string_view() : found->second;
}

ChangedSettings readChangedSettings(const std::string& file)
{
    ChangedSettings result{file, {}};
    std::string content = contentOf(file);
    if (content.starts_with(core::byteOrderMark)) {
        content.erase(0, core::byteOrderMark.size());
    }
    std::istringstream lines(content);
    std::string text;
    for (std::size_t line = 1; std::getline(lines, text); ++line) {
        std::istringstream words(text);
        ChangedSetting entry{line, {}, {}, {}};
        std::string kinds;
        if (!(words >> entry.path) || entry.path.starts_with('#')) {
            continue;
        }
        if (words >> kinds) {
            std::istringstream list(kinds + ',');  // with an empty kind after a comma at the end
            for (std::string kind; std::getline(list, kind, ',');) {
                entry.kinds.push_back(std::move(kind));
            }
        }
        std::getline(words, entry.reason);
        boost::algorithm::trim(entry.reason);
        result.entries.push_back(std::move(entry));
    }
    return result;
}

std::vector<Diagnostic> checkChangedSettings(const ChangedSettings& changedSettings,
                                             const std::vector<Difference>& differences,
                                             const ReleaseTree& live)
{
    return ListCheck(changedSettings, live).run(differences);
}

}  // namespace vx::review
