#include <review/json.hpp>
#include <review/tree_json.hpp>
#include <settings_core/files/settings_observer.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/json/object.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "host/blocked_signals.hpp"
#include "host/bundle_file.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

using core::EffectiveChange;
using core::LayerValue;
using core::Node;

constexpr std::size_t valueWidth = 60;  // in characters

/// Returns the nodes at the paths, aliases resolved, without those that another one includes; the root if
/// there are no paths. Throws CommandError for an unknown path.
std::vector<const Node*> observedNodes(const Session& session, const std::vector<std::string>& paths)
{
    std::vector<const Node*> nodes;
    for (const std::string& path : paths) {
        const Node& node = session.node(path);
        nodes.push_back(node.kind() == core::NodeKind::alias ? &session.setting(path) : &node);
    }
    if (paths.empty()) {
        nodes.push_back(session.tree().root().get());
    }
    std::ranges::sort(nodes, {}, &Node::fullName);  // a group before what is in it
    std::vector<const Node*> observed;
    for (const Node* node : nodes) {
        const bool isIncluded = std::ranges::any_of(observed, [node](const Node* other) {
            return core::isAtOrUnder(node->fullName(), other->fullName());
        });
        if (!isIncluded) {
            observed.push_back(node);
        }
    }
    return observed;
}

void writeText(const Node& setting, const LayerValue& before, const LayerValue& after, Output& out)
{
    const auto format = [&out](const LayerValue& value) {
        return value.value.isAssigned()
                   ? out.styled(Style::value,
                                core::formatValueOnOneLine(value.value, out.valueWidth(valueWidth)))
                   : out.styled(Style::note, "no value");
    };
    out << setting.fullName() << ": " << format(before) << " -> " << format(after) << ' '
        << out.styled(Style::note, "(" + std::string(core::originName(after.origin)) + ")") << '\n';
}

/// Writes one object on one line.
void writeDocument(const Node& setting, const LayerValue& before, const LayerValue& after, Output& out)
{
    std::string line;
    review::appendJson(line, boost::json::object{{"path", setting.fullName()},
                                                 {"before", review::valueJson(before.value)},
                                                 {"after", review::valueJson(after.value)},
                                                 {"originBefore", core::originName(before.origin)},
                                                 {"origin", core::originName(after.origin)},
                                                 {"file", review::stringOrNull(after.file.string())}});
    out << Exact{line} << '\n';
}

/// Writes a change, and reports values that are ignored because of it.
void writeChange(const EffectiveChange& change, Output& out)
{
    for (const core::Diagnostic& diagnostic : change.after.diagnostics) {
        printHint("ignored value: " + firstLine(formatDiagnostic(diagnostic)));
    }
    const Node& setting = *change.setting;
    (out.isJson() ? writeDocument : writeText)(setting, core::shownValue(setting, change.before),
                                               core::shownValue(setting, change.after), out);
}

/// Writes changes until a signal ends it. Throws ReaderGone as soon as their reader is gone.
void writeChanges(core::SettingsObserver& observer, const BlockedSignals& signals, Output& out)
{
    std::array<pollfd, 3> waiting{
        {{observer.descriptor(), POLLIN, 0}, {signals.descriptor(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}}};
    const auto& [files, end, output] = waiting;
    while (end.revents == 0) {
        while (::poll(waiting.data(), waiting.size(), -1) == -1 && errno == EINTR) {
        }
        if ((output.revents & (POLLERR | POLLHUP)) != 0) {
            throw ReaderGone();
        }
        if (files.revents != 0) {
            observer.dispatch();
            out.flush();
        }
    }
}

ExitCode watch(LazySession& lazy, const std::vector<std::string>& paths, Output& out)
{
    const BlockedSignals signals{SIGINT, SIGTERM};
    const Session& session = lazy.get();
    const std::vector<const Node*> nodes = observedNodes(session, paths);
    core::SettingsObserver observer(
        session.tree(), lazy.layerFiles(),
        [](const core::Diagnostic& diagnostic) { printMessage(firstLine(formatDiagnostic(diagnostic))); });
    std::vector<core::Subscription> subscriptions;
    subscriptions.reserve(nodes.size());
    for (const Node* node : nodes) {
        subscriptions.push_back(
            observer.subscribe(*node, [&out](const EffectiveChange& change) { writeChange(change, out); }));
    }
    const auto files = observer.layers().paths();
    printHint("watching " + std::to_string(files.size()) + (files.size() == 1 ? " file" : " files") +
              "; Ctrl+C ends");
    writeChanges(observer, signals, out);
    return ExitCode::done;
}

}  // namespace

Action addWatch(CLI::App& command)
{
    setHelp(command, "Print changes of effective values as settings files change, one per line, until Ctrl+C",
            "Examples:\n  vxsettings watch\n  vxsettings watch commandwindow colors.KeywordColor\n"
            "  vxsettings watch --json | jq .path");
    auto paths = std::make_shared<std::vector<std::string>>();
    addPositional(command, "PATH", *paths, Need::optional,
                  "Setting, group or alias to watch; may be repeated (default: all settings)");
    return [paths](LazySession& session, Output& out) { return watch(session, *paths, out); };
}

}  // namespace vx::tool
