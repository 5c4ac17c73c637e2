#pragma once

#include <settings_core/files/layers.hpp>

#include <foundation/log/diagnostic_logger.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "render/output.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// The options that all commands share.
struct GlobalOptions
{
    std::string bundleFile;       ///< empty: defaultBundleFile()
    core::LayerFiles layerFiles;  ///< empty: the files in the XDG base directories
    std::vector<std::pair<std::string, int>> features;
    foundation::log::Severity logThreshold = foundation::log::warning;
    ColourChoice colour = ColourChoice::automatic;
    OutputFormat format = OutputFormat::text;
    bool isQuiet = false;   ///< prints no hints
    bool usesPager = true;  ///< on a terminal, for commands that have long output
};

/// Declares the global options; the result is assigned while the command line is parsed.
[[nodiscard]] std::shared_ptr<const GlobalOptions> addGlobalOptions(CLI::App& app);

}  // namespace vx::tool
