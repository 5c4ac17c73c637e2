#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/setting_value_validator.hpp>

#include <cstddef>
#include <string>
#include <vector>

/// Functions that create factory values.
namespace verdix::settings::internal {

/// A value validator of a setting.
using SettingValueValidator = ::settings::core::SettingValueValidator::ConfigData;

/// Creates a character vector, 1-by-N UTF-16 code units, from UTF-8 or UTF-16; 1-by-0 for an empty string.
///@{
[[nodiscard]] VX_API foundation::verdixdata::Array charvec(std::string&& text);
[[nodiscard]] VX_API foundation::verdixdata::Array charvec(std::u16string&& text);
///@}

/// Creates a 1-by-N cell of character vectors from UTF-8 strings.
[[nodiscard]] VX_API foundation::verdixdata::Array cellstr(std::vector<std::string>&& texts);

/// Creates a cell with unassigned elements.
[[nodiscard]] VX_API foundation::verdixdata::Array cell(const std::vector<std::size_t>& dimensions);

}  // namespace verdix::settings::internal
