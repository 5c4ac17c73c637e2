#pragma once

#include <array>

namespace vx::tool {

struct EnvironmentVariable
{
    const char* name;
    const char* meaning;
};

/// The environment variables that the areas of the tree read.
inline constexpr std::array treeVariables{
    EnvironmentVariable{"VX_CD_ANYWHERE_DISABLED",
                        "true, in any case of letters, makes true the factory value of "
                        "verdix.online.cdAnywhereDisabled."},
    EnvironmentVariable{"VX_UI_INTERNAL_FIGURE_USEAPPSHELL",
                        "Anything that does not begin with 1 makes false the factory value of "
                        "verdix.ui.internal.figure.UseAppShell."},
    EnvironmentVariable{"VX_WEBWINDOW_LOGS_SPEC",
                        "The factory value of verdix.ui.internal.figure.webwindow.LifecycleLogs."}};

}  // namespace vx::tool
