#include <settings_core/atomic_file.hpp>
#include <settings_core/file_check.hpp>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

#include "faults.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

ExitCode check(LazySession& lazy, const std::string& named, Output& out)
{
    const std::filesystem::path file =
        named.empty() ? lazy.layerFiles().personal : std::filesystem::path(named);
    auto text = core::readFile(file);
    if (!text && !named.empty()) {
        throw Failure(ExitCode::failed, named + ": no such file");
    }
    if (!text) {
        out << file.string() << ": no such file, so nothing is set\n";
        return ExitCode::done;
    }
    const Session& session = lazy.get();
    const auto faults = core::checkSettingsFile(*std::move(text), session.tree(), session.releaseChanges());
    writeFaults(file, faults, out);
    if (faults.empty()) {
        out << file.string() << ": " << out.painted(Style::good, "no faults") << '\n';
    }
    return faults.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Verb addCheck(CLI::App& app)
{
    CLI::App* parser = app.add_subcommand("check", "Every fault in a settings file, with line and column");
    auto file = std::make_shared<std::string>();
    parser->add_option("FILE", *file, "Settings file; your own when left out")->type_name("");
    parser->footer("Example:\n  vxsettings check settings.json");
    return {parser, [file](LazySession& session, Output& out) { return check(session, *file, out); }};
}

}  // namespace vx::tool
