#pragma once

#include <builder/factory_node.hpp>
#include <builder/function_descriptor.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <settings/core/factory_setting_properties.hpp>
#include <verdix/settings/internal/values.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace verdix::settings {

/// The properties of a node while its options are applied.
struct SettingOptions
{
    ::settings::core::detail::FactorySettingProperties properties;
    foundation::verdixdata::standalone::ClientArrayFactory arrayFactory;
    detail::TreeContext treeContext;
    std::string fullName;  ///< for error messages
};

namespace detail {

/// Returns the properties of a node with no options set.
[[nodiscard]] ::settings::core::detail::FactorySettingProperties defaultProperties();

/// Returns the options of a node under a realized group, with default properties. Passes on what getFullName
/// of the parent throws.
[[nodiscard]] SettingOptions defaultOptions(const FactorySettingNode& node);

enum class Option : unsigned char
{
    hidden,
    readOnly,
    factoryValue,
    validationFcn,
    factoryValueFcn,
    valueValidator,
    additionalFile,
    errorHandler
};

/// Returns the option with this case-sensitive name; std::nullopt if there is none.
[[nodiscard]] constexpr std::optional<Option> findOption(std::string_view name) noexcept
{
    constexpr std::pair<std::string_view, Option> table[] = {
        {"FactoryValue", Option::factoryValue},  // first, because it is the most frequent
        {"ValidationFcn", Option::validationFcn},     {"Hidden", Option::hidden},
        {"ValueValidator", Option::valueValidator},   {"ReadOnly", Option::readOnly},
        {"FactoryValueFcn", Option::factoryValueFcn}, {"AdditionalFile", Option::additionalFile},
        {"ErrorHandler", Option::errorHandler},
    };
    for (const auto& [candidate, option] : table) {
        if (candidate == name) {
            return option;
        }
    }
    return std::nullopt;
}

/// Throws std::logic_error: `name` is not the name of an option.
[[noreturn]] void throwInvalidName(const SettingOptions& options, std::string_view name);

/// Throws std::logic_error: the type of the value is invalid for the option.
[[noreturn]] void throwInvalidType(const SettingOptions& options, Option option);

// One overload for each type that an option can have. Each throws as throwInvalidType does if the option does
// not have that type.
void store(SettingOptions& options, Option option, bool value);
void store(SettingOptions& options, Option option, int value);
void store(SettingOptions& options, Option option, const char* value);
void store(SettingOptions& options, Option option, foundation::verdixdata::Array&& value);
void store(SettingOptions& options, Option option, const FunctionDescriptor& value);
void store(SettingOptions& options, Option option, ::settings::core::CPPValidator&& value);
void store(SettingOptions& options, Option option, internal::SettingValueValidator&& value);
void store(SettingOptions& options, Option option, std::vector<internal::SettingValueValidator>&& value);
void store(SettingOptions& options, Option option, ::settings::core::detail::ErrorHandler&& value);

template <class T, class... Candidates>
inline constexpr bool isOneOf = (std::is_same_v<T, Candidates> || ...);

}  // namespace detail

/// The name of an option. If the name is a constant, it is looked up at compile time. An unknown name only
/// throws when it is applied; a null pointer counts as an empty, unknown name.
class OptionName
{
public:
    constexpr OptionName(const char* name) noexcept
        : OptionName(name == nullptr ? std::string_view() : std::string_view(name))
    {}
    constexpr OptionName(std::string_view name) noexcept : name_(name), option_(detail::findOption(name)) {}
    OptionName(const std::string& name) noexcept : OptionName(std::string_view(name)) {}

    /// Returns the option. Throws std::logic_error when there is no option with this name.
    [[nodiscard]] detail::Option optionFor(const SettingOptions& options) const
    {
        if (!option_) {
            detail::throwInvalidName(options, name_);
        }
        return *option_;
    }

private:
    std::string_view name_;
    std::optional<detail::Option> option_;
};

/// Applies one option. The names, with the types of their values, are "Hidden", "ReadOnly", "AdditionalFile"
/// (bool), "FactoryValue" (bool, int, character pointer, Array), "ValidationFcn" (character pointer,
/// FunctionDescriptor, CPPValidator), "FactoryValueFcn" (character pointer, FunctionDescriptor),
/// "ValueValidator" (a value validator, which is appended, or a vector of value validators, which replaces
/// the existing ones) and "ErrorHandler" (a copyable callable). Any other combination compiles, but throws
/// std::logic_error; so does a null character pointer.
template <class Value>
void applyOption(SettingOptions& options, OptionName name, Value&& value)
{
    using foundation::verdixdata::Array;
    using ::settings::core::detail::ErrorHandler;
    using Type = std::decay_t<Value>;

    const detail::Option option = name.optionFor(options);
    if constexpr (detail::isOneOf<Type, bool, int, const char*, FunctionDescriptor>) {
        detail::store(options, option, value);
    } else if constexpr (std::is_same_v<Type, char*>) {
        detail::store(options, option, static_cast<const char*>(value));
    } else if constexpr (std::is_base_of_v<Array, Type>) {
        detail::store(options, option, Array(std::forward<Value>(value)));
    } else if constexpr (detail::isOneOf<Type, ::settings::core::CPPValidator,
                                         internal::SettingValueValidator,
                                         std::vector<internal::SettingValueValidator>>)
    {
        detail::store(options, option, Type(std::forward<Value>(value)));
    } else if constexpr (std::is_invocable_r_v<void, Type&, const std::string&, const Array&> &&
                         std::is_copy_constructible_v<Type>)
    {
        detail::store(options, option, ErrorHandler(std::forward<Value>(value)));
    } else {
        detail::throwInvalidType(options, option);
    }
}

namespace detail {

inline void applyPairs(SettingOptions& /*options*/) {}

template <class Value, class... Rest>
void applyPairs(SettingOptions& options, OptionName name, Value&& value, Rest&&... rest)
{
    applyOption(options, name, std::forward<Value>(value));
    applyPairs(options, std::forward<Rest>(rest)...);
}

}  // namespace detail

}  // namespace verdix::settings
