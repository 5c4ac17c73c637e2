// Changes of files reach inotify before the calls that make them return, so nothing here has to wait. The
// thread sanitizer judges the last test.

#include <settings_core/files/settings_observer.hpp>
#include <settings_core/values/value_format.hpp>

#include <gmock/gmock.h>

#include <fstream>
#include <tests/support/files.hpp>
#include <tests/support/sample_settings.hpp>
#include <thread>

namespace {

namespace fs = std::filesystem;
using namespace vx::core;
using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string wrapOn = R"("verdix.commandwindow.WrapLines": true)";
const std::string hex = R"("verdix.commandwindow.NumericFormat": "hex")";

std::string number(int value)
{
    return R"("verdix.class.double": )" + std::to_string(value);
}

void replace(const fs::path& file, const std::string& settings, const std::string& locked = "")
{
    tests::writeFile(file.string() + ".new",
                     R"({"locked": [)" + locked + R"(], "settings": {)" + settings + "}}");
    fs::rename(file.string() + ".new", file);
}

struct SettingsObserverTest : testing::Test
{
    Subscription subscribe(std::string_view path)
    {
        return observer.subscribe(*tree.find(path), [this](const EffectiveChange& change) {
            const auto& [setting, before, after] = change;
            seen.push_back(std::string(setting->name()) + ": " + formatValue(before.value) + " -> " +
                           formatValue(after.value) + " " + std::string(originName(after.origin)));
        });
    }

    /// Returns the calls for what has changed.
    Lines changes()
    {
        observer.dispatch();
        return std::exchange(seen, {});
    }

    const tests::TestFolder folder;
    const SettingsTree tree = tests::sampleTree();
    const fs::path site = folder / "site/verdix/settings.json";
    const fs::path home = folder / "home";
    const fs::path personal = home / "verdix/settings.json";
    Lines seen;
    Lines diagnostics;
    SettingsObserver observer{tree, {{site}, personal}, [this](const Diagnostic& diagnostic) {
                                  diagnostics.push_back(formatDiagnostic(diagnostic));
                              }};
    Subscription all = subscribe("verdix");
};

TEST_F(SettingsObserverTest, SeesEveryWayInWhichAFileComesAndGoes)
{
    const auto isOn = ElementsAre("WrapLines: false -> true personal");
    const auto isOff = ElementsAre("WrapLines: true -> false factory");
    replace(personal, wrapOn);  // in folders that did not exist
    EXPECT_THAT(changes(), isOn);
    replace(site, wrapOn);
    replace(personal, wrapOn + " ");
    EXPECT_THAT(changes(), IsEmpty()) << "the value is as it was";
    fs::remove_all(site.parent_path());
    fs::remove_all(home);
    EXPECT_THAT(changes(), isOff);
    replace(folder / "away/verdix/settings.json", wrapOn);
    fs::rename(folder / "away", home);
    EXPECT_THAT(changes(), isOn);
    fs::rename(home, folder / "away");
    EXPECT_THAT(changes(), isOff);

    fs::create_directory_symlink("current", home);  // as yet, it leads nowhere
    EXPECT_THAT(changes(), IsEmpty());
    fs::create_directory_symlink(folder / "away", folder / "current");
    EXPECT_THAT(changes(), isOn);
    fs::create_directories(folder / "other/verdix");
    fs::create_symlink("../../target.json", folder / "other/verdix/settings.json");
    fs::create_directory_symlink("other", folder / "next");
    fs::rename(folder / "next", folder / "current");
    EXPECT_THAT(changes(), isOff);
    replace(folder / "target.json", wrapOn);
    EXPECT_THAT(changes(), isOn);
    fs::rename(folder / "target.json", folder / "other.json");
    EXPECT_THAT(changes(), isOff);
    EXPECT_THAT(diagnostics, IsEmpty());
}

TEST_F(SettingsObserverTest, KeepsTheLastValidContentOfADamagedFile)
{
    replace(personal, wrapOn);
    EXPECT_EQ(changes().size(), 1U);
    for (const std::string& damaged : {std::string("{\"settings\":"), std::string(17U << 20U, ' ')}) {
        tests::writeFile(personal, damaged);
        EXPECT_THAT(changes(), IsEmpty());
    }
    EXPECT_THAT(std::exchange(diagnostics, {}), ElementsAre(HasSubstr("settings.json:1:13: expected")));
    replace(personal, wrapOn + "," + hex);
    fs::create_directories(site.parent_path());
    EXPECT_THAT(changes(), ElementsAre("NumericFormat: short -> hex personal"));
    tests::writeFile(personal, "damaged again");
    const std::ofstream open(site);
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_EQ(diagnostics.size(), 1U) << "none of a file that is still to be written";
}

TEST_F(SettingsObserverTest, LocksChangeTheValuesUnderThem)
{
    all = subscribe("verdix.commandwindow");
    replace(personal, wrapOn + R"(, "verdix.rule.words": "long")");
    EXPECT_THAT(changes(), ElementsAre("WrapLines: false -> true personal"));
    replace(site, hex, R"("verdix.commandwindow", "verdix.commandwindow.Gone")");
    EXPECT_THAT(changes(),
                ElementsAre("NumericFormat: short -> hex installation", "WrapLines: true -> false factory"));
    const Subscription alias = subscribe("verdix.alias.First");
    replace(site, hex, R"("verdix.rule.words")");
    EXPECT_THAT(changes(), ElementsAre("WrapLines: false -> true personal", "words: long -> short factory"));
}

TEST_F(SettingsObserverTest, ManyChangesAreCoalescedAndTheLastOneSurvivesAnOverflow)
{
    for (int value = 1000; value < 2000; ++value) {
        replace(personal, number(value));
    }
    EXPECT_THAT(changes(), ElementsAre(HasSubstr("1 -> 1999 ")));
    int queueLength = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> queueLength;
    ASSERT_GT(queueLength, 0);
    for (int made = 0; made < queueLength; made += 2) {
        fs::create_directory(home / "verdix/unrelated");
        fs::remove(home / "verdix/unrelated");
    }
    replace(personal, number(2000));
    EXPECT_THAT(changes(), ElementsAre(HasSubstr("1999 -> 2000 ")));
}

TEST_F(SettingsObserverTest, CallbacksMayUnsubscribeAndThrow)
{
    Subscription once = observer.subscribe(*tree.root(), [&](const EffectiveChange&) {
        once.reset();
        seen.emplace_back("once");
        EXPECT_THROW(observer.dispatch(), std::logic_error);
        throw std::runtime_error("thrown");
    });
    const Subscription last = subscribe("verdix");
    replace(personal, number(2000) + ", " + wrapOn);
    EXPECT_THAT([this] { observer.dispatch(); }, testing::ThrowsMessage<std::runtime_error>("thrown"));
    EXPECT_THAT(seen, ElementsAre(_, "once", _, _, _)) << "each of two changes by those that stay";
}

TEST_F(SettingsObserverTest, AThreadThatDispatchesEndsWithTheFinalValueWhileOthersReadTheTree)
{
    const std::jthread thread([this] {
        while (seen.empty() || !seen.back().ends_with("1999 personal")) {
            observer.dispatch(std::chrono::milliseconds(-1));
        }
    });
    for (int value = 1000; value < 2000; ++value) {
        replace(personal, number(value));
        EXPECT_TRUE(Layers(tree, {{}, personal}).effective(*tree.find("verdix.class.double")).isValid());
    }
}

}  // namespace
