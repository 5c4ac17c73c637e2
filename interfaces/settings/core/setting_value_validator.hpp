#pragma once

#include <foundation/verdixdata/array.hpp>

#include <boost/container/small_vector.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <utility>
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

    /// One record of checks; a value must pass every one that is given.
    struct ConfigData
    {
        std::optional<Range> range = std::nullopt;  ///< for every element
        /// Allowed texts: of a text as a whole, of every element of a cell. Beside `colour`: the words that
        /// are accepted in place of a triple. Empty: not checked.
        std::vector<std::u16string> allowedValues = {};
        /// Most characters of a text, most elements of a cell.
        std::optional<std::size_t> maximumLength = std::nullopt;
        std::optional<Size> size = std::nullopt;  ///< of the value as a whole
        std::optional<foundation::verdixdata::ArrayType> elementClass =
            std::nullopt;                             ///< of the value; CELL for a cell of texts
        std::optional<Colour> colour = std::nullopt;  ///< the value is a colour of this form
    };

    /// Records in the order in which they were given. As cheap to copy as a pointer: copies share the records
    /// until one of the lists grows, which then takes records of its own.
    class ConfigList
    {
    public:
        /// Without records.
        ConfigList() noexcept = default;

        /// Takes the records over.
        ConfigList(std::vector<ConfigData>&& records)
        {
            if (!records.empty()) {
                records_ = boost::make_shared<Records>(std::make_move_iterator(records.begin()),
                                                       std::make_move_iterator(records.end()));
            }
        }

        /// Appends one record. Raises std::bad_alloc, and then the list is as it was.
        void push_back(ConfigData&& record)
        {
            if (records_ == nullptr) {
                records_ = boost::make_shared<Records>();
            } else if (!records_.unique()) {
                records_ = boost::make_shared<Records>(*records_);
            }
            records_->push_back(std::move(record));
        }

        /// How many there are, and each of them.
        ///@{
        [[nodiscard]] std::size_t size() const noexcept { return records_ == nullptr ? 0 : records_->size(); }
        [[nodiscard]] bool empty() const noexcept { return size() == 0; }
        [[nodiscard]] const ConfigData* begin() const noexcept
        {
            return records_ == nullptr ? nullptr : records_->data();
        }
        [[nodiscard]] const ConfigData* end() const noexcept { return begin() + size(); }
        [[nodiscard]] const ConfigData& operator[](std::size_t index) const noexcept
        {
            return begin()[index];
        }
        [[nodiscard]] const ConfigData& front() const noexcept { return *begin(); }
        ///@}

    private:
        using Records = boost::container::small_vector<ConfigData, 1>;  // most lists have one record

        boost::shared_ptr<Records> records_;
    };
};

}  // namespace settings::core
