#include <data/views.hpp>
#include <settings_core/constraints/script_functions.hpp>

#include <algorithm>
#include <array>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

bool isLogicalScalar(const Array& value)
{
    return value.getType() == ArrayType::LOGICAL && data::isScalar(value);
}

bool isString(const Array& value)
{
    return data::textOf(value).has_value();
}

bool isIntegerScalar(const Array& value)
{
    return data::isScalar(value) &&
           data::everyNumber(value, [](auto number) { return data::isWhole(number); });
}

/// Accepts NaN and the infinities; a range excludes them where they make no sense.
bool isNumericScalar(const Array& value)
{
    return data::isScalar(value) && data::isNumeric(value);
}

constexpr std::string_view qualifier = "verdix.settings";

constexpr std::array<ScriptFunction, 4> functions{{
    {"mustBeLogicalScalar", "true or false", &isLogicalScalar},
    {"mustBeStringScalar", "a string", &isString},
    {"mustBeIntegerScalar", "a whole number", &isIntegerScalar},
    {"mustBeNumericScalar", "a number", &isNumericScalar},
}};

}  // namespace

const ScriptFunction* findScriptFunction(const ::settings::core::MValidator& validator) noexcept
{
    if (validator.scope() != qualifier) {
        return nullptr;
    }
    const auto* found = std::find_if(functions.begin(), functions.end(), [&](const ScriptFunction& function) {
        return function.name == validator.function();
    });
    return found == functions.end() ? nullptr : found;
}

}  // namespace vx::core
