#include <review/tree_json.hpp>
#include <settings_core/values/value_format.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "render/effective_value.hpp"
#include "render/json_text.hpp"
#include "render/line_layout.hpp"
#include "render/node_labels.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Node;
using core::NodeKind;

constexpr std::size_t anyWidth = std::numeric_limits<std::size_t>::max();
constexpr std::size_t valueWidth = 60;
constexpr std::size_t leastValueWidth = 8;
constexpr int deepest = 99;

struct TreeOptions
{
    std::string path;
    int depth = deepest;
    bool showsHidden = false;
    bool showsFactory = false;
};

bool isShown(const Node& node, const TreeOptions& options)
{
    return options.showsHidden || !node.isHiddenItself();
}

/// Returns the node with `depth` levels of nodes under it.
json::object branchJson(const Node& node, core::Layers& layers, const TreeOptions& options, int depth)
{
    json::object branch{{"path", node.fullName()}, {"node", kindLabel(node.kind())}};
    if (node.kind() == NodeKind::alias) {
        branch.emplace("aliasTarget", node.properties().aliasName());
    } else if (node.kind() == NodeKind::setting) {
        addLayerValue(branch, shownEffective(layers, node));
    } else if (depth > 0) {
        json::array children;
        for (const Node& child : node.children()) {
            if (isShown(child, options)) {
                children.push_back(branchJson(child, layers, options, depth - 1));
            }
        }
        branch.emplace("children", std::move(children));
    }
    return branch;
}

/// Returns the number of nodes under a node that are shown, `depth` levels deep.
std::size_t countShown(const Node& node, const TreeOptions& options, int depth)
{
    std::size_t count = 0;
    for (const Node& child : node.children()) {
        if (depth > 0 && isShown(child, options)) {
            count += 1 + countShown(child, options, depth - 1);
        }
    }
    return count;
}

/// Returns the number of nodes that only --hidden shows.
std::size_t countHidden(const Node& top, const TreeOptions& options)
{
    TreeOptions all = options;
    all.showsHidden = true;
    return countShown(top, all, all.depth) - countShown(top, options, options.depth);
}

/// Writes " = ", the effective value, and marks its origin. A value that does not fit in the line beside
/// `others` columns is cut.
void writeValue(const Node& setting, core::Layers& layers, std::size_t others, Output& out)
{
    constexpr std::string_view equals = " = ";
    const core::LayerValue effective = shownEffective(layers, setting);
    const std::string_view origin = originMark(effective);
    const std::string mark = origin.empty() ? "" : " (" + std::string(origin) + ")";
    if (effective.value.isAssigned()) {
        const std::size_t taken = others + equals.size() + mark.size();
        const std::size_t width = out.valueWidth(valueWidth);
        const std::size_t room =
            std::max(out.lineWidth().value_or(anyWidth), taken + leastValueWidth) - taken;
        out << equals << out.styled(Style::value, cutToWidth(valueOnOneLine(effective, width), room));
    } else {
        out << out.styled(Style::note, " (no value)");
    }
    out << out.styled(Style::note, mark);
}

/// Whether to mark a node as locked: only the topmost that is, of those that are shown.
bool isLockShown(const Node& node, bool isTop, core::Layers& layers)
{
    const auto lock = layers.lockOf(node);
    return lock && (isTop || lock->path == node.fullName());
}

/// Writes what follows a name: the value, or the target of an alias.
void writeAnnotation(const Node& node, const core::SettingsTree& tree, core::Layers& layers,
                     std::size_t others, Output& out)
{
    if (node.kind() == NodeKind::alias) {
        const std::string& target = node.properties().aliasName();
        const bool isResolved = tree.find(target) != nullptr;
        out << out.styled(Style::note, " -> " + target + (isResolved ? "" : " (unresolved)"));
    } else if (node.kind() == NodeKind::setting) {
        writeValue(node, layers, others, out);
    }
}

class Drawing
{
public:
    Drawing(const TreeOptions& options, const core::SettingsTree& tree, core::Layers& layers, Output& out)
        : options_(options), tree_(tree), layers_(layers), out_(out)
    {}

    void draw(const Node& top)
    {
        out_ << out_.styled(Style::group, top.fullName());
        writeRest(top, marksOf(top, true), displayWidth(top.fullName()));
        drawChildren(top, "", options_.depth);
    }

private:
    void drawChildren(const Node& node, const std::string& indent, int depth)
    {
        std::vector<const Node*> shown;
        for (const Node& child : node.children()) {
            if (isShown(child, options_)) {
                shown.push_back(&child);
            }
        }
        for (const Node* child : shown) {
            const bool isLast = child == shown.back();
            out_ << indent << (isLast ? "└── " : "├── ");
            drawLine(*child, displayWidth(indent) + branchWidth, depth);
            if (depth > 1) {
                drawChildren(*child, indent + (isLast ? "    " : "│   "), depth - 1);
            }
        }
    }

    void drawLine(const Node& node, std::size_t column, int depth)
    {
        const Style style = node.kind() == NodeKind::group ? Style::group : Style::plain;
        out_ << out_.styled(style, node.name());
        const bool isCut = depth <= 1 && !node.children().empty();
        writeRest(node, marksOf(node, false) + (isCut ? " …" : ""), column + displayWidth(node.name()));
    }

    /// Writes what follows a name that ends before `column`.
    void writeRest(const Node& node, const std::string& marks, std::size_t column)
    {
        writeAnnotation(node, tree_, layers_, column + displayWidth(marks), out_);
        out_ << out_.styled(Style::note, marks) << '\n';
    }

    std::string marksOf(const Node& node, bool isTop)
    {
        return std::string(isLockShown(node, isTop, layers_) ? " (locked)" : "") +
               (node.isHiddenItself() ? " (hidden)" : "");
    }

    static constexpr std::size_t branchWidth = 4;

    const TreeOptions& options_;
    const core::SettingsTree& tree_;
    core::Layers& layers_;
    Output& out_;
};

}  // namespace

Action addTree(CLI::App& command)
{
    setHelp(command, "Show the tree, or one group of it, with effective values",
            "A group that PATH names is shown with what is in it, even if the group is hidden.\n"
            "Examples:\n  vxsettings tree commandwindow\n  vxsettings tree --depth 1 --hidden");
    auto options = std::make_shared<TreeOptions>();
    addPositional(command, "PATH", options->path, Need::optional, "Group to show (default: the root)");
    addOption(command, "--depth", options->depth, 1, deepest, "N",
              "Show this many levels, 1 to 99 (default: 99)");
    addFlag(command, "--hidden", options->showsHidden, "Also show hidden groups and settings");
    addFactoryFlag(command, options->showsFactory);
    return [options](LazySession& lazy, Output& out) {
        const Session& session = lazy.get();
        const Node& top = options->path.empty() ? *session.tree().root() : session.node(options->path);
        core::Layers& layers = lazy.layers(options->showsFactory);
        const std::size_t hiddenLeftOut = countHidden(top, *options);
        if (out.isJson()) {
            json::object document = branchJson(top, layers, *options, options->depth);
            document.emplace("hiddenLeftOut", hiddenLeftOut);
            writeJson(document, out);
        } else {
            Drawing(*options, session.tree(), layers, out).draw(top);
            hintAtHidden(hiddenLeftOut, out);
        }
        hintAtFileProblems(session, layers, out);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
