#pragma once

// What is wrong with settings files, so that settings in them have no effect.

#include <settings_core/files/layers.hpp>

#include <string>
#include <vector>

#include "host/session.hpp"

namespace vx::tool {

/// Something that keeps settings of a file from having an effect.
struct FileProblem
{
    std::string text;     ///< what, in how many settings, of which file
    std::string command;  ///< that fixes it, or shows more
    bool isError;         ///< false if an administrator wants it so
};

/// Returns the problems of all settings files, lowest layer first. Throws what Layers throws.
[[nodiscard]] std::vector<FileProblem> findFileProblems(const Session& session, core::Layers& layers);

}  // namespace vx::tool
