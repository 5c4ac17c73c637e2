#pragma once

#include <string>

namespace CLI {
class App;
}

namespace vx::tool {

/// Returns the manual page of vxsettings in roff with man macros. Commands, options and examples are taken
/// from the parser `app`, so that the page and the help agree.
[[nodiscard]] std::string manualPage(const CLI::App& app);

}  // namespace vx::tool
