#pragma once

#include <settings_core/tree/node.hpp>

#include <boost/json/object.hpp>

namespace vx::tool {

/// Returns the JSON Schema of a setting's value in a settings file. Of the forms that a value may have, the
/// one that an editor should offer comes first: true before [true].
///
/// The schema accepts some values that the setting rejects, as JSON Schema cannot express these constraints:
/// - The rows of a matrix have the same length. That is expressed only if the length is fixed.
/// - Lengths of strings are in UTF-16 code units, those of JSON Schema in characters. A character beyond
///   U+FFFF has two code units.
/// - An integer beyond 2^53 is written without exponent and point.
/// - A validator that is a callable, a managed method, or a native function that is not known here.
[[nodiscard]] boost::json::object valueSchema(const core::Node::Properties& properties);

}  // namespace vx::tool
