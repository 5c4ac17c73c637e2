#include <CLI/CLI.hpp>

#include <array>
#include <framework_bundles.hpp>

#include "table.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

using core::Node;
using core::NodeKind;

struct Counts
{
    std::array<std::size_t, 3> byKind{};
    std::size_t hidden = 0;

    [[nodiscard]] std::size_t of(NodeKind kind) const { return byKind[static_cast<std::size_t>(kind)]; }

    void add(const Node& node)
    {
        ++byKind[static_cast<std::size_t>(node.kind())];
        hidden += node.isHidden() ? 1 : 0;
    }

    Counts& operator+=(const Counts& other)
    {
        for (std::size_t kind = 0; kind < byKind.size(); ++kind) {
            byKind[kind] += other.byKind[kind];
        }
        hidden += other.hidden;
        return *this;
    }
};

/// The node and everything under it.
void count(const Node& node, Counts& counts)
{
    counts.add(node);
    for (const auto& child : node.children()) {
        count(*child, counts);
    }
}

void writeSource(const Session& session, Output& out)
{
    const auto& bundle = session.host().bundle();
    Table table;
    table.add({{"framework", Style::note}, std::string(frameworkName).append(" ").append(frameworkVersion)});
    table.add({{"bundle", Style::note}, bundle.GetSymbolicName() + " " + bundle.GetVersion().ToString()});
    table.add({{"file", Style::note}, bundle.GetLocation()});
    table.write(out);
}

void addRow(Table& table, const std::string& name, const Counts& counts)
{
    table.add({{name},
               counts.of(NodeKind::group),
               counts.of(NodeKind::setting),
               counts.of(NodeKind::alias),
               counts.hidden});
}

/// One row per group under the root, after one for what lies there outside any group.
void writeAreas(const Node& root, Output& out)
{
    Counts total;
    Counts outsideGroups;
    Table groups;
    for (const auto& child : root.children()) {
        Counts area;
        count(*child, area);
        total += area;
        if (child->kind() == NodeKind::group) {
            addRow(groups, std::string(child->name()), area);
        } else {
            outsideGroups += area;
        }
    }
    Table table;
    table.add({{"area", Style::heading},
               {"groups", Style::heading, Align::right},
               {"settings", Style::heading, Align::right},
               {"aliases", Style::heading, Align::right},
               {"of them hidden", Style::heading, Align::right}});
    addRow(table, "(directly in " + root.fullName() + ")", outsideGroups);
    table.add(std::move(groups));
    addRow(table, "all", total);
    table.write(out);
}

}  // namespace

Verb addSummary(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand(
        "summary", "Framework, bundle and how much it describes; done when no verb is given");
    return {parser, [](LazySession& lazy, Output& out) {
                const Session& session = lazy.get();
                writeSource(session, out);
                out << '\n';
                writeAreas(*session.tree().root(), out);
                return ExitCode::done;
            }};
}

}  // namespace vx::tool
