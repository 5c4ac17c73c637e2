#include "doctor_report.hpp"

#include <utility>

#include "render/json_text.hpp"

namespace vx::tool {

void Report::add(const std::string& what, const std::string& text)
{
    add({"", what, text}, nullptr);
}

void Report::add(bool isGood, const std::string& what, const std::string& text)
{
    add({isGood ? Table::Cell("ok", Style::good) : Table::Cell("error", Style::bad), what, text}, isGood);
    isWell_ = isWell_ && isGood;
}

void Report::end()
{
    if (!out_.isJson()) {
        out_ << out_.styled(Style::heading, heading_) << '\n';
        table_.write(out_, "  ");
        out_.flushUnlessPaged();  // to be shown even if the next section crashes
    }
    table_ = Table();
}

void Report::finish()
{
    if (out_.isJson()) {
        writeJson({{"isWell", isWell_}, {"findings", std::move(findings_)}}, out_);
    }
    out_.flush();
}

void Report::add(Table::Row row, const boost::json::value& isGood)
{
    findings_.push_back(boost::json::object{
        {"section", heading_}, {"what", row[1].text}, {"text", row[2].text}, {"isGood", isGood}});
    table_.add(std::move(row));
}

}  // namespace vx::tool
