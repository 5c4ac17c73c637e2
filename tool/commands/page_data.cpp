#include "page_data.hpp"

#include <review/json.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/releases/release_history.hpp>
#include <settings_core/releases/release_name.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/native_library.hpp>
#include <settings_core/values/value_parsing.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include <cmath>
#include <exception>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <variant>

#include "render/native_constraints.hpp"
#include "render/node_labels.hpp"

namespace vx::tool {

namespace {

namespace json = boost::json;
using core::Constraint;
using core::Node;
using core::NodeKind;

json::array stringsJson(const std::vector<std::u16string_view>& strings)
{
    json::array converted;
    for (const std::u16string_view string : strings) {
        converted.emplace_back(foundation::verdixdata::toUtf8(string));
    }
    return converted;
}

template <class Value>
void addIf(bool isPresent, json::object& object, std::string_view name, Value&& value)
{
    if (isPresent) {
        object.emplace(name, std::forward<Value>(value));
    }
}

void addRange(json::object& object, const Constraint::ValueValidator::Range& range, bool isWhole)
{
    addIf(std::isfinite(range.lower), object, "lower", range.lower);
    addIf(std::isfinite(range.upper), object, "upper", range.upper);
    addIf(isWhole, object, "isWhole", true);
}

/// Returns what a function says of an invalid value; empty if it says nothing.
template <class Function>
std::string messageOf(const Function& reject, const foundation::verdixdata::Array& value)
try {
    reject(value);
    return "";
} catch (const std::exception& error) {
    return error.what();
}

/// Returns a value that is invalid for nearly all settings, and for all native validators.
foundation::verdixdata::Array emptyMatrix()
{
    return foundation::verdixdata::ArrayFactory().createArray<double>({0, 0});
}

/// Adds what the page needs to decide as the validator does, and its words; that it cannot, for a function
/// that is only known by its name, or not there.
void addValidator(json::object& object, const ::settings::core::Validator& validator)
{
    using ::settings::core::MValidator;
    const NativeConstraint* native = findNativeConstraint(validator);
    if (native == nullptr) {
        const bool isKnown = std::holds_alternative<std::monostate>(validator) ||
                             std::holds_alternative<MValidator>(validator);
        addIf(!isKnown, object, "needsProgram", true);
        return;
    }
    try {
        auto* const function = core::nativeFunction<::settings::core::NativeValidator>(
            std::string(native->library), std::string(native->function));
        json::object known{{"message", messageOf(function, emptyMatrix())},
                           {"string", json::parse(native->stringKeywords)},
                           {"row", json::parse(native->rowKeywords)}};
        if (native->wholeNumbers) {
            addRange(known, *native->wholeNumbers, true);
        }
        object.emplace("validator", std::move(known));
    } catch (const std::runtime_error&) {
        object.emplace("needsProgram", true);
    }
}

void addSize(json::object& object, const Constraint& constraint)
{
    const auto& [rows, columns] = constraint.size;
    addIf(rows.has_value(), object, "rows", rows.value_or(0));
    addIf(columns.has_value(), object, "columns", columns.value_or(0));
    addIf(constraint.hasFactorySize, object, "hasFactorySize", true);
    constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();
    addIf(constraint.maximumLength != noLimit, object, "length", constraint.maximumLength);
}

/// Returns the constraint with those members only that limit something.
json::object constraintJson(const Node& setting)
{
    using ::settings::core::SettingValueValidator;
    const Node::Properties& properties = setting.properties();
    const Constraint constraint = core::constraintOf(properties);
    json::object object{{"text", core::describeConstraint(properties)}};
    addIf(constraint.elementClass.has_value(), object, "class",
          className(constraint.elementClass.value_or(foundation::verdixdata::ArrayType::UNKNOWN)));
    addSize(object, constraint);
    addRange(object, constraint.range, constraint.isWhole);
    if (constraint.allowedStrings) {
        object.emplace("allowed", stringsJson(*constraint.allowedStrings));
    }
    addIf(constraint.rejectsMissing, object, "rejectsMissing", true);
    if (constraint.colour) {
        const bool isNormalised = constraint.colour == SettingValueValidator::Colour::normalised;
        object.emplace("colour", isNormalised ? "normalised" : "wholeNumbers");
        object.emplace("names", stringsJson(constraint.colourNames));
    }
    addIf(!constraint.isSatisfiable(), object, "acceptsNothing", true);
    addValidator(object, properties.validator);
    if (properties.errorHandler && core::checkValue(setting, emptyMatrix())) {
        const auto handler = std::bind_front(properties.errorHandler, std::string(setting.name()));
        std::string message = messageOf(handler, emptyMatrix());
        addIf(!message.empty(), object, "errorMessage", std::move(message));
    }
    return object;
}

/// Adds the value as the text that settings files have, unless they cannot hold it.
void addValue(json::object& object, std::string_view name, const Node& setting,
              const foundation::verdixdata::Array& value)
{
    if (!value.isAssigned()) {
        return;
    }
    try {
        object.emplace(name, core::valueToJson(value, core::constraintOf(setting.properties())));
    } catch (const std::invalid_argument&) {
        return;
    }
}

/// Adds the values that files set; null in place of a secret, unless it is the factory value.
void addOverrides(json::object& object, const Node& setting, core::Layers& layers)
{
    if (!layers.hasOverride(setting)) {
        return;
    }
    for (const core::LayerValue& value : layers.valuesOf(setting)) {
        if (value.origin == core::Origin::factory || !value.isValid()) {
            continue;
        }
        const std::string_view name = core::originName(value.origin);
        object.erase(name);  // of several installation files, the last one applies
        if (core::isSecret(setting.fullName()) && value.value != setting.properties().factoryValue) {
            object.emplace(name, nullptr);
        } else {
            addValue(object, name, setting, value.value);
        }
    }
}

json::object releaseChangesJson(const Session& session)
{
    const core::ReleaseHistory history(session.releaseChanges());
    json::object changes;
    for (const auto& [index, set] : session.releaseChanges()) {
        for (const auto& change : set.changes) {
            const std::string& from = change.from().front();
            if (session.tree().find(from) == nullptr) {
                const auto steps = history.changesFrom(from);
                changes.insert_or_assign(
                    from, json::object{{"to", steps.empty() ? "" : std::string(steps.back().to)},
                                       {"text", core::describeSteps(steps)}});
            }
        }
    }
    return changes;
}

}  // namespace

std::size_t PageData::indexOf(const Node& setting)
{
    json::object constraint = constraintJson(setting);
    const auto [found, isNew] = indexes_.try_emplace(json::serialize(constraint), constraints_.size());
    if (isNew) {
        constraints_.push_back(std::move(constraint));
    }
    return found->second;
}

/// Returns the titles of the groups and of the node, as the search command compares them: names where the
/// catalog has no title.
std::string PageData::titlesOf(const Node& node)
{
    const Node* parent = node.parent();
    if (parent == nullptr) {
        return "";
    }
    const std::string& title = catalog_.entryOf(node).title;
    const std::string titles = titlesOf(*parent);
    return titles + (titles.empty() ? "" : " › ") + (title.empty() ? std::string(node.name()) : title);
}

void PageData::add(const Node& node)
{
    const auto& entry = catalog_.entryOf(node);
    json::object object{{"title", titlesOf(node)}};
    addIf(!entry.keywords.empty(), object, "keywords",
          json::array(entry.keywords.begin(), entry.keywords.end()));
    if (!entry.values.empty()) {
        json::object phrases;
        for (const auto& [value, phrase] : entry.values) {
            phrases.emplace(value, phrase);
        }
        object.emplace("phrases", std::move(phrases));
    }
    if (node.kind() == NodeKind::alias) {
        object.emplace("alias", node.properties().aliasName());
    } else {
        object.emplace("constraint", indexOf(node));
        addValue(object, "factory", node, node.properties().factoryValue);
        addOverrides(object, node, layers_);
        addIf(core::isSecret(node.fullName()), object, "isSecret", true);
        addIf(node.properties().readOnly.value(), object, "isReadOnly", true);
        if (const auto lock = layers_.lockOf(node)) {
            object.emplace("lock", lock->file.string());
        }
    }
    nodes_.push_back(std::move(object));
}

std::string PageData::text(const Session& session) const
{
    json::array synonyms;
    for (const auto& words : catalog_.synonyms()) {
        synonyms.push_back(json::array(words.begin(), words.end()));
    }
    const auto release = session.publishedRelease();
    const auto newest = core::newestRelease(session.releaseChanges());
    const json::object data{{"release", release ? core::formatReleaseName(*release) : ""},
                            {"newestRelease", newest ? core::formatReleaseName(*newest) : ""},
                            {"changes", releaseChangesJson(session)},
                            {"synonyms", std::move(synonyms)},
                            {"constraints", constraints_},
                            {"settings", nodes_}};
    std::string text;
    review::appendJson(text, data);
    boost::algorithm::replace_all(text, "<", "\\u003c");  // in strings only: no end of the element
    return text;
}

}  // namespace vx::tool
