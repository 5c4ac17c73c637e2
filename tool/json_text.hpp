#pragma once

#include <boost/json/object.hpp>

#include <string>

#include "output.hpp"

namespace vx::tool {

/// Appends a value as JSON on one line, with a space after each colon and comma. Numbers are the shortest
/// that read back the same, whole ones without exponent or point; a number that JSON has no form for is null.
void appendJson(std::string& text, const boost::json::value& value);

/// Writes a document: each member on a line of its own, and so each entry of a member that is a list of
/// objects.
void writeJson(const boost::json::object& document, Output& out);

}  // namespace vx::tool
