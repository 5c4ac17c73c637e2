#pragma once

#include <boost/json/object.hpp>

#include "value_constraints.hpp"

namespace vx::tool {

/// The JSON Schema of what a settings file may give for such values: as many rules as JSON Schema can state.
[[nodiscard]] boost::json::object valueSchema(const ValueConstraints& values);

}  // namespace vx::tool
