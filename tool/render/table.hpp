#pragma once

#include <data/unprintable.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "render/output.hpp"

namespace vx::tool {

enum class Align : std::uint8_t
{
    left,
    right
};

/// A table with each column as wide as its widest cell. Numbers are right-aligned; a left-aligned last column
/// is not padded. Where lines have no width, a very long cell is whole, and does not widen its column for
/// others.
///
/// Where lines have a width and the table is wider, one column is fitted: the first one with values, which
/// are cut, or else the last one, which is broken into lines. Cells before it that leave too little room for
/// it have a line of their own.
class Table
{
public:
    /// Text with unprintable characters escaped, so that its width is the one that is shown.
    struct Cell
    {
        Cell(std::string_view content, Style cellStyle = Style::plain, Align cellAlign = Align::left)
            : text(data::escapeUnprintable(content)), style(cellStyle), align(cellAlign)
        {}
        Cell(const std::string& content, Style cellStyle = Style::plain, Align cellAlign = Align::left)
            : Cell(std::string_view(content), cellStyle, cellAlign)
        {}
        Cell(const char* content, Style cellStyle = Style::plain, Align cellAlign = Align::left)
            : Cell(std::string_view(content), cellStyle, cellAlign)
        {}
        Cell(std::size_t number) : text(std::to_string(number)), align(Align::right) {}

        std::string text;
        Style style = Style::plain;
        Align align = Align::left;
    };

    using Row = std::vector<Cell>;

    /// Adds a row, without the empty cells at its end.
    void add(Row row);
    void add(Table&& other) { std::move(other.rows_.begin(), other.rows_.end(), std::back_inserter(rows_)); }

    /// Writes the rows, each indented by `indent`.
    void write(Output& out, std::string_view indent = "") const;

private:
    struct Layout;

    [[nodiscard]] Layout layoutFor(std::optional<std::size_t> lineWidth) const;
    template <class Trait>
    [[nodiscard]] bool has(std::size_t column, Trait Cell::*trait, Trait value) const;
    void fit(Layout& layout, std::size_t lineWidth) const;
    /// Returns the width of the widest cell before the fitted one that is no wider than the limit.
    [[nodiscard]] std::size_t widestBefore(std::size_t fitted, std::size_t limit) const;
    static void writeRow(const Row& row, const Layout& layout, Output& out, std::string_view indent);

    std::vector<Row> rows_;
};

}  // namespace vx::tool
