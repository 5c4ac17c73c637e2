#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tests {

struct LogRecord
{
    std::string channel;
    int severity;
    std::string text;

    friend bool operator==(const LogRecord&, const LogRecord&) = default;
};

/// Collects every record that passes the logging core's filters, while it lives.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    [[nodiscard]] std::vector<LogRecord> take();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace tests
