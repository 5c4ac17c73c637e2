#pragma once

#include <string>

namespace CLI {
class App;
}

namespace vx::tool {

/// The command's manual page in the man macros of roff. Verbs, options and examples come from the command
/// line that `app` parses, so that page and help say the same.
[[nodiscard]] std::string manualPage(const CLI::App& app);

}  // namespace vx::tool
