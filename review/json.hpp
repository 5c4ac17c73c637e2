#pragma once

#include <boost/json/value.hpp>

#include <cstdint>
#include <string>

namespace vx::review {

enum class JsonStyle : std::uint8_t
{
    standard,  ///< { "name": [1, 2] }
    brief      ///< {name: [1, 2]}, for people
};

/// Appends a value on one line, with a space after each colon and comma. Numbers are written in the shortest
/// form that parses back to the same number, integers without exponent or point, and null for NaN and the
/// infinities.
void appendJson(std::string& text, const boost::json::value& value, JsonStyle style = JsonStyle::standard);

}  // namespace vx::review
