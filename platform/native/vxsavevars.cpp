// Validators of the limits for saving variables as a script.

#include <data/views.hpp>

#include <settings/core/validators.hpp>

#include <stdexcept>
#include <string>

namespace {

using foundation::verdixdata::Array;

/// Throws std::invalid_argument, with a message that begins with `what`, unless the value is a scalar whole
/// number from lower to upper.
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

/// Maximum number of elements of an array that is written into the script; scripts with larger arrays are
/// slow to open.
VX_API void validateMaximumArraySizeValue(const Array& value)
{
    requireWholeNumber(value, "The largest number of elements to save", 1, 10000);
}

/// Maximum nesting depth of structures and cells; deeper ones are left out.
VX_API void validateMaximumNestingLevel(const Array& value)
{
    requireWholeNumber(value, "The nesting level", 1, 200);
}

/// Maximum characters per line of the script. Few statements fit into less than 32, and more than 256 are
/// hard to read.
VX_API void validateMaximumTextWidth(const Array& value)
{
    requireWholeNumber(value, "The text width", 32, 256);
}

/// The two dimensions, counted from 1, of the matrices into which a larger array is sliced.
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
