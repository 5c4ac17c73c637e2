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

/// What the option pairs of one node are applied to.
struct SettingOptions
{
    ::settings::core::detail::FactorySettingProperties properties;
    foundation::verdixdata::standalone::ClientArrayFactory arrayFactory;
    detail::TreeContext treeContext;
    std::string fullName;  ///< begins the text of every error but one
};

namespace detail {

/// Properties of a node with no options set.
[[nodiscard]] ::settings::core::detail::FactorySettingProperties defaultProperties();

/// The same, for a node under a realized group, ready for options. Throws what the getFullName of that
/// group's node throws.
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

/// The option of this name, letter case included; nothing for any other name.
[[nodiscard]] constexpr std::optional<Option> findOption(std::string_view name) noexcept
{
    constexpr std::pair<std::string_view, Option> table[] = {
        {"FactoryValue", Option::factoryValue},  // the most frequent first
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

/// Throws the std::logic_error for a name that is no option's.
[[noreturn]] void refuseName(const SettingOptions& options, std::string_view name);

/// Throws the option's own std::logic_error for a value of a type that it does not take.
[[noreturn]] void refuseType(const SettingOptions& options, Option option);

// One form per type that some option takes; each throws refuseType's error for the options that do not.
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

/// An option by its name, looked up once when it is a constant. Any string will do: an unknown name is
/// refused where it is applied, and so is a null pointer, as the empty name.
class OptionName
{
public:
    constexpr OptionName(const char* spelled) noexcept
        : OptionName(spelled == nullptr ? std::string_view() : std::string_view(spelled))
    {}
    constexpr OptionName(std::string_view spelled) noexcept
        : spelled_(spelled), option_(detail::findOption(spelled))
    {}
    OptionName(const std::string& spelled) noexcept : OptionName(std::string_view(spelled)) {}

    /// Throws std::logic_error for a name that no option has.
    [[nodiscard]] detail::Option optionFor(const SettingOptions& options) const
    {
        if (!option_) {
            detail::refuseName(options, spelled_);
        }
        return *option_;
    }

private:
    std::string_view spelled_;
    std::optional<detail::Option> option_;
};

/// Applies one option pair. The names are "Hidden", "ReadOnly", "AdditionalFile" (bool), "FactoryValue"
/// (bool, int, character pointer, Array), "ValidationFcn" (character pointer, FunctionDescriptor,
/// CPPValidator), "FactoryValueFcn" (character pointer, FunctionDescriptor), "ValueValidator" (one record,
/// which is appended, or a vector of records, which replaces) and "ErrorHandler" (a callable that can be
/// copied). Any other combination, and a null character pointer, compiles and throws std::logic_error, so
/// that it reads like every other misuse of the tree.
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
        detail::refuseType(options, option);
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
