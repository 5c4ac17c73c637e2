#pragma once

#include <builder/factory_node.hpp>
#include <builder/function_descriptor.hpp>

#include <foundation/verdixdata/array_factory.hpp>
#include <settings/core/factory_setting_properties.hpp>
#include <verdix/settings/internal/values.hpp>

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
    const detail::FactorySettingNode& node;  ///< the one that is described

    /// Begins the text of every error but one; put together when there is an error to report.
    [[nodiscard]] std::string fullName() const;
};

namespace detail {

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

/// The option of this name. Raises std::logic_error for a name that is none, letter case included.
[[nodiscard]] Option findOption(const SettingOptions& options, std::string_view name);

/// Raises the option's own std::logic_error for a value of a type that it does not take.
[[noreturn]] void refuseType(const SettingOptions& options, Option option);

// One form per type that some option takes; each raises refuseType's error for the options that do not.
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

/// Applies one option pair. The names are "Hidden", "ReadOnly", "AdditionalFile" (bool), "FactoryValue"
/// (bool, int, character pointer, Array), "ValidationFcn" (character pointer, FunctionDescriptor,
/// CPPValidator), "FactoryValueFcn" (character pointer, FunctionDescriptor), "ValueValidator" (one record,
/// which is appended, or a vector of records, which replaces) and "ErrorHandler" (a callable). Any other
/// combination compiles and raises std::logic_error, so that it reads like every other misuse of the tree.
template <class Value>
void applyOption(SettingOptions& options, std::string_view name, Value&& value)
{
    using foundation::verdixdata::Array;
    using ::settings::core::detail::ErrorHandler;
    using Type = std::decay_t<Value>;

    const detail::Option option = detail::findOption(options, name);
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
    } else if constexpr (std::is_invocable_r_v<void, Type&, const std::string&, const Array&>) {
        detail::store(options, option, ErrorHandler(std::forward<Value>(value)));
    } else {
        detail::refuseType(options, option);
    }
}

namespace detail {

inline void applyPairs(SettingOptions& /*options*/) {}

template <class Value, class... Rest>
void applyPairs(SettingOptions& options, const char* name, Value&& value, Rest&&... rest)
{
    applyOption(options, name, std::forward<Value>(value));
    applyPairs(options, std::forward<Rest>(rest)...);
}

}  // namespace detail

}  // namespace verdix::settings
