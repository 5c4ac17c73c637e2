#pragma once

#include <foundation/export.hpp>
#include <foundation/verdixdata/array.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace settings::core {

/// Declarative constraints for the value of a setting, which the settings core enforces.
class SettingValueValidator
{
public:
    /// Inclusive bounds of every element; an infinite bound does not limit anything. Infinite elements
    /// satisfy an infinite bound; NaN satisfies only a range with two infinite bounds.
    struct Range
    {
        double lower = -std::numeric_limits<double>::infinity();  ///< -infinity: no lower bound
        double upper = std::numeric_limits<double>::infinity();   ///< infinity: no upper bound
    };

    /// The size of a two-dimensional value.
    struct Size
    {
        std::optional<std::size_t> rows = std::nullopt;     ///< any number if std::nullopt
        std::optional<std::size_t> columns = std::nullopt;  ///< any number if std::nullopt
    };

    /// Representation of a colour.
    enum class Colour : std::uint8_t
    {
        wholeNumbers,  ///< 1-by-3, red, green, blue, each a whole number from 0 to 255
        normalised     ///< 1-by-3, red, green, blue, each a real number from 0 to 1
    };

    /// The constraints of one value validator. A value must satisfy all that are set.
    struct Constraints
    {
        std::optional<Range> range = std::nullopt;  ///< for every element
        /// Allowed strings, for a character vector or string scalar as a whole or for every element of a
        /// cell. With `colour`, the names that are allowed instead of a triple. Empty: all strings are
        /// allowed.
        std::vector<std::u16string> allowedValues = {};
        /// Maximum number of characters of a character vector or string, or of elements of a cell.
        std::optional<std::size_t> maximumLength = std::nullopt;
        std::optional<Size> size = std::nullopt;  ///< of the value as a whole
        std::optional<foundation::verdixdata::ArrayType> elementClass =
            std::nullopt;                             ///< CELL stands for a cell of character vectors
        std::optional<Colour> colour = std::nullopt;  ///< the value is a colour in this representation
    };

    /// A value validator of a node.
    class VX_API ConfigData : public Constraints
    {
    public:
        /// Creates a value validator without constraints.
        ConfigData() noexcept;
        /// Takes the constraints; implicit, so that a value validator can be written as a braced list of
        /// constraints.
        ConfigData(Constraints&& constraints) noexcept;
        /// Copies are independent.
        ///@{
        ConfigData(const ConfigData& other);
        ConfigData(ConfigData&& other) noexcept;
        ConfigData& operator=(const ConfigData& other);
        ConfigData& operator=(ConfigData&& other) noexcept;
        ///@}
        ~ConfigData();
    };
};

}  // namespace settings::core
