#include <settings_core/atomic_file.hpp>
#include <settings_core/file_check.hpp>

#include <memory>
#include <string>

#include "arguments.hpp"
#include "faults.hpp"
#include "json_text.hpp"
#include "verb.hpp"

namespace vx::tool {

namespace {

void writeDocument(const std::filesystem::path& file, bool exists, const std::vector<core::FileFault>& faults,
                   Output& out)
{
    writeJson({{"file", file.string()}, {"exists", exists}, {"faults", faultsJson(faults)}}, out);
}

void writeText(const std::filesystem::path& file, bool exists, const std::vector<core::FileFault>& faults,
               Output& out)
{
    writeFaults(file, faults, out);
    if (!exists) {
        out << file.string() << ": no such file, so nothing is set\n";
    } else if (faults.empty()) {
        out << file.string() << ": " << out.painted(Style::good, "no faults") << '\n';
    }
}

ExitCode check(LazySession& lazy, const std::string& named, Output& out)
{
    const std::filesystem::path file =
        named.empty() ? lazy.layerFiles().personal : std::filesystem::path(named);
    auto text = core::readFile(file);
    if (!text && !named.empty()) {
        throw Failure(ExitCode::failed, named + ": no such file");
    }
    const bool exists = text.has_value();
    std::vector<core::FileFault> faults;
    if (exists) {
        const Session& session = lazy.get();
        faults = core::checkSettingsFile(*std::move(text), session.tree(), session.releaseChanges());
    }
    (out.isJson() ? writeDocument : writeText)(file, exists, faults, out);
    return faults.empty() ? ExitCode::done : ExitCode::failed;
}

}  // namespace

Action addCheck(CLI::App& verb)
{
    describe(verb, "Every fault in a settings file, with line and column",
             "Ends with 1 when there are any.\nExample:\n  vxsettings check settings.json");
    auto file = std::make_shared<std::string>();
    addOperand(verb, "FILE", *file, Need::optional, "Settings file; your own when left out");
    return [file](LazySession& session, Output& out) { return check(session, *file, out); };
}

}  // namespace vx::tool
