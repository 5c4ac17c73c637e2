#pragma once

#include <string_view>

/// The completion scripts of the shells, embedded from the files beside this header.
namespace vx::tool::shell_scripts {

extern const std::string_view bash;
extern const std::string_view zsh;
extern const std::string_view fish;

}  // namespace vx::tool::shell_scripts
