#include <component/environment.hpp>
#include <settings_core/values/native_library.hpp>

#include <foundation/host.hpp>

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/Constants.h>
#include <cppmicroservices/ServiceReference.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <framework_bundles.hpp>
#include <link.h>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "catalog/catalog.hpp"
#include "cli/arguments.hpp"
#include "cli/command.hpp"
#include "doctor_files.hpp"
#include "doctor_report.hpp"
#include "host/bundle_file.hpp"

namespace vx::tool {

namespace {

using cppmicroservices::any_cast;
using cppmicroservices::Bundle;
using cppmicroservices::ServiceReferenceU;
namespace Constants = cppmicroservices::Constants;

/// Returns the paths of the platform's libraries in this process.
std::vector<std::string> platformLibraries()
{
    std::vector<std::string> paths;
    ::dl_iterate_phdr(
        [](::dl_phdr_info* info, std::size_t, void* result) {
            const std::filesystem::path path = info->dlpi_name;
            if (path.filename().native().starts_with("libvx")) {
                static_cast<std::vector<std::string>*>(result)->push_back(path.lexically_normal().string());
            }
            return 0;
        },
        &paths);
    return paths;
}

void reportTool(const LazySession& session, Report& report)
{
    report.begin("tool");
    report.add("executable", executableFile().string());
    report.add("bundle file", session.bundleFile().string());
    for (const std::string& library : platformLibraries()) {
        report.add("library", library);
    }
    report.end();
}

void reportBundles(const Host& host, Report& report)
{
    report.begin("bundles");
    report.add("framework", std::string(frameworkName).append(" ").append(frameworkVersion));
    for (const Bundle& bundle : host.bundles()) {
        const bool isActive = bundle.GetState() == Bundle::STATE_ACTIVE;
        report.add(isActive, "bundle " + std::to_string(bundle.GetBundleId()),
                   bundle.GetSymbolicName() + " " + bundle.GetVersion().ToString() +
                       (isActive ? ", active, " : ", not active, ") + bundle.GetLocation());
    }
    report.end();
}

std::string interfaceNames(const ServiceReferenceU& service)
{
    std::string text;
    for (const std::string& name :
         any_cast<std::vector<std::string>>(service.GetProperty(Constants::OBJECTCLASS)))
    {
        text += text.empty() ? "" : ", ";
        text += name;
    }
    return text;
}

void reportServices(const Host& host, Report& report)
{
    report.begin("services");
    for (const Bundle& bundle : host.bundles()) {
        for (const ServiceReferenceU& service : bundle.GetRegisteredServices()) {
            report.add("service " + service.GetProperty(Constants::SERVICE_ID).ToStringNoExcept(),
                       interfaceNames(service) + ", of " + bundle.GetSymbolicName());
        }
    }
    report.end();
}

void reportTree(const Session& session, Report& report)
{
    const core::SettingsTree& tree = session.tree();
    report.begin("tree");
    report.add(!tree.nodes().empty(), "root",
               tree.root()->getFullName() + ", " + std::to_string(tree.nodes().size()) + " nodes under it");
    for (const std::string& path : session.settingPathList()) {
        const bool exists = tree.find(path) != nullptr;
        report.add(exists, "known by name", path + (exists ? "" : ", which is not in the tree"));
    }
    report.end();
}

using NativeFunctions = std::set<std::pair<std::string, std::string>>;

/// Collects library and function of native validators and run-time defaults.
struct CollectNative
{
    NativeFunctions& functions;

    void operator()(const settings::core::CValidator& native) const { add(native); }
    void operator()(const settings::core::CRunTimeDefault& native) const { add(native); }
    template <class Other>
    void operator()(const Other&) const
    {}

    void add(const settings::core::detail::FunctionName& name) const
    {
        functions.emplace(name.scope(), name.function());
    }
};

void reportNativeFunction(const std::string& library, const std::string& function, Report& report)
{
    try {
        static_cast<void>(core::nativeFunction<void()>(library, function));
        report.add(true, library, function);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        report.add(false, library, function + ": " + firstLine(error.what()));
    }
}

void reportNativeFunctions(const core::SettingsTree& tree, Report& report)
{
    NativeFunctions functions;
    for (const core::Node* node : tree.nodes()) {
        std::visit(CollectNative{functions}, node->properties().validator);
        std::visit(CollectNative{functions}, node->properties().runTimeDefault);
    }
    report.begin("native functions named in the tree");
    for (const auto& [library, function] : functions) {
        reportNativeFunction(library, function, report);
    }
    report.end();
}

void reportInputs(Report& report)
{
    report.begin("inputs of the tree");
    for (const auto& variable : ::settings::verdix::environmentInputs) {
        const char* value = std::getenv(variable.name);
        report.add(variable.name, value == nullptr ? "unset" : "set to \"" + std::string(value) + "\"");
    }
    for (const auto& [name, value] : foundation::host::features()) {
        report.add("feature " + name, value == 0   ? "off"
                                      : value == 1 ? "on"
                                                   : "on (" + std::to_string(value) + ")");
    }
    report.end();
}

/// Reports the catalog. A missing translation is no error, but a missing English catalog is.
void reportCatalog(const core::SettingsTree& tree, Report& report)
{
    const Catalog catalog(tree);
    if (catalog.folders().empty()) {
        return;
    }
    report.begin("catalog of titles and descriptions");
    for (const std::filesystem::path& folder : catalog.folders()) {
        const std::string what = "language " + folder.filename().string();
        if (std::filesystem::is_directory(folder)) {
            report.add(true, what, folder.string());
        } else if (folder == catalog.folders().back()) {
            report.add(false, what, folder.string() + " does not exist; install the catalog again");
        } else {
            report.add(what, "no translation");
        }
    }
    for (const std::string& diagnostic : catalog.diagnostics(tree)) {
        report.add(false, "file", diagnostic + "; install the catalog again");
    }
    report.end();
}

void reportSession(LazySession& lazy, Report& report)
{
    const Session& session = lazy.get();
    reportBundles(session.host(), report);
    reportServices(session.host(), report);
    reportTree(session, report);
    reportNativeFunctions(session.tree(), report);
    reportInputs(report);
    reportCatalog(session.tree(), report);
    reportFiles(lazy, report);
}

}  // namespace

Action addDoctor(CLI::App& command)
{
    setHelp(
        command,
        "Show what was loaded from where and what the tree depends on, and check that all of it works, the "
        "settings files included",
        "Exits with 1 if something is wrong; the report names the command that fixes it.\nExample:\n  "
        "vxsettings doctor --feature webui=on");
    return [](LazySession& lazy, Output& out) {
        Report report(out);
        reportTool(lazy, report);
        try {
            reportSession(lazy, report);
        } catch (const std::runtime_error& error) {
            report.begin("not examined further");
            report.add(false, "error", error.what());
            report.end();
            report.finish();
            throw;
        }
        report.finish();
        return report.isWell() ? ExitCode::done : ExitCode::failed;
    };
}

}  // namespace vx::tool
