// Limits of saving variables as a script.

#include <data/views.hpp>

#include <settings/core/validators.hpp>

#include <stdexcept>
#include <string>

namespace {

using foundation::verdixdata::Array;

/// Raises std::invalid_argument that begins with `what` unless the value is one whole number in the range.
void requireWholeNumber(const Array& value, const char* what, int lower, int upper)
{
    const auto accepts = [=](auto number) {
        return vx::data::isWhole(number) && vx::data::isWithin(number, lower, upper);
    };
    if (!vx::data::isScalar(value) || !vx::data::everyNumber(value, accepts)) {
        throw std::invalid_argument(std::string(what) + " must be a whole number from " +
                                    std::to_string(lower) + " to " + std::to_string(upper) + ".");
    }
}

}  // namespace

extern "C" {

/// Most elements of an array that is written out as text; a script with larger ones is hard to open.
VX_API void validateMaximumArraySizeValue(const Array& value)
{
    requireWholeNumber(value, "The largest number of elements to save", 1, 10000);
}

/// How deep structures and cells may nest before they are left out.
VX_API void validateMaximumNestingLevel(const Array& value)
{
    requireWholeNumber(value, "The nesting level", 1, 200);
}

/// Characters in a line of the script. Below 32 hardly a statement fits, above 256 nobody reads it.
VX_API void validateMaximumTextWidth(const Array& value)
{
    requireWholeNumber(value, "The text width", 32, 256);
}

/// The two dimensions along which a larger array is cut into matrices, counted from 1.
VX_API void validateArrayDimensions(const Array& value)
{
    const auto accepts = [](auto number) { return vx::data::isWhole(number) && number >= 1; };
    const bool isPair = vx::data::hasSize(value, 1, 2) && vx::data::everyNumber(value, accepts);
    const bool differ =
        isPair && vx::data::visitElementType(value.getType(), [&]<class T>(std::type_identity<T>) {
            const auto pair = vx::data::elementsOf<T>(value);
            return !(pair[0] == pair[1]);
        });
    if (!differ) {
        throw std::invalid_argument("The array dimensions must be two different whole numbers from 1 on.");
    }
}

}  // extern "C"
