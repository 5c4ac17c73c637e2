#pragma once

#include <foundation/verdixdata/typed_array.hpp>

#include <stdexcept>

namespace vx::core {

/// Calls the visitor with the array as a TypedArray of its own element class and returns what that returns;
/// a visitor returns the same type for every class. Raises std::logic_error for an unassigned array.
template <class Visitor>
decltype(auto) visitArray(const foundation::verdixdata::Array& array, Visitor&& visitor)
{
    using namespace foundation::verdixdata;
    switch (array.getType()) {
    case ArrayType::LOGICAL:
        return visitor(TypedArray<bool>(array));
    case ArrayType::CHAR:
        return visitor(TypedArray<char16_t>(array));
    case ArrayType::STRING:
        return visitor(TypedArray<String>(array));
    case ArrayType::DOUBLE:
        return visitor(TypedArray<double>(array));
    case ArrayType::INT8:
        return visitor(TypedArray<std::int8_t>(array));
    case ArrayType::UINT8:
        return visitor(TypedArray<std::uint8_t>(array));
    case ArrayType::INT16:
        return visitor(TypedArray<std::int16_t>(array));
    case ArrayType::UINT16:
        return visitor(TypedArray<std::uint16_t>(array));
    case ArrayType::INT32:
        return visitor(TypedArray<std::int32_t>(array));
    case ArrayType::UINT32:
        return visitor(TypedArray<std::uint32_t>(array));
    case ArrayType::INT64:
        return visitor(TypedArray<std::int64_t>(array));
    case ArrayType::UINT64:
        return visitor(TypedArray<std::uint64_t>(array));
    case ArrayType::CELL:
        return visitor(TypedArray<Array>(array));
    case ArrayType::UNKNOWN:
        break;
    }
    throw std::logic_error("an unassigned array has no elements to visit");
}

}  // namespace vx::core
