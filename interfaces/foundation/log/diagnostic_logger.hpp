#pragma once

#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>

#include <string>

/// Diagnostic records, sorted by channel and severity.
namespace foundation::log {

/// How much a record matters; the lower the number, the more.
enum Severity : int
{
    fatal = 0,
    error = 1,
    warning = 2,
    information = 3,
    debug = 4,
    trace = 5
};

/// Source of diagnostic records of one channel. A record is opened only while logging is enabled in the
/// core and the record passes its filters; any thread may write.
template <class CharT>
class basic_diagnostic_logger
    : public boost::log::sources::severity_channel_logger_mt<int, std::basic_string<CharT>>
{
    using Base = boost::log::sources::severity_channel_logger_mt<int, std::basic_string<CharT>>;

public:
    /// Writes to the channel of this name, by which sinks and filters know it.
    explicit basic_diagnostic_logger(const std::basic_string<CharT>& channel)
        : Base(boost::log::keywords::channel = channel)
    {}
};

}  // namespace foundation::log
