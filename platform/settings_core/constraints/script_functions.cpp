#include <data/views.hpp>
#include <settings_core/constraints/script_functions.hpp>

#include <algorithm>
#include <array>

namespace vx::core {

namespace {

using foundation::verdixdata::Array;
using foundation::verdixdata::ArrayType;

constexpr std::string_view qualifier = "verdix.settings";

void foldScalar(Constraint& all, bool hasClass)
{
    all.require(hasClass);
    all.restrictSize({1, 1});
}

constexpr std::array functions{
    ScriptFunction{
        .name = "mustBeLogicalScalar",
        .description = "true or false",
        .requiredClass = ArrayType::LOGICAL,
        .accepts =
            [](const Array& value) { return value.getType() == ArrayType::LOGICAL && data::isScalar(value); },
        .fold = [](Constraint& all) { foldScalar(all, all.elementClass == ArrayType::LOGICAL); }},
    ScriptFunction{.name = "mustBeStringScalar",
                   .description = "a string",
                   .requiredClass = ArrayType::CHAR,
                   .accepts = [](const Array& value) { return data::textOf(value).has_value(); },
                   .fold =
                       [](Constraint& all) {
                           all.rejectsMissing = true;
                           if (all.elementClass != ArrayType::CHAR) {
                               foldScalar(all, all.elementClass == ArrayType::STRING);
                           }
                       }},
    ScriptFunction{.name = "mustBeIntegerScalar",
                   .description = "a whole number",
                   .requiredClass = ArrayType::DOUBLE,
                   .accepts =
                       [](const Array& value) {
                           return data::isScalar(value) &&
                                  data::everyNumber(value, [](auto number) { return data::isWhole(number); });
                       },
                   .fold =
                       [](Constraint& all) {
                           all.isWhole = true;
                           foldScalar(all, all.hasNumbers());
                       }},
    ScriptFunction{
        .name = "mustBeNumericScalar",
        .description = "a number",
        .requiredClass = ArrayType::DOUBLE,
        // Accepts NaN and the infinities; a range excludes them where they make no sense.
        .accepts = [](const Array& value) { return data::isScalar(value) && data::isNumeric(value); },
        .fold = [](Constraint& all) { foldScalar(all, all.hasNumbers()); }}};

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
