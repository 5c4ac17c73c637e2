#pragma once

#include <settings_core/constraints/constraints.hpp>

#include <boost/json/object.hpp>

namespace vx::tool {

/// Returns the JSON Schema of a setting's value in a settings file, with all constraints that JSON Schema can
/// express.
[[nodiscard]] boost::json::object valueSchema(const core::Constraint& constraint);

}  // namespace vx::tool
