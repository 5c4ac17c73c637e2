// A bundle file that was damaged: the framework refuses it, or has the very manifest that it had.

#include <cppmicroservices/AnyMap.h>
#include <gtest/gtest.h>

#include <greeter.hpp>
#include <iostream>
#include <lifecycle.hpp>
#include <string>
#include <tests/damage/damage.hpp>
#include <tests/support/files.hpp>
#include <tests/support/running_framework.hpp>

namespace {

struct DamagedBundleTest : testing::Test
{
    /// Installs the image, which loads nothing, and where it is to be loaded uses its service. Whether it was
    /// read.
    [[nodiscard]] bool install(const std::string& image, bool isToBeLoaded) const
    {
        std::filesystem::remove(copy);  // never written over: the process runs the first one's code
        tests::writeFile(copy, image);
        tests::RunningFramework framework;
        auto context = framework.context();
        try {
            auto bundles = context.InstallBundles(copy.string());
            EXPECT_EQ(bundles.size(), 1U);
            EXPECT_TRUE(bundles.front().GetHeaders() == headers);
            if (!isToBeLoaded) {
                return true;
            }
            bundles.front().Start();
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()).rfind(copy.string() + ": ", 0), 0U) << error.what();
            return false;
        }
        const auto greeter = context.GetService(context.GetServiceReference<greetings::Greeter>());
        EXPECT_EQ(greeter->greet(), "Good morning");
        EXPECT_FALSE(lifecycle::take().empty());
        return true;
    }

    tests::TestFolder folder;
    std::filesystem::path copy = folder / "lib_copy.so";
    std::string original = tests::readFile(GREETER_BUNDLE);
    cppmicroservices::AnyMap headers = tests::RunningFramework().install(GREETER_BUNDLE).GetHeaders();
};

TEST_F(DamagedBundleTest, IsReadRightOrRefused)
{
    const std::size_t archive = original.rfind("PK\x03\x04");
    ASSERT_NE(archive, std::string::npos);
    ASSERT_TRUE(install(original, true));
    tests::Damage damage;
    std::size_t readImages = 0;
    const std::size_t images = tests::damagedImages();
    for (std::size_t index = 0; index < images; ++index) {
        // Machine code that is damaged may do anything: such an image is read and never loaded. Where the
        // archive alone is damaged, the bundle has to work when it is read.
        const bool isCodeWhole = index % 2 == 0;
        readImages += install(damage.of(original, isCodeWhole ? archive : 0), isCodeWhole) ? 1 : 0;
        ASSERT_FALSE(HasFailure()) << "image " << index;
    }
    EXPECT_EQ(tests::readFile(GREETER_BUNDLE), original);
    std::cout << images << " damaged bundle files of " << original.size() << " bytes: " << readImages
              << " read right, " << images - readImages << " refused\n";
}

}  // namespace
