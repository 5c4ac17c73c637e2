#include <settings_core/files/json_object_edit.hpp>

#include <foundation/verdixdata/text.hpp>

#include <iterator>
#include <utility>

namespace vx::core {

namespace {

std::string nameLiteral(std::string_view name)
{
    return jsonLiteral(foundation::verdixdata::toUtf16(name));
}

}  // namespace

std::string_view lastLineBreakAndIndent(std::string_view whitespace) noexcept
{
    const std::size_t lineFeed = whitespace.rfind('\n');
    if (lineFeed == std::string_view::npos) {
        return {};
    }
    const bool hasReturn = lineFeed > 0 && whitespace[lineFeed - 1] == '\r';
    return whitespace.substr(lineFeed - (hasReturn ? 1 : 0));
}

JsonObjectEdit::JsonObjectEdit(std::string_view text, const JsonValue& object, JsonStyle style)
    : inside_(object.text.substr(1, object.text.size() - 2)), style_(std::move(style))
{
    const auto between = [text](std::size_t from, std::size_t to) { return text.substr(from, to - from); };
    byIndex_.reserve(object.members.size() + 1);
    std::size_t at = object.offset + 1;
    for (const JsonMember& member : object.members) {
        const std::size_t nameEnd = member.offset + member.nameText.size();
        const std::size_t valueEnd = member.value.end();
        const std::size_t next = text.find_first_not_of(" \t\r\n", valueEnd);
        append({between(at, member.offset), member.nameText, between(nameEnd, member.value.offset),
                member.value.text, between(valueEnd, next)});
        at = next + 1;
    }
}

void JsonObjectEdit::setValue(std::size_t index, std::string value)
{
    byIndex_[index]->value = keep(std::move(value));
}

void JsonObjectEdit::setName(std::size_t index, std::string_view name)
{
    byIndex_[index]->name = keep(nameLiteral(name));
}

void JsonObjectEdit::add(std::string_view name, std::string_view value)
{
    Member added{.name = keep(nameLiteral(name)), .value = keep(std::string(value))};
    if (members_.empty()) {
        addFirst(added);
        return;
    }
    Member& last = members_.back();
    const bool isOnOneLine = last.colon.find('\n') == std::string_view::npos;
    added.colon = isOnOneLine ? last.colon : ": ";
    added.lead = last.lead;
    added.trail = std::exchange(last.trail, members_.size() > 1 ? std::next(members_.rbegin())->trail : "");
    append(added);
}

// Preserves whitespace inside empty braces: it is put on both sides of the member. Equal whitespace on both
// sides of an only member is thus what remove() has to restore; otherwise the whitespace was added with it.
void JsonObjectEdit::addFirst(Member member)
{
    const bool hadWhitespace = !inside_.empty();
    member.colon = keep(std::string(style_.betweenNameAndValue));
    member.lead = hadWhitespace ? inside_ : keep(style_.opening);
    member.trail = hadWhitespace ? inside_ : keep(style_.closing);
    append(member);
}

void JsonObjectEdit::remove(std::size_t index)
{
    const auto removed = byIndex_[index];
    if (members_.size() == 1) {
        inside_ = removed->lead == removed->trail ? removed->trail : std::string_view();
    } else if (std::next(removed) == members_.end()) {
        std::prev(removed)->trail = removed->trail;
    } else {
        std::next(removed)->lead = removed->lead;
    }
    members_.erase(removed);
}

std::string JsonObjectEdit::text() const
{
    std::string text = "{";
    if (members_.empty()) {
        text += inside_;
    }
    for (const Member& member : members_) {
        text += &member == &members_.front() ? "" : ",";
        text.append(member.lead).append(member.name).append(member.colon).append(member.value);
        text += member.trail;
    }
    return text += '}';
}

}  // namespace vx::core
