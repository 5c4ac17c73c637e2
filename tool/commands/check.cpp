#include <settings_core/files/file_check.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_file.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "cli/diagnostics.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

struct CheckOptions
{
    std::string file;
    bool showsAll = false;
};

void writeDocument(const std::filesystem::path& file, bool exists,
                   const std::vector<core::Diagnostic>& diagnostics, Output& out)
{
    writeJson({{"file", file.string()}, {"exists", exists}, {"diagnostics", diagnosticsJson(diagnostics)}},
              out);
}

void writeText(const std::filesystem::path& file, const std::optional<std::string>& content,
               const std::vector<core::Diagnostic>& diagnostics, bool showsAll, Output& out)
{
    const auto [shown, leftOut] = showsAll ? DiagnosticSample{diagnostics, {}} : firstOfEachKind(diagnostics);
    writeDiagnostics(shown, out);
    for (const auto& [kind, count] : leftOut) {
        out << file.string() << ": " << count << " more: " << kind << "; show them with --all\n";
    }
    if (!content) {
        out << file.string() << ": no such file, so nothing is set\n";
    } else if (core::isOnlyWhitespace(*content)) {
        out << file.string() << ": the file is empty, so nothing is set: write { \"settings\": { ... } }\n";
    } else if (diagnostics.empty()) {
        out << file.string() << ": " << out.styled(Style::good, "no errors") << '\n';
    }
}

ExitCode check(LazySession& lazy, const CheckOptions& options, Output& out)
{
    const std::string& named = options.file;
    const std::filesystem::path file =
        named.empty() ? lazy.layerFiles().personal : std::filesystem::path(core::inputName(named));
    const auto content = named.empty() ? core::readFile(file) : core::readInput(named);
    const bool exists = content.has_value();
    std::vector<core::Diagnostic> diagnostics;
    if (exists) {
        const Session& session = lazy.get();
        diagnostics = core::checkSettingsFile(file, *content, session.tree(), session.releaseChanges());
    }
    if (out.isJson()) {
        writeDocument(file, exists, diagnostics, out);
    } else {
        writeText(file, content, diagnostics, options.showsAll, out);
    }
    return diagnostics.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addCheck(CLI::App& command)
{
    setHelp(command, "Check a settings file; report errors with line and column",
            "Of more than 20 errors of one kind, 20 are printed, and the number of the others.\n"
            "Paths are suggested for the first 100 unknown ones. With --json, all errors are printed.\n"
            "Exits with 1 if the file has errors.\nExample:\n  vxsettings check settings.json");
    auto options = std::make_shared<CheckOptions>();
    addPositional(command, "FILE", options->file, Need::optional,
                  "Settings file; - is standard input (default: the personal file)");
    addFlag(command, "--all", options->showsAll, "Print all errors, however many of one kind there are");
    return [options](LazySession& session, Output& out) { return check(session, *options, out); };
}

}  // namespace vx::tool
