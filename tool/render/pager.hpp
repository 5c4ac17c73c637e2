#pragma once

#include <string_view>

namespace vx::tool {

/// Shows what is written to a terminal in the user's pager, and returns true when the pager has ended, be it
/// before the end of the output. The pager is the shell command in $VXSETTINGS_PAGER or $PAGER, or else less,
/// unless the terminal is dumb. Returns false, and has shown nothing, if the command is empty, only
/// whitespace or cat, or does not start.
[[nodiscard]] bool showInPager(std::string_view output);

}  // namespace vx::tool
