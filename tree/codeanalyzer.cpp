#include <component/inputs.hpp>
#include <tree/areas.hpp>
#include <tree/vocabulary.hpp>

#include <factory_settings_interface/code_analyzer_settings_interface.hpp>

#include <memory>

namespace verdix::settings::tree {

namespace {

std::u16string defaultConfigurationFile()
{
    using factory_settings_interface::CodeAnalyzerSettingsInterface;

    // Looked up once per process: services that are registered after the first tree was built are ignored.
    static const std::shared_ptr<CodeAnalyzerSettingsInterface> service =
        ::settings::verdix::getServiceFromContext<CodeAnalyzerSettingsInterface>();
    return service ? service->getDefaultConfigurationFile() : std::u16string();
}

}  // namespace

void buildCodeAnalyzerArea(FactoryGroup& root)
{
    std::u16string configurationFile = defaultConfigurationFile();

    auto codeAnalyzer = addGroup(root, "codeanalyzer", Visible);
    addCharvec(codeAnalyzer, "ActiveConfigurationFile", std::move(configurationFile), Visible);
    addLogical(codeAnalyzer, "EnableIntegratedMessages", true, Visible);
    addCharvec(codeAnalyzer, "ModifiedDefaultSettings", "");
    addInteger(codeAnalyzer, "UnderlineOption", 3, Visible, inRange(0, 3));
    addLogical(codeAnalyzer, "shouldResetUnderlineOption", true, Hidden);
    addCharvec(codeAnalyzer, "ConfigsList", "");
    addInteger(codeAnalyzer, "ActiveSettings", 0, Hidden);
}

}  // namespace verdix::settings::tree
