#include <foundation/host.hpp>

#include <gtest/gtest.h>

namespace {

namespace log = foundation::log;

log::basic_diagnostic_logger<char> logger("area::part");

std::string composed(bool& wasComposed)
{
    wasComposed = true;
    return "first\nsecond";
}

class Logging : public testing::Test
{
protected:
    void SetUp() override
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }

    void TearDown() override { foundation::host::setLogThreshold(log::warning); }

    /// What reached standard error; nothing may ever reach standard output.
    static std::string written()
    {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(Logging, WritesOneLineToStandardErrorBeforeAnybodySetsItUp)
{
    BOOST_LOG_SEV(logger, log::warning) << "first\nsecond";
    BOOST_LOG_SEV(logger, log::information) << "dropped";
    EXPECT_EQ(written(), "area::part: warning: first second\n");
}

TEST_F(Logging, ComposesNoTextOfADroppedRecord)
{
    bool wasComposed = false;
    BOOST_LOG_SEV(logger, log::debug) << composed(wasComposed);
    EXPECT_FALSE(wasComposed);
    foundation::host::setLogThreshold(log::debug);
    BOOST_LOG_SEV(logger, log::debug) << composed(wasComposed);
    BOOST_LOG_SEV(logger, log::trace) << "dropped";
    EXPECT_TRUE(wasComposed);
    foundation::host::setLogThreshold(log::fatal);
    BOOST_LOG_SEV(logger, log::error) << "dropped";
    EXPECT_EQ(written(), "area::part: debug: first second\n");
}

}  // namespace
