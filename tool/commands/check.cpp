#include <settings_core/files/file_check.hpp>
#include <settings_core/files/input_file.hpp>

#include <memory>
#include <string>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

void writeDocument(const std::filesystem::path& file, bool exists,
                   const std::vector<core::Diagnostic>& diagnostics, Output& out)
{
    writeJson({{"file", file.string()}, {"exists", exists}, {"faults", diagnosticsJson(diagnostics)}}, out);
}

void writeText(const std::filesystem::path& file, bool exists,
               const std::vector<core::Diagnostic>& diagnostics, Output& out)
{
    writeDiagnostics(diagnostics, out);
    if (!exists) {
        out << file.string() << ": no such file, so nothing is set\n";
    } else if (diagnostics.empty()) {
        out << file.string() << ": " << out.styled(Style::good, "no errors") << '\n';
    }
}

ExitCode check(LazySession& lazy, const std::string& named, Output& out)
{
    const std::filesystem::path file =
        named.empty() ? lazy.layerFiles().personal : std::filesystem::path(core::inputName(named));
    const auto content = named.empty() ? core::readFile(file) : core::readInput(named);
    const bool exists = content.has_value();
    std::vector<core::Diagnostic> diagnostics;
    if (exists) {
        const Session& session = lazy.get();
        diagnostics = core::checkSettingsFile(file, *content, session.tree(), session.releaseChanges());
    }
    (out.isJson() ? writeDocument : writeText)(file, exists, diagnostics, out);
    return diagnostics.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addCheck(CLI::App& command)
{
    setHelp(command, "Check a settings file; report every error with line and column",
            "Exits with 1 if the file has errors.\nExample:\n  vxsettings check settings.json");
    auto file = std::make_shared<std::string>();
    addPositional(command, "FILE", *file, Need::optional,
                  "Settings file; - is standard input (default: the personal file)");
    return [file](LazySession& session, Output& out) { return check(session, *file, out); };
}

}  // namespace vx::tool
