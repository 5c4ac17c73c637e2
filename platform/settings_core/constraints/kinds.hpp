#pragma once

#include <settings_core/constraints/constraints.hpp>

#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx::core {

/// Reads the parameters of an exported constraint. All functions throw std::invalid_argument with the name of
/// the parameter if it is missing or has another type.
class ParameterReader
{
public:
    /// Refers to the parameters.
    explicit ParameterReader(const std::vector<Parameter>& parameters) : parameters_(parameters) {}

    /// Returns a number, or `open` if it is unlimited.
    [[nodiscard]] double number(std::string_view name, double open) const;
    /// Returns a count; std::nullopt if it is unlimited.
    [[nodiscard]] std::optional<std::size_t> count(std::string_view name) const;
    [[nodiscard]] const std::string& string(std::string_view name) const;
    [[nodiscard]] std::vector<std::u16string> strings(std::string_view name) const;

    [[nodiscard]] bool has(std::string_view name) const noexcept { return find(name) != nullptr; }

private:
    [[nodiscard]] const Parameter* find(std::string_view name) const noexcept;
    template <class T>
    [[nodiscard]] const T* findAs(std::string_view name) const;
    template <class T>
    [[nodiscard]] const T& as(std::string_view name, const char* expected) const;

    const std::vector<Parameter>& parameters_;
};

/// A kind of constraint of value validators. A field of SettingValueValidator::Constraints becomes a kind by
/// its entry in the table in kinds.cpp, and by nothing else.
struct ConstraintKind
{
    using Constraints = ::settings::core::SettingValueValidator::Constraints;
    using Array = foundation::verdixdata::Array;

    std::string_view name;       ///< in exported trees and for users
    std::size_t exportPosition;  ///< rank among the constraints of a value validator in an exported tree

    // The other functions are only called for constraints of which this kind is set.
    bool (*isSet)(const Constraints& constraints);
    bool (*accepts)(const Constraints& constraints, const Array& value);
    /// Phrase that follows "must be"; empty if the example, a value that satisfies the constraint, shows it.
    std::string (*describe)(const Constraints& constraints, const Array& example);
    /// Restricts `all`.
    void (*fold)(const Constraints& constraints, Constraint& all);
    /// Parameters in an exported tree.
    std::vector<Parameter> (*parameters)(const Constraints& constraints);
    /// Sets this kind from such parameters. Throws std::invalid_argument.
    void (*restore)(const ParameterReader& parameters, Constraints& constraints);
};

/// All kinds, in the order in which they are checked and described.
[[nodiscard]] VX_API std::span<const ConstraintKind> constraintKinds() noexcept;

/// Calls visitor(kind) for every kind that is set.
template <class Visitor>
void forEachKind(const ConstraintKind::Constraints& constraints, Visitor visitor)
{
    for (const ConstraintKind& kind : constraintKinds()) {
        if (kind.isSet(constraints)) {
            visitor(kind);
        }
    }
}

/// Whether the value satisfies all kinds that are set in these value validators.
[[nodiscard]] bool satisfiesAll(const std::vector<ValueValidator>& validators,
                                const foundation::verdixdata::Array& value);

/// Whether the range does not limit numbers, NaN included.
[[nodiscard]] bool isOpen(const ::settings::core::SettingValueValidator::Range& range) noexcept;

}  // namespace vx::core
