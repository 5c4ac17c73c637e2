#include <settings_core/diagnostic.hpp>

namespace vx::core {

std::string formatDiagnostic(const Diagnostic& diagnostic)
{
    const auto& [file, line, column] = diagnostic.position;
    std::string text = file;
    if (line != 0) {
        text += ":" + std::to_string(line) + ":" + std::to_string(column);
    }
    for (const std::string* part : {&diagnostic.path, &diagnostic.message}) {
        text += (text.empty() || part->empty() ? "" : ": ") + *part;
    }
    return text;
}

}  // namespace vx::core
