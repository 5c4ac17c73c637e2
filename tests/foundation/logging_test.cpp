#include <foundation/host.hpp>
#include <foundation/log/diagnostic_logger.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

namespace log = foundation::log;

log::basic_diagnostic_logger<char> logger("area::part");

TEST(Logging, WritesTheRecordsThatCountAsLinesOnStandardError)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    int composed = 0;
    const auto text = [&composed] { return "first\nsecond " + std::to_string(++composed); };
    BOOST_LOG_SEV(logger, log::warning) << text();
    BOOST_LOG_SEV(logger, log::information) << text();
    EXPECT_EQ(composed, 1) << "before anybody sets the threshold, and with no text for a dropped record";
    foundation::host::setLogThreshold(log::debug);
    BOOST_LOG_SEV(logger, log::debug) << text();
    BOOST_LOG_SEV(logger, log::trace) << text();
    foundation::host::setLogThreshold(log::fatal);
    BOOST_LOG_SEV(logger, log::error) << text();
    foundation::host::setLogThreshold(log::warning);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "area::part: warning: first second 1\narea::part: debug: first second 2\n");
}

}  // namespace
