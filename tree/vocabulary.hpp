#pragma once

// The words in which the areas of the tree are written. A line creates one setting: the group, the setting's
// name, its factory value, and then, in any order, what else is to be said of it:
//
//   Visible, Hidden      that it is expressly visible, or hidden (saying nothing leaves it visible)
//   inRange(1, 100)      a rule that its values must keep; see "Rules"
//   integerScalar, ...   the function that checks its values, where the kind does not imply one

#include <builder/factory_tree.hpp>
#include <builder/values.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace verdix::settings::tree {

using internal::SettingValueValidator;

// Visibility

enum class Visibility : bool
{
    Visible = false,
    Hidden = true
};

inline constexpr Visibility Visible = Visibility::Visible;
inline constexpr Visibility Hidden = Visibility::Hidden;

// Functions that check a value

struct ScriptFunction
{
    const char* name;
};

inline constexpr ScriptFunction logicalScalar{"verdix.settings.mustBeLogicalScalar"};
inline constexpr ScriptFunction stringScalar{"verdix.settings.mustBeStringScalar"};
inline constexpr ScriptFunction integerScalar{"verdix.settings.mustBeIntegerScalar"};
inline constexpr ScriptFunction numericScalar{"verdix.settings.mustBeNumericScalar"};

/// A function of a native library.
[[nodiscard]] inline FunctionDescriptor native(const char* library, const char* function)
{
    return {function, "C", library};
}

// Rules

/// Every element lies between the bounds or on them.
[[nodiscard]] inline SettingValueValidator inRange(double lower, double upper)
{
    return {.range = {{lower, upper}}};
}

/// Every element is this or more.
[[nodiscard]] inline SettingValueValidator atLeast(double lower)
{
    return {.range = {{.lower = lower}}};
}

/// A text, or every text of a cell, is one of the words.
[[nodiscard]] inline SettingValueValidator oneOf(std::initializer_list<std::u16string_view> words)
{
    return {.allowedValues = {words.begin(), words.end()}};
}

/// A text has at most so many characters, a cell at most so many elements.
[[nodiscard]] inline SettingValueValidator maximumLength(std::size_t length)
{
    return {.maximumLength = length};
}

/// A row of so many elements, each of which keeps the rule.
[[nodiscard]] inline SettingValueValidator rowOf(std::size_t columns, SettingValueValidator rule)
{
    rule.size = {{1, columns}};
    return rule;
}

/// The value is a cell.
[[nodiscard]] inline SettingValueValidator cellOfTexts()
{
    return {.elementClass = foundation::verdixdata::ArrayType::CELL};
}

/// The value is a cell, and each of its texts one of the words. These are plain ASCII, in the form in which a
/// factory value is given, so that a list which serves as both is written once.
[[nodiscard]] inline SettingValueValidator cellOf(const std::vector<std::string>& words)
{
    auto rule = cellOfTexts();
    for (const std::string& word : words) {
        rule.allowedValues.emplace_back(word.begin(), word.end());
    }
    return rule;
}

/// Red, green and blue as whole numbers from 0 to 255.
[[nodiscard]] inline SettingValueValidator colourTriple()
{
    return {.colour = ::settings::core::SettingValueValidator::Colour::wholeNumbers};
}

/// Where a window is, in pixels: left, bottom, width and height. The first two may be negative, on a screen
/// beside the main one. The bounds refuse what is no place or size, NaN and the infinities.
[[nodiscard]] inline SettingValueValidator windowPosition()
{
    using Pixels = std::numeric_limits<std::int32_t>;
    return rowOf(4, inRange(Pixels::min(), Pixels::max()));
}

// Settings

namespace detail {

// Constants, so that the compiler looks the names up.
inline constexpr OptionName hiddenOption = "Hidden";
inline constexpr OptionName factoryValueOption = "FactoryValue";
inline constexpr OptionName validationOption = "ValidationFcn";
inline constexpr OptionName ruleOption = "ValueValidator";

inline void apply(SettingOptions& options, Visibility visibility)
{
    applyOption(options, hiddenOption, visibility == Hidden);
}

inline void apply(SettingOptions& options, ScriptFunction function)
{
    applyOption(options, validationOption, function.name);
}

inline void apply(SettingOptions& options, const FunctionDescriptor& function)
{
    applyOption(options, validationOption, function);
}

inline void apply(SettingOptions& options, SettingValueValidator rule)
{
    applyOption(options, ruleOption, std::move(rule));
}

}  // namespace detail

/// A setting without a factory value.
template <class... Traits>
void addUnset(FactoryGroup& group, std::string_view name, Traits&&... traits)
{
    addDescribed(group, std::string(name), [&](SettingOptions& options) {
        (detail::apply(options, std::forward<Traits>(traits)), ...);
    });
}

/// A setting with a ready factory value.
template <class Value, class... Traits>
void addValue(FactoryGroup& group, std::string_view name, Value value, Traits&&... traits)
{
    addDescribed(group, std::string(name), [&](SettingOptions& options) {
        applyOption(options, detail::factoryValueOption, std::move(value));
        (detail::apply(options, std::forward<Traits>(traits)), ...);
    });
}

/// A logical scalar, checked as one.
template <class... Traits>
void addLogical(FactoryGroup& group, std::string_view name, bool value, Traits&&... traits)
{
    addValue(group, name, value, logicalScalar, std::forward<Traits>(traits)...);
}

/// A character vector, with no check but those given.
template <class... Traits>
void addCharVector(FactoryGroup& group, std::string_view name, std::string_view text, Traits&&... traits)
{
    addValue(group, name, internal::charvec(std::string(text)), std::forward<Traits>(traits)...);
}

/// A character vector, checked to be a text.
template <class... Traits>
void addText(FactoryGroup& group, std::string_view name, std::string_view text, Traits&&... traits)
{
    addCharVector(group, name, text, stringScalar, std::forward<Traits>(traits)...);
}

/// A 32-bit integer scalar, with no check but those given.
template <class... Traits>
void addInt32(FactoryGroup& group, std::string_view name, int value, Traits&&... traits)
{
    addValue(group, name, internal::makeScalar<int>(value), std::forward<Traits>(traits)...);
}

/// A 32-bit integer scalar, checked to be a whole number.
template <class... Traits>
void addInteger(FactoryGroup& group, std::string_view name, int value, Traits&&... traits)
{
    addInt32(group, name, value, integerScalar, std::forward<Traits>(traits)...);
}

/// A double scalar, with no check but those given.
template <class... Traits>
void addDouble(FactoryGroup& group, std::string_view name, int value, Traits&&... traits)
{
    addValue(group, name, value, std::forward<Traits>(traits)...);
}

/// A double scalar, checked to be a number.
template <class... Traits>
void addNumber(FactoryGroup& group, std::string_view name, int value, Traits&&... traits)
{
    addDouble(group, name, value, numericScalar, std::forward<Traits>(traits)...);
}

/// A row of 32-bit integers.
template <class... Traits>
void addInt32Row(FactoryGroup& group, std::string_view name, std::initializer_list<int> values,
                 Traits&&... traits)
{
    addValue(group, name, internal::makeRow<int>(values), std::forward<Traits>(traits)...);
}

/// A row of doubles.
template <class... Traits>
void addDoubleRow(FactoryGroup& group, std::string_view name, std::initializer_list<double> values,
                  Traits&&... traits)
{
    addValue(group, name, internal::makeRow(values), std::forward<Traits>(traits)...);
}

using Rgb = std::array<int, 3>;

/// A colour: red, green and blue, each from 0 to 255, checked as such.
template <class... Traits>
void addColour(FactoryGroup& group, std::string_view name, const Rgb& value, Traits&&... traits)
{
    addValue(group, name, internal::makeRow<int>(value), colourTriple(), std::forward<Traits>(traits)...);
}

/// A cell of character vectors.
template <class... Traits>
void addCell(FactoryGroup& group, std::string_view name, std::vector<std::string> texts, Traits&&... traits)
{
    addValue(group, name, internal::cellstr(std::move(texts)), std::forward<Traits>(traits)...);
}

}  // namespace verdix::settings::tree
