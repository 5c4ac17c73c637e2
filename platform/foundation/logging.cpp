#include <data/unprintable.hpp>

#include <foundation/host.hpp>
#include <foundation/log/diagnostic_logger.hpp>

#include <boost/core/null_deleter.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <iostream>

namespace foundation {

namespace {

std::atomic<int> threshold{log::warning};

const char* severityName(int severity)
{
    static constexpr std::array names{"fatal", "error", "warning", "information", "debug", "trace"};
    return names[static_cast<std::size_t>(std::clamp(severity, 0, static_cast<int>(names.size()) - 1))];
}

bool passesThreshold(const boost::log::attribute_value_set& values)
{
    const auto severity = boost::log::extract<int>("Severity", values);
    return !severity || *severity <= threshold.load(std::memory_order_relaxed);
}

/// Writes a log record as one line, "channel: severity: message". Line breaks in the message become spaces;
/// what a terminal would obey is escaped, because a message may quote a file.
void writeRecord(const boost::log::record_view& record, boost::log::formatting_ostream& out)
{
    if (const auto channel = boost::log::extract<std::string>("Channel", record)) {
        out << *channel << ": ";
    }
    if (const auto severity = boost::log::extract<int>("Severity", record)) {
        out << severityName(*severity) << ": ";
    }
    if (const auto message = boost::log::extract<std::string>("Message", record)) {
        std::string line = *message;
        std::replace(line.begin(), line.end(), '\n', ' ');
        out << vx::data::escapeUnprintable(line);
    }
}

/// Without a sink, Boost.Log would write all records to standard output.
bool installSink()
{
    using Backend = boost::log::sinks::text_ostream_backend;
    auto backend = boost::make_shared<Backend>();
    backend->add_stream(boost::shared_ptr<std::ostream>(&std::cerr, boost::null_deleter()));
    auto sink = boost::make_shared<boost::log::sinks::synchronous_sink<Backend>>(backend);
    sink->set_formatter(&writeRecord);
    boost::log::core::get()->add_sink(sink);
    boost::log::core::get()->set_filter(&passesThreshold);
    return true;
}

/// Initialised when the library is loaded, so that the sink exists before anything that links to the library
/// can log.
const bool sinkInstalled = installSink();

}  // namespace

void host::setLogThreshold(log::Severity newThreshold)
{
    threshold.store(newThreshold, std::memory_order_relaxed);
}

}  // namespace foundation
