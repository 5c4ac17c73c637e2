// Defaults that the graphics system decides when they are asked for.

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

/// Whether figures are web figures. Always: they need no windowing system, so they are the one kind that
/// works on every desktop and without one.
VX_API void getDefaultFigureTypeForSetting(Array& value)
{
    value = logicalScalar(true);
}

/// Whether a figure's view model is brought up to date with every change rather than when it is next drawn.
/// Never: drawing is what makes a change visible, and one update for many changes is cheaper.
VX_API void getDefaultSyncModeForSetting(Array& value)
{
    value = logicalScalar(false);
}

}  // extern "C"
