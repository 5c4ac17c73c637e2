#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

#include "export_json.hpp"
#include "export_table.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

struct ExportOptions
{
    std::string format;
    std::string file;
};

/// A file made anew or emptied.
class WritableFile
{
public:
    explicit WritableFile(const std::string& name)
        : descriptor_(::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666))
    {
        if (descriptor_ < 0) {
            throw Failure(ExitCode::failed, "cannot write " + name + ": " + std::strerror(errno));
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
    void (*write)(const Session& session, Output& out);
};

constexpr Format formats[] = {{"json", exportJson}, {"csv", exportCsv}, {"markdown", exportMarkdown}};

std::vector<std::string> formatNames()
{
    std::vector<std::string> names;
    std::ranges::transform(formats, std::back_inserter(names), &Format::name);
    return names;
}

ExitCode exportTo(const Session& session, const ExportOptions& options, Output& out)
{
    std::ranges::find(formats, options.format, &Format::name)->write(session, out);
    return ExitCode::done;
}

ExitCode exportTree(const Session& session, const ExportOptions& options, Output& standard)
{
    if (options.file.empty()) {
        return exportTo(session, options, standard);
    }
    const WritableFile file(options.file);
    Output out(file.descriptor(), options.file, ColourChoice::never);
    const ExitCode code = exportTo(session, options, out);
    out.flush();
    return code;
}

}  // namespace

Verb addExport(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand(
        "export", "The whole tree, the release table and the path list for other programs");
    auto options = std::make_shared<ExportOptions>();
    parser->add_option("--format", options->format, "json, csv or markdown")
        ->required()
        ->check(CLI::IsMember(formatNames()))
        ->type_name("FORMAT");
    parser->add_option("-o,--output", options->file, "File to write instead of standard output")
        ->type_name("FILE");
    parser->footer("Example:\n  vxsettings export --format json -o settings.json");
    return {parser, [options](LazySession& session, Output& out) {
                return exportTree(session.get(), *options, out);
            }};
}

}  // namespace vx::tool
