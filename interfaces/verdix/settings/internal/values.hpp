#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>
#include <settings/core/setting_value_validator.hpp>

#include <cstddef>
#include <string>
#include <vector>

/// Factory values and rules, made in one call.
namespace verdix::settings::internal {

/// One declarative value-validator record, as the settings core keeps it.
using SettingValueValidator = ::settings::core::SettingValueValidator::ConfigData;

/// A character vector: a 1-by-N row of UTF-16 units, 1-by-0 for the empty text. The narrow form takes UTF-8.
///@{
[[nodiscard]] VX_API foundation::verdixdata::Array charvec(std::string&& text);
[[nodiscard]] VX_API foundation::verdixdata::Array charvec(std::u16string&& text);
///@}

/// A 1-by-N cell of character vectors out of UTF-8 texts.
[[nodiscard]] VX_API foundation::verdixdata::Array cellstr(std::vector<std::string>&& texts);

/// A cell of the dimensions given, its elements unassigned.
[[nodiscard]] VX_API foundation::verdixdata::Array cell(const std::vector<std::size_t>& dimensions);

}  // namespace verdix::settings::internal
