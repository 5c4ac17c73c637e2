#pragma once

#include <settings_core/json_reader.hpp>

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// How the members of a file's objects are written.
struct JsonStyle
{
    std::string_view betweenNameAndValue = ": ";
    /// What to put into an object without members, in front of its first and behind its last one.
    std::string opening = {};
    std::string closing = {};
};

/// Changes an object's text member by member and leaves every other byte as it is. A member that is added
/// goes to the end, written like the one before it; removing it gives the text from before.
class JsonObjectEdit
{
public:
    /// `object` has to be an object and, like the text it was read from, to outlive the edit.
    JsonObjectEdit(std::string_view text, const JsonValue& object, JsonStyle style);

    /// Indexes count the members that there are now; those of the object come first.
    void setValue(std::size_t index, std::string value);
    void setName(std::size_t index, std::string_view name);
    void add(std::string_view name, std::string_view value);
    void remove(std::size_t index);

    /// The object as text.
    [[nodiscard]] std::string text() const;

private:
    struct Member
    {
        std::string_view lead = {};  ///< blanks between the bracket or comma before it and its name
        std::string_view name;
        std::string_view colon = {};  ///< with the blanks around it
        std::string_view value;
        std::string_view trail = {};  ///< blanks between its value and the comma or bracket after it
    };

    std::string_view keep(std::string text) { return written_.emplace_back(std::move(text)); }
    void addFirst(Member member);

    std::vector<Member> members_;
    std::string_view inside_;  ///< blanks between the brackets when there are no members
    JsonStyle style_;
    std::list<std::string> written_;
};

/// The blanks from the last line break on, line break included; nothing without one.
[[nodiscard]] std::string_view lastLineBreakAndIndent(std::string_view blanks) noexcept;

}  // namespace vx::core
