#include "tree_document.hpp"

#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/json_reader.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/text.hpp>

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "cli/command_error.hpp"
#include "commands/export_json.hpp"
#include "host/session.hpp"
#include "render/json_text.hpp"

namespace vx::tool {

namespace {

using core::JsonKind;
using core::JsonValue;
using core::ParseError;
using settings::core::ReleaseChangeSet;

void appendNormalised(std::string& text, const JsonValue& value);

template <class Range, class Append>
void appendList(std::string& text, const Range& range, char open, char close, Append append)
{
    std::string_view separator;
    text += open;
    for (const auto& entry : range) {
        text += separator;
        append(entry);
        separator = ", ";
    }
    text += close;
}

/// Numbers with a point or an exponent are normalised. Integers are copied, as they may not fit a double.
void appendNumber(std::string& text, std::string_view digits)
{
    double number = 0;
    if (digits.find_first_of(".eE") == std::string_view::npos ||
        std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc())
    {
        text += digits;
    } else {
        text += core::formatNumber(number);
    }
}

void appendNormalised(std::string& text, const JsonValue& value)
{
    switch (value.kind) {
    case JsonKind::object:
        appendList(text, value.members, '{', '}', [&](const core::JsonMember& member) {
            text.append(member.name).append(": ");
            appendNormalised(text, member.value);
        });
        break;
    case JsonKind::array:
        appendList(text, value.elements, '[', ']',
                   [&](const JsonValue& element) { appendNormalised(text, element); });
        break;
    case JsonKind::number:
        appendNumber(text, value.text);
        break;
    case JsonKind::string:
        text += core::jsonLiteral(core::decodedString(value));
        break;
    default:
        text += value.text;
        break;
    }
}

const JsonValue& require(const JsonValue& value, JsonKind kind)
{
    if (value.kind != kind) {
        throw ParseError(value.offset, "expected " + std::string(kindName(kind)));
    }
    return value;
}

const JsonValue& member(const JsonValue& object, std::string_view name, JsonKind kind)
{
    const auto found =
        std::ranges::find(require(object, JsonKind::object).members, name, &core::JsonMember::name);
    if (found == object.members.end()) {
        throw ParseError(object.offset, "expected a member \"" + std::string(name) + "\"");
    }
    return require(found->value, kind);
}

std::string stringOf(const JsonValue& value)
{
    return foundation::verdixdata::toUtf8(core::decodedString(require(value, JsonKind::string)));
}

DocumentNode nodeOf(const JsonValue& entry)
{
    DocumentNode node{stringOf(member(entry, "path", JsonKind::string)), {}};
    for (const auto& [offset, nameText, name, value] : entry.members) {
        appendNormalised(node.properties[name], value);
    }
    for (const char* name : {"node", "visibility", "readOnly", "value", "validator", "runTimeDefault",
                             "valueValidators", "aliasTarget", "errorHandler"})
    {
        if (!node.properties.contains(name)) {
            throw ParseError(entry.offset, "expected a member \"" + std::string(name) + "\"");
        }
    }
    return node;
}

std::vector<std::string> pathsOf(const JsonValue& list)
{
    std::vector<std::string> paths;
    std::ranges::transform(list.elements, std::back_inserter(paths), stringOf);
    return paths;
}

ReleaseChangeSet releaseOf(const JsonValue& entry)
{
    ReleaseChangeSet set{stringOf(member(entry, "release", JsonKind::string)), false, {}};
    for (const JsonValue& change : member(entry, "changes", JsonKind::array).elements) {
        const JsonValue& from = member(change, "from", JsonKind::array);
        if (from.elements.empty()) {
            throw ParseError(from.offset, "expected a path");
        }
        set.changes.emplace_back(stringOf(member(change, "operation", JsonKind::string)), pathsOf(from),
                                 pathsOf(member(change, "to", JsonKind::array)));
    }
    return set;
}

std::string contentOf(const std::string& file)
{
    std::optional<std::string> content = core::readFile(file);
    if (!content) {
        throw CommandError(ExitCode::failed, "no such file: " + file);
    }
    return *std::move(content);
}

}  // namespace

TreeDocument::TreeDocument(std::string_view text)
{
    const JsonValue document = core::readJson(text);
    const auto& nodes = member(document, "nodes", JsonKind::array).elements;
    nodes_.reserve(nodes.size());
    for (const JsonValue& entry : nodes) {
        nodes_.push_back(nodeOf(entry));
        byPath_.emplace(nodes_.back().path, &nodes_.back());
    }
    for (const JsonValue& entry : member(document, "releaseChanges", JsonKind::array).elements) {
        releases_.emplace(releases_.size(), releaseOf(entry));  // oldest first
    }
}

TreeDocument TreeDocument::read(const std::string& file)
{
    const std::string text = contentOf(file);
    try {
        return TreeDocument(text);
    } catch (const ParseError& error) {
        const auto [line, column] = core::positionAt(text, error.offset());
        throw CommandError(ExitCode::failed,
                           file + ":" + std::to_string(line) + ":" + std::to_string(column) +
                               ": not an exported tree: " + error.what() +
                               "; create one with: vxsettings export --format json -o FILE");
    }
}

TreeDocument TreeDocument::of(const Session& session)
{
    std::string text;
    appendJson(text, treeJson(session));
    return TreeDocument(text);
}

const DocumentNode* TreeDocument::find(std::string_view path) const noexcept
{
    const auto found = byPath_.find(path);
    return found == byPath_.end() ? nullptr : found->second;
}

}  // namespace vx::tool
