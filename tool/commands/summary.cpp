#include <settings_core/releases/release_name.hpp>

#include <boost/json/array.hpp>

#include <array>
#include <framework_bundles.hpp>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/json_text.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
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
};

/// Counts the node and everything under it.
void count(const Node& node, Counts& counts)
{
    counts.add(node);
    for (const Node& child : node.children()) {
        count(child, counts);
    }
}

struct Area
{
    std::string name;
    Counts counts;
};

/// Returns the settings outside any group, then each group under the root, then the total.
std::vector<Area> countAreas(const Node& root)
{
    std::vector<Area> areas{{"(directly in " + root.getFullName() + ")", {}}};
    Area all{"all", {}};
    for (const Node& child : root.children()) {
        const bool isGroup = child.kind() == NodeKind::group;
        count(child, isGroup ? areas.emplace_back(Area{std::string(child.name()), {}}).counts
                             : areas.front().counts);
        count(child, all.counts);
    }
    areas.push_back(std::move(all));
    return areas;
}

void writeBundle(const Session& session, Output& out)
{
    const auto& bundle = session.host().bundle();
    Table table;
    table.add({{"framework", Style::note}, std::string(frameworkName).append(" ").append(frameworkVersion)});
    table.add({{"bundle", Style::note}, bundle.GetSymbolicName() + " " + bundle.GetVersion().ToString()});
    table.add({{"file", Style::note}, bundle.GetLocation()});
    if (const auto release = session.publishedRelease()) {
        table.add({{"release", Style::note}, core::formatReleaseName(*release)});
    }
    table.write(out);
}

void writeText(const Session& session, const std::vector<Area>& areas, Output& out)
{
    writeBundle(session, out);
    out << '\n';
    Table table;
    table.add({{"area", Style::heading},
               {"groups", Style::heading, Align::right},
               {"settings", Style::heading, Align::right},
               {"aliases", Style::heading, Align::right},
               {"of them hidden", Style::heading, Align::right}});
    for (const auto& [name, counts] : areas) {
        table.add({{name},
                   counts.of(NodeKind::group),
                   counts.of(NodeKind::setting),
                   counts.of(NodeKind::alias),
                   counts.hidden});
    }
    table.write(out);
}

void writeDocument(const Session& session, const std::vector<Area>& areas, Output& out)
{
    const auto& bundle = session.host().bundle();
    const auto release = session.publishedRelease();
    json::array list;
    for (const auto& [name, counts] : areas) {
        list.push_back(json::object{{"area", name},
                                    {"groups", counts.of(NodeKind::group)},
                                    {"settings", counts.of(NodeKind::setting)},
                                    {"aliases", counts.of(NodeKind::alias)},
                                    {"hidden", counts.hidden}});
    }
    writeJson({{"framework", json::object{{"name", frameworkName}, {"version", frameworkVersion}}},
               {"bundle", json::object{{"name", bundle.GetSymbolicName()},
                                       {"version", bundle.GetVersion().ToString()},
                                       {"file", bundle.GetLocation()}}},
               {"release", release ? json::value(core::formatReleaseName(*release)) : nullptr},
               {"areas", std::move(list)}},
              out);
}

}  // namespace

Action addSummary(CLI::App& command)
{
    setHelp(command, "Show the loaded bundle and the number of settings per area (default command)");
    return [](LazySession& lazy, Output& out) {
        const Session& session = lazy.get();
        const auto areas = countAreas(*session.tree().root());
        (out.isJson() ? writeDocument : writeText)(session, areas, out);
        return ExitCode::done;
    };
}

}  // namespace vx::tool
