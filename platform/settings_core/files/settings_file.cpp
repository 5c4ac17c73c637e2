#include <settings_core/files/locked_paths.hpp>
#include <settings_core/files/settings_file.hpp>
#include <settings_core/releases/release_history.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vx::core {

namespace {

constexpr std::string_view releaseMember = "release";
constexpr std::string_view lockedMember = "locked";
constexpr std::string_view settingsMember = "settings";

/// Source text of emptyObject(), which replaces the settings of a file that has none.
constexpr std::string_view emptyObjectText = "{}";

const JsonValue& emptyObject()
{
    static const JsonValue object = readJson(emptyObjectText);
    return object;
}

/// A file whose locks cannot be read is damaged: without them, values would apply that an administrator
/// excludes.
void requirePaths(const JsonValue& locked)
{
    if (locked.kind != JsonKind::array) {
        throw ParseError(locked.offset, "expected an array of paths for \"locked\"");
    }
    for (const JsonValue& path : locked.elements) {
        if (path.kind != JsonKind::string) {
            throw ParseError(path.offset, "expected the path of a setting or group in \"locked\"");
        }
    }
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
    : text_(std::make_unique<const std::string>(isOnlyWhitespace(text) ? std::string(emptyObjectText)
                                                                       : std::move(text))),
      positions_(*text_),
      root_(readJson(*text_))
{
    if (root_.kind != JsonKind::object) {
        throw ParseError(root_.offset, "expected an object: { \"release\": ..., \"settings\": { ... } }");
    }
    const JsonMember* settings = member(settingsMember);
    if (settings != nullptr && settings->value.kind != JsonKind::object) {
        throw ParseError(settings->value.offset, "expected an object of paths and values for \"settings\"");
    }
    if (const JsonMember* locked = member(lockedMember)) {
        requirePaths(locked->value);
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

const JsonValue* SettingsFile::lockedValue() const noexcept
{
    const JsonMember* locked = member(lockedMember);
    return locked == nullptr ? nullptr : &locked->value;
}

const std::vector<JsonValue>& SettingsFile::locked() const noexcept
{
    static const std::vector<JsonValue> none;
    const JsonValue* locked = lockedValue();
    return locked == nullptr ? none : locked->elements;
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
    for (const JsonMember& setting : file.settings()) {
        indexes_.emplace(setting.name, nextIndex_++);
    }
}

SettingsFileEdit::Indexes::const_iterator SettingsFileEdit::find(std::string_view path) const
{
    const auto [first, last] = indexes_.equal_range(path);
    return first == last ? indexes_.end() : std::prev(last);
}

bool SettingsFileEdit::has(std::string_view path) const
{
    return indexes_.contains(path);
}

void SettingsFileEdit::set(const std::string& path, std::string json)
{
    changesSettings_ = true;
    if (const auto found = find(path); found != indexes_.end()) {
        settings_.setValue(found->second, std::move(json));
    } else {
        settings_.add(path, json);
        indexes_.emplace(path, nextIndex_++);
    }
}

bool SettingsFileEdit::remove(std::string_view path)
{
    const auto [first, last] = indexes_.equal_range(path);
    if (first == last) {
        return false;
    }
    std::for_each(first, last, [this](const auto& entry) { settings_.remove(entry.second); });
    indexes_.erase(first, last);
    changesSettings_ = true;
    return true;
}

void SettingsFileEdit::rename(std::string_view path, const std::string& target)
{
    auto entry = indexes_.extract(find(path));
    settings_.setName(entry.mapped(), target);
    entry.key() = target;
    indexes_.insert(std::move(entry));
    changesSettings_ = true;
}

std::vector<std::string> SettingsFileEdit::pathsAtOrUnder(std::string_view path) const
{
    std::map<std::size_t, std::string> found;
    for (auto entry = indexes_.lower_bound(path); entry != indexes_.end() && entry->first.starts_with(path);
         ++entry)
    {
        if (isAtOrUnder(entry->first, path)) {
            found.emplace(entry->second, entry->first);
        }
    }
    std::vector<std::string> paths;
    paths.reserve(found.size());
    for (auto& [index, name] : found) {
        paths.push_back(std::move(name));
    }
    return paths;
}

void SettingsFileEdit::setRelease(std::string_view release)
{
    release_ = release;
}

void SettingsFileEdit::setLocked(const LockedPaths& locked)
{
    locked_ = locked.text(file_);
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
    if (locked_) {
        put(file_.member(lockedMember), lockedMember, *locked_);
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

bool isOnlyWhitespace(std::string_view text) noexcept
{
    text.remove_prefix(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string emptySettingsFile(std::string_view release, std::string_view schema)
{
    const auto member = [](const char* name, std::string_view value) {
        return value.empty() ? std::string() : std::string("  ") + name + ": " + toJsonString(value) + ",\n";
    };
    return "{\n" + member("\"$schema\"", schema) + member("\"release\"", release) + "  \"settings\": {}\n}\n";
}

}  // namespace vx::core
