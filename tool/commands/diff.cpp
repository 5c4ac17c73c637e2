#include <review/tree_diff.hpp>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/array.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "render/escaping.hpp"
#include "render/json_text.hpp"
#include "render/table.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using review::Difference;
using review::DifferenceKind;
using review::TreeDocument;

struct DiffOptions
{
    std::string older;
    std::string newer;
    std::string format;  ///< empty: the global --format
};

/// Returns what differs, beside kind and path.
std::string details(const Difference& difference)
{
    switch (difference.kind) {
    case DifferenceKind::added:
        return {};
    case DifferenceKind::moved:
        return "from " + difference.before + " in " + difference.after;
    case DifferenceKind::removed:
        return difference.after.empty() ? "" : "in " + difference.after;
    case DifferenceKind::lost:
        return difference.after.empty() ? "no release change mentions it" : difference.after;
    default:
        return difference.before + " -> " + difference.after;
    }
}

Style styleOf(DifferenceKind kind)
{
    switch (kind) {
    case DifferenceKind::added:
        return Style::good;
    case DifferenceKind::lost:
        return Style::bad;
    default:
        return Style::note;
    }
}

void writeText(const std::vector<Difference>& differences, Output& out)
{
    Table table;
    for (const Difference& difference : differences) {
        table.add({{std::string(kindLabel(difference.kind)), styleOf(difference.kind)},
                   difference.path,
                   {details(difference), Style::note}});
    }
    table.write(out);
}

void writeMarkdown(const std::vector<Difference>& differences, Output& out)
{
    out << "| change | path | details |\n|---|---|---|\n";
    for (const Difference& difference : differences) {
        out << "| " << kindLabel(difference.kind) << " | `" << difference.path << "` | "
            << markdownCell(details(difference)) << " |\n";
    }
}

void writeJson(const std::vector<Difference>& differences, Output& out)
{
    json::array list;
    for (const Difference& difference : differences) {
        list.push_back(json::object{{"change", kindLabel(difference.kind)},
                                    {"path", difference.path},
                                    {"before", difference.before},
                                    {"after", difference.after}});
    }
    writeJson({{"differences", std::move(list)}}, out);
}

ExitCode diff(const DiffOptions& options, Output& out)
{
    requireOneStandardInput({options.older, options.newer});
    const auto older = TreeDocument::read(options.older);
    const auto newer = TreeDocument::read(options.newer);
    const auto differences = review::compareTrees(older, newer);
    if (options.format == "json" || (options.format.empty() && out.isJson())) {
        writeJson(differences, out);
    } else if (options.format == "markdown") {
        writeMarkdown(differences, out);
    } else {
        writeText(differences, out);
    }
    const auto isLost = [](const Difference& difference) { return difference.kind == DifferenceKind::lost; };
    return std::ranges::any_of(differences, isLost) ? ExitCode::failed : ExitCode::done;
}

}  // namespace

Action addDiff(CLI::App& command)
{
    setHelp(command, "Compare two exported trees",
            "Exits with 1 if a setting is lost: missing, without a release change that moves or removes it.\n"
            "Example:\n  vxsettings diff R2025b.json R2026a.json --format markdown");
    auto options = std::make_shared<DiffOptions>();
    addPositional(command, "OLD", options->older, Need::required,
                  "Older tree, written by export --format json; - is standard input");
    addPositional(command, "NEW", options->newer, Need::required, "Newer tree; - is standard input");
    addChoice(command, "--format", options->format, {"text", "json", "markdown"},
              "Output format (default: text)");
    return [options](LazySession&, Output& out) { return diff(*options, out); };
}

}  // namespace vx::tool
