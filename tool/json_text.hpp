#pragma once

#include <boost/json/value.hpp>

#include <string>

namespace vx::tool {

/// Appends a value as JSON on one line, with a space after each colon and comma. Numbers are the shortest
/// that read back the same, whole ones without exponent or point; a number that JSON has no form for is null.
void appendJson(std::string& text, const boost::json::value& value);

}  // namespace vx::tool
