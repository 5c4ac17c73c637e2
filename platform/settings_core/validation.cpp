#include <data/views.hpp>
#include <settings_core/native_library.hpp>
#include <settings_core/run_time_default.hpp>
#include <settings_core/script_functions.hpp>
#include <settings_core/validation.hpp>
#include <settings_core/value_format.hpp>

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

// Class and shape

bool anyRecord(const Properties& properties, bool (*states)(const ValueValidator&))
{
    return std::any_of(properties.valueValidators.begin(), properties.valueValidators.end(), states);
}

bool isRowOfTexts(const Array& value)
{
    if (value.getType() != ArrayType::CELL || !data::isRow(value)) {
        return false;
    }
    const auto elements = data::elementsOf<Array>(value);
    return std::all_of(elements.begin(), elements.end(),
                       [](const Array& element) { return data::textOf(element).has_value(); });
}

/// What breaks the rule that a value is of its factory value's kind.
std::optional<Failure> brokenShape(const Properties& properties, const Array& value)
{
    const auto failUnless = [&](bool kept, std::string rule) {
        return kept ? std::nullopt : std::optional(makeFailure(std::move(rule), value));
    };
    const Array& factory = properties.factoryValue;
    const bool isColour =
        anyRecord(properties, [](const ValueValidator& rules) { return rules.colour.has_value(); });
    if (!factory.isAssigned() || (isColour && (data::textOf(value) || data::textOf(factory)))) {
        return std::nullopt;
    }
    const bool sameClass = value.getType() == factory.getType();
    switch (factory.getType()) {
    case ArrayType::CHAR:
        return failUnless(sameClass && data::isRow(value), "a text (char)");
    case ArrayType::CELL:
        return failUnless(isRowOfTexts(value), "a cell of texts in one row");
    default:
        break;
    }
    if (isColour || anyRecord(properties, [](const ValueValidator& rules) { return rules.size.has_value(); }))
    {
        return failUnless(sameClass, std::string("of class ") + className(factory.getType()));
    }
    return failUnless(sameClass && value.getDimensions() == factory.getDimensions(),
                      formatClassAndSize(factory));
}

// Validators

/// Runs a check that refuses by raising. Gives the text of what it raised, `silent` when that has none.
/// Memory that runs out is no judgement of the value, and is passed on.
template <class Check>
std::optional<std::string> refusalOf(const Check& check, const std::string& silent)
{
    try {
        check();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        const std::string text = error.what();
        return text.empty() ? silent : text;
    } catch (...) {
        return silent;
    }
}

/// Runs the validator of a setting on a value and adds what it finds to the verdict.
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
            verdict_.failures.push_back(makeFailure(std::string(function->accepted), value_));
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
        failIfRefused([&] { function(value_); });
    }

    void operator()(const ::settings::core::JValidator& managed) const
    {
        verdict_.skipped.push_back("The managed method " + managed.scope() + "." + managed.function() +
                                   " cannot be run here.");
    }

    void operator()(const ::settings::core::CPPValidator& callable) const
    {
        if (callable.callable()) {
            failIfRefused([&] {
                callable.callable()(setting_.sharedFromThis(), std::string(setting_.name()), value_);
            });
        }
    }

private:
    [[nodiscard]] std::string rule() const { return describeValidator(setting_.properties().validator); }

    void fail(std::string message) const { verdict_.failures.push_back({rule(), std::move(message)}); }

    template <class Check>
    void failIfRefused(const Check& check) const
    {
        if (auto text = refusalOf(check, makeFailure(rule(), value_).message)) {
            fail(std::move(*text));
        }
    }

    const Node& setting_;
    const Array& value_;
    Verdict& verdict_;
};

void addRuleFailures(const Node& setting, const Array& value, Verdict& verdict)
{
    std::visit(RunValidator(setting, value, verdict), setting.properties().validator);
    for (const ValueValidator& rules : setting.properties().valueValidators) {
        auto broken = findViolations(rules, value);
        std::move(broken.begin(), broken.end(), std::back_inserter(verdict.failures));
    }
}

std::string joinMessages(const std::vector<Failure>& failures)
{
    std::string text;
    for (const Failure& failure : failures) {
        text += (text.empty() ? "" : "\n") + failure.message;
    }
    return text;
}

/// Composes the message for a refused value; the setting's error handler comes first.
void addMessage(const Node& setting, const Array& value, Verdict& verdict)
{
    if (verdict.accepted()) {
        return;
    }
    verdict.message = joinMessages(verdict.failures);
    if (const auto& handler = setting.properties().errorHandler) {
        const auto raised = refusalOf([&] { handler(std::string(setting.name()), value); }, verdict.message);
        verdict.message = raised.value_or(verdict.message);
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

// Adapting

/// The number as a To, where that loses nothing.
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

Array adaptText(std::u16string_view text, ArrayType wanted)
{
    if (wanted == ArrayType::CHAR) {
        return verdix::settings::internal::charvec(std::u16string(text));
    }
    auto scalar = foundation::verdixdata::ArrayFactory().createArray<foundation::verdixdata::String>({1, 1});
    scalar[0] = std::u16string(text);
    return scalar;
}

}  // namespace

Verdict checkValue(const Node& setting, const Array& value)
{
    requireSetting(setting);
    Verdict verdict;
    if (auto broken = brokenShape(setting.properties(), value)) {
        verdict.failures.push_back(std::move(*broken));
    }
    addRuleFailures(setting, value, verdict);
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
            addRuleFailures(setting, value, verdict);
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
    const auto text = data::textOf(value);
    return text ? adaptText(*text, wanted) : value;
}

}  // namespace vx::core
