// Run-time defaults of the graphics system.

#include <foundation/verdixdata/array_factory.hpp>
#include <settings/core/run_time_defaults.hpp>

namespace {

using foundation::verdixdata::Array;

Array logicalScalar(bool value)
{
    auto scalar = foundation::verdixdata::ArrayFactory().createArray<bool>({1, 1});
    scalar[0] = value;
    return scalar;
}

}  // namespace

extern "C" {

/// Sets value to whether figures are web figures. Always true: they need no windowing system, so they also
/// work without a desktop.
VX_API void getDefaultFigureTypeForSetting(Array& value)
{
    value = logicalScalar(true);
}

/// Sets value to whether a figure's view model is updated after every change instead of before the next
/// redraw. Always false: changes only become visible when the figure is redrawn, and one update for many
/// changes is faster.
VX_API void getDefaultSyncModeForSetting(Array& value)
{
    value = logicalScalar(false);
}

}  // extern "C"
