#include <data/views.hpp>
#include <settings_core/constraints/kinds.hpp>
#include <settings_core/constraints/rejection.hpp>
#include <settings_core/constraints/script_functions.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/tree/secret_settings.hpp>
#include <settings_core/values/native_library.hpp>
#include <settings_core/values/run_time_default.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <verdix/settings/internal/values.hpp>

#include <algorithm>
#include <exception>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

/// Why a value is invalid; std::nullopt if it is valid, empty if the constraints say it.
using Message = std::optional<std::string>;

// Class and size

bool isRowOfStrings(const Array& value)
{
    return value.getType() == ArrayType::CELL && data::isRow(value) &&
           std::ranges::all_of(data::elementsOf<Array>(value),
                               [](const Array& element) { return data::textOf(element).has_value(); });
}

/// Whether class and size of a value are those that the factory value prescribes.
bool hasRequiredClassAndSize(const Node::Properties& properties, const Array& value)
{
    const Array& factory = properties.factoryValue;
    const Constraint constraint = constraintOf(properties);
    if (!factory.isAssigned() || (constraint.colour && (data::textOf(value) || data::textOf(factory)))) {
        return true;
    }
    const bool hasFactoryClass = value.getType() == factory.getType();
    if (factory.getType() == ArrayType::CHAR) {
        return hasFactoryClass && data::isRow(value);
    }
    if (factory.getType() == ArrayType::CELL) {
        return isRowOfStrings(value);
    }
    return hasFactoryClass &&
           (!constraint.hasFactorySize || value.getDimensions() == factory.getDimensions());
}

// Validators

/// Runs a check that rejects a value by throwing. Returns the exception's message, which may be empty;
/// std::nullopt if nothing is thrown. Throws std::bad_alloc, which says nothing about the value.
template <class Check>
Message messageThrownBy(const Check& check)
{
    try {
        check();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "";
    }
}

/// Runs the setting's validator. The managed runtime is unavailable in this process: its validators accept
/// every value.
Message runValidator(const Node& setting, const Array& value)
{
    const auto& validator = setting.properties().validator;
    if (const ScriptFunction* function = findScriptFunction(validator)) {
        return function->accepts(value) ? Message() : "";
    }
    if (const auto* script = std::get_if<::settings::core::MValidator>(&validator)) {
        return "cannot be checked: the settings tree names the script function " + script->scope() + "." +
               script->function() + ", which the settings core does not know. Correct the name in the tree.";
    }
    if (const auto* native = std::get_if<::settings::core::CValidator>(&validator)) {
        ::settings::core::NativeValidator* function = nullptr;
        try {
            function = nativeFunction<::settings::core::NativeValidator>(native->scope(), native->function());
        } catch (const std::runtime_error& error) {
            return std::string("cannot be checked: ") + error.what();
        }
        return messageThrownBy([&] { function(value); });
    }
    const auto* callable = std::get_if<::settings::core::CPPValidator>(&validator);
    if (callable != nullptr && callable->callable()) {
        return messageThrownBy(
            [&] { callable->callable()(setting.sharedFromThis(), std::string(setting.name()), value); });
    }
    return std::nullopt;
}

/// Runs the validator and all value validators.
Message checkByValidators(const Node& setting, const Array& value)
{
    Message message = runValidator(setting, value);
    return satisfiesAll(setting.properties().valueValidators, value) ? message : "";
}

/// Checks the value against all constraints, without the error handler.
Message checkByConstraints(const Node& setting, const Array& value)
{
    Message message = checkByValidators(setting, value);
    if (!message && !hasRequiredClassAndSize(setting.properties(), value)) {
        message = "";
    }
    return message;
}

/// Returns the diagnostic for a message, if there is one. A secret is not shown: the message of a provider
/// might tell it.
std::optional<Diagnostic> diagnosticFor(Message message, const Node& setting, const Array& value,
                                        const Writing& writing = {})
{
    if (!message) {
        return std::nullopt;
    }
    const bool isOwn = !message->empty() && !isSecret(setting.fullName());
    return Diagnostic{setting.getFullName(),
                      isOwn ? *std::move(message) : describeRejection(setting, value, writing)};
}

void requireSetting(const Node& node)
{
    if (node.kind() != NodeKind::setting) {
        throw std::invalid_argument(
            node.getFullName() + " has no value of its own: " +
            (node.kind() == NodeKind::alias
                 ? "use the setting it is an alias of, " + node.properties().aliasName() + "."
                 : "it is a group; name a setting in it."));
    }
}

// Conversion

/// Converts a number to another type. Returns whether the result is equal to it.
template <data::Number To, data::Number From>
bool convert(From number, To& converted)
{
    using Limits = std::numeric_limits<To>;
    const auto exact = static_cast<long double>(number);
    if (std::integral<To> && !(data::isWhole(number) && exact >= static_cast<long double>(Limits::min()) &&
                               exact <= static_cast<long double>(Limits::max())))
    {
        return false;
    }
    converted = static_cast<To>(exact);
    return static_cast<long double>(converted) == exact;
}

Array adaptNumbers(const Array& value, ArrayType wanted)
{
    return data::visitElementType(wanted, [&]<class To>(std::type_identity<To>) -> Array {
        if constexpr (data::Number<To>) {
            auto result = foundation::verdixdata::ArrayFactory().createArray<To>(value.getDimensions());
            auto target = result.begin();
            if (data::everyNumber(value, [&](auto number) { return convert(number, *target++); })) {
                return result;
            }
        }
        return value;
    });
}

Array adaptString(std::u16string_view string, ArrayType wanted)
{
    if (wanted == ArrayType::CHAR) {
        return verdix::settings::internal::charvec(std::u16string(string));
    }
    auto scalar = foundation::verdixdata::ArrayFactory().createArray<foundation::verdixdata::String>({1, 1});
    scalar[0] = std::u16string(string);
    return scalar;
}

}  // namespace

bool acceptsValue(const Node& setting, const Array& value)
{
    requireSetting(setting);
    return !checkByConstraints(setting, value);
}

std::optional<Diagnostic> checkValue(const Node& setting, const Array& value, const Writing& writing)
{
    requireSetting(setting);
    const Node::Properties& properties = setting.properties();
    Message message = checkByConstraints(setting, value);
    if (message && properties.errorHandler) {
        Message thrown =
            messageThrownBy([&] { properties.errorHandler(std::string(setting.name()), value); });
        if (thrown && !thrown->empty()) {
            message = std::move(thrown);
        }
    }
    return diagnosticFor(std::move(message), setting, value, writing);
}

std::optional<Diagnostic> checkDefaultValue(const Node& setting)
{
    requireSetting(setting);
    try {
        const Array value = defaultValue(setting).value;
        return value.isAssigned() ? diagnosticFor(checkByValidators(setting, value), setting, value)
                                  : std::nullopt;
    } catch (const std::runtime_error& error) {
        return Diagnostic{setting.getFullName(), std::string("cannot be computed: ") + error.what()};
    }
}

Array adaptValue(const Node& setting, Array value)
{
    requireSetting(setting);
    const ArrayType wanted = setting.properties().factoryValue.getType();
    if (wanted == ArrayType::UNKNOWN || !value.isAssigned() || value.getType() == wanted) {
        return value;
    }
    if (wanted != ArrayType::CHAR && wanted != ArrayType::STRING) {
        return adaptNumbers(value, wanted);
    }
    const auto string = data::textOf(value);
    return string ? adaptString(*string, wanted) : value;
}

}  // namespace vx::core
