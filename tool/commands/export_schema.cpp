#include "export_schema.hpp"

#include <review/json.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>

#include <stdexcept>
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
    std::string text = markdownText(entry.sentence) + "\n\n" + markdownText(facts);
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
    if (!entry.sentence.empty()) {
        schema.emplace("markdownDescription", markdownDescription(entry, facts));
    }
}

/// Adds the phrases for the strings of an enumeration, in its order.
void addEnumDescriptions(json::object& schema, const CatalogEntry& entry)
{
    const json::value* strings = schema.if_contains("enum");
    if (strings == nullptr || entry.values.empty()) {
        return;
    }
    json::array phrases;
    for (const json::value& string : strings->get_array()) {
        phrases.emplace_back(entry.phraseOf(string.get_string()));
    }
    schema.emplace("enumDescriptions", std::move(phrases));
}

json::object settingSchema(const Node& setting, const core::ReleaseHistory& history, core::Layers& layers,
                           Catalog& catalog)
{
    json::object schema;
    const CatalogEntry& entry = catalog.entryOf(setting);
    addTexts(schema, catalog.titleOf(setting), entry,
             describeFacts(setting, history) + describeLock(layers.lockOf(setting)));
    addDefault(schema, setting);
    if (setting.properties().readOnly.value()) {
        schema.emplace("readOnly", true);
    }
    core::Constraint constraint = core::constraintOf(setting.properties());
    constraint.require(!setting.properties().readOnly.value());
    for (auto& [keyword, value] : valueSchema(constraint)) {
        schema.emplace(keyword, std::move(value));
    }
    addEnumDescriptions(schema, entry);
    return schema;
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
    json::object schema{{"description", "The release that the file is for."}, {"type", "string"}};
    const auto newest = core::newestRelease(releases);
    schema.emplace("pattern", newest ? releasePattern(*newest) : "^R[0-9]{4}[ab]$");
    json::array examples;
    for (const auto& [index, set] : releases) {
        examples.emplace_back(set.release);
    }
    schema.emplace("examples", std::move(examples));
    return schema;
}

std::string member(std::string_view name, const json::value& value)
{
    std::string text;
    review::appendJson(text, json::string(name));
    text += ": ";
    review::appendJson(text, value);
    return text;
}

json::object lockedSchema()
{
    return {{"description", "Paths of settings and groups that no personal file changes; of effect in a file "
                            "of the installation."},
            {"type", "array"},
            {"items", json::object{{"type", "string"}}}};
}

void writeSettings(const Session& session, core::Layers& layers, Output& out)
{
    const core::ReleaseHistory history(session.releaseChanges());
    Catalog catalog(session.tree());
    std::string_view separator = "\n        ";
    for (const Node* node : session.tree().nodes()) {
        if (node->kind() == core::NodeKind::setting) {
            out << Exact{separator}
                << Exact{member(node->fullName(), settingSchema(*node, history, layers, catalog))};
            separator = ",\n        ";
        }
    }
}

}  // namespace

void exportSchema(const Session& session, core::Layers& layers, Output& out)
{
    const json::object reference{{"description", "The location of this schema, for editors."}};
    out << "{\n  \"$schema\": \"https://json-schema.org/draft/2020-12/schema\",\n  "
        << Exact{member("title", json::string("Settings under " + session.tree().root()->getFullName()))}
        << ",\n  "
        << "\"type\": \"object\",\n  \"properties\": {\n    " << Exact{member("$schema", reference)}
        << ",\n    " << Exact{member("release", releaseSchema(session.releaseChanges()))} << ",\n    "
        << Exact{member("locked", lockedSchema())} << ",\n    "
        << "\"settings\": {\n      \"type\": \"object\",\n      \"properties\": {";
    writeSettings(session, layers, out);
    out << "\n      },\n      \"additionalProperties\": false\n    }\n  },\n"
        << "  \"additionalProperties\": false\n}\n";
}

}  // namespace vx::tool
