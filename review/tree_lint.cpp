#include "tree_lint.hpp"

#include <data/views.hpp>
#include <settings_core/constraints/constraints.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/tree/path_lookup.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/native_library.hpp>
#include <settings_core/values/value_format.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <foundation/verdixdata/text.hpp>
#include <settings/core/run_time_defaults.hpp>
#include <settings/core/validators.hpp>

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <iterator>
#include <limits>
#include <locale>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>

#include "crash_probe.hpp"
#include "release_table.hpp"
#include "source_file.hpp"
#include "words.hpp"

namespace vx::review {

namespace {

using core::Node;
using core::NodeKind;
using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;
using settings::core::ReleaseChangeTable;

/// Settings with an invalid factory value: the platform is unknown when the tree is built, and no allowed
/// value means unknown.
constexpr std::array<std::string_view, 1> invalidByDesign = {"verdix.keyboard.shortcuts.ActivePlatform"};

/// Names that differ only in letter case: the setting Zoom and the group zoom, which other modules fill.
constexpr std::array<std::string_view, 1> differsOnlyInCase = {"verdix.web.zoom"};

/// Empty groups, which other modules fill.
constexpr std::array<std::string_view, 5> filledElsewhere = {"verdix.desktop.displayedroots",
                                                             "verdix.project", "verdix.sourcecontrol",
                                                             "verdix.vexo.upgrade", "verdix.web.zoom"};

bool isLetter(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool isKnown(std::span<const std::string_view> exceptions, std::string_view path)
{
    return std::ranges::find(exceptions, path) != exceptions.end();
}

/// Returns the message of the exception that a call throws; nothing if it throws none.
template <class Call>
std::optional<std::string> messageThrownBy(const Call& call)
{
    try {
        call();
        return std::nullopt;
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "";
    }
}

/// Returns values of such different classes that no setting accepts all of them.
std::vector<Array> differentValues()
{
    foundation::verdixdata::ArrayFactory factory;
    return {factory.createArray<double>({1, 1}), factory.createArray<Array>({0, 0})};
}

/// Whether an element of the class can have this value; true for infinity, which stands for no bound.
bool isElement(ArrayType type, double number)
{
    return data::visitElementType(type, [number]<class T>(std::type_identity<T>) {
        if constexpr (data::Number<T> && std::integral<T>) {
            using Limits = std::numeric_limits<T>;
            return std::isinf(number) ||
                   (data::isWhole(number) && data::isWithin(number, static_cast<double>(Limits::min()),
                                                            static_cast<double>(Limits::max())));
        } else {
            return true;
        }
    });
}

/// Whether the character is a control character, or replaces bytes that are not UTF-8.
bool isUnprintable(char16_t unit)
{
    return unit < u' ' || (unit >= u'\x7f' && unit <= u'\x9f') || unit == u'\ufffd';
}

/// Returns the aliases that lead to themselves, also through further aliases.
std::unordered_set<const Node*> findCircularAliases(const core::SettingsTree& tree)
{
    std::unordered_set<const Node*> circular;
    std::unordered_map<const Node*, const Node*> starts;  // of the walks that met the aliases first
    const auto isAlias = [](const Node* node) { return node != nullptr && node->kind() == NodeKind::alias; };
    const auto next = [&tree](const Node* alias) { return tree.find(alias->properties().aliasName()); };
    for (const Node* start : tree.nodes()) {
        const Node* node = start;
        while (isAlias(node) && starts.emplace(node, start).second) {
            node = next(node);
        }
        if (isAlias(node) && starts.at(node) == start) {
            for (; circular.insert(node).second; node = next(node)) {
            }
        }
    }
    return circular;
}

class Lint
{
public:
    Lint(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
        : tree_(tree),
          releases_(releases),
          unknownPaths_(tree, releases),
          circularAliases_(findCircularAliases(tree))
    {}

    std::vector<core::Diagnostic> run() &&
    {
        findCrashingSettings();
        checkNames(*tree_.root());
        for (const Node* node : tree_.nodes()) {
            checkCharacters(*node);
            if (node->kind() == NodeKind::group) {
                checkContents(*node);
                checkNames(*node);
            } else if (node->kind() == NodeKind::alias) {
                checkAlias(*node);
            } else {
                checkConstraint(*node);
                checkValueValidators(*node);
                checkCalls(*node);
            }
        }
        checkListedSecrets();
        std::ranges::move(checkReleaseTable(tree_, releases_), std::back_inserter(diagnostics_));
        return std::move(diagnostics_);
    }

private:
    void add(const Node& node, std::string message)
    {
        diagnostics_.push_back(
            {node.getFullName(), std::move(message), {.file = sourceFileOf(node.getFullName())}});
    }

    void checkContents(const Node& group)
    {
        if (group.children().empty() && !isKnown(filledElsewhere, group.fullName())) {
            add(group, "the group is empty: add settings to it, or remove it");
        }
    }

    void checkNames(const Node& group)
    {
        std::map<std::string, const Node*> seen;
        for (const Node& child : group.children()) {
            const auto [same, isNew] = seen.emplace(lowerCase(child.name()), &child);
            if (!isNew && !isKnown(differsOnlyInCase, child.fullName())) {
                add(child, "the name differs from " + same->second->getFullName() +
                               " only in letter case: choose another name");
            }
        }
    }

    void checkCharacters(const Node& node)
    {
        constexpr auto isAllowed = [](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; };
        if (!isLetter(node.name().front()) || !std::ranges::all_of(node.name(), isAllowed)) {
            add(node,
                "\"" + std::string(node.name()) +
                    "\" is not a letter followed by letters, digits and _, all ASCII: choose another name");
        }
    }

    void checkAlias(const Node& alias)
    {
        const std::string& target = alias.properties().aliasName();
        const Node* node = tree_.find(target);
        const std::string inside = tree_.root()->getFullName() + ".";
        const Node* completed = tree_.find(inside + target);
        if (node == nullptr && completed != nullptr && completed != &alias) {
            add(alias, "its target " + target + " is not in this tree, but " + completed->getFullName() +
                           " is: give the full path");
        } else if (node == nullptr && boost::algorithm::istarts_with(target, inside, std::locale::classic()))
        {
            add(alias,
                "its target " + target + " does not exist: correct it; " + unknownPaths_.explain(target));
        } else if (node != nullptr && node->kind() == NodeKind::group) {
            add(alias, "its target " + target + " is a group: give the full path of a setting");
        } else if (circularAliases_.contains(&alias)) {
            add(alias, "its target " + target + " leads back to it: give the full path of a setting");
        }
    }

    void checkConstraint(const Node& setting)
    {
        const Node::Properties& properties = setting.properties();
        if (!core::constraintOf(properties).isSatisfiable()) {
            add(setting, "no value can be " + core::describeConstraint(properties) + ": fix its constraint");
        }
        if (properties.readOnly.value() && !properties.factoryValue.isAssigned() &&
            std::holds_alternative<std::monostate>(properties.runTimeDefault))
        {
            add(setting, "it is read-only, but has no factory value: add one, or make it writable");
        }
        if (!hasConstraint(properties) && !properties.factoryValue.isAssigned()) {
            add(setting, "it has neither a factory value nor a constraint: add one of them, or a validator");
        }
    }

    static bool hasConstraint(const Node::Properties& properties)
    {
        return !std::holds_alternative<std::monostate>(properties.validator) ||
               !properties.valueValidators.empty();
    }

    void checkValueValidators(const Node& setting)
    {
        const Array& factory = setting.properties().factoryValue;
        for (const core::ValueValidator& validator : setting.properties().valueValidators) {
            if (core::exportedConstraints(validator).empty()) {
                add(setting,
                    "a value validator has no constraint, for example an empty list of allowed strings: "
                    "complete it, or remove it");
            }
            if (validator.maximumLength == 0) {
                add(setting, "the maximum length is 0: raise it");
            }
            if (validator.maximumLength && factory.isAssigned() && factory.getType() != ArrayType::CELL &&
                !core::isStringClass(factory.getType()))
            {
                add(setting, "the maximum length is for strings and cells, but the factory value is neither: "
                             "remove it, or change the value");
            }
            checkBounds(setting, validator.range.value_or(::settings::core::SettingValueValidator::Range()));
            checkAllowedStrings(setting, validator.allowedValues);
        }
    }

    void checkBounds(const Node& setting, const ::settings::core::SettingValueValidator::Range& range)
    {
        const Array& factory = setting.properties().factoryValue;
        for (const double bound : {range.lower, range.upper}) {
            if (factory.isAssigned() && !isElement(factory.getType(), bound)) {
                add(setting, "the bound " + core::formatNumber(bound) + " does not fit the factory value, " +
                                 core::formatClassAndSize(factory) + ": correct one of them");
            }
        }
    }

    void checkAllowedStrings(const Node& setting, const std::vector<std::u16string>& allowed)
    {
        std::set<std::u16string_view> seen;
        for (const std::u16string& string : allowed) {
            const std::string utf8 = foundation::verdixdata::toUtf8(string);
            if (!seen.insert(string).second) {
                add(setting, "the allowed string \"" + utf8 + "\" is repeated: remove it");
            }
            if (boost::algorithm::trim_copy(utf8, std::locale::classic()) != utf8) {
                add(setting,
                    "the allowed string \"" + utf8 + "\" begins or ends with whitespace: remove that");
            }
        }
    }

    /// Returns a function of a native library; null if it is not found, which is reported.
    template <class Signature, class Name>
    Signature* findNative(const Node& setting, const Name& name)
    {
        try {
            return core::nativeFunction<Signature>(name.scope(), name.function());
        } catch (const std::runtime_error&) {
            add(setting, name.function() + " of " + name.scope() +
                             " is not found: correct the name, or add the function to platform/native; "
                             "vxsettings doctor tells why");
            return nullptr;
        }
    }

    /// Tries the functions of the tree in other processes, which may crash or hang.
    void findCrashingSettings()
    {
        std::vector<const Node*> settings;
        std::ranges::copy_if(tree_.nodes(), std::back_inserter(settings), hasFunction);
        for (auto& [index, end] :
             findCrashes(settings.size(), [&](std::size_t i) { callFunctions(*settings[i]); })) {
            crashes_.emplace(settings[index], end);
        }
    }

    /// Whether the setting has functions of others; the script functions are part of the settings core.
    static bool hasFunction(const Node* node)
    {
        using namespace ::settings::core;
        const Node::Properties& properties = node->properties();
        return node->kind() == NodeKind::setting &&
               (properties.errorHandler || std::holds_alternative<CPPValidator>(properties.validator) ||
                std::holds_alternative<CValidator>(properties.validator) ||
                std::holds_alternative<CRunTimeDefault>(properties.runTimeDefault));
    }

    void checkCalls(const Node& setting)
    {
        if (const auto crash = crashes_.find(&setting); crash != crashes_.end()) {
            add(setting,
                "its validator, run-time default or error handler " + crash->second + ": fix the function");
        } else {
            callFunctions(setting);
        }
    }

    void callFunctions(const Node& setting)
    {
        checkErrorHandler(setting);
        checkStrings(setting, setting.properties().factoryValue);
        if (checkFunctions(setting)) {
            checkFactoryValue(setting);
        }
    }

    /// Returns whether the functions of a setting can be called.
    bool checkFunctions(const Node& setting)
    {
        const Node::Properties& properties = setting.properties();
        if (const auto* callable = std::get_if<::settings::core::CPPValidator>(&properties.validator)) {
            if (!callable->callable()) {
                add(setting, "its validator is an empty function: give one, or remove it");
            }
        }
        if (const auto* name = std::get_if<::settings::core::CRunTimeDefault>(&properties.runTimeDefault)) {
            if (findNative<::settings::core::NativeRunTimeDefault>(setting, *name) == nullptr) {
                return false;
            }
        }
        const auto* name = std::get_if<::settings::core::CValidator>(&properties.validator);
        return name == nullptr || checkNativeValidator(setting, *name);
    }

    bool checkNativeValidator(const Node& setting, const ::settings::core::CValidator& name)
    {
        auto* validator = findNative<::settings::core::NativeValidator>(setting, name);
        const auto rejects = [&](const Array& value) {
            return messageThrownBy([&] { validator(value); }).has_value();
        };
        if (validator != nullptr && std::ranges::none_of(differentValues(), rejects)) {
            add(setting, name.function() + " of " + name.scope() +
                             " accepts every value: correct the name, or let it throw for invalid values");
        }
        return validator != nullptr;
    }

    void checkErrorHandler(const Node& setting)
    {
        const auto& handler = setting.properties().errorHandler;
        if (!handler) {
            return;
        }
        if (!hasConstraint(setting.properties())) {
            add(setting, "its error handler explains constraints, but there is none: add a constraint or a "
                         "validator, or remove the handler");
            return;
        }
        for (const Array& value : differentValues()) {
            if (core::checkValue(setting, value) &&
                messageThrownBy([&] { handler(std::string(setting.name()), value); }).value_or("").empty())
            {
                add(setting, "its error handler throws no message for an invalid value: throw an exception "
                             "that tells what is valid");
                return;
            }
        }
    }

    void checkStrings(const Node& setting, const Array& value)
    {
        if (value.getType() == ArrayType::CELL) {
            for (const Array& element : data::elementsOf<Array>(value)) {
                checkStrings(setting, element);
            }
        } else if (const auto string = data::textOf(value);
                   string && std::ranges::any_of(*string, isUnprintable)) {
            add(setting, "the factory value contains a control character or is not UTF-8: correct it");
        }
    }

    void checkFactoryValue(const Node& setting)
    {
        const auto invalid = core::checkDefaultValue(setting);
        if (invalid && !isKnown(invalidByDesign, setting.fullName())) {
            add(setting, "invalid factory value: " + invalid->message);
        }
    }

    void checkListedSecrets()
    {
        for (const std::string_view path : core::listedSecrets) {
            if (const Node* node = tree_.find(path); node == nullptr || node->kind() != NodeKind::setting) {
                diagnostics_.push_back(
                    {std::string(path),
                     "is listed as a secret, but is no setting of the tree: correct the list",
                     {.file = "platform/settings_core/tree/secret_settings.hpp"}});
            }
        }
    }

    const core::SettingsTree& tree_;
    const ReleaseChangeTable& releases_;
    core::UnknownPaths unknownPaths_;
    const std::unordered_set<const Node*> circularAliases_;
    std::unordered_map<const Node*, std::string> crashes_;  // what the functions do that do not return
    std::vector<core::Diagnostic> diagnostics_;
};

}  // namespace

std::vector<core::Diagnostic> lintTree(const core::SettingsTree& tree, const ReleaseChangeTable& releases)
{
    return Lint(tree, releases).run();
}

}  // namespace vx::review
