#pragma once

#include <span>
#include <string>
#include <vector>

#include "session.hpp"

namespace CLI {
class App;
}

namespace vx::tool {

/// A word that may stand at the end of a command line. One that ends in "." or "=" is to be gone on with.
struct Candidate
{
    std::string word;
    std::string description = {};
};

struct Completion
{
    std::vector<Candidate> candidates = {};
    bool takesFile = false;  ///< any name of a file may stand there
};

/// What may stand in place of the last of these words, which follow the program's name and of which the last
/// may be empty or unfinished. The session is started only where the tree is needed. Raises Failure.
[[nodiscard]] Completion complete(const CLI::App& app, std::span<const std::string> words,
                                  LazySession& session);

}  // namespace vx::tool
