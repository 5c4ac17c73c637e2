#include <settings_core/value_text.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string>

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

ExitCode get(const Session& session, const std::string& path, Output& out)
{
    const Node& node = followAliases(session, session.node(path));
    if (node.kind() == NodeKind::group) {
        throw Failure(ExitCode::failed, node.fullName() +
                                            " is a group; see what is in it with: vxsettings tree " +
                                            node.fullName());
    }
    const auto& properties = node.properties();
    if (properties.factoryValue.isAssigned()) {
        out << core::valueText(properties.factoryValue) << '\n';
        return ExitCode::done;
    }
    throw Failure(ExitCode::failed, node.fullName() + " has no factory value");
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
