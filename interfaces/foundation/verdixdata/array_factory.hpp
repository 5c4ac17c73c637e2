#pragma once

#include <foundation/verdixdata/typed_array.hpp>

#include <string>

namespace foundation::verdixdata {

/// Creates arrays. Stateless and therefore thread-safe.
class VX_API ArrayFactory
{
public:
    /// Creates an array whose elements are 0, false, missing strings or unassigned arrays. Throws
    /// std::invalid_argument for fewer than two dimensions or the class UNKNOWN, std::bad_alloc, or
    /// std::bad_array_new_length when the size in bytes overflows.
    [[nodiscard]] Array createArray(ArrayType type, const ArrayDimensions& dimensions) const;

    /// As above, for the class with elements of the C++ type T.
    template <class T>
    [[nodiscard]] TypedArray<T> createArray(const ArrayDimensions& dimensions) const
    {
        return TypedArray<T>(createArray(arrayTypeOf<T>, dimensions));
    }

    /// Creates a string scalar from a UTF-8 string. Each invalid byte becomes U+FFFD.
    [[nodiscard]] Array createScalarInternal(std::string utf8) const;
};

/// Array factory for processes without the environment.
namespace standalone {

/// Array factory for a process that uses the data arrays without the environment.
class ClientArrayFactory : public ArrayFactory
{};

}  // namespace standalone

}  // namespace foundation::verdixdata
