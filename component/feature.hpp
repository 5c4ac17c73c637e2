#pragma once

// The feature switches of the environment. Areas query them through component/inputs.hpp only.

#include <foundation/feature/ifeature.hpp>

#include <atomic>
#include <cstddef>

namespace foundation::feature {

template <int Tag>
class Feature;

/// A feature switch of the environment.
template <>
class Feature<0> final : public IFeature
{
public:
    /// `name` must have a terminating null character at `length`, else throws std::logic_error. It is not
    /// copied.
    Feature(const char* name, std::size_t length);

    template <std::size_t Size>
    explicit Feature(const char (&name)[Size]) : Feature(name, Size - 1)
    {}

    [[nodiscard]] FeatureState* getState() override;

private:
    std::atomic<FeatureState*> state_{nullptr};
};

}  // namespace foundation::feature
