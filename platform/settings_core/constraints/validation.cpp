#include <data/views.hpp>
#include <settings_core/constraints/script_functions.hpp>
#include <settings_core/constraints/validation.hpp>
#include <settings_core/values/native_library.hpp>
#include <settings_core/values/run_time_default.hpp>
#include <settings_core/values/value_format.hpp>

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
using Properties = Node::Properties;

// Class and size

bool anyValueValidator(const Properties& properties, bool (*predicate)(const ValueValidator&))
{
    return std::any_of(properties.valueValidators.begin(), properties.valueValidators.end(), predicate);
}

bool isRowOfStrings(const Array& value)
{
    if (value.getType() != ArrayType::CELL || !data::isRow(value)) {
        return false;
    }
    const auto elements = data::elementsOf<Array>(value);
    return std::all_of(elements.begin(), elements.end(),
                       [](const Array& element) { return data::textOf(element).has_value(); });
}

/// Checks class and size of a value against the factory value.
std::optional<Failure> findClassOrSizeViolation(const Properties& properties, const Array& value)
{
    const auto failUnless = [&](bool isSatisfied, std::string constraint) {
        return isSatisfied ? std::nullopt : std::optional(makeFailure(std::move(constraint), value));
    };
    const Array& factory = properties.factoryValue;
    const bool isColour = anyValueValidator(
        properties, [](const ValueValidator& validator) { return validator.colour.has_value(); });
    if (!factory.isAssigned() || (isColour && (data::textOf(value) || data::textOf(factory)))) {
        return std::nullopt;
    }
    const bool sameClass = value.getType() == factory.getType();
    switch (factory.getType()) {
    case ArrayType::CHAR:
        return failUnless(sameClass && data::isRow(value), "a character vector");
    case ArrayType::CELL:
        return failUnless(isRowOfStrings(value), "a cell of strings in one row");
    default:
        break;
    }
    if (isColour || anyValueValidator(properties, [](const ValueValidator& validator) {
            return validator.size.has_value();
        }))
    {
        return failUnless(sameClass, std::string("of class ") + className(factory.getType()));
    }
    return failUnless(sameClass && value.getDimensions() == factory.getDimensions(),
                      formatClassAndSize(factory));
}

// Validators

/// Runs a check that rejects a value by throwing. Returns the exception's message, `fallback` if it has none,
/// or nothing for an accepted value. std::bad_alloc is passed on: it says nothing about the value.
template <class Check>
std::optional<std::string> rejectionMessage(const Check& check, const std::string& fallback)
{
    try {
        check();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        const std::string message = error.what();
        return message.empty() ? fallback : message;
    } catch (...) {
        return fallback;
    }
}

/// Visitor that runs a setting's validator on a value and adds the result to the verdict.
class RunValidator
{
public:
    RunValidator(const Node& setting, const Array& value, Verdict& verdict)
        : setting_(setting), value_(value), verdict_(verdict)
    {}

    void operator()(std::monostate) const {}

    void operator()(const ::settings::core::MValidator& script) const
    {
        const ScriptFunction* function = findScriptFunction(script);
        if (function == nullptr) {
            fail("cannot be checked: the settings tree names the script function " + script.scope() + "." +
                 script.function() +
                 ", which the settings core does not know. Correct the name in the tree.");
        } else if (!function->accepts(value_)) {
            verdict_.failures.push_back(makeFailure(std::string(function->constraint), value_));
        }
    }

    void operator()(const ::settings::core::CValidator& native) const
    {
        ::settings::core::NativeValidator* function = nullptr;
        try {
            function = nativeFunction<::settings::core::NativeValidator>(native.scope(), native.function());
        } catch (const std::runtime_error& error) {
            fail(std::string("cannot be checked: ") + error.what());
            return;
        }
        failIfRejected([&] { function(value_); });
    }

    void operator()(const ::settings::core::JValidator& managed) const
    {
        verdict_.skipped.push_back("The managed method " + managed.scope() + "." + managed.function() +
                                   " is unavailable in this process.");
    }

    void operator()(const ::settings::core::CPPValidator& callable) const
    {
        if (callable.callable()) {
            failIfRejected([&] {
                callable.callable()(setting_.sharedFromThis(), std::string(setting_.name()), value_);
            });
        }
    }

private:
    [[nodiscard]] std::string constraint() const
    {
        return describeValidator(setting_.properties().validator);
    }

    void fail(std::string message) const { verdict_.failures.push_back({constraint(), std::move(message)}); }

    template <class Check>
    void failIfRejected(const Check& check) const
    {
        if (auto message = rejectionMessage(check, makeFailure(constraint(), value_).message)) {
            fail(std::move(*message));
        }
    }

    const Node& setting_;
    const Array& value_;
    Verdict& verdict_;
};

void addValidatorFailures(const Node& setting, const Array& value, Verdict& verdict)
{
    std::visit(RunValidator(setting, value, verdict), setting.properties().validator);
    for (const ValueValidator& validator : setting.properties().valueValidators) {
        auto violations = findViolations(validator, value);
        std::move(violations.begin(), violations.end(), std::back_inserter(verdict.failures));
    }
}

std::string joinMessages(const std::vector<Failure>& failures)
{
    std::string lines;
    for (const Failure& failure : failures) {
        lines += (lines.empty() ? "" : "\n") + failure.message;
    }
    return lines;
}

/// Sets the message for a rejected value; that of the setting's error handler takes precedence.
void addMessage(const Node& setting, const Array& value, Verdict& verdict)
{
    if (verdict.accepted()) {
        return;
    }
    verdict.message = joinMessages(verdict.failures);
    if (const auto& handler = setting.properties().errorHandler) {
        const auto thrown =
            rejectionMessage([&] { handler(std::string(setting.name()), value); }, verdict.message);
        verdict.message = thrown.value_or(verdict.message);
    }
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

/// Converts a number to another type; returns nothing if that loses information.
template <data::Number To, data::Number From>
std::optional<To> convertExactly(From number)
{
    using Limits = std::numeric_limits<To>;
    if constexpr (std::integral<To>) {
        const auto exact = static_cast<long double>(number);
        if (!data::isWhole(number) || exact < static_cast<long double>(Limits::min()) ||
            exact > static_cast<long double>(Limits::max()))
        {
            return std::nullopt;
        }
        return static_cast<To>(number);
    } else {
        const auto converted = static_cast<To>(number);
        const bool same = static_cast<long double>(converted) == static_cast<long double>(number);
        return same ? std::optional(converted) : std::nullopt;
    }
}

template <data::Number To, data::Number From>
Array convertNumbers(const Array& value)
{
    const auto source = data::elementsOf<From>(value);
    auto result = foundation::verdixdata::ArrayFactory().createArray<To>(value.getDimensions());
    auto target = result.begin();
    for (const From number : source) {
        const auto converted = convertExactly<To>(number);
        if (!converted) {
            return value;
        }
        *target++ = *converted;
    }
    return result;
}

Array adaptNumbers(const Array& value, ArrayType wanted)
{
    return data::visitElementType(wanted, [&]<class To>(std::type_identity<To>) {
        return data::visitElementType(value.getType(), [&]<class From>(std::type_identity<From>) -> Array {
            if constexpr (data::Number<To> && data::Number<From>) {
                return convertNumbers<To, From>(value);
            } else {
                return value;
            }
        });
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

Verdict checkValue(const Node& setting, const Array& value)
{
    requireSetting(setting);
    Verdict verdict;
    if (auto violation = findClassOrSizeViolation(setting.properties(), value)) {
        verdict.failures.push_back(std::move(*violation));
    }
    addValidatorFailures(setting, value, verdict);
    addMessage(setting, value, verdict);
    return verdict;
}

Verdict checkDefaultValue(const Node& setting)
{
    requireSetting(setting);
    Verdict verdict;
    try {
        const Array value = defaultValue(setting).value;
        if (value.isAssigned()) {
            addValidatorFailures(setting, value, verdict);
        }
    } catch (const std::runtime_error& error) {
        verdict.failures.push_back({"computable", std::string("cannot be computed: ") + error.what()});
    }
    verdict.message = joinMessages(verdict.failures);
    return verdict;
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
