#pragma once

// The environment variables that factory values depend on: for the areas that read them, and for the command,
// which documents and reports them.

#include <array>

namespace settings::verdix {

/// An environment variable that the tree reads.
struct EnvironmentVariable
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

/// Name and meaning of each EnvironmentInput, in its order.
inline constexpr std::array<EnvironmentVariable, 3> environmentInputs{{
    {"VX_CD_ANYWHERE_DISABLED",
     "If true, in upper or lower case, the factory value of verdix.online.cdAnywhereDisabled is true."},
    {"VX_UI_INTERNAL_FIGURE_USEAPPSHELL", "If set to a value that does not begin with 1, the factory value "
                                          "of verdix.ui.internal.figure.UseAppShell is false."},
    {"VX_WEBWINDOW_LOGS_SPEC", "The factory value of verdix.ui.internal.figure.webwindow.LifecycleLogs."},
}};

}  // namespace settings::verdix
