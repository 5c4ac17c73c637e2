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

/// Declarative checks of a value, which the settings core runs.
class SettingValueValidator
{
public:
    /// Bounds of every element, both included; infinite where a bound is open. An infinite element passes an
    /// open bound, NaN only a range without any bound.
    struct Range
    {
        double lower = -std::numeric_limits<double>::infinity();  ///< -infinity where open
        double upper = std::numeric_limits<double>::infinity();   ///< infinity where open
    };

    /// The size of a value of two dimensions.
    struct Size
    {
        std::optional<std::size_t> rows = std::nullopt;     ///< along the first dimension; empty where open
        std::optional<std::size_t> columns = std::nullopt;  ///< along the second; empty where open
    };

    /// How a colour is written.
    enum class Colour : std::uint8_t
    {
        wholeNumbers,  ///< 1-by-3, red, green, blue, each a whole number from 0 to 255
        normalised     ///< 1-by-3, red, green, blue, each a real number from 0 to 1
    };

    /// What one record demands of a value; a value must satisfy every constraint that is given.
    struct Constraints
    {
        std::optional<Range> range = std::nullopt;  ///< for every element
        /// Allowed strings: of a character vector or string as a whole, of every element of a cell. Beside
        /// `colour`: the names that are accepted in place of a triple. Empty: not checked.
        std::vector<std::u16string> allowedValues = {};
        /// Most characters of a character vector or string, most elements of a cell.
        std::optional<std::size_t> maximumLength = std::nullopt;
        std::optional<Size> size = std::nullopt;  ///< of the value as a whole
        std::optional<foundation::verdixdata::ArrayType> elementClass =
            std::nullopt;                             ///< of the value; CELL for a cell of character vectors
        std::optional<Colour> colour = std::nullopt;  ///< the value is a colour of this form
    };

    /// One record, as nodes keep it.
    class VX_API ConfigData : public Constraints
    {
    public:
        /// Without constraints.
        ConfigData() noexcept;
        /// Takes the constraints over; implicit, so that a record can be written as the list of them.
        ConfigData(Constraints&& constraints) noexcept;
        ConfigData(const ConfigData& other);
        ConfigData(ConfigData&& other) noexcept;
        ConfigData& operator=(const ConfigData& other);
        ConfigData& operator=(ConfigData&& other) noexcept;
        ~ConfigData();
    };
};

}  // namespace settings::core
