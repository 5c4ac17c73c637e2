#pragma once

#include <data/views.hpp>

namespace vx::core {

/// Calls the visitor with the array as a TypedArray of its own element class and returns what that returns;
/// a visitor returns the same type for every class. Raises std::logic_error for an unassigned array.
template <class Visitor>
decltype(auto) visitArray(const foundation::verdixdata::Array& array, Visitor&& visitor)
{
    return vx::data::visitElementType(array.getType(), [&]<class T>(std::type_identity<T>) -> decltype(auto) {
        return visitor(foundation::verdixdata::TypedArray<T>(array));
    });
}

}  // namespace vx::core
