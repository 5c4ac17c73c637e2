#include <settings_core/files/settings_file.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <utility>

namespace vx::core {

namespace {

constexpr std::string_view releaseMember = "release";
constexpr std::string_view settingsMember = "settings";

/// Source text of emptyObject(), which replaces the settings of a file that has none.
constexpr std::string_view emptyObjectText = "{}";

const JsonValue& emptyObject()
{
    static const JsonValue object = readJson(emptyObjectText);
    return object;
}

std::string toJsonString(std::string_view string)
{
    return jsonLiteral(foundation::verdixdata::toUtf16(string));
}

/// Returns the style of the file's top-level members, indented by one more level.
JsonStyle nestedStyle(const SettingsFile& file)
{
    const auto& members = file.root().members;
    JsonStyle style;
    if (members.empty()) {
        return style;
    }
    const std::string& text = file.text();
    const JsonMember& first = members.front();
    const std::size_t start = file.root().offset + 1;
    const std::string_view lead =
        lastLineBreakAndIndent(std::string_view(text).substr(start, first.offset - start));
    const std::string_view indent = lead.substr(std::min(lead.find('\n') + 1, lead.size()));
    const std::size_t nameEnd = first.offset + first.nameText.size();
    const std::string_view colon = std::string_view(text).substr(nameEnd, first.value.offset - nameEnd);
    if (colon.find('\n') == std::string_view::npos) {
        style.betweenNameAndValue = colon;
    }
    if (!indent.empty()) {
        style.opening.append(lead).append(indent);
        style.closing = lead;
    }
    return style;
}

/// Returns the style for an empty top-level object: two spaces, as in new files.
JsonStyle topLevelStyle()
{
    return {.opening = "\n  ", .closing = "\n"};
}

}  // namespace

SettingsFile::SettingsFile(std::string text)
    : text_(std::make_unique<const std::string>(std::move(text))), root_(readJson(*text_))
{
    if (root_.kind != JsonKind::object) {
        throw ParseError(root_.offset, "expected an object: { \"release\": ..., \"settings\": { ... } }");
    }
    const JsonMember* settings = member(settingsMember);
    if (settings != nullptr && settings->value.kind != JsonKind::object) {
        throw ParseError(settings->value.offset, "expected an object of paths and values for \"settings\"");
    }
    settings_ = settings == nullptr ? &emptyObject() : &settings->value;
    for (const JsonMember& setting : settings_->members) {
        byPath_.insert_or_assign(setting.name, &setting);
    }
}

const JsonMember* SettingsFile::member(std::string_view name) const noexcept
{
    const auto& members = root_.members;
    const auto found = std::find_if(members.rbegin(), members.rend(),
                                    [name](const JsonMember& member) { return member.name == name; });
    return found == members.rend() ? nullptr : &*found;
}

const JsonValue* SettingsFile::release() const noexcept
{
    const JsonMember* release = member(releaseMember);
    return release == nullptr ? nullptr : &release->value;
}

const std::vector<JsonMember>& SettingsFile::settings() const noexcept
{
    return settings_->members;
}

const JsonMember* SettingsFile::find(std::string_view path) const noexcept
{
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : found->second;
}

SettingsFileEdit::SettingsFileEdit(const SettingsFile& file)
    : file_(file),
      settings_(file.settings_ == &emptyObject() ? emptyObjectText : std::string_view(file.text()),
                *file.settings_, nestedStyle(file))
{
    paths_.reserve(file.settings().size() + 1);
    for (const JsonMember& setting : file.settings()) {
        paths_.push_back(setting.name);
    }
}

std::size_t SettingsFileEdit::indexOf(std::string_view path) const
{
    // Of duplicates, the last one applies.
    const auto found = std::find(paths_.rbegin(), paths_.rend(), path);
    return found == paths_.rend() ? paths_.size() : static_cast<std::size_t>(paths_.rend() - found) - 1;
}

bool SettingsFileEdit::has(std::string_view path) const
{
    return indexOf(path) != paths_.size();
}

void SettingsFileEdit::set(const std::string& path, std::string json)
{
    changesSettings_ = true;
    const std::size_t index = indexOf(path);
    if (index != paths_.size()) {
        settings_.setValue(index, std::move(json));
    } else {
        settings_.add(path, json);
        paths_.push_back(path);
    }
}

bool SettingsFileEdit::remove(std::string_view path)
{
    const std::size_t before = paths_.size();
    for (std::size_t index = indexOf(path); index != paths_.size(); index = indexOf(path)) {
        settings_.remove(index);
        paths_.erase(paths_.begin() + static_cast<std::ptrdiff_t>(index));
        changesSettings_ = true;
    }
    return paths_.size() != before;
}

void SettingsFileEdit::rename(std::string_view path, const std::string& target)
{
    const std::size_t index = indexOf(path);
    settings_.setName(index, target);
    paths_[index] = target;
    changesSettings_ = true;
}

void SettingsFileEdit::setRelease(std::string_view release)
{
    release_ = release;
}

std::string SettingsFileEdit::text() const
{
    const std::string& text = file_.text();
    const JsonValue& root = file_.root();
    JsonObjectEdit edit(text, root, topLevelStyle());
    const auto put = [&](const JsonMember* member, std::string_view name, std::string value) {
        if (member == nullptr) {
            edit.add(name, value);
        } else {
            edit.setValue(static_cast<std::size_t>(member - root.members.data()), std::move(value));
        }
    };
    if (release_) {
        put(file_.member(releaseMember), releaseMember, toJsonString(*release_));
    }
    if (changesSettings_) {
        put(file_.member(settingsMember), settingsMember, settings_.text());
    }
    return text.substr(0, root.offset) + edit.text() + text.substr(root.end());
}

std::optional<ReleaseName> parseRelease(const JsonValue& release)
{
    if (release.kind != JsonKind::string) {
        return std::nullopt;
    }
    return parseReleaseName(foundation::verdixdata::toUtf8(decodedString(release)));
}

std::string emptySettingsFile(std::string_view release)
{
    const std::string member = release.empty() ? "" : "  \"release\": " + toJsonString(release) + ",\n";
    return "{\n" + member + "  \"settings\": {}\n}\n";
}

}  // namespace vx::core
