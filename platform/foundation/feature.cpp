#include <foundation/feature/ifeature.hpp>
#include <foundation/host.hpp>
#include <foundation/verdixdata/text.hpp>

#include <map>
#include <mutex>

namespace foundation::feature {

namespace {

/// The states of all features that were requested or set. Pointers to them stay valid, because the map never
/// moves or removes an element.
struct Registry
{
    std::mutex mutex;
    std::map<std::string, FeatureState> states;
};

/// Never destroyed, because modules may request a feature until the process exits.
Registry& registry()
{
    static auto& instance = *new Registry;
    return instance;
}

}  // namespace

IFeature::IFeature(const char* name, std::size_t length) noexcept : name_(name, length) {}

IFeature::~IFeature() = default;

int IFeature::defaultValue() const noexcept
{
    return 0;
}

std::u16string IFeature::getName() const
{
    return verdixdata::toUtf16(name_);
}

int IFeature::get()
{
    return getState()->value.load(std::memory_order_relaxed);
}

FeatureState* management::process::getDataPtr(const std::string& name)
{
    Registry& features = registry();
    const std::lock_guard lock(features.mutex);
    return &features.states[name];
}

}  // namespace foundation::feature

namespace foundation::host {

void setFeature(const std::string& name, int value)
{
    feature::management::process::getDataPtr(name)->value.store(value, std::memory_order_relaxed);
}

std::vector<std::pair<std::string, int>> features()
{
    feature::Registry& registry = feature::registry();
    const std::lock_guard lock(registry.mutex);
    std::vector<std::pair<std::string, int>> result;
    result.reserve(registry.states.size());
    for (const auto& [name, state] : registry.states) {
        result.emplace_back(name, state.value.load(std::memory_order_relaxed));
    }
    return result;
}

}  // namespace foundation::host
