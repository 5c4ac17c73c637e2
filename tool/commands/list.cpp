#include <settings_core/value_text.hpp>

#include <CLI/CLI.hpp>

#include <fnmatch.h>
#include <memory>
#include <string>

#include "table.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

constexpr std::size_t valueWidth = 60;

bool matches(const std::string& pattern, const char* path)
{
    return ::fnmatch(pattern.c_str(), path, 0) == 0;
}

struct ListOptions
{
    std::string pattern = "*";
    bool onlyModified = false;
};

/// Adds a line with value and origin when the setting differs from its factory value.
void addIfModified(core::Layers& layers, const core::Node& node, Table& table)
{
    if (node.kind() != core::NodeKind::setting || !layers.isStated(node)) {
        return;
    }
    const core::LayerValue held = layers.effective(node);
    if (held.layer != core::Layer::factory && !(held.value == node.properties().factoryValue)) {
        table.add({node.fullName(),
                   {core::shortValueText(held.value, valueWidth), Style::value},
                   {std::string(core::layerWord(held.layer)), Style::note}});
    }
}

ExitCode list(LazySession& lazy, const ListOptions& options, Output& out)
{
    const Session& session = lazy.get();
    const std::size_t rootLength = session.tree().root()->fullName().size() + 1;
    Table modified;
    bool any = false;
    for (const core::Node* node : session.tree().nodes()) {
        const char* path = node->fullName().c_str();
        if (!matches(options.pattern, path) && !matches(options.pattern, path + rootLength)) {
            continue;
        }
        any = true;
        if (options.onlyModified) {
            addIfModified(lazy.layers(), *node, modified);
        } else {
            out << node->fullName() << '\n';
        }
    }
    if (!any) {
        throw Failure(ExitCode::failed,
                      "no path matches " + options.pattern + "; * stands for any text, also for dots");
    }
    modified.write(out);
    return ExitCode::done;
}

}  // namespace

Verb addList(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("list", "Paths, one a line, in the order of the tree");
    auto options = std::make_shared<ListOptions>();
    parser->add_option("PATTERN", options->pattern,
                       "Glob over full paths, with or without the root, such as '*.suggestions.*'");
    parser->add_flag("--modified", options->onlyModified,
                     "Only settings that differ from the factory, with value and origin");
    parser->footer("Examples:\n  vxsettings list '*.suggestions.*'\n  vxsettings list --modified");
    return {parser, [options](LazySession& session, Output& out) { return list(session, *options, out); }};
}

}  // namespace vx::tool
