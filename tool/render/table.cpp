#include "render/table.hpp"

#include <algorithm>
#include <limits>
#include <span>

#include "render/line_layout.hpp"

namespace vx::tool {

namespace {

constexpr std::string_view separator = "  ";
constexpr std::string_view continuation = "    ";
constexpr std::size_t leastFittedWidth = 8;
constexpr std::size_t widestPadded = 80;  // where lines have no width

/// Returns the number of columns on the terminal that columns of the table take, each with a separator.
std::size_t totalWidth(std::span<const std::size_t> widths)
{
    std::size_t total = 0;
    for (const std::size_t width : widths) {
        total += width + separator.size();
    }
    return total;
}

std::size_t subtract(std::size_t from, std::size_t number)
{
    return from - std::min(from, number);
}

}  // namespace

/// How wide the columns are, and which one is fitted.
struct Table::Layout
{
    std::vector<std::size_t> widths = {};
    std::size_t fitted = std::numeric_limits<std::size_t>::max();
    bool isCut = false;           ///< whether cells of the fitted column are cut, not broken into lines
    std::size_t widthBefore = 0;  ///< of the longest lines in the column before it

    [[nodiscard]] std::vector<std::string> linesOf(const Cell& cell, std::size_t column) const
    {
        if (column + 1 == fitted) {
            return breakLine(cell.text, widthBefore);
        }
        if (column != fitted) {
            return {cell.text};
        }
        return isCut ? std::vector{cutToWidth(cell.text, widths[column])}
                     : breakLine(cell.text, widths[column]);
    }
};

void Table::add(Row row)
{
    while (!row.empty() && row.back().text.empty()) {
        row.pop_back();
    }
    rows_.push_back(std::move(row));
}

Table::Layout Table::layoutFor(std::optional<std::size_t> lineWidth) const
{
    const std::size_t widest = lineWidth ? std::numeric_limits<std::size_t>::max() : widestPadded;
    Layout layout;
    for (const Row& row : rows_) {
        layout.widths.resize(std::max(layout.widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::size_t width = std::min(displayWidth(row[column].text), widest);
            layout.widths[column] = std::max(layout.widths[column], width);
        }
    }
    if (lineWidth && totalWidth(layout.widths) > *lineWidth + separator.size()) {
        fit(layout, *lineWidth);
    }
    return layout;
}

template <class Trait>
bool Table::has(std::size_t column, Trait Cell::*trait, Trait value) const
{
    return std::ranges::any_of(
        rows_, [&](const Row& row) { return column < row.size() && row[column].*trait == value; });
}

void Table::fit(Layout& layout, std::size_t lineWidth) const
{
    std::size_t fitted = 0;
    while (fitted + 1 < layout.widths.size() && !has(fitted, &Cell::style, Style::value)) {
        ++fitted;
    }
    if (fitted == 0 || has(fitted, &Cell::align, Align::right)) {
        return;
    }
    layout.fitted = fitted;
    layout.isCut = has(fitted, &Cell::style, Style::value);

    const std::span<std::size_t> widths = layout.widths;
    const std::size_t before = totalWidth(widths.first(fitted - 1));
    const std::size_t room = subtract(lineWidth, totalWidth(widths.subspan(fitted + 1)));
    const std::size_t wanted = std::min(widths[fitted], lineWidth / (layout.isCut ? 4 : 2));
    layout.widthBefore = subtract(lineWidth, before + continuation.size());
    widths[fitted - 1] = widestBefore(fitted, subtract(room, before + separator.size() + wanted));
    widths[fitted] = std::clamp(subtract(room, totalWidth(widths.first(fitted))), leastFittedWidth,
                                std::max(widths[fitted], leastFittedWidth));
}

std::size_t Table::widestBefore(std::size_t fitted, std::size_t limit) const
{
    std::size_t widest = separator.size();
    for (const Row& row : rows_) {
        const std::size_t width = fitted < row.size() ? displayWidth(row[fitted - 1].text) : 0;
        if (width <= limit) {
            widest = std::max(widest, width);
        }
    }
    return widest;
}

void Table::write(Output& out, std::string_view indent) const
{
    const auto lineWidth = out.lineWidth();
    const Layout layout =
        layoutFor(lineWidth ? std::optional(subtract(*lineWidth, indent.size())) : std::nullopt);
    for (const Row& row : rows_) {
        out << indent;
        writeRow(row, layout, out, indent);
        out << '\n';
    }
}

void Table::writeRow(const Row& row, const Layout& layout, Output& out, std::string_view indent)
{
    std::string nextLine = "\n" + std::string(indent);  // as far as the column
    for (std::size_t column = 0; column < row.size(); ++column) {
        const Cell& cell = row[column];
        const std::size_t width = layout.widths[column];
        const std::vector<std::string> lines = layout.linesOf(cell, column);
        const std::string padding(subtract(width, displayWidth(lines.front())), ' ');
        const bool isRightAligned = cell.align == Align::right;
        out << (isRightAligned ? padding : "") << out.styled(cell.style, lines.front());
        for (const std::string& line : std::span(lines).subspan(1)) {
            out << Exact{nextLine} << (column == layout.fitted ? "" : continuation)
                << out.styled(cell.style, line);
        }
        if (column + 1 == row.size()) {
            return;
        }
        nextLine.append(width + separator.size(), ' ');
        if (column + 1 == layout.fitted && displayWidth(cell.text) > width) {
            out << Exact{nextLine};
        } else {
            out << (isRightAligned ? "" : padding) << separator;
        }
    }
}

}  // namespace vx::tool
