#include <component/feature.hpp>

#include <foundation/verdixdata/text.hpp>

#include <stdexcept>

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
