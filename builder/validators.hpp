#pragma once

#include <builder/function_descriptor.hpp>

#include <settings/core/run_time_defaults.hpp>
#include <settings/core/validators.hpp>

#include <string>
#include <string_view>
#include <utility>

namespace verdix::settings {

/// Splits a qualified name at its last dot into prefix and function name: "a.b.f" into ("a.b", "f"). Without
/// a dot, both are the whole name.
[[nodiscard]] std::pair<std::string, std::string> splitQualifiedName(std::string_view name);

/// Returns a validator in the scripting language.
[[nodiscard]] ::settings::core::Validator makeValidator(std::string_view qualifiedName);

/// Returns a native or managed validator. Throws std::logic_error, naming the setting, when the language is
/// neither "C" nor "Java".
[[nodiscard]] ::settings::core::Validator makeValidator(const FunctionDescriptor& function,
                                                        const std::string& settingName);

/// As makeValidator, for functions that compute a factory value.
[[nodiscard]] ::settings::core::RunTimeDefault makeRunTimeDefault(std::string_view qualifiedName);
[[nodiscard]] ::settings::core::RunTimeDefault makeRunTimeDefault(const FunctionDescriptor& function,
                                                                  const std::string& settingName);

/// Returns a validator that runs in this process.
[[nodiscard]] ::settings::core::CPPValidator
makeCppValidator(::settings::core::CPPValidator::Callable callable);

}  // namespace verdix::settings
