#pragma once

#include <string_view>

/// What makes a shell complete the command, from the files beside this header.
namespace vx::tool::shell_scripts {

extern const std::string_view bash;
extern const std::string_view zsh;
extern const std::string_view fish;

}  // namespace vx::tool::shell_scripts
