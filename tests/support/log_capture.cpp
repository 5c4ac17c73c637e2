#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/smart_ptr/make_shared.hpp>

#include <tests/support/log_capture.hpp>
#include <utility>

namespace tests {

namespace {

namespace sinks = boost::log::sinks;

struct Collector : sinks::basic_sink_backend<sinks::synchronized_feeding>
{
    void consume(const boost::log::record_view& record)
    {
        records.push_back({boost::log::extract_or_default<std::string>("Channel", record, std::string()),
                           boost::log::extract_or_default<int>("Severity", record, -1),
                           boost::log::extract_or_default<std::string>("Message", record, std::string())});
    }

    std::vector<LogRecord> records;
};

}  // namespace

struct LogCapture::Impl
{
    boost::shared_ptr<Collector> collector = boost::make_shared<Collector>();
    boost::shared_ptr<sinks::synchronous_sink<Collector>> sink =
        boost::make_shared<sinks::synchronous_sink<Collector>>(collector);
};

LogCapture::LogCapture() : impl_(std::make_unique<Impl>())
{
    boost::log::core::get()->add_sink(impl_->sink);
}

LogCapture::~LogCapture()
{
    boost::log::core::get()->remove_sink(impl_->sink);
}

std::vector<LogRecord> LogCapture::take()
{
    return std::exchange(impl_->collector->records, {});
}

}  // namespace tests
