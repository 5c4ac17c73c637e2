#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>

#include "export_json.hpp"
#include "export_page.hpp"
#include "export_schema.hpp"
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

/// A form in which the tree is written.
using Writer = void (*)(LazySession& lazy, Output& out);

const std::map<std::string, Writer> writers{
    {"html", exportPage},
    {"json", [](LazySession& lazy, Output& out) { exportJson(lazy.get(), out); }},
    {"json-schema", [](LazySession& lazy, Output& out) { exportSchema(lazy.get(), out); }},
};

ExitCode exportTree(LazySession& lazy, const ExportOptions& options, Output& standard)
{
    const Writer write = writers.at(options.format);
    static_cast<void>(lazy.get());  // a bundle that does not start leaves the file as it is
    if (options.file.empty()) {
        write(lazy, standard);
        return ExitCode::done;
    }
    const WritableFile file(options.file);
    Output out(file.descriptor(), options.file, ColourChoice::never);
    write(lazy, out);
    out.flush();
    return ExitCode::done;
}

}  // namespace

Verb addExport(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("export", "The whole tree for other programs");
    auto options = std::make_shared<ExportOptions>();
    parser
        ->add_option("--format", options->format,
                     "html: a page for browsers; json: everything, for programs; json-schema: for editors of "
                     "settings files")
        ->required()
        ->check(CLI::IsMember(writers))
        ->type_name("FORMAT");
    parser->add_option("-o,--output", options->file, "File to write instead of standard output")
        ->type_name("FILE");
    parser->footer("Example:\n  vxsettings export --format json -o settings.json");
    return {parser,
            [options](LazySession& session, Output& out) { return exportTree(session, *options, out); }};
}

}  // namespace vx::tool
