#pragma once

#include <settings_core/files/json_reader.hpp>

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// The whitespace to use for new members.
struct JsonStyle
{
    std::string_view betweenNameAndValue = ": ";
    /// Whitespace before and after the first member that is added to an object that is empty, `{}`.
    std::string opening = {};
    std::string closing = {};
};

/// Edits the members of a JSON object and preserves every other byte. A new member is appended with the
/// whitespace of the last one; adding a member and removing it again restores the original text.
class JsonObjectEdit
{
public:
    /// `object` must be of kind object. It and `text`, from which it was read, must outlive the edit.
    JsonObjectEdit(std::string_view text, const JsonValue& object, JsonStyle style);

    /// Members have the indexes in which they come: those of the object first, then those that are added.
    /// Removing a member leaves the indexes of the others as they are; its own must not be used again.
    void setValue(std::size_t index, std::string value);
    void setName(std::size_t index, std::string_view name);
    void add(std::string_view name, std::string_view value);
    void remove(std::size_t index);

    /// Returns the edited object as JSON.
    [[nodiscard]] std::string text() const;

private:
    struct Member
    {
        std::string_view lead = {};  ///< whitespace between the brace or comma before it and its name
        std::string_view name;
        std::string_view colon = {};  ///< with the whitespace around it
        std::string_view value;
        std::string_view trail = {};  ///< whitespace between its value and the comma or brace after it
    };

    std::string_view keep(std::string text) { return written_.emplace_back(std::move(text)); }
    void append(const Member& member) { byIndex_.push_back(members_.insert(members_.end(), member)); }
    void addFirst(Member member);

    std::list<Member> members_;
    std::vector<std::list<Member>::iterator> byIndex_;
    std::string_view inside_;  ///< whitespace between the braces of an object without members
    JsonStyle style_;
    std::list<std::string> written_;  ///< what the views in members_ refer to; a list keeps addresses
};

/// Returns the last line break and what follows it; empty without a line break.
[[nodiscard]] std::string_view lastLineBreakAndIndent(std::string_view whitespace) noexcept;

}  // namespace vx::core
