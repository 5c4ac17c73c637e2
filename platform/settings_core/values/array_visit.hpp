#pragma once

#include <data/views.hpp>

namespace vx::core {

/// Calls the visitor with the array as a TypedArray of its element class and returns the visitor's result,
/// whose type must be the same for every class. Throws std::logic_error for an unassigned array.
template <class Visitor>
decltype(auto) visitArray(const foundation::verdixdata::Array& array, Visitor&& visitor)
{
    return vx::data::visitElementType(array.getType(), [&]<class T>(std::type_identity<T>) -> decltype(auto) {
        return visitor(foundation::verdixdata::TypedArray<T>(array));
    });
}

}  // namespace vx::core
