// A bundle file that was damaged: the framework refuses it, or has the very manifest that it had.

#include <cppmicroservices/AnyMap.h>
#include <gtest/gtest.h>

#include <greeter.hpp>
#include <iostream>
#include <lifecycle.hpp>
#include <map>
#include <string>
#include <tests/damage/damage.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>

namespace {

enum class Outcome
{
    refused,
    read,
    used
};

struct DamagedBundleTest : testing::Test
{
    /// Installs the image, which loads nothing, and where it is to be loaded uses its service.
    [[nodiscard]] Outcome install(const std::string& image, bool isToBeLoaded) const
    {
        tests::writeFile(copy, image);
        tests::RunningFramework framework;
        auto context = framework.context();
        try {
            auto bundles = context.InstallBundles(copy.string());
            EXPECT_EQ(bundles.size(), 1U);
            EXPECT_TRUE(bundles.front().GetHeaders() == headers);
            if (!isToBeLoaded) {
                return Outcome::read;
            }
            bundles.front().Start();
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()).rfind(copy.string() + ": ", 0), 0U) << error.what();
            return Outcome::refused;
        }
        const auto greeter = context.GetService(context.GetServiceReference<greetings::Greeter>());
        EXPECT_EQ(greeter->greet(), "Good morning");
        EXPECT_FALSE(lifecycle::take().empty());
        return Outcome::used;
    }

    static cppmicroservices::AnyMap headersOf(const char* file)
    {
        const tests::RunningFramework framework;
        return framework.context().InstallBundles(file).front().GetHeaders();
    }

    tests::TestFolder folder;
    std::filesystem::path copy = folder / "lib_copy.so";
    std::string original = tests::readFile(GREETER_BUNDLE);
    cppmicroservices::AnyMap headers = headersOf(GREETER_BUNDLE);
};

TEST_F(DamagedBundleTest, IsReadRightOrRefused)
{
    const std::size_t archive = original.rfind("PK\x03\x04");
    ASSERT_NE(archive, std::string::npos);
    ASSERT_EQ(install(original, true), Outcome::used);
    tests::Damage damage;
    std::map<Outcome, std::size_t> counts;
    const std::size_t images = tests::damagedImages();
    for (std::size_t index = 0; index < images; ++index) {
        // Machine code that is damaged may do anything: such an image is read and never loaded. Where the
        // archive alone is damaged, the bundle has to work when it is read.
        const bool isCodeWhole = index % 2 == 0;
        ++counts[install(damage.of(original, isCodeWhole ? archive : 0), isCodeWhole)];
        ASSERT_FALSE(HasFailure()) << "image " << index;
    }
    EXPECT_EQ(tests::readFile(GREETER_BUNDLE), original);
    std::cout << images << " damaged bundle files of " << original.size()
              << " bytes: " << counts[Outcome::read] + counts[Outcome::used] << " read right, "
              << counts[Outcome::used] << " of these used, " << counts[Outcome::refused] << " refused\n";
}

}  // namespace
