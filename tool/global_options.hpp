#pragma once

#include <settings_core/layers.hpp>

#include <foundation/log/diagnostic_logger.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "output.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// Options that every verb understands.
struct GlobalOptions
{
    std::string bundleFile;  ///< empty: the one beside the tool's libraries
    core::LayerFiles files;  ///< empty: those of the desktop's base directories
    std::vector<std::pair<std::string, int>> features;
    foundation::log::Severity logThreshold = foundation::log::warning;
    ColourChoice colour = ColourChoice::automatic;
    OutputForm form = OutputForm::text;
};

/// Adds them to the command line; they are filled in while it is parsed.
[[nodiscard]] std::shared_ptr<const GlobalOptions> addGlobalOptions(CLI::App& app);

}  // namespace vx::tool
