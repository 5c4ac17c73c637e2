#pragma once

// The words in which the areas of the tree are written. A line creates one setting: the group, the setting's
// name, its factory value, and then, in any order, its traits:
//
//   Visible, Hidden        the visibility is stated (a node with neither is visible)
//   readOnly(true)         whether users can change it is stated
//   inRange(1, 100), ...   a constraint; see "Constraints"
//   integerScalar, ...     the validator, where it is not the one that the word implies; see "Validators"
//   computedBy(...)        a function that computes the factory value
//   onError(...)           what is called for a refused value
//
// Each word takes values of its own type only, and a trait of each kind once; anything else does not compile.

#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace verdix::settings::tree {

// Visibility and access

enum class Visibility : std::uint8_t
{
    unstated,
    visible,
    hidden
};

inline constexpr Visibility Visible = Visibility::visible;
inline constexpr Visibility Hidden = Visibility::hidden;

enum class Access : std::uint8_t
{
    unstated,
    writable,
    readOnly
};

[[nodiscard]] constexpr Access readOnly(bool isReadOnly)
{
    return isReadOnly ? Access::readOnly : Access::writable;
}

// Validators

/// A function of the scripting language, or none.
enum class ScriptFunction : std::uint8_t
{
    none,
    logicalScalar,
    stringScalar,
    integerScalar,
    numericScalar
};

/// In place of the validator that the word implies.
///@{
inline constexpr ScriptFunction unchecked = ScriptFunction::none;
inline constexpr ScriptFunction logicalScalar = ScriptFunction::logicalScalar;
inline constexpr ScriptFunction stringScalar = ScriptFunction::stringScalar;
inline constexpr ScriptFunction integerScalar = ScriptFunction::integerScalar;
inline constexpr ScriptFunction numericScalar = ScriptFunction::numericScalar;
///@}

struct NativeFunction
{
    const char* library;
    const char* function;
};

/// A validator in a native library.
[[nodiscard]] constexpr NativeFunction native(const char* library, const char* function)
{
    return {library, function};
}

/// A validator that runs in this process; see CPPValidator::Callable.
[[nodiscard]] inline ::settings::core::CPPValidator
checkedBy(::settings::core::CPPValidator::Callable callable)
{
    return makeCppValidator(std::move(callable));
}

struct ComputedBy
{
    NativeFunction function;
};

/// A function in a native library that computes the factory value when it is asked for.
[[nodiscard]] constexpr ComputedBy computedBy(const char* library, const char* function)
{
    return {{library, function}};
}

// Error handlers

/// What is called with the setting's name and a value that was refused; what it throws is the message.
using ErrorHandler = void(const std::string& setting, const foundation::verdixdata::Array& value);

struct OnError
{
    ErrorHandler* handler;
};

[[nodiscard]] constexpr OnError onError(ErrorHandler& handler)
{
    return {&handler};
}

// Constraints

using Colour = ::settings::core::SettingValueValidator::Colour;

/// What a value must satisfy, as a constant; see SettingValueValidator::Constraints.
struct Constraint
{
    static constexpr std::uint32_t open = std::numeric_limits<std::uint32_t>::max();

    /// Of every element, both included.
    ///@{
    double lower = -std::numeric_limits<double>::infinity();
    double upper = std::numeric_limits<double>::infinity();
    ///@}
    std::uint32_t maximumLength = open;
    std::uint32_t rows = open;
    std::uint32_t columns = open;
    bool isNumeric = false;  ///< the bounds count
    bool isNormalised = false;
    bool isColour = false;
    foundation::verdixdata::ArrayType elementClass = foundation::verdixdata::ArrayType::UNKNOWN;
};

/// A constraint with a list of plain ASCII strings.
template <std::size_t Count>
struct ListConstraint : Constraint
{
    std::array<const char*, Count> allowed;
};

/// Every element lies between the bounds or on them.
[[nodiscard]] constexpr Constraint inRange(double lower, double upper)
{
    return {.lower = lower, .upper = upper, .isNumeric = true};
}

/// Every element is this or more.
[[nodiscard]] constexpr Constraint atLeast(double lower)
{
    return {.lower = lower, .isNumeric = true};
}

/// A character vector has at most so many characters, a cell at most so many elements.
[[nodiscard]] constexpr Constraint maximumLength(std::uint32_t length)
{
    return {.maximumLength = length};
}

/// A row of so many elements, each of which satisfies the constraint.
[[nodiscard]] constexpr Constraint rowOf(std::uint32_t columns, Constraint elements)
{
    elements.rows = 1;
    elements.columns = columns;
    return elements;
}

/// The value is a cell.
[[nodiscard]] constexpr Constraint cellOfStrings()
{
    return {.elementClass = foundation::verdixdata::ArrayType::CELL};
}

/// A character vector is one of these strings, or every element of a cell is.
template <std::size_t Count>
[[nodiscard]] constexpr ListConstraint<Count> oneOf(const char* const (&allowed)[Count])
{
    return {{}, std::to_array(allowed)};
}

/// The value is a cell, and each element one of these strings.
///@{
template <std::size_t Count>
[[nodiscard]] constexpr ListConstraint<Count> cellOf(const std::array<const char*, Count>& allowed)
{
    return {cellOfStrings(), allowed};
}
template <std::size_t Count>
[[nodiscard]] constexpr ListConstraint<Count> cellOf(const char* const (&allowed)[Count])
{
    return cellOf(std::to_array(allowed));
}
///@}

/// Red, green and blue as whole numbers from 0 to 255.
[[nodiscard]] constexpr Constraint colourTriple()
{
    return {.isColour = true};
}

/// Red, green and blue as real numbers from 0 to 1.
[[nodiscard]] constexpr Constraint normalisedColour()
{
    return {.isNormalised = true, .isColour = true};
}

/// The same, or one of these names.
template <std::size_t Count>
[[nodiscard]] constexpr ListConstraint<Count> normalisedColour(const char* const (&names)[Count])
{
    return {normalisedColour(), std::to_array(names)};
}

/// Where a window is, in pixels: left, bottom, width and height. The first two may be negative, on a screen
/// beside the main one. The bounds refuse what is no place or size, NaN and the infinities.
[[nodiscard]] constexpr Constraint windowPosition()
{
    using Pixels = std::numeric_limits<std::int32_t>;
    return rowOf(4, inRange(Pixels::min(), Pixels::max()));
}

// How a line is compiled: its traits are folded into two constants, and one call out of line does the work.

namespace detail {

/// Traits that fit into a register.
struct Flags
{
    ScriptFunction validator = ScriptFunction::none;
    Visibility visibility = Visibility::unstated;
    Access access = Access::unstated;
};

/// The other traits; null where a line has none of a kind. They live as long as the line.
struct Parts
{
    const Constraint* constraint = nullptr;
    std::span<const char* const> allowed;  ///< belongs to the constraint
    const NativeFunction* validator = nullptr;
    const NativeFunction* runTimeDefault = nullptr;
    const ::settings::core::CPPValidator* callable = nullptr;
    ErrorHandler* errorHandler = nullptr;
};

enum class Kind : std::uint8_t
{
    visibility,
    access,
    validator,
    constraint,
    runTimeDefault,
    errorHandler
};

template <class Trait>
inline constexpr Kind kindOf = Kind::constraint;
template <>
inline constexpr Kind kindOf<Visibility> = Kind::visibility;
template <>
inline constexpr Kind kindOf<Access> = Kind::access;
template <>
inline constexpr Kind kindOf<ScriptFunction> = Kind::validator;
template <>
inline constexpr Kind kindOf<NativeFunction> = Kind::validator;
template <>
inline constexpr Kind kindOf<::settings::core::CPPValidator> = Kind::validator;
template <>
inline constexpr Kind kindOf<ComputedBy> = Kind::runTimeDefault;
template <>
inline constexpr Kind kindOf<OnError> = Kind::errorHandler;

template <Kind kind, class... Traits>
inline constexpr bool has = ((kindOf<Traits> == kind) || ...);

/// Whether no kind occurs twice: the sum of distinct bits is their union.
template <class... Traits>
inline constexpr bool areOfDistinctKinds = ((1U << static_cast<unsigned>(kindOf<Traits>)) + ... + 0U) ==
                                           ((1U << static_cast<unsigned>(kindOf<Traits>)) | ... | 0U);

constexpr void add(Flags& flags, Visibility visibility)
{
    flags.visibility = visibility;
}
constexpr void add(Flags& flags, Access access)
{
    flags.access = access;
}
constexpr void add(Flags& flags, ScriptFunction validator)
{
    flags.validator = validator;
}
constexpr void add(Flags& /*flags*/, const auto& /*trait*/) {}

/// A validator among the traits replaces the one implied.
template <class... Traits>
constexpr Flags flagsOf(ScriptFunction implied, const Traits&... traits)
{
    static_assert(areOfDistinctKinds<Traits...>, "two traits of a line say the same thing");
    Flags flags{.validator = has<Kind::validator, Traits...> ? ScriptFunction::none : implied};
    (add(flags, traits), ...);
    return flags;
}

constexpr void add(Parts& parts, const Constraint& constraint)
{
    parts.constraint = &constraint;
}
template <std::size_t Count>
constexpr void add(Parts& parts, const ListConstraint<Count>& constraint)
{
    parts.constraint = &constraint;
    parts.allowed = constraint.allowed;
}
constexpr void add(Parts& parts, const NativeFunction& validator)
{
    parts.validator = &validator;
}
constexpr void add(Parts& parts, const ComputedBy& computed)
{
    parts.runTimeDefault = &computed.function;
}
inline void add(Parts& parts, const ::settings::core::CPPValidator& validator)
{
    parts.callable = &validator;
}
constexpr void add(Parts& parts, OnError error)
{
    parts.errorHandler = error.handler;
}
constexpr void add(Parts& /*parts*/, Visibility /*flag*/) {}
constexpr void add(Parts& /*parts*/, Access /*flag*/) {}
constexpr void add(Parts& /*parts*/, ScriptFunction /*flag*/) {}

extern const Parts noParts;

template <class Trait>
inline constexpr bool isFlag = std::is_enum_v<Trait>;

/// What the traits hold apart from flags; it refers to them.
template <class... Traits>
constexpr decltype(auto) partsOf(const Traits&... traits)
{
    if constexpr ((isFlag<Traits> && ...)) {
        return (noParts);
    } else {
        Parts parts;
        (add(parts, traits), ...);
        return parts;
    }
}

/// The constraint of every colour of whole numbers.
extern const Constraint anyColour;
extern const Parts onlyColour;

template <class... Traits>
constexpr decltype(auto) colourParts(const Traits&... traits)
{
    if constexpr ((isFlag<Traits> && ...)) {
        return (onlyColour);
    } else {
        return partsOf(anyColour, traits...);
    }
}

// One per type of factory value.
void addUnset(FactoryGroup& group, std::string_view name, Flags flags, const Parts& parts);
void addValue(FactoryGroup& group, std::string_view name, foundation::verdixdata::Array&& value, Flags flags,
              const Parts& parts);
void addLogical(FactoryGroup& group, std::string_view name, bool value, Flags flags, const Parts& parts);
void addText(FactoryGroup& group, std::string_view name, std::string_view value, Flags flags,
             const Parts& parts);
void addString(FactoryGroup& group, std::string_view name, const char* value, Flags flags,
               const Parts& parts);
void addInteger(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts);
void addNumber(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts);
void addIntegerRow(FactoryGroup& group, std::string_view name, std::span<const int> values, Flags flags,
                   const Parts& parts);
void addNumberRow(FactoryGroup& group, std::string_view name, std::span<const double> values, Flags flags,
                  const Parts& parts);
void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings, Flags flags,
             const Parts& parts);

}  // namespace detail

// Groups

/// A group.
FactoryGroup addGroup(FactoryGroup& parent, const char* name, Visibility visibility = Visibility::unstated);

// Settings

/// A setting without a factory value, or with one that is computed.
template <class... Traits>
void addUnset(FactoryGroup& group, std::string_view name, const Traits&... traits)
{
    static_assert(detail::has<detail::Kind::constraint, Traits...> ||
                      detail::has<detail::Kind::validator, Traits...>,
                  "without a factory value, only a constraint or a validator can refuse anything");
    detail::addUnset(group, name, detail::flagsOf(unchecked, traits...), detail::partsOf(traits...));
}

/// A setting with a ready factory value.
template <class... Traits>
void addValue(FactoryGroup& group, std::string_view name, foundation::verdixdata::Array value,
              const Traits&... traits)
{
    detail::addValue(group, name, std::move(value), detail::flagsOf(unchecked, traits...),
                     detail::partsOf(traits...));
}

/// A logical scalar; implies logicalScalar.
template <class... Traits>
void addLogical(FactoryGroup& group, std::string_view name, std::same_as<bool> auto value,
                const Traits&... traits)
{
    detail::addLogical(group, name, value, detail::flagsOf(logicalScalar, traits...),
                       detail::partsOf(traits...));
}

/// A character vector; implies stringScalar.
template <class... Traits>
void addText(FactoryGroup& group, std::string_view name, std::string_view value, const Traits&... traits)
{
    detail::addText(group, name, value, detail::flagsOf(stringScalar, traits...), detail::partsOf(traits...));
}

/// The same, out of UTF-16.
template <class... Traits>
void addText(FactoryGroup& group, std::string_view name, std::u16string&& value, const Traits&... traits)
{
    detail::addValue(group, name, internal::charvec(std::move(value)),
                     detail::flagsOf(stringScalar, traits...), detail::partsOf(traits...));
}

/// A string scalar; implies stringScalar.
template <class... Traits>
void addString(FactoryGroup& group, std::string_view name, const char* value, const Traits&... traits)
{
    detail::addString(group, name, value, detail::flagsOf(stringScalar, traits...),
                      detail::partsOf(traits...));
}

/// An int32 scalar; implies integerScalar.
template <class... Traits>
void addInteger(FactoryGroup& group, std::string_view name, std::same_as<int> auto value,
                const Traits&... traits)
{
    detail::addInteger(group, name, value, detail::flagsOf(integerScalar, traits...),
                       detail::partsOf(traits...));
}

/// A double scalar; implies numericScalar.
template <class... Traits>
void addNumber(FactoryGroup& group, std::string_view name, std::same_as<int> auto value,
               const Traits&... traits)
{
    detail::addNumber(group, name, value, detail::flagsOf(numericScalar, traits...),
                      detail::partsOf(traits...));
}

/// A row of int32.
template <class... Traits>
void addIntegerRow(FactoryGroup& group, std::string_view name, std::initializer_list<int> values,
                   const Traits&... traits)
{
    detail::addIntegerRow(group, name, values, detail::flagsOf(unchecked, traits...),
                          detail::partsOf(traits...));
}

/// A row of doubles.
template <class... Traits>
void addNumberRow(FactoryGroup& group, std::string_view name, std::initializer_list<double> values,
                  const Traits&... traits)
{
    detail::addNumberRow(group, name, values, detail::flagsOf(unchecked, traits...),
                         detail::partsOf(traits...));
}

using Rgb = std::array<int, 3>;
using NormalisedRgb = std::array<double, 3>;

/// A colour: red, green and blue as int32, each from 0 to 255, and constrained to that.
template <class... Traits>
void addColour(FactoryGroup& group, std::string_view name, const Rgb& value, const Traits&... traits)
{
    detail::addIntegerRow(group, name, value, detail::flagsOf(unchecked, traits...),
                          detail::colourParts(traits...));
}

/// A colour: red, green and blue as doubles, each from 0 to 1. The constraint is a trait.
template <class... Traits>
void addNormalisedColour(FactoryGroup& group, std::string_view name, const NormalisedRgb& value,
                         const Traits&... traits)
{
    static_assert(detail::has<detail::Kind::constraint, Traits...>, "say normalisedColour(...)");
    detail::addNumberRow(group, name, value, detail::flagsOf(unchecked, traits...),
                         detail::partsOf(traits...));
}

/// A cell of character vectors.
///@{
template <class... Traits>
void addCell(FactoryGroup& group, std::string_view name, std::initializer_list<const char*> strings,
             const Traits&... traits)
{
    detail::addCell(group, name, strings, detail::flagsOf(unchecked, traits...), detail::partsOf(traits...));
}
template <class... Traits>
void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings,
             const Traits&... traits)
{
    detail::addCell(group, name, strings, detail::flagsOf(unchecked, traits...), detail::partsOf(traits...));
}
///@}

}  // namespace verdix::settings::tree
