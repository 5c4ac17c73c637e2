#include <review/tree_history.hpp>

#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"

namespace vx::tool {

namespace {

struct HistoryOptions
{
    std::string baseline;
    std::string changedSettings;
    std::string tree;
};

ExitCode history(LazySession& session, const HistoryOptions& options, Output& out)
{
    requireOneStandardInput({options.baseline, options.changedSettings, options.tree});
    const auto baselines = review::readBaselines(options.baseline);
    const auto changed = options.changedSettings.empty()
                             ? review::ChangedSettings{"docs/changed-settings", {}}
                             : review::readChangedSettings(options.changedSettings);
    const auto current = options.tree.empty()
                             ? review::makeReleaseTree(session.get().tree(), session.get().releaseChanges())
                             : review::readReleaseTree(options.tree);
    return reportDefinitionErrors(review::checkHistory(baselines, current, changed), out);
}

}  // namespace

Action addHistory(CLI::App& command)
{
    setHelp(
        command, "Check that the tree continues those of the published releases",
        "Prints nothing and exits with 0 if there are no errors.\n"
        "Example:\n  vxsettings history --baseline docs/baseline --changed-settings docs/changed-settings");
    auto options = std::make_shared<HistoryOptions>();
    addOption(command, "--baseline", options->baseline, "FILE",
              "Compare with this baseline of the last release, or folder of all baselines", Need::required);
    addOption(command, "--changed-settings", options->changedSettings, "FILE",
              "Accept changes since the last release for which this list gives reasons");
    addOption(command, "--tree", options->tree, "FILE",
              "Check this exported tree; - is standard input (default: the tree of the bundle)");
    return [options](LazySession& session, Output& out) { return history(session, *options, out); };
}

}  // namespace vx::tool
