#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/session.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// A possible last argument of a command line; incomplete if it ends in "." or "=".
struct Candidate
{
    std::string argument;
    std::string description = {};
};

struct Completion
{
    std::vector<Candidate> candidates = {};
    bool takesFile = false;  ///< any file name is possible
};

/// Returns the candidates for the last of `arguments`, which may be empty or incomplete. They begin with it,
/// unless no path does: then they are paths with a name inside that begins with it, in any letter case. The
/// arguments do not include the program's name. The session is only started if the tree is needed. Throws
/// CommandError.
[[nodiscard]] Completion complete(const CLI::App& app, std::span<const std::string> arguments,
                                  LazySession& session);

}  // namespace vx::tool
