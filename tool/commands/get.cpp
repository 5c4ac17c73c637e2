#include <settings_core/run_time_default.hpp>
#include <settings_core/value_text.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <memory>
#include <string>

#include "bundle_file.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

/// The setting that an alias stands for, through further aliases.
const Node& followAliases(const Session& session, const Node& start)
{
    const Node* node = &start;
    // A chain longer than the tree goes round in a circle.
    for (std::size_t steps = 0; node->kind() == NodeKind::alias; ++steps) {
        const std::string& target = node->properties().aliasName();
        const Node* next = session.tree().find(target);
        if (next == nullptr || steps > session.tree().nodes().size()) {
            throw Failure(ExitCode::failed, node->fullName() + " is an alias of " + target +
                                                (next == nullptr ? ", which is not in this tree: unresolved"
                                                                 : ", which leads back to it: unresolved"));
        }
        node = next;
    }
    return *node;
}

/// The fixed or computed value; says where a computed one comes from, apart from the value itself.
core::DefaultValue valueOf(const Node& setting)
{
    core::DefaultValue found;
    try {
        found = core::defaultValue(setting);
    } catch (const std::exception& error) {
        throw Failure(ExitCode::failed, setting.fullName() + ": " + firstLine(error.what()));
    }
    if (!found.value.isAssigned()) {
        throw Failure(ExitCode::failed, setting.fullName() +
                                            " has no factory value; see what it accepts with: "
                                            "vxsettings describe " +
                                            setting.fullName());
    }
    if (!setting.properties().factoryValue.isAssigned()) {
        std::fprintf(stderr, "vxsettings: computed by %s\n", found.source.c_str());
    }
    return found;
}

ExitCode get(const Session& session, const std::string& path, Output& out)
{
    const Node& node = followAliases(session, session.node(path));
    if (node.kind() == NodeKind::group) {
        throw Failure(ExitCode::failed, node.fullName() +
                                            " is a group; see what is in it with: vxsettings tree " +
                                            node.fullName());
    }
    const core::DefaultValue found = valueOf(node);
    out << core::valueText(found.value) << '\n';
    return ExitCode::done;
}

}  // namespace

Verb addGet(CLI::App& app)
{
    CLI::App* parser =
        app.add_subcommand("get", "The factory value of one setting, as the scripting language writes it");
    auto path = std::make_shared<std::string>();
    parser->add_option("PATH", *path, "Setting or alias")->type_name("")->required();
    parser->footer("Example:\n  vxsettings get connector.InterfacesBlocklist");
    return {parser, [path](LazySession& session, Output& out) { return get(session.get(), *path, out); }};
}

}  // namespace vx::tool
