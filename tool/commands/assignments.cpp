#include "assignments.hpp"

#include <settings_core/files/json_reader.hpp>
#include <settings_core/files/text_position.hpp>

#include <algorithm>
#include <cstddef>

namespace vx::tool {

namespace {

using core::Notation;

/// Returns the string without whitespace at its ends. The result is always a part of it, also if it is empty.
std::string_view trimmed(std::string_view string)
{
    constexpr std::string_view whitespace = " \t\r";
    string.remove_prefix(std::min(string.find_first_not_of(whitespace), string.size()));
    return string.substr(0, string.find_last_not_of(whitespace) + 1);
}

class LineReader
{
public:
    LineReader(std::string_view text, const std::string& name) : text_(text), name_(name), positions_(text) {}

    Assignments run() &&
    {
        std::size_t begin = text_.starts_with(core::byteOrderMark) ? core::byteOrderMark.size() : 0;
        while (begin < text_.size()) {
            const std::size_t end = std::min(text_.find('\n', begin), text_.size());
            readLine(trimmed(text_.substr(begin, end - begin)));
            begin = end + 1;
        }
        return std::move(assignments_);
    }

private:
    /// Returns the position of a part of the text.
    [[nodiscard]] core::Position positionOf(std::string_view part) const
    {
        return positions_.at(static_cast<std::size_t>(part.data() - text_.data()), name_);
    }

    void readLine(std::string_view line)
    {
        if (line.empty() || line.starts_with('#')) {
            return;
        }
        const std::size_t equals = line.find('=');
        const std::string_view path = trimmed(line.substr(0, equals));
        if (equals == std::string_view::npos || path.empty()) {
            assignments_.diagnostics.push_back({"", "expected PATH = VALUE", positionOf(line)});
            return;
        }
        const std::string_view value = trimmed(line.substr(equals + 1));
        assignments_.changes.push_back(
            {std::string(path), core::ValueText{std::string(value), Notation::script, positionOf(value)},
             positionOf(path)});
    }

    std::string_view text_;
    const std::string& name_;
    core::PositionIndex positions_;
    Assignments assignments_;
};

}  // namespace

Assignments readAssignments(std::string_view text, const std::string& name)
{
    return LineReader(text, name).run();
}

Assignments readJsonAssignments(std::string_view text, const std::string& name)
try {
    const core::JsonValue object = core::readJson(text);
    if (object.kind != core::JsonKind::object) {
        throw core::ParseError(object.offset, "expected an object of paths and values");
    }
    const core::PositionIndex positions(text);
    Assignments assignments;
    for (const core::JsonMember& member : object.members) {
        assignments.changes.push_back({member.name,
                                       core::ValueText{std::string(member.value.text), Notation::json,
                                                       positions.at(member.value.offset, name)},
                                       positions.at(member.offset, name)});
    }
    return assignments;
} catch (const core::ParseError& error) {
    return {.diagnostics = {{"", error.what(), core::positionAt(text, error.offset(), name)}}};
}

}  // namespace vx::tool
