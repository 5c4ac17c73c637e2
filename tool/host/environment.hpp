#pragma once

#include <array>

namespace vx::tool {

struct EnvironmentVariable
{
    const char* name;
    const char* meaning;
};

/// The environment variables that factory values depend on.
inline constexpr std::array treeVariables{
    EnvironmentVariable{"VX_CD_ANYWHERE_DISABLED", "If true, in upper or lower case, the factory value of "
                                                   "verdix.online.cdAnywhereDisabled is true."},
    EnvironmentVariable{"VX_UI_INTERNAL_FIGURE_USEAPPSHELL",
                        "If set to a value that does not begin with 1, the factory value of "
                        "verdix.ui.internal.figure.UseAppShell is false."},
    EnvironmentVariable{"VX_WEBWINDOW_LOGS_SPEC",
                        "The factory value of verdix.ui.internal.figure.webwindow.LifecycleLogs."}};

}  // namespace vx::tool
