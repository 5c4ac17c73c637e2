#pragma once

#include <boost/json/object.hpp>

#include "render/value_constraints.hpp"

namespace vx::tool {

/// Returns the JSON Schema of a setting's value in a settings file, with all constraints that JSON Schema can
/// express.
[[nodiscard]] boost::json::object valueSchema(const ValueConstraints& values);

}  // namespace vx::tool
