#include <component/feature.hpp>
#include <component/inputs.hpp>

#include <foundation/log/diagnostic_logger.hpp>

#include <boost/log/sources/severity_feature.hpp>

#include <cstdlib>
#include <string_view>

namespace settings::verdix {

namespace {

// Exists as long as the module is loaded.
foundation::log::basic_diagnostic_logger<char> diagnosticLogger("connector::desktop::userDir");

}  // namespace

std::optional<std::string> environmentVariable(EnvironmentInput input)
{
    const char* value = std::getenv(environmentInputs[static_cast<std::size_t>(input)].name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

int featureSwitch(FeatureInput input)
{
    const std::string_view name = featureInputs[static_cast<std::size_t>(input)].name;
    return foundation::feature::Feature<0>(name.data(), name.size()).get();
}

void logDecision(std::string_view message, std::string_view detail)
{
    BOOST_LOG_SEV(diagnosticLogger, decisionSeverity) << message << detail;
}

}  // namespace settings::verdix
