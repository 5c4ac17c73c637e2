#pragma once

#include <foundation/export.hpp>

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>

/// Feature switches, which enable and disable parts of the environment.
namespace foundation::feature {

/// Process-wide state of a feature; exists until the process exits.
struct FeatureState
{
    std::atomic<int> value{0};  ///< 0 is off, everything else is on
};

/// A named feature switch. Its name is not copied: it must outlive the switch.
class VX_API IFeature
{
public:
    IFeature(const IFeature&) = delete;
    IFeature& operator=(const IFeature&) = delete;

    virtual ~IFeature();

    /// Returns the value of a feature that was never set: 0, off.
    [[nodiscard]] virtual int defaultValue() const noexcept;

    /// Returns the process-wide state of the feature; never null.
    [[nodiscard]] virtual FeatureState* getState() = 0;

    /// Returns the name in UTF-16.
    [[nodiscard]] std::u16string getName() const;

    /// Returns the current value: 0 is off, everything else is on.
    [[nodiscard]] int get();

protected:
    /// `name` points to `length` bytes of UTF-8, which must outlive the switch.
    IFeature(const char* name, std::size_t length) noexcept;

private:
    std::string_view name_;
};

/// Access to the feature states of this process.
namespace management::process {

/// Returns the state of a feature, creating it at the first request. All callers in the process get the same
/// pointer. Thread-safe. Throws std::bad_alloc.
[[nodiscard]] VX_API FeatureState* getDataPtr(const std::string& name);

}  // namespace management::process

}  // namespace foundation::feature
