#include <review/tree_history.hpp>

#include <boost/json/value_from.hpp>

#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

using review::TreeDocument;

struct HistoryOptions
{
    std::string baseline;
    std::string changedDefaults;
    std::string tree;
};

void writeText(const std::vector<std::string>& diagnostics, Output& out)
{
    for (const std::string& diagnostic : diagnostics) {
        out << out.styled(Style::bad, "error") << "  " << diagnostic << '\n';
    }
    if (diagnostics.empty()) {
        out << out.styled(Style::good, "ok") << "  compatible with the baseline\n";
    }
}

ExitCode history(LazySession& session, const HistoryOptions& options, Output& out)
{
    requireOneStandardInput({options.baseline, options.changedDefaults, options.tree});
    const auto baseline = TreeDocument::read(options.baseline);
    const auto listed = options.changedDefaults.empty()
                            ? review::ChangedDefaults()
                            : review::readChangedDefaults(options.changedDefaults);
    const auto current = options.tree.empty()
                             ? TreeDocument(session.get().tree(), session.get().releaseChanges())
                             : TreeDocument::read(options.tree);
    const auto diagnostics = review::checkHistory(baseline, current, listed);
    if (out.isJson()) {
        writeJson({{"faults", boost::json::value_from(diagnostics)}}, out);
    } else {
        writeText(diagnostics, out);
    }
    return diagnostics.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addHistory(CLI::App& command)
{
    setHelp(command, "Check that the tree is compatible with that of the last release",
            "Example:\n  vxsettings history --baseline docs/baseline/R2026a.json --changed-defaults "
            "docs/changed-defaults");
    auto options = std::make_shared<HistoryOptions>();
    addOption(command, "--baseline", options->baseline, "FILE",
              "Tree of the last release, written by export --format json", Need::required);
    addOption(command, "--changed-defaults", options->changedDefaults, "FILE",
              "List of the settings whose default was changed on purpose");
    addOption(command, "--tree", options->tree, "FILE",
              "Exported tree to check; - is standard input (default: the tree of the bundle)");
    return [options](LazySession& session, Output& out) { return history(session, *options, out); };
}

}  // namespace vx::tool
