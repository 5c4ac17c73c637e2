// Changes of files reach inotify before the call that makes them returns, so that nothing here has to wait.

#include <settings_core/files/settings_observer.hpp>
#include <settings_core/values/value_format.hpp>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <tests/support/files.hpp>
#include <tests/support/sample_settings.hpp>
#include <thread>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vx::core;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string wrap = "verdix.commandwindow.WrapLines";
const std::string format = "verdix.commandwindow.NumericFormat";

std::string content(const std::string& settings, const std::string& locked = "")
{
    return R"({"locked": [)" + locked + R"(], "settings": {)" + settings + "}}";
}

std::string numberOfLines(int number)
{
    return R"("verdix.commandwindow.NumberOfLinesInScrollBuffer": )" + std::to_string(number);
}

void replace(const fs::path& file, const std::string& bytes)
{
    tests::writeFile(file.string() + ".new", bytes);
    fs::rename(file.string() + ".new", file);
}

std::string describe(const SettingChange& change)
{
    return std::string(change.setting->name()) + ": " + formatValue(change.before.value) + " -> " +
           formatValue(change.after.value) + " " + std::string(originName(change.after.origin));
}

struct SettingsObserverTest : testing::Test
{
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
    Subscription all = observer.subscribe(
        *tree.root(), [this](const SettingChange& change) { seen.push_back(describe(change)); });
};

TEST_F(SettingsObserverTest, SeesEveryWayInWhichAFileComesAndGoes)
{
    const std::string on = content('"' + wrap + "\": true");
    const auto isOn = ElementsAre("WrapLines: false -> true personal");
    const auto isOff = ElementsAre("WrapLines: true -> false factory");
    tests::writeFile(personal, on);  // in folders that did not exist
    EXPECT_THAT(changes(), isOn);
    replace(personal, on + " ");
    replace(site, content('"' + wrap + "\": true"));
    EXPECT_THAT(changes(), IsEmpty()) << "the value is as it was";
    fs::remove_all(site.parent_path());
    fs::remove_all(home);
    EXPECT_THAT(changes(), isOff);
    replace(folder / "away/verdix/settings.json", on);
    fs::rename(folder / "away", home);
    EXPECT_THAT(changes(), isOn);
    fs::rename(home, folder / "away");
    EXPECT_THAT(changes(), isOff);

    fs::create_directory_symlink("current", home);  // as long as it leads nowhere
    EXPECT_THAT(changes(), IsEmpty());
    fs::create_directory_symlink(folder / "away", folder / "current");
    EXPECT_THAT(changes(), isOn);
    fs::create_directories(folder / "other/verdix");
    fs::create_symlink("../../target.json", folder / "other/verdix/settings.json");
    fs::create_directory_symlink("other", folder / "next");
    fs::rename(folder / "next", folder / "current");
    EXPECT_THAT(changes(), isOff);
    replace(folder / "target.json", on);
    EXPECT_THAT(changes(), isOn);
    tests::writeFile(folder / "away/verdix/settings.json", "is no longer on the way");
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_THAT(diagnostics, IsEmpty());
}

TEST_F(SettingsObserverTest, KeepsTheLastValidContentOfADamagedFile)
{
    replace(personal, content('"' + wrap + "\": true"));
    EXPECT_EQ(changes().size(), 1U);
    for (const char* damaged : {"{\"settings\":", "[]"}) {
        tests::writeFile(personal, damaged);
        EXPECT_THAT(changes(), IsEmpty());
    }
    EXPECT_THAT(std::exchange(diagnostics, {}),
                ElementsAre(HasSubstr("settings.json:1:13: expected a value")));
    EXPECT_EQ(observer.layers().effective(*tree.find(wrap)).origin, Origin::personal);
    replace(personal, content('"' + wrap + "\": true, \"" + format + R"(": "hex")"));
    EXPECT_THAT(changes(), ElementsAre("NumericFormat: short -> hex personal"));

    fs::create_directories(site.parent_path());
    EXPECT_THAT(changes(), IsEmpty());
    {
        const std::ofstream open(site);
        EXPECT_THAT(changes(), IsEmpty());
        EXPECT_THAT(diagnostics, IsEmpty()) << "of a file that is still to be written";
    }
    tests::writeFile(personal, std::string(std::size_t{17} << 20U, ' '));
    EXPECT_THAT(changes(), IsEmpty());
    EXPECT_THAT(diagnostics, ElementsAre(HasSubstr("counts as empty"), HasSubstr("larger than")));
}

TEST_F(SettingsObserverTest, LocksChangeTheValuesUnderThem)
{
    Lines ofAlias;
    const Subscription alias =
        observer.subscribe(*tree.find("verdix.alias.First"),
                           [&](const SettingChange& change) { ofAlias.push_back(describe(change)); });
    all = observer.subscribe(*tree.find("verdix.commandwindow"),
                             [this](const SettingChange& change) { seen.push_back(describe(change)); });
    replace(personal, content('"' + wrap + R"(": true, "verdix.rule.words": "long")"));
    EXPECT_THAT(changes(), ElementsAre("WrapLines: false -> true personal"));
    EXPECT_THAT(std::exchange(ofAlias, {}), ElementsAre("words: short -> long personal"));
    replace(site,
            content('"' + format + R"(": "hex")", R"("verdix.commandwindow", "verdix.commandwindow.Gone")"));
    EXPECT_THAT(changes(),
                ElementsAre("NumericFormat: short -> hex installation", "WrapLines: true -> false factory"));
    replace(site, content("", R"("verdix.rule.words")"));
    EXPECT_THAT(changes(),
                ElementsAre("NumericFormat: hex -> short factory", "WrapLines: false -> true personal"));
    EXPECT_THAT(ofAlias, ElementsAre("words: long -> short factory"));
}

TEST_F(SettingsObserverTest, ManyChangesAreCoalescedAndNoneIsLostWhenTheQueueOverflows)
{
    for (int number = 1000; number < 2000; ++number) {
        replace(personal, content(numberOfLines(number)));
    }
    EXPECT_THAT(changes(), ElementsAre(HasSubstr("5000 -> 1999 ")));
    int queueLength = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> queueLength;
    ASSERT_GT(queueLength, 0);
    for (int made = 0; made < queueLength; made += 2) {
        fs::create_directory(home / "verdix/unrelated");
        fs::remove(home / "verdix/unrelated");
    }
    replace(personal, content(numberOfLines(2000)));
    EXPECT_THAT(changes(), ElementsAre(HasSubstr("1999 -> 2000 ")));
}

TEST_F(SettingsObserverTest, CallbacksMayEndSubscriptionsAndThrow)
{
    Subscription once = observer.subscribe(*tree.root(), [&](const SettingChange&) {
        once.reset();
        seen.emplace_back("once");
        EXPECT_THROW(observer.dispatch(), std::logic_error);
        throw std::runtime_error("first");
    });
    const Subscription last = observer.subscribe(*tree.root(), [&](const SettingChange&) {
        seen.emplace_back("last");
        throw std::runtime_error("second");
    });
    replace(personal, content(numberOfLines(2000) + ", \"" + wrap + "\": true"));
    EXPECT_THAT([this] { observer.dispatch(); }, testing::ThrowsMessage<std::runtime_error>("first"));
    EXPECT_THAT(seen, ElementsAre(HasSubstr("Number"), "once", "last", HasSubstr("Wrap"), "last"));
}

/// The thread sanitizer is the stricter judge of this one.
TEST_F(SettingsObserverTest, ObserversOnSeveralThreadsEachEndWithTheFinalValue)
{
    const auto watchUntilLast = [this] {
        SettingsObserver own(tree, {{site}, personal}, [](const Diagnostic& diagnostic) {
            ADD_FAILURE() << formatDiagnostic(diagnostic);
        });
        const Node& lines = *tree.find("verdix.commandwindow.NumberOfLinesInScrollBuffer");
        std::string value = formatValue(own.layers().effective(lines).value);
        const Subscription subscription = own.subscribe(
            lines, [&value](const SettingChange& change) { value = formatValue(change.after.value); });
        while (value != "1999") {
            own.dispatch(std::chrono::milliseconds(-1));
        }
    };
    const std::jthread first(watchUntilLast);
    const std::jthread second(watchUntilLast);
    for (int number = 1000; number < 2000; ++number) {
        replace(personal, content(numberOfLines(number)));
    }
}

}  // namespace
