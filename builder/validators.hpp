#pragma once

#include <builder/function_descriptor.hpp>

#include <settings/core/run_time_defaults.hpp>
#include <settings/core/validators.hpp>

#include <string>
#include <string_view>
#include <utility>

namespace verdix::settings {

/// Splits a dotted name at its last dot into (prefix, function name): "a.b.f" into ("a.b", "f"). A name
/// without a dot is both.
[[nodiscard]] std::pair<std::string, std::string> splitQualifiedName(std::string_view name);

/// A validator in the scripting language out of its dotted name.
[[nodiscard]] ::settings::core::Validator makeValidator(std::string_view qualifiedName);

/// A native or managed validator. Raises std::logic_error, which begins with the setting's full name, when
/// the language is neither "C" nor "Java".
[[nodiscard]] ::settings::core::Validator makeValidator(const FunctionDescriptor& function,
                                                        const std::string& settingName);

/// The same two for functions that compute a factory value.
[[nodiscard]] ::settings::core::RunTimeDefault makeRunTimeDefault(std::string_view qualifiedName);
[[nodiscard]] ::settings::core::RunTimeDefault makeRunTimeDefault(const FunctionDescriptor& function,
                                                                  const std::string& settingName);

/// A validator that runs in this process.
[[nodiscard]] ::settings::core::CPPValidator
makeCppValidator(::settings::core::CPPValidator::Callable callable);

}  // namespace verdix::settings
