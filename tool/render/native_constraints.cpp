#include "render/native_constraints.hpp"

#include <algorithm>
#include <iterator>
#include <limits>
#include <variant>

namespace vx::tool {

namespace {

using Range = NativeConstraint::Range;

constexpr double infinity = std::numeric_limits<double>::infinity();

// Patterns end in (?!\n)$, because in some languages $ alone also matches before a line feed at the end.
constexpr NativeConstraint constraints[] = {
    {"libvxsavevars", "validateMaximumArraySizeValue", Range{1, 10000}},
    {"libvxsavevars", "validateMaximumNestingLevel", Range{1, 200}},
    {"libvxsavevars", "validateMaximumTextWidth", Range{32, 256}},
    {.library = "libvxsavevars",
     .function = "validateArrayDimensions",
     .wholeNumbers = Range{1, infinity},
     .rowKeywords = R"({"uniqueItems": true})"},
    {.library = "libvxservices",
     .function = "validateFontSize",
     .stringKeywords =
         R"({"pattern": "^(?:0\\.[0-9]*[1-9][0-9]*|[1-9][0-9]*(?:\\.[0-9]+)?)px(?!\\n)$",
             "errorMessage": "Expected a number above 0 followed by px, such as 14px or 12.5px."})"},
    {.library = "libvxservices", .function = "validateFontColor", .wholeNumbers = Range{0, 255}},
    {.library = "libvxservices",
     .function = "validateFontStyle",
     .rowKeywords = R"({"minItems": 1, "uniqueItems": true,
                        "if": {"contains": {"const": "plain"}}, "then": {"maxItems": 1}})"},
};

}  // namespace

const NativeConstraint* findNativeConstraint(const ::settings::core::Validator& validator) noexcept
{
    const auto* native = std::get_if<::settings::core::CValidator>(&validator);
    const auto* const found = std::ranges::find_if(constraints, [=](const NativeConstraint& constraint) {
        return native != nullptr && constraint.library == native->scope() &&
               constraint.function == native->function();
    });
    return found == std::end(constraints) ? nullptr : found;
}

}  // namespace vx::tool
