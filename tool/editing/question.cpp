#include "editing/question.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <string>
#include <unistd.h>

#include "cli/diagnostics.hpp"

namespace vx::tool {

namespace {

/// Indexed by Answer. The first letters differ, as they are what the user types.
constexpr std::array<std::string_view, 5> answerTexts{"edit it", "save it all the same", "overwrite the file",
                                                      "discard it", "keep it for later"};

std::string_view textOf(Answer answer)
{
    return answerTexts[static_cast<std::size_t>(answer)];
}

/// Returns the question with the letters to type, such as "(e)dit it, (k)eep it for later? [e] ".
std::string prompt(std::initializer_list<Answer> answers)
{
    std::string question;
    for (const Answer answer : answers) {
        question.append(question.empty() ? "(" : ", (").append(textOf(answer).substr(0, 1));
        question.append(")").append(textOf(answer).substr(1));
    }
    return question.append("? [").append(textOf(*answers.begin()).substr(0, 1)).append("] ");
}

}  // namespace

Answer ask(std::string_view situation, std::initializer_list<Answer> answers)
{
    const Answer last = *(answers.end() - 1);
    if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDERR_FILENO) != 1) {
        return last;
    }
    printMessage(situation);
    std::string line;
    while (std::fputs(prompt(answers).c_str(), stderr), std::getline(std::cin, line)) {
        // The empty line is the beginning of each, so it chooses the first.
        const auto* chosen = std::ranges::find_if(
            answers, [&line](Answer answer) { return textOf(answer).starts_with(line); });
        if (chosen != answers.end()) {
            return *chosen;
        }
    }
    std::fputc('\n', stderr);
    return last;
}

}  // namespace vx::tool
