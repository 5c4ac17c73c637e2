#include <settings_core/diagnostic.hpp>

namespace vx::core {

std::string formatDiagnostic(const Diagnostic& diagnostic)
{
    const auto& [file, line, column] = diagnostic.position;
    std::string text = file;
    for (const std::size_t number : {line, column}) {
        text += number == 0 ? "" : ":" + std::to_string(number);
    }
    for (const std::string* part : {&diagnostic.path, &diagnostic.message}) {
        text += (text.empty() || part->empty() ? "" : ": ") + *part;
    }
    return text;
}

}  // namespace vx::core
