#pragma once

// The environment variables and feature switches that factory values depend on. Areas read them; vxsettings
// documents them in its manual page and reports their values.

#include <array>

namespace settings::verdix {

/// Name and meaning of an environment variable or a feature switch, for users.
struct Input
{
    const char* name;
    const char* meaning;  ///< how factory values depend on it
};

/// All environment variables that the tree reads; nothing else can be passed to environmentVariable().
enum class EnvironmentInput : unsigned char
{
    cdAnywhereDisabled,
    useAppShell,
    lifecycleLogs
};

/// The environment variables, indexed by EnvironmentInput.
inline constexpr std::array<Input, 3> environmentInputs{{
    {"VX_CD_ANYWHERE_DISABLED",
     "If set to true, in any letter case, the factory value of verdix.online.cdAnywhereDisabled is true."},
    {"VX_UI_INTERNAL_FIGURE_USEAPPSHELL", "If set to a value that does not begin with 1, the factory value "
                                          "of verdix.ui.internal.figure.UseAppShell is false."},
    {"VX_WEBWINDOW_LOGS_SPEC",
     "The factory value of verdix.ui.internal.figure.webwindow.LifecycleLogs (default: none)."},
}};

/// All feature switches that the tree queries; nothing else can be passed to featureSwitch().
enum class FeatureInput : unsigned char
{
    webUi
};

/// The feature switches, indexed by FeatureInput. Each meaning names the settings with their full paths.
inline constexpr std::array<Input, 1> featureInputs{{
    {"webui", "If on, the factory value of verdix.ui.internal.dialog.FileDialogs is true."},
}};

}  // namespace settings::verdix
