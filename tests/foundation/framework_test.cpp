#include <foundation/cppmicroservices/framework.hpp>
#include <foundation/host.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace detail = foundation::cppmicroservices::detail;
using foundation::host::setMessageHook;

TEST(Framework, MessagesAreComposedForAListenerOnly)
{
    int composed = 0;
    const auto text = [&composed] { return std::to_string(++composed); };
    detail::logMessage(text);
    std::vector<std::string> heard;
    EXPECT_FALSE(setMessageHook([&heard](const std::string& message) { heard.push_back(message); }));
    detail::logMessage(text);
    EXPECT_TRUE(setMessageHook(nullptr));
    detail::logMessage(text);
    EXPECT_THAT(heard, testing::ElementsAre("1"));
}

TEST(Framework, FailedAssertionsThatNobodyHearsReachTheLog)
{
    testing::internal::CaptureStderr();
    detail::assertOnFalse([] { return true; }, "kept");
    detail::assertOnFalse([] { return false; }, "un\x1bheard");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::EndsWith("error: un\\x1bheard\n"));
}

}  // namespace
