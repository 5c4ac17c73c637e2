#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace vx::tool {

/// What the user may want to do with an edited text.
enum class Answer : std::uint8_t
{
    edit,
    save,
    overwrite,
    discard,
    keep
};

/// Prints the situation to standard error, asks which of the answers to choose, and returns it. An empty line
/// chooses the first one. The end of the input chooses the last one, as does, without a question, a standard
/// input or standard error that is not a terminal.
[[nodiscard]] Answer ask(std::string_view situation, std::initializer_list<Answer> answers);

}  // namespace vx::tool
