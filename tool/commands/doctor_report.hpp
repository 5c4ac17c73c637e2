#pragma once

#include <boost/json/array.hpp>

#include <string>
#include <string_view>

#include "render/output.hpp"
#include "render/table.hpp"

namespace vx::tool {

/// The findings of the doctor command in sections. Text is written section by section, JSON at the end, as
/// is text in a pager. Both are also written if an exception ends the command, because the findings so far
/// explain it.
class Report
{
public:
    explicit Report(Output& out) : out_(out) {}
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    void begin(std::string_view heading) { heading_ = heading; }

    /// Adds information.
    void add(const std::string& what, const std::string& text);

    /// Adds a finding that is good or an error.
    void add(bool isGood, const std::string& what, const std::string& text);

    /// Ends the section.
    void end();

    /// Ends the report.
    void finish();

    /// Returns whether there is no error.
    [[nodiscard]] bool isWell() const noexcept { return isWell_; }

private:
    void add(Table::Row row, const boost::json::value& isGood);

    Output& out_;
    std::string_view heading_;
    Table table_;
    boost::json::array findings_;
    bool isWell_ = true;
};

}  // namespace vx::tool
