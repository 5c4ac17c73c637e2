#include <settings_core/value_text.hpp>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <variant>

#include "verb.hpp"
#include "words.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

constexpr std::size_t valueWidth = 60;
constexpr int deepest = 99;

struct TreeOptions
{
    std::string path;
    int depth = deepest;
    bool showsHidden = false;
};

/// What stands behind a name: the value in short, where it comes from, or where an alias leads.
std::string annotation(const Node& node, const core::SettingsTree& tree, const Output& out)
{
    const auto& properties = node.properties();
    if (node.kind() == NodeKind::alias) {
        const bool resolved = tree.find(properties.aliasName()) != nullptr;
        return out.painted(Style::note, " -> " + properties.aliasName() + (resolved ? "" : " (unresolved)"));
    }
    if (properties.factoryValue.isAssigned()) {
        return " = " + out.painted(Style::value, core::shortValueText(properties.factoryValue, valueWidth));
    }
    const bool isComputed = properties.runTimeDefault.index() != 0;
    return node.kind() == NodeKind::group
               ? ""
               : out.painted(Style::note, isComputed ? " (computed)" : " (no factory value)");
}

class Drawing
{
public:
    Drawing(const TreeOptions& options, const core::SettingsTree& tree, Output& out)
        : options_(options), tree_(tree), out_(out)
    {}

    void draw(const Node& top)
    {
        out_ << out_.painted(Style::group, top.fullName()) << annotation(top, tree_, out_) << '\n';
        drawChildren(top, "", options_.depth);
    }

private:
    [[nodiscard]] bool shows(const Node& node) const
    {
        return options_.showsHidden || !node.isHiddenItself();
    }

    void drawChildren(const Node& node, const std::string& indent, int depth)
    {
        std::vector<const Node*> shown;
        for (const auto& child : node.children()) {
            if (shows(*child)) {
                shown.push_back(child.get());
            }
        }
        for (const Node* child : shown) {
            const bool isLast = child == shown.back();
            out_ << indent << (isLast ? "└── " : "├── ");
            drawLine(*child, depth);
            if (depth > 1) {
                drawChildren(*child, indent + (isLast ? "    " : "│   "), depth - 1);
            }
        }
    }

    void drawLine(const Node& node, int depth)
    {
        const Style style = node.kind() == NodeKind::group ? Style::group : Style::plain;
        out_ << out_.painted(style, node.name()) << annotation(node, tree_, out_);
        if (node.isHiddenItself()) {
            out_ << out_.painted(Style::note, " (hidden)");
        }
        if (depth <= 1 && !node.children().empty()) {
            out_ << out_.painted(Style::note, " …");
        }
        out_ << '\n';
    }

    const TreeOptions& options_;
    const core::SettingsTree& tree_;
    Output& out_;
};

}  // namespace

Verb addTree(CLI::App& app)
{
    CLI::App* parser =
        app.add_subcommand("tree", "The tree, or what is under one group, with factory values");
    auto options = std::make_shared<TreeOptions>();
    parser->add_option("PATH", options->path, "Group to begin at; the root when left out")->type_name("");
    parser->add_option("--depth", options->depth, "Levels to draw below it")
        ->check(CLI::Range(1, deepest))
        ->type_name("N");
    parser->add_flag("--hidden", options->showsHidden, "Draw hidden groups and settings as well");
    parser->footer("Examples:\n  vxsettings tree commandwindow\n  vxsettings tree --depth 1 --hidden");
    return {parser, [options](LazySession& lazy, Output& out) {
                const Session& session = lazy.get();
                const Node& top =
                    options->path.empty() ? *session.tree().root() : session.node(options->path);
                Drawing(*options, session.tree(), out).draw(top);
                return ExitCode::done;
            }};
}

}  // namespace vx::tool
