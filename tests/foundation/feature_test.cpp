#include <foundation/feature/ifeature.hpp>
#include <foundation/host.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using foundation::feature::FeatureState;
using foundation::feature::management::process::getDataPtr;

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
