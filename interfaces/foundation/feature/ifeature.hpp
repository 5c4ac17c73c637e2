#pragma once

#include <foundation/export.hpp>

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>

/// Feature switches, by which parts of the environment are turned on and off.
namespace foundation::feature {

/// Process-wide state of one feature; lives until the process ends.
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

    /// The state that a feature has before anybody sets it: 0, off.
    [[nodiscard]] virtual int defaultValue() const noexcept;

    /// The feature's process-wide state; never null.
    [[nodiscard]] virtual FeatureState* getState() = 0;

    /// The name, as UTF-16.
    [[nodiscard]] std::u16string getName() const;

    /// The current state as a number: 0 is off, everything else is on.
    [[nodiscard]] int get();

protected:
    /// The `length` bytes at `name`, UTF-8, have to outlive the switch.
    IFeature(const char* name, std::size_t length) noexcept;

private:
    std::string_view name_;
};

/// The switches of this process.
namespace management::process {

/// The state record of the feature of this name, made on first request; the same for every caller in the
/// process. Raises std::bad_alloc. Any thread may call it.
[[nodiscard]] VX_API FeatureState* getDataPtr(const std::string& name);

}  // namespace management::process

}  // namespace foundation::feature
