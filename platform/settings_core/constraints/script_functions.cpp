#include <data/views.hpp>
#include <settings_core/constraints/script_functions.hpp>

#include <algorithm>
#include <array>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

constexpr std::string_view qualifier = "verdix.settings";

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

void foldLogicalScalar(Constraint& all)
{
    all.require(all.classOr(ArrayType::LOGICAL) == ArrayType::LOGICAL);
    all.restrictSize({1, 1});
}

void foldString(Constraint& all)
{
    const ArrayType type = all.classOr(ArrayType::CHAR);
    all.require(isStringClass(type));
    all.rejectsMissing = true;
    if (type != ArrayType::CHAR) {
        all.restrictSize({1, 1});
    }
}

void foldNumericScalar(Constraint& all)
{
    all.restrictRange({});
    all.restrictSize({1, 1});
}

void foldIntegerScalar(Constraint& all)
{
    foldNumericScalar(all);
    all.isWhole = true;
}

constexpr std::array<ScriptFunction, 4> functions{{
    {"mustBeLogicalScalar", "true or false", isLogicalScalar, foldLogicalScalar},
    {"mustBeStringScalar", "a string", isString, foldString},
    {"mustBeIntegerScalar", "a whole number", isIntegerScalar, foldIntegerScalar},
    {"mustBeNumericScalar", "a number", isNumericScalar, foldNumericScalar},
}};

}  // namespace

const ScriptFunction* findScriptFunction(const ::settings::core::Validator& validator) noexcept
{
    const auto* script = std::get_if<::settings::core::MValidator>(&validator);
    if (script == nullptr || script->scope() != qualifier) {
        return nullptr;
    }
    const auto* found = std::ranges::find(functions, script->function(), &ScriptFunction::name);
    return found == functions.end() ? nullptr : found;
}

}  // namespace vx::core
