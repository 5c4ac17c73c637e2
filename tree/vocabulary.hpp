#pragma once

// The functions with which the areas declare the tree. Each call creates one setting. Its arguments are the
// group, the name, the factory value and then, in any order, traits:
//
//   Visible, Hidden        sets the option Hidden to false or true; without it, the node is visible
//   readOnly(true)         sets the option ReadOnly; without it, users can change the value
//   inRange(1, 100), ...   a constraint; see "Constraints"
//   integerScalar, ...     a validator that replaces the default validator of the function; see "Validators"
//   computedBy(...)        a function that computes the factory value, for addUnset
//   onError(...)           a function that is called for invalid values
//
// A factory value of another type, a constraint on other values, one that no value satisfies, and traits that
// contradict each other do not compile.

#include <builder/factory_tree.hpp>
#include <builder/validators.hpp>
#include <builder/values.hpp>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace verdix::settings::tree {

// Visibility and access

enum class Visibility : std::uint8_t
{
    unspecified,
    visible,
    hidden
};

inline constexpr Visibility Visible = Visibility::visible;
inline constexpr Visibility Hidden = Visibility::hidden;

enum class Access : std::uint8_t
{
    unspecified,
    writable,
    readOnly
};

[[nodiscard]] constexpr Access readOnly(bool isReadOnly)
{
    return isReadOnly ? Access::readOnly : Access::writable;
}

// Validators

/// A validator in the scripting language, or none.
enum class ScriptFunction : std::uint8_t
{
    none,
    logicalScalar,
    stringScalar,
    integerScalar,
    numericScalar
};

/// The trait of a setting without a validator.
enum class Unchecked : std::uint8_t
{
    unchecked
};

/// Validators that replace the default one.
///@{
inline constexpr Unchecked unchecked = Unchecked::unchecked;
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

/// Returns a validator in a native library.
[[nodiscard]] constexpr NativeFunction native(const char* library, const char* function)
{
    return {library, function};
}

/// Returns a validator that runs in this process; see CPPValidator::Callable.
[[nodiscard]] inline ::settings::core::CPPValidator
checkedBy(::settings::core::CPPValidator::Callable callable)
{
    return makeCppValidator(std::move(callable));
}

struct ComputedBy
{
    NativeFunction function;
};

/// Returns a function in a native library that computes the factory value when it is read.
[[nodiscard]] constexpr ComputedBy computedBy(const char* library, const char* function)
{
    return {{library, function}};
}

// Error handlers

/// A function that is called with the name of a setting and an invalid value. If it throws, the message of
/// the exception is shown to the user.
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

/// A constraint as a compile-time constant; see SettingValueValidator::Constraints.
struct Constraint
{
    static constexpr std::uint32_t open = std::numeric_limits<std::uint32_t>::max();

    /// Inclusive bounds of every element.
    ///@{
    double lower = -std::numeric_limits<double>::infinity();
    double upper = std::numeric_limits<double>::infinity();
    ///@}
    std::uint32_t maximumLength = open;
    std::uint32_t rows = open;
    std::uint32_t columns = open;
    bool isNumeric = false;  ///< whether the bounds apply
    bool isNormalised = false;
    bool isColour = false;
    foundation::verdixdata::ArrayType elementClass = foundation::verdixdata::ArrayType::UNKNOWN;
};

/// Kinds of values, as bits: a constraint is for values of some kinds, each function below adds those of one.
struct ValueKind
{
    enum : unsigned
    {
        none = 0,
        logical = 1,
        number = 2,
        string = 4,
        cell = 8,
        colour = 16,
        normalisedColour = 32,
        any = 63
    };
};

/// A constraint on values of these kinds. Not derived from Constraint, because clang 14 crashes on derived
/// objects that consteval functions return.
template <unsigned kinds>
struct ConstraintOn
{
    Constraint constraint;
};

/// A constraint with a list of ASCII strings.
template <unsigned kinds, std::size_t Count>
struct ListConstraint
{
    Constraint constraint;
    std::array<const char*, Count> allowed;
};

namespace detail {

/// Does not compile, and shows the message, unless the condition holds.
consteval void require(bool condition, const char* message)
{
    if (!condition) {
        throw std::invalid_argument(message);
    }
}

consteval std::uint32_t toCount(std::int64_t count)
{
    require(count > 0 && count < Constraint::open, "lengths and sizes are at least 1");
    return static_cast<std::uint32_t>(count);
}

constexpr bool isPrintable(char character)
{
    return character >= ' ' && character <= '~';
}

/// Whether all parts of a colour are in the range from 0 to maximum.
template <class Part>
consteval bool areWithin(const std::array<Part, 3>& colour, Part maximum)
{
    return std::all_of(colour.begin(), colour.end(),
                       [maximum](Part part) { return part >= 0 && part <= maximum; });
}

template <std::size_t Count>
consteval std::array<const char*, Count> toList(std::array<const char*, Count> strings)
{
    for (auto string = strings.begin(); string != strings.end(); ++string) {
        require(*string != nullptr, "an allowed string is null");
        const std::string_view characters = *string;
        require(std::all_of(characters.begin(), characters.end(), isPrintable),
                "an allowed string contains a character that is not printable ASCII");
        require(!characters.starts_with(' ') && !characters.ends_with(' '),
                "an allowed string begins or ends with a space");
        require(std::find_if(strings.begin(), string,
                             [&](std::string_view other) { return other == characters; }) == string,
                "an allowed string is repeated");
    }
    return strings;
}

}  // namespace detail

/// Every element is in the range from lower to upper, inclusive. For numbers.
[[nodiscard]] consteval ConstraintOn<ValueKind::number> inRange(double lower, double upper)
{
    detail::require(lower <= upper, "the lower bound is greater than the upper one");
    return {{.lower = lower, .upper = upper, .isNumeric = true}};
}

/// Every element is at least lower. For numbers.
[[nodiscard]] consteval ConstraintOn<ValueKind::number> atLeast(double lower)
{
    return inRange(lower, std::numeric_limits<double>::infinity());
}

/// A character vector has at most `length` characters, a cell at most `length` elements.
[[nodiscard]] consteval ConstraintOn<ValueKind::string | ValueKind::cell> maximumLength(std::int64_t length)
{
    return {{.maximumLength = detail::toCount(length)}};
}

/// The value is a row with this number of columns, and every element satisfies the constraint. For the values
/// that the other constraint is for.
template <unsigned kinds>
[[nodiscard]] consteval ConstraintOn<kinds> rowOf(std::int64_t columns, ConstraintOn<kinds> elements)
{
    elements.constraint.rows = 1;
    elements.constraint.columns = detail::toCount(columns);
    return elements;
}

/// The value is a cell.
[[nodiscard]] consteval ConstraintOn<ValueKind::cell> cellOfStrings()
{
    return {{.elementClass = foundation::verdixdata::ArrayType::CELL}};
}

/// A character vector, or every element of a cell, is one of these strings.
template <std::size_t Count>
[[nodiscard]] consteval ListConstraint<ValueKind::string | ValueKind::cell, Count>
oneOf(const char* const (&allowed)[Count])
{
    return {{}, detail::toList(std::to_array(allowed))};
}

/// The value is a cell, and every element is one of these strings.
///@{
template <std::size_t Count>
[[nodiscard]] consteval ListConstraint<ValueKind::cell, Count>
cellOf(const std::array<const char*, Count>& allowed)
{
    return {cellOfStrings().constraint, detail::toList(allowed)};
}
template <std::size_t Count>
[[nodiscard]] consteval ListConstraint<ValueKind::cell, Count> cellOf(const char* const (&allowed)[Count])
{
    return cellOf(std::to_array(allowed));
}
///@}

/// Red, green and blue as whole numbers from 0 to 255; addColour implies it.
[[nodiscard]] consteval ConstraintOn<ValueKind::colour> colourTriple()
{
    return {{.isColour = true}};
}

/// Red, green and blue as real numbers from 0 to 1.
[[nodiscard]] consteval ConstraintOn<ValueKind::normalisedColour> normalisedColour()
{
    return {{.isNormalised = true, .isColour = true}};
}

/// Red, green and blue as real numbers from 0 to 1, or one of these names. For colours and character vectors.
template <std::size_t Count>
[[nodiscard]] consteval ListConstraint<ValueKind::normalisedColour | ValueKind::string, Count>
normalisedColour(const char* const (&names)[Count])
{
    return {normalisedColour().constraint, detail::toList(std::to_array(names))};
}

/// Position and size of a window in pixels: left, bottom, width, height. left and bottom may be negative on a
/// secondary screen. The bounds exclude NaN and infinities.
[[nodiscard]] consteval ConstraintOn<ValueKind::number> windowPosition()
{
    using Pixels = std::numeric_limits<std::int32_t>;
    return rowOf(4, inRange(Pixels::min(), Pixels::max()));
}

// Implementation. The traits of a line are combined into two constants and passed to one function that is not
// inline, which keeps the code of the areas small.

namespace detail {

/// The traits that fit into a register.
struct Flags
{
    ScriptFunction validator = ScriptFunction::none;
    Visibility visibility = Visibility::unspecified;
    Access access = Access::unspecified;
};

/// Pointers to the other traits, null if a line has none of a kind. The traits live until the end of the full
/// expression.
struct Parts
{
    const Constraint* constraint = nullptr;
    std::span<const char* const> allowed;  ///< allowed strings of the constraint
    const NativeFunction* validator = nullptr;
    const NativeFunction* runTimeDefault = nullptr;
    const ::settings::core::CPPValidator* callable = nullptr;
    ErrorHandler* errorHandler = nullptr;
};

enum class Kind : std::uint8_t
{
    noTrait,
    visibility,
    access,
    validator,
    constraint,
    runTimeDefault,
    errorHandler
};

template <class Trait>
inline constexpr Kind kindOf = Kind::noTrait;
template <>
inline constexpr Kind kindOf<Visibility> = Kind::visibility;
template <>
inline constexpr Kind kindOf<Access> = Kind::access;
template <>
inline constexpr Kind kindOf<Unchecked> = Kind::validator;
template <>
inline constexpr Kind kindOf<ScriptFunction> = Kind::validator;
template <>
inline constexpr Kind kindOf<NativeFunction> = Kind::validator;
template <>
inline constexpr Kind kindOf<::settings::core::CPPValidator> = Kind::validator;
template <unsigned kinds>
inline constexpr Kind kindOf<ConstraintOn<kinds>> = Kind::constraint;
template <unsigned kinds, std::size_t Count>
inline constexpr Kind kindOf<ListConstraint<kinds, Count>> = Kind::constraint;
template <>
inline constexpr Kind kindOf<ComputedBy> = Kind::runTimeDefault;
template <>
inline constexpr Kind kindOf<OnError> = Kind::errorHandler;

template <Kind kind, class... Traits>
inline constexpr bool has = ((kindOf<Traits> == kind) || ...);

/// True if no kind occurs twice: the sum of bits equals their union only if they are distinct.
template <class... Traits>
inline constexpr bool areOfDistinctKinds = ((1U << static_cast<unsigned>(kindOf<Traits>)) + ... + 0U) ==
                                           ((1U << static_cast<unsigned>(kindOf<Traits>)) | ... | 0U);

/// The kinds of values that a trait can be given to.
template <class Trait>
inline constexpr unsigned valuesOf = ValueKind::any;
template <unsigned kinds>
inline constexpr unsigned valuesOf<ConstraintOn<kinds>> = kinds;
template <unsigned kinds, std::size_t Count>
inline constexpr unsigned valuesOf<ListConstraint<kinds, Count>> = kinds;

/// True if a value can be invalid because of a constraint or a validator.
template <ScriptFunction implied, class... Traits>
inline constexpr bool rejectsValues = has<Kind::constraint, Traits...> ||
                                      (has<Kind::validator, Traits...>
                                           ? !(std::same_as<Traits, Unchecked> || ...)
                                           : implied != ScriptFunction::none);

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

/// Combines the traits that are flags. A validator among the traits replaces the implied one. `value` is the
/// kind of the factory value; none if there is none.
template <unsigned value, ScriptFunction implied, class... Traits>
constexpr Flags flagsOf(const Traits&... traits)
{
    static_assert(
        !has<Kind::noTrait, Traits...>,
        "an argument after the factory value is not a trait; the head of vocabulary.hpp lists them");
    static_assert(areOfDistinctKinds<Traits...>, "a line has two traits of the same kind");
    static_assert(((value == ValueKind::any || (valuesOf<Traits> & value) == value) && ...),
                  "the constraint is not for values that this function adds: correct one of them");
    static_assert(value == ValueKind::none || !has<Kind::runTimeDefault, Traits...>,
                  "a setting with a factory value has computedBy(...), too: use addUnset, or leave it out");
    static_assert(!has<Kind::errorHandler, Traits...> || rejectsValues<implied, Traits...>,
                  "onError(...) explains constraints, but there is none: add a constraint or a validator");
    Flags flags{.validator = has<Kind::validator, Traits...> ? ScriptFunction::none : implied};
    (add(flags, traits), ...);
    return flags;
}

constexpr void add(Parts& parts, const Constraint& constraint)
{
    parts.constraint = &constraint;
}
template <unsigned kinds>
constexpr void add(Parts& parts, const ConstraintOn<kinds>& trait)
{
    parts.constraint = &trait.constraint;
}
template <unsigned kinds, std::size_t Count>
constexpr void add(Parts& parts, const ListConstraint<kinds, Count>& trait)
{
    parts.constraint = &trait.constraint;
    parts.allowed = trait.allowed;
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
constexpr void add(Parts& /*parts*/, Unchecked /*flag*/) {}
constexpr void add(Parts& /*parts*/, ScriptFunction /*flag*/) {}

extern const Parts noParts;

template <class Trait>
inline constexpr bool isFlag = std::is_enum_v<Trait>;

/// Combines the traits that are not flags; the result points to them.
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

/// The constraint that addColour implies.
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

/// An element of a cell; no null pointer constant converts to it.
struct CellString
{
    constexpr CellString(std::same_as<const char*> auto string) : characters(string) {}

    constexpr operator const char*() const { return characters; }

    const char* characters;
};

/// A double, or an int in place of one.
template <class T>
concept Number = std::same_as<T, double> || std::same_as<T, int>;

// One function for each type of factory value.
void addUnset(FactoryGroup& group, std::string_view name, Flags flags, const Parts& parts);
void addValue(FactoryGroup& group, std::string_view name, foundation::verdixdata::Array&& value, Flags flags,
              const Parts& parts);
void addLogical(FactoryGroup& group, std::string_view name, bool value, Flags flags, const Parts& parts);
void addCharvec(FactoryGroup& group, std::string_view name, std::string_view value, Flags flags,
                const Parts& parts);
void addString(FactoryGroup& group, std::string_view name, const char* value, Flags flags,
               const Parts& parts);
void addInteger(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts);
void addNumber(FactoryGroup& group, std::string_view name, int value, Flags flags, const Parts& parts);
void addIntegerRow(FactoryGroup& group, std::string_view name, std::span<const int> values, Flags flags,
                   const Parts& parts);
void addNumberRow(FactoryGroup& group, std::string_view name, std::span<const double> values, Flags flags,
                  const Parts& parts);
void addNumberRow(FactoryGroup& group, std::string_view name, std::span<const int> values, Flags flags,
                  const Parts& parts);
void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings, Flags flags,
             const Parts& parts);
void addCell(FactoryGroup& group, std::string_view name, std::span<const CellString> strings, Flags flags,
             const Parts& parts);

}  // namespace detail

// Groups

/// Adds a group.
FactoryGroup addGroup(FactoryGroup& parent, const char* name,
                      Visibility visibility = Visibility::unspecified);

// Settings

/// Adds a setting without a factory value, or with a computed one.
template <class... Traits>
void addUnset(FactoryGroup& group, std::string_view name, const Traits&... traits)
{
    static_assert(detail::rejectsValues<ScriptFunction::none, Traits...>,
                  "a setting without a factory value needs a constraint or a validator");
    detail::addUnset(group, name, detail::flagsOf<ValueKind::none, ScriptFunction::none>(traits...),
                     detail::partsOf(traits...));
}

/// Adds a setting with any factory value.
template <class... Traits>
void addValue(FactoryGroup& group, std::string_view name, foundation::verdixdata::Array value,
              const Traits&... traits)
{
    detail::addValue(group, name, std::move(value),
                     detail::flagsOf<ValueKind::any, ScriptFunction::none>(traits...),
                     detail::partsOf(traits...));
}

/// Adds a logical scalar; implies logicalScalar.
template <class... Traits>
void addLogical(FactoryGroup& group, std::string_view name, std::same_as<bool> auto value,
                const Traits&... traits)
{
    detail::addLogical(group, name, value, detail::flagsOf<ValueKind::logical, logicalScalar>(traits...),
                       detail::partsOf(traits...));
}

/// Adds a character vector (from UTF-8); implies stringScalar.
template <class... Traits>
void addCharvec(FactoryGroup& group, std::string_view name, std::string_view value, const Traits&... traits)
{
    detail::addCharvec(group, name, value, detail::flagsOf<ValueKind::string, stringScalar>(traits...),
                       detail::partsOf(traits...));
}

/// Adds a character vector from UTF-16; implies stringScalar.
template <class... Traits>
void addCharvec(FactoryGroup& group, std::string_view name, std::u16string&& value, const Traits&... traits)
{
    detail::addValue(group, name, internal::charvec(std::move(value)),
                     detail::flagsOf<ValueKind::string, stringScalar>(traits...), detail::partsOf(traits...));
}

/// Adds a string scalar; implies stringScalar.
template <class... Traits>
void addString(FactoryGroup& group, std::string_view name, std::same_as<const char*> auto value,
               const Traits&... traits)
{
    detail::addString(group, name, value, detail::flagsOf<ValueKind::string, stringScalar>(traits...),
                      detail::partsOf(traits...));
}

/// Adds an int32 scalar; implies integerScalar.
template <class... Traits>
void addInteger(FactoryGroup& group, std::string_view name, std::same_as<int> auto value,
                const Traits&... traits)
{
    detail::addInteger(group, name, value, detail::flagsOf<ValueKind::number, integerScalar>(traits...),
                       detail::partsOf(traits...));
}

/// Adds a double scalar; implies numericScalar.
template <class... Traits>
void addNumber(FactoryGroup& group, std::string_view name, std::same_as<int> auto value,
               const Traits&... traits)
{
    detail::addNumber(group, name, value, detail::flagsOf<ValueKind::number, numericScalar>(traits...),
                      detail::partsOf(traits...));
}

/// Adds a row of int32.
template <std::same_as<int> Element, std::size_t Count, class... Traits>
void addIntegerRow(FactoryGroup& group, std::string_view name, const Element (&values)[Count],
                   const Traits&... traits)
{
    detail::addIntegerRow(group, name, values,
                          detail::flagsOf<ValueKind::number, ScriptFunction::none>(traits...),
                          detail::partsOf(traits...));
}

/// Adds a row of doubles.
template <detail::Number Element, std::size_t Count, class... Traits>
void addNumberRow(FactoryGroup& group, std::string_view name, const Element (&values)[Count],
                  const Traits&... traits)
{
    detail::addNumberRow(group, name, values,
                         detail::flagsOf<ValueKind::number, ScriptFunction::none>(traits...),
                         detail::partsOf(traits...));
}

/// Red, green and blue from 0 to 255.
struct Rgb : std::array<int, 3>
{
    consteval Rgb(std::same_as<int> auto red, std::same_as<int> auto green, std::same_as<int> auto blue)
        : array{red, green, blue}
    {
        detail::require(detail::areWithin<int>(*this, 255), "red, green and blue are from 0 to 255");
    }
};

/// Red, green and blue from 0 to 1.
struct NormalisedRgb : std::array<double, 3>
{
    consteval NormalisedRgb(detail::Number auto red, detail::Number auto green, detail::Number auto blue)
        : array{static_cast<double>(red), static_cast<double>(green), static_cast<double>(blue)}
    {
        detail::require(detail::areWithin<double>(*this, 1), "red, green and blue are from 0 to 1");
    }
};

/// Adds a colour: red, green and blue as int32 from 0 to 255; implies colourTriple().
template <class... Traits>
void addColour(FactoryGroup& group, std::string_view name, const Rgb& value, const Traits&... traits)
{
    detail::addIntegerRow(group, name, value,
                          detail::flagsOf<ValueKind::colour, ScriptFunction::none>(traits...),
                          detail::colourParts(traits...));
}

/// Adds a colour: red, green and blue as doubles from 0 to 1. Needs normalisedColour(...) as a trait.
template <class... Traits>
void addNormalisedColour(FactoryGroup& group, std::string_view name, const NormalisedRgb& value,
                         const Traits&... traits)
{
    static_assert(detail::has<detail::Kind::constraint, Traits...>,
                  "a normalised colour needs normalisedColour(...) as a trait");
    detail::addNumberRow(group, name, value,
                         detail::flagsOf<ValueKind::normalisedColour, ScriptFunction::none>(traits...),
                         detail::partsOf(traits...));
}

/// Adds a cell of character vectors.
///@{
template <class... Traits>
void addCell(FactoryGroup& group, std::string_view name, std::initializer_list<detail::CellString> strings,
             const Traits&... traits)
{
    detail::addCell(group, name, strings, detail::flagsOf<ValueKind::cell, ScriptFunction::none>(traits...),
                    detail::partsOf(traits...));
}
template <class... Traits>
void addCell(FactoryGroup& group, std::string_view name, std::span<const char* const> strings,
             const Traits&... traits)
{
    detail::addCell(group, name, strings, detail::flagsOf<ValueKind::cell, ScriptFunction::none>(traits...),
                    detail::partsOf(traits...));
}
///@}

}  // namespace verdix::settings::tree
