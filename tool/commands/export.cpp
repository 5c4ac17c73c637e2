#include <review/tree_json.hpp>
#include <settings_core/files/atomic_file.hpp>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "export_modified.hpp"
#include "export_page.hpp"
#include "export_schema.hpp"
#include "export_table.hpp"
#include "render/effective_value.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

struct ExportOptions
{
    std::string format;
    std::string file;
    bool showsFactory = false;
    bool addsEffective = false;
    bool isModified = false;
    bool hasSecrets = false;
};

using Writer = void(const Session& session, core::Layers& layers, Output& out);

struct Format
{
    const char* name;
    Writer* write;
};

boost::json::object treeOf(const Session& session)
{
    return review::treeJson(session.tree(), session.releaseChanges(), session.settingPathList());
}

void exportJson(const Session& session, core::Layers& /*layers*/, Output& out)
{
    writeJson(treeOf(session), out);
}

/// Adds the effective value to each setting.
void exportEffective(const Session& session, core::Layers& layers, Output& out)
{
    boost::json::object document = treeOf(session);
    auto node = document.at("nodes").as_array().begin();
    for (const core::Node* setting : session.tree().nodes()) {
        if (setting->kind() == core::NodeKind::setting) {
            boost::json::object effective;
            addLayerValue(effective, shownEffective(layers, *setting));
            node->as_object().emplace("effective", std::move(effective));
        }
        ++node;
    }
    writeJson(document, out);
}

void exportBaseline(const Session& session, core::Layers& /*layers*/, Output& out)
{
    writeJson(review::baselineJson(review::makeReleaseTree(session.tree(), session.releaseChanges())), out);
}

/// In the order in which help lists them.
constexpr Format formats[] = {
    {"json", exportJson}, {"baseline", exportBaseline}, {"json-schema", exportSchema},
    {"html", exportPage}, {"csv", exportCsv},           {"markdown", exportMarkdown}};

std::vector<std::string> formatNames()
{
    std::vector<std::string> names;
    std::ranges::transform(formats, std::back_inserter(names), &Format::name);
    return names;
}

/// Refuses to write the tree over a file that the command reads.
void requireOtherFile(const std::string& file, const LazySession& lazy)
{
    const core::LayerFiles layers = lazy.layerFiles();
    std::vector<std::pair<std::filesystem::path, const char*>> inputs = {
        {layers.personal, "the personal settings file"}, {lazy.bundleFile(), "the bundle"}};
    for (const std::filesystem::path& installation : layers.installation) {
        inputs.emplace_back(installation, "an installation settings file");
    }
    for (const auto& [input, name] : inputs) {
        if (core::isSameFile(file, input)) {
            throw CommandError(ExitCode::usage, "cannot write " + file + ": it is " + name +
                                                    "; name another file with --output");
        }
    }
}

/// As writerFor, with --modified.
Writer* modifiedWriterFor(const ExportOptions& options, const Format& format)
{
    if (format.write != exportJson || options.addsEffective || options.showsFactory) {
        throw CommandError(ExitCode::usage, "--modified writes a settings file, so it excludes --effective, "
                                            "--factory and every --format but json");
    }
    return options.hasSecrets ? exportModifiedWithSecrets : exportModified;
}

/// Returns the function that writes the tree in the format that the options ask for. Throws CommandError for
/// options that exclude each other.
Writer* writerFor(const std::string& formatName, const ExportOptions& options)
{
    const Format& format = *std::ranges::find(formats, formatName, &Format::name);
    if (options.isModified) {
        return modifiedWriterFor(options, format);
    }
    if (options.hasSecrets) {
        throw CommandError(ExitCode::usage, "--secrets is for --modified: other exports show no secrets");
    }
    if (!options.addsEffective) {
        return format.write;
    }
    if (format.write != exportJson || options.showsFactory) {
        throw CommandError(ExitCode::usage,
                           "--effective is for --format json without --factory; csv, markdown and html show "
                           "effective values by themselves");
    }
    return exportEffective;
}

ExitCode exportTree(LazySession& lazy, const ExportOptions& options, Output& standard)
{
    const std::string name = chosenFormat(options.format, standard, options.isModified ? "json" : "");
    if (name.empty()) {
        throw CommandError(ExitCode::usage, "export needs --format; see vxsettings export --help");
    }
    Writer* const write = writerFor(name, options);
    if (options.file.empty() || options.file == "-") {
        write(lazy.get(), lazy.layers(options.showsFactory), standard);
        return ExitCode::done;
    }
    requireOtherFile(options.file, lazy);
    Output out;
    write(lazy.get(), lazy.layers(options.showsFactory), out);
    core::writeFile(options.file, out.buffer(),
                    options.hasSecrets ? core::FileAccess::user : core::FileAccess::everyone);
    return ExitCode::done;
}

}  // namespace

Action addExport(CLI::App& command)
{
    setHelp(command, "Export the whole tree, for programs, editors, spreadsheets or browsers",
            "html, csv and markdown show effective values with their origins; the other formats are of the "
            "factory tree.\n"
            "Examples:\n  vxsettings export --format json -o tree.json\n"
            "  vxsettings export --format html -o settings.html\n"
            "  vxsettings export --modified -o settings.json");
    auto options = std::make_shared<ExportOptions>();
    addChoice(
        command, "--format", options->format, formatNames(),
        "Write this format (with --json: json); baseline is a shorter json, to be kept for each release; "
        "json-schema lets editors complete and check settings files, html is a page to browse and "
        "search the settings");
    addOption(command, "-o,--output", options->file, "FILE",
              "Write this file, whole or not at all (default: -, standard output)");
    addFactoryFlag(command, options->showsFactory);
    addFlag(command, "--effective", options->addsEffective,
            "With --format json, add effective value, origin and file to each setting");
    addFlag(command, "--modified", options->isModified,
            "Write a settings file instead, for import: all effective values that differ from the factory "
            "values, without secrets");
    addFlag(command, "--secrets", options->hasSecrets, "With --modified, write secrets too");
    return [options](LazySession& session, Output& out) { return exportTree(session, *options, out); };
}

}  // namespace vx::tool
