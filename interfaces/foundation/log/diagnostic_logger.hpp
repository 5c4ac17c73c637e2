#pragma once

#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>

#include <string>

/// Logging of diagnostic records with channel and severity.
namespace foundation::log {

/// Severity of a record; lower numbers are more severe.
enum Severity : int
{
    fatal = 0,
    error = 1,
    warning = 2,
    information = 3,
    debug = 4,
    trace = 5
};

/// Logger for one channel. A record is only formatted when logging is enabled in the core and the record
/// passes its filters. Thread-safe.
template <class CharT>
class basic_diagnostic_logger
    : public boost::log::sources::severity_channel_logger_mt<int, std::basic_string<CharT>>
{
    using Base = boost::log::sources::severity_channel_logger_mt<int, std::basic_string<CharT>>;

public:
    /// Creates a logger for the channel; sinks and filters can refer to its name.
    explicit basic_diagnostic_logger(const std::basic_string<CharT>& channel)
        : Base(boost::log::keywords::channel = channel)
    {}
};

}  // namespace foundation::log
