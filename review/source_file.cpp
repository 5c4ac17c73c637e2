#include "source_file.hpp"

#include <settings_core/releases/release_history.hpp>

namespace vx::review {

std::string sourceFileOf(std::string_view path)
{
    SourceLocation longest;
    for (const SourceLocation& location : locations) {
        if (location.path.size() > longest.path.size() && core::isAtOrUnder(path, location.path)) {
            longest = location;
        }
    }
    if (!longest.file.empty()) {
        return std::string(longest.file);
    }
    const std::size_t begin = path.find('.') + 1;
    return "tree/" + std::string(path.substr(begin, path.find('.', begin) - begin)) + ".cpp";
}

}  // namespace vx::review
