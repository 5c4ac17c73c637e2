#include "render/table.hpp"

#include <settings_core/values/value_format.hpp>

#include <algorithm>

namespace vx::tool {

void Table::add(Row row)
{
    while (!row.empty() && row.back().text.empty()) {
        row.pop_back();
    }
    rows_.push_back(std::move(row));
}

void Table::write(Output& out, std::string_view indent) const
{
    constexpr std::string_view separator = "  ";
    std::vector<std::size_t> widths;
    for (const auto& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], core::characterCount(row[column].text));
        }
    }
    for (const auto& row : rows_) {
        out << indent;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const Cell& cell = row[column];
            const std::string padding(widths[column] - core::characterCount(cell.text), ' ');
            const bool isLast = column + 1 == row.size();
            const bool isRightAligned = cell.align == Align::right;
            out << (isRightAligned ? padding : "") << out.styled(cell.style, cell.text);
            if (!isLast) {
                out << (isRightAligned ? "" : padding) << separator;
            }
        }
        out << '\n';
    }
}

}  // namespace vx::tool
