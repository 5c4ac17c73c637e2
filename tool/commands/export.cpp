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
#include "export_page.hpp"
#include "export_schema.hpp"
#include "export_table.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

struct ExportOptions
{
    std::string format;
    std::string file;
};

struct Format
{
    const char* name;
    void (*write)(LazySession& lazy, Output& out);
};

template <void (*write)(const Session& session, Output& out)>
void writeTree(LazySession& lazy, Output& out)
{
    write(lazy.get(), out);
}

void exportJson(const Session& session, Output& out)
{
    writeJson(review::treeJson(session.tree(), session.releaseChanges(), session.settingPathList()), out);
}

void exportBaseline(const Session& session, Output& out)
{
    writeJson(review::baselineJson(review::makeReleaseTree(session.tree(), session.releaseChanges())), out);
}

/// In the order in which help lists them.
constexpr Format formats[] = {{"json", writeTree<exportJson>},
                              {"baseline", writeTree<exportBaseline>},
                              {"json-schema", writeTree<exportSchema>},
                              {"html", exportPage},
                              {"csv", writeTree<exportCsv>},
                              {"markdown", writeTree<exportMarkdown>}};

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

ExitCode exportTree(LazySession& lazy, const ExportOptions& options, Output& standard)
{
    const std::string name = chosenFormat(options.format, standard, "");
    if (name.empty()) {
        throw CommandError(ExitCode::usage, "export needs --format; see vxsettings export --help");
    }
    const Format& format = *std::ranges::find(formats, name, &Format::name);
    if (options.file.empty() || options.file == "-") {
        format.write(lazy, standard);
        return ExitCode::done;
    }
    requireOtherFile(options.file, lazy);
    Output out;
    format.write(lazy, out);
    core::writeFile(options.file, out.buffer());
    return ExitCode::done;
}

}  // namespace

Action addExport(CLI::App& command)
{
    setHelp(command, "Export the whole tree, for programs, editors, spreadsheets or browsers",
            "Examples:\n  vxsettings export --format json -o tree.json\n"
            "  vxsettings export --format html -o settings.html");
    auto options = std::make_shared<ExportOptions>();
    addChoice(command, "--format", options->format, formatNames(),
              "Output format (with --json: json); baseline is a shorter json, to be kept for each release; "
              "json-schema lets "
              "editors complete and check settings files, html is a page to browse "
              "and search the settings");
    addOption(command, "-o,--output", options->file, "FILE",
              "File to write, whole or not at all (default: -, standard output)");
    return [options](LazySession& session, Output& out) { return exportTree(session, *options, out); };
}

}  // namespace vx::tool
