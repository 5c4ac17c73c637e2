#include "export_schema.hpp"

#include <review/json.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "catalog/catalog.hpp"
#include "render/escaping.hpp"
#include "render/json_text.hpp"
#include "render/value_schema.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Node;
using review::CatalogEntry;
using settings::core::ReleaseChangeTable;

/// Returns what the author of a settings file should know about a setting, in sentences.
std::string describeFacts(const Node& setting, const core::ReleaseHistory& history)
{
    const Node::Properties& properties = setting.properties();
    std::string text = core::describeConstraint(properties);
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    }
    text += ".";
    text += properties.readOnly.value() ? " Read-only: must not be set." : "";
    text += properties.runTimeDefault.index() != 0 ? " The default is computed on request." : "";
    text += setting.isHidden() ? " Hidden." : "";
    for (const core::ReleaseStep& step : history.movesTo(setting.fullName())) {
        text.append(" Before ").append(step.release).append(": ").append(step.from).append(".");
    }
    return text;
}

std::string describeLock(const std::optional<core::SettingLock>& lock)
{
    return lock ? " Locked by " + lock->file.string() + ": personal values have no effect." : "";
}

/// Adds the factory value as the default, unless settings files cannot hold it.
void addDefault(json::object& schema, const Node& setting)
{
    const auto& value = setting.properties().factoryValue;
    if (!value.isAssigned()) {
        return;
    }
    try {
        schema.emplace("default", json::parse(core::valueToJson(value)));
    } catch (const std::invalid_argument&) {
        return;
    }
}

/// Returns the description as Markdown, with a list of the allowed strings whose meaning is known.
std::string markdownDescription(const CatalogEntry& entry, std::string_view facts)
{
    std::string text =
        markdownText(entry.sentence) + (entry.sentence.empty() ? "" : "\n\n") + markdownText(facts);
    for (std::string_view separator = "\n\n"; const auto& [value, phrase] : entry.values) {
        text.append(separator).append("- ").append(markdownCode(value)).append(": ");
        text.append(markdownText(phrase));
        separator = "\n";
    }
    return text;
}

/// Adds title and descriptions, which begin with what the catalog says.
void addTexts(json::object& schema, const std::string& title, const CatalogEntry& entry,
              const std::string& facts)
{
    schema.emplace("title", title);
    schema.emplace("description", entry.sentence.empty() ? facts : entry.sentence + " " + facts);
    if (!entry.values.empty()) {
        schema.emplace("markdownDescription", markdownDescription(entry, facts));
    }
}

/// Adds the phrases for the strings of each enumeration in a schema, in its order.
void addEnumDescriptions(json::value& schema, const CatalogEntry& entry)
{
    if (json::array* schemas = schema.if_array()) {
        for (json::value& inner : *schemas) {
            addEnumDescriptions(inner, entry);
        }
    } else if (json::object* keywords = schema.if_object()) {
        for (auto&& [keyword, inner] : *keywords) {
            addEnumDescriptions(inner, entry);
        }
        if (const json::value* strings = keywords->if_contains("enum")) {
            json::array phrases;
            for (const json::value& string : strings->get_array()) {
                phrases.emplace_back(entry.phraseOf(string.get_string()));
            }
            keywords->emplace("enumDescriptions", std::move(phrases));
        }
    }
}

/// The schemas that settings share, with names.
class Definitions
{
public:
    /// Returns a schema that refers to this one, or this one if it is short or an enumeration.
    json::object refer(json::object schema)
    {
        if (schema.size() == 1 || schema.contains("enum")) {
            return schema;
        }
        auto [known, isNew] = names_.try_emplace(json::serialize(schema));
        if (isNew) {
            known->second = nameFor(schema);
            schemas_.emplace(known->second, std::move(schema));
        }
        return {{"$ref", "#/$defs/" + known->second}};
    }

    /// Returns the schemas by name, in the order in which they were first referred to.
    [[nodiscard]] const json::object& schemas() const noexcept { return schemas_; }

private:
    /// Returns the first type of the values, numbered from the second schema of this type on.
    std::string nameFor(const json::object& schema)
    {
        const json::value* type = schema.if_contains("type");
        type = type != nullptr && type->is_array() ? &type->get_array().front() : type;
        std::string name(type == nullptr ? "any" : std::string_view(type->get_string()));
        const int number = ++numbers_[name];
        return number == 1 ? name : name + "-" + std::to_string(number);
    }

    std::unordered_map<std::string, std::string> names_;  // by serialized schema
    std::unordered_map<std::string, int> numbers_;        // of schemas of each type
    json::object schemas_;
};

json::object settingSchema(const Node& setting, const core::ReleaseHistory& history, core::Layers& layers,
                           Catalog& catalog, Definitions& definitions)
{
    json::object schema;
    const CatalogEntry& entry = catalog.entryOf(setting);
    addTexts(schema, catalog.titleOf(setting), entry,
             describeFacts(setting, history) + describeLock(layers.lockOf(setting)));
    addDefault(schema, setting);
    if (setting.properties().readOnly.value()) {
        schema.emplace("readOnly", true);
        schema.emplace("errorMessage", "Read-only: must not be set.");
        schema.emplace("doNotSuggest", true);
    }
    json::value value = valueSchema(setting.properties());
    if (!entry.values.empty()) {
        addEnumDescriptions(value, entry);
    }
    const json::object reference = definitions.refer(std::move(value.get_object()));
    schema.insert(reference.begin(), reference.end());
    return schema;
}

/// Paths that releases moved or removed and that the tree does not have again, with whether they were removed
/// with all under them.
using OldPaths = std::map<std::string_view, bool>;

OldPaths oldPathsOf(const Session& session)
{
    OldPaths paths;
    for (const auto& [index, set] : session.releaseChanges()) {
        for (const auto& change : set.changes) {
            const std::string& path = change.from().front();
            if (change.from() != change.to() && session.tree().find(path) == nullptr) {
                paths[path] = paths[path] || change.to().empty();
            }
        }
    }
    return paths;
}

/// Returns a schema that rejects every value, with what to do instead.
json::object oldPathSchema(const std::vector<core::ReleaseStep>& steps)
{
    const core::ReleaseStep& last = steps.back();
    const std::string release(last.release);
    const std::string advice =
        last.to.empty() ? "Remove it: it was removed in " + release + "."
                        : "Write " + std::string(last.to) + " instead: it was moved in " + release + ".";
    return {{"description", advice},
            {"deprecated", true},
            {"deprecationMessage", advice},
            {"errorMessage", "This value has no effect."},
            {"not", json::object()}};
}

/// Returns a regular expression for the strings that begin with this one.
std::string patternOfPrefix(std::string_view prefix)
{
    constexpr std::string_view special = "^$\\.*+?()[]{}|/";
    std::string pattern = "^";
    for (const char c : prefix) {
        pattern.append(special.find(c) == std::string_view::npos ? "" : "\\").append(1, c);
    }
    return pattern;
}

/// Returns a regular expression for four-digit numbers up to this one.
std::string upTo(const std::string& digits)
{
    std::string pattern = digits;
    for (std::size_t at = 0; at < digits.size(); ++at) {
        if (digits[at] != '0') {
            pattern += "|" + digits.substr(0, at) + "[0-" + static_cast<char>(digits[at] - 1) + "]";
            for (std::size_t rest = at + 1; rest < digits.size(); ++rest) {
                pattern += "[0-9]";
            }
        }
    }
    return pattern;
}

/// Returns a regular expression for the names of releases up to this one.
std::string releasePattern(const core::ReleaseName& newest)
{
    const std::string name = core::formatReleaseName(newest);
    if (newest.half == 'b') {
        return "^R(" + upTo(name.substr(1, 4)) + ")[ab]$";
    }
    const std::string before = core::formatReleaseName({newest.year - 1, 'b'});
    return "^(R(" + upTo(before.substr(1, 4)) + ")[ab]|" + name + ")$";
}

json::object releaseSchema(const ReleaseChangeTable& releases)
{
    const auto newest = core::newestRelease(releases);
    json::object schema{
        {"description", "The release that the file is for."},
        {"type", "string"},
        {"errorMessage", "Expected a release" +
                             (newest ? " up to " + core::formatReleaseName(*newest) : std::string()) +
                             ", such as R2022b."},
        {"maxLength", 6}};  // some take a line feed at the end as a match of $
    schema.emplace("pattern", newest ? releasePattern(*newest) : "^R[0-9]{4}[ab]$");
    json::array examples;
    for (const auto& [index, set] : releases) {
        examples.emplace_back(set.release);
    }
    schema.emplace("examples", std::move(examples));
    return schema;
}

json::object lockedSchema(const core::SettingsTree& tree)
{
    json::array paths{tree.root()->getFullName()};
    for (const Node* node : tree.nodes()) {
        if (node->kind() != core::NodeKind::alias) {
            paths.emplace_back(node->fullName());
        }
    }
    const json::object path{{"enum", std::move(paths)},
                            {"errorMessage", "Expected the path of a setting or group."}};
    return {{"description", "Paths of settings and groups that no personal file changes; of effect in a file "
                            "of the installation."},
            {"type", "array"},
            {"items", path}};
}

/// Writes the members of an object, one per line.
class ObjectWriter
{
public:
    ObjectWriter(Output& out, std::size_t depth) : out_(out), indent_(2 * depth, ' ') {}

    void write(std::string_view name, const json::value& value)
    {
        std::string text;
        review::appendJson(text, value);
        begin(name);
        out_ << Exact{text};
    }

    /// Writes an object with the members that `writeMembers(ObjectWriter&)` writes.
    template <class Function>
    void nest(std::string_view name, Function writeMembers)
    {
        begin(name);
        out_ << '{';
        ObjectWriter members(out_, indent_.size() / 2 + 1);
        writeMembers(members);
        out_ << '\n' << Exact{indent_} << '}';
    }

private:
    void begin(std::string_view name)
    {
        std::string text;
        review::appendJson(text, json::string(name));
        out_ << Exact{separator_} << Exact{indent_} << Exact{text} << ": ";
        separator_ = ",\n";
    }

    Output& out_;
    std::string indent_;
    std::string_view separator_ = "\n";
};

/// Writes the schemas of the paths under removed ones, which may have been those of groups.
void writePathsUnderRemoved(const OldPaths& oldPaths, const core::ReleaseHistory& history,
                            ObjectWriter& writer)
{
    std::string_view group;
    for (const auto& [path, isRemoved] : oldPaths) {
        if (isRemoved && (group.empty() || !core::isAtOrUnder(path, group))) {
            group = path;
            const std::string prefix = std::string(group) + ".";
            writer.write(patternOfPrefix(prefix), oldPathSchema(history.changesFrom(prefix)));
        }
    }
}

/// Writes the schema of the settings in a file, which refers to the definitions.
void writeSettings(const Session& session, core::Layers& layers, Definitions& definitions,
                   ObjectWriter& schema)
{
    const core::ReleaseHistory history(session.releaseChanges());
    const OldPaths oldPaths = oldPathsOf(session);
    Catalog catalog(session.tree());
    schema.write("type", "object");
    schema.nest("properties", [&](ObjectWriter& properties) {
        for (const Node* node : session.tree().nodes()) {
            if (node->kind() == core::NodeKind::setting) {
                properties.write(node->fullName(),
                                 settingSchema(*node, history, layers, catalog, definitions));
            }
        }
        for (const auto& [path, isRemoved] : oldPaths) {
            properties.write(path, oldPathSchema(history.changesFrom(path)));
        }
    });
    schema.nest("patternProperties",
                [&](ObjectWriter& properties) { writePathsUnderRemoved(oldPaths, history, properties); });
    schema.write("additionalProperties", false);
}

}  // namespace

void exportSchema(const Session& session, core::Layers& layers, Output& out)
{
    Definitions definitions;
    const json::object reference{{"description", "The location of this schema, for editors."}};
    out << '{';
    ObjectWriter schema(out, 1);
    schema.write("$schema", "https://json-schema.org/draft/2020-12/schema");
    schema.write("title", json::string("Settings under " + session.tree().root()->getFullName()));
    schema.write("type", "object");
    schema.nest("properties", [&](ObjectWriter& properties) {
        properties.write("$schema", reference);
        properties.write("release", releaseSchema(session.releaseChanges()));
        properties.write("locked", lockedSchema(session.tree()));
        properties.nest("settings", [&](ObjectWriter& settings) {
            writeSettings(session, layers, definitions, settings);
        });
    });
    schema.write("additionalProperties", false);
    schema.nest("$defs", [&](ObjectWriter& shared) {
        for (const auto& [name, definition] : definitions.schemas()) {
            shared.write(name, definition);
        }
    });
    out << "\n}\n";
}

}  // namespace vx::tool
