#pragma once

#include <foundation/verdixdata/typed_array.hpp>

#include <string>

namespace foundation::verdixdata {

/// Makes arrays. Holds nothing, so one factory may serve several threads.
class VX_API ArrayFactory
{
public:
    /// An array of the class and dimensions given, its elements zero, false, missing or unassigned.
    /// Raises std::invalid_argument for fewer than two dimensions or the class UNKNOWN, std::bad_alloc (its
    /// kind std::bad_array_new_length where the size cannot be expressed).
    [[nodiscard]] Array createArray(ArrayType type, const ArrayDimensions& dimensions) const;

    /// The same, ready to be written; the class is that of the C++ type T.
    template <class T>
    [[nodiscard]] TypedArray<T> createArray(const ArrayDimensions& dimensions) const
    {
        return TypedArray<T>(createArray(arrayTypeOf<T>, dimensions));
    }

    /// A 1-by-1 string array that holds the UTF-8 text as UTF-16. Bytes that are not UTF-8 become U+FFFD.
    [[nodiscard]] Array createScalarInternal(std::string text) const;
};

/// For processes without the environment.
namespace standalone {

/// The factory of a process that has the data-array library alone, without the environment around it.
class ClientArrayFactory : public ArrayFactory
{};

}  // namespace standalone

}  // namespace foundation::verdixdata
