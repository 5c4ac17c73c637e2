#pragma once

#include <boost/json/object.hpp>

#include "render/output.hpp"

namespace vx::tool {

/// Writes a document with one member per line, or one element per line for members that are arrays of
/// objects.
void writeJson(const boost::json::object& document, Output& out);

}  // namespace vx::tool
