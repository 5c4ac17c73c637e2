#include <foundation/feature/ifeature.hpp>
#include <foundation/host.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace {

using foundation::feature::FeatureState;
using foundation::feature::management::process::getDataPtr;

TEST(Features, KeepTheirPlaceWhileThreadsAddMore)
{
    constexpr int count = 300;
    FeatureState* first = getDataPtr("threads.first");
    std::vector<std::vector<FeatureState*>> seen(4);
    std::vector<std::thread> threads;
    for (auto& states : seen) {
        threads.emplace_back([&states] {
            for (int i = 0; i < count; ++i) {
                states.push_back(getDataPtr("threads." + std::to_string(i)));
                foundation::host::setFeature("threads." + std::to_string(i), i);
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (const auto& states : seen) {
        EXPECT_EQ(states, seen.front());
    }
    EXPECT_EQ(getDataPtr("threads.first"), first);
    EXPECT_EQ(seen.front().back()->value, count - 1);
}

class Switch final : public foundation::feature::IFeature
{
public:
    explicit Switch(std::string_view name) : IFeature(name.data(), name.size()) {}
    FeatureState* getState() override { return getDataPtr("f\xC3\xBCr"); }
};

TEST(Features, AreOffUntilSomebodySetsThem)
{
    Switch feature("f\xC3\xBCr");
    EXPECT_EQ(feature.getName(), u"f\u00FCr");
    EXPECT_EQ(feature.get(), 0);
    foundation::host::setFeature("f\xC3\xBCr", 2);
    EXPECT_EQ(feature.get(), 2);
    EXPECT_THAT(foundation::host::features(), testing::Contains(testing::Pair("f\xC3\xBCr", 2)));
}

}  // namespace
