#pragma once

#include <boost/json/object.hpp>

#include <string>

#include "render/output.hpp"

namespace vx::tool {

/// Appends a value as JSON on one line, with a space after each colon and comma. Numbers are written in the
/// shortest form that parses back to the same number, integers without exponent or point, and null for NaN
/// and the infinities.
void appendJson(std::string& text, const boost::json::value& value);

/// Writes a document with one member per line, or one element per line for members that are arrays of
/// objects.
void writeJson(const boost::json::object& document, Output& out);

}  // namespace vx::tool
