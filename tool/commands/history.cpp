#include <memory>
#include <string>

#include "arguments.hpp"
#include "json_text.hpp"
#include "node_json.hpp"
#include "tree_history.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

struct HistoryOptions
{
    std::string baseline;
    std::string changedDefaults;
    std::string tree;
};

void writeText(const std::vector<std::string>& faults, Output& out)
{
    for (const std::string& fault : faults) {
        out << out.painted(Style::bad, "fault") << "  " << fault << '\n';
    }
    if (faults.empty()) {
        out << out.painted(Style::good, "ok") << "  every setting of the baseline is carried forward\n";
    }
}

ExitCode history(LazySession& session, const HistoryOptions& options, Output& out)
{
    const auto baseline = TreeDocument::read(options.baseline);
    const auto listed =
        options.changedDefaults.empty() ? ChangedDefaults() : readChangedDefaults(options.changedDefaults);
    const auto current =
        options.tree.empty() ? TreeDocument::of(session.get()) : TreeDocument::read(options.tree);
    const auto faults = findHistoryFaults(baseline, current, listed);
    if (out.isJson()) {
        writeJson({{"faults", textsJson(faults)}}, out);
    } else {
        writeText(faults, out);
    }
    return faults.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addHistory(CLI::App& verb)
{
    describe(verb, "Whether every setting of the last release is still there, moved, or removed on purpose",
             "Example:\n  vxsettings history --baseline docs/baseline/R2026a.json --changed-defaults "
             "docs/changed-defaults");
    auto options = std::make_shared<HistoryOptions>();
    addOption(verb, "--baseline", options->baseline, "FILE",
              "The last release's tree, made by export --format json", Need::required);
    addOption(verb, "--changed-defaults", options->changedDefaults, "FILE",
              "List of the settings whose default is meant to differ");
    addOption(verb, "--tree", options->tree, "FILE", "An exported tree to look at in place of the live one");
    return [options](LazySession& session, Output& out) { return history(session, *options, out); };
}

}  // namespace vx::tool
