#include <review/tree_json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>
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

/// A file that is created or truncated, open for writing.
class WritableFile
{
public:
    explicit WritableFile(const std::string& name)
        : descriptor_(::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666))
    {
        if (descriptor_ < 0) {
            throw CommandError(ExitCode::failed, "cannot write " + name + ": " + std::strerror(errno));
        }
    }
    WritableFile(const WritableFile&) = delete;
    WritableFile& operator=(const WritableFile&) = delete;
    ~WritableFile() { ::close(descriptor_); }

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
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

/// In the order in which help lists them; the first is the default with the global --format json.
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

ExitCode exportTree(LazySession& lazy, const ExportOptions& options, Output& standard)
{
    if (options.format.empty() && !standard.isJson()) {
        throw CommandError(ExitCode::usage, "export needs --format; see vxsettings export --help");
    }
    const Format& format =
        options.format.empty() ? formats[0] : *std::ranges::find(formats, options.format, &Format::name);
    static_cast<void>(lazy.get());  // before the file is truncated, in case the bundle cannot be started
    if (options.file.empty()) {
        format.write(lazy, standard);
        return ExitCode::done;
    }
    const WritableFile file(options.file);
    Output out(file.descriptor(), options.file, ColourChoice::never);
    format.write(lazy, out);
    out.flush();
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
              "Output format; baseline is a shorter json, to be kept for each release; json-schema lets "
              "editors complete and check settings files, html is a page to browse "
              "and search the settings");
    addOption(command, "-o,--output", options->file, "FILE", "File to write (default: standard output)");
    return [options](LazySession& session, Output& out) { return exportTree(session, *options, out); };
}

}  // namespace vx::tool
