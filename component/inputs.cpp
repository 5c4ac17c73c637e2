#include <component/inputs.hpp>

#include <foundation/log/diagnostic_logger.hpp>
#include <foundation/verdixdata/text.hpp>

#include <boost/log/sources/severity_feature.hpp>

#include <cstdlib>
#include <stdexcept>

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

void logDecision(std::string_view message, std::string_view detail)
{
    BOOST_LOG_SEV(diagnosticLogger, decisionSeverity) << message << detail;
}

}  // namespace settings::verdix

namespace foundation::feature {

Feature<0>::Feature(const char* name, std::size_t length) : IFeature(name, length)
{
    if (name[length] != '\0') {
        throw std::logic_error("feature name needs to be null terminated.");
    }
}

FeatureState* Feature<0>::getState()
{
    FeatureState* state = state_.load();
    if (state == nullptr) {
        state = management::process::getDataPtr(verdixdata::toUtf8(getName()));
        state_.exchange(state);
    }
    return state;
}

}  // namespace foundation::feature
