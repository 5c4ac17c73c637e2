// Memory that runs out, at each allocation in turn: for that one alone, and for all from it on. Whatever is
// being done then ends in std::bad_alloc, keeps nothing allocated, leaves files whole, and can be done again.

#include <settings_core/files/atomic_file.hpp>
#include <settings_core/files/file_check.hpp>
#include <settings_core/files/input_file.hpp>
#include <settings_core/files/settings_editor.hpp>
#include <settings_core/releases/migration.hpp>
#include <settings_core/tree/settings_tree.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <tests/faults/services.hpp>
#include <tests/support/allocations.hpp>
#include <tests/support/factory_bundle.hpp>
#include <tests/support/files.hpp>
#include <tests/support/sample_settings.hpp>
#include <tests/support/soak.hpp>

namespace {

namespace fs = std::filesystem;
using tests::Failing;

/// Lets the action fail at every point, `restore` what it left, and once more do it to the end. The short
/// form takes about as many steps as given.
template <class Action, class Restore>
void sweep(const std::string& what, std::size_t steps, Action action, Restore restore)
{
    // What is made at the first use, and stays, is made now.
    action();
    restore();
    const std::size_t before = tests::allocationsMade();
    action();
    const std::size_t allocations = tests::allocationsMade() - before;
    restore();
    const std::size_t stride = tests::runsInFull() ? 1 : allocations / steps + 1;
    for (const Failing mode : {Failing::once, Failing::fromThenOn}) {
        const long live = tests::liveAllocations();
        std::size_t point = 0;
        for (bool isReached = true; isReached; point += stride) {
            try {
                const tests::FailingAllocation failing(point, mode);
                action();
                isReached = failing.hasFailed();
                ASSERT_FALSE(isReached)
                    << what << ": the failure of allocation " << point << " went unnoticed";
            } catch (const std::bad_alloc&) {
            }
            restore();
            ASSERT_EQ(tests::liveAllocations(), live) << what << ", allocation " << point;
            ASSERT_FALSE(testing::Test::HasFailure()) << what << ", allocation " << point;
        }
    }
}

// What another framework does without memory is its own affair.
#if VX_FRAMEWORK_EMBEDDED
using MemoryOfTheBundle = tests::ServicesTest;

TEST_F(MemoryOfTheBundle, FromItsFileToItsFirstTreeAndBack)
{
    const auto offeredDateTime = context.RegisterService<tests::DateTimeSettingsInterface>(dateTime);
    context.RegisterService<tests::CodeAnalyzerSettingsInterface>(codeAnalyzer);
    sweep(
        "bundle", 100,
        [&] {
            auto bundle = framework.start(VX_BUNDLE_FILE);
            auto loader = tests::factoryLoader(framework.context());
            static_cast<void>(vx::core::loadTree(*loader));
            loader.reset();
            bundle.Stop();
            bundle.Uninstall();
        },
        [&] {
            for (auto& bundle : framework.context().GetBundles(VX_BUNDLE_FILE)) {
                bundle.Stop();
                bundle.Uninstall();
            }
            ASSERT_TRUE(offeredDateTime.GetReference().GetUsingBundles().empty()) << "still in use";
        });
}
#endif

/// A settings file in a folder of its own, its content known before and after a change.
struct MemoryOfFiles : testing::Test
{
    void write(const std::string& text) const { vx::core::LockedFile(file).replace(text); }

    /// Lets the change fail at every point: the file is as before or as after it, never anything else.
    template <class Change>
    void sweepChange(const std::string& what, const std::string& before, Change change) const
    {
        write(before);
        change();
        const std::string after = vx::core::readFile(file).value_or("");
        ASSERT_NE(after, before) << what;
        write(before);
        sweep(what, 100, change, [&] {
            const auto found = vx::core::readFile(file);
            ASSERT_TRUE(found == before || found == after) << what << ": " << found.value_or("gone");
            for (const auto& entry : fs::directory_iterator(file.parent_path())) {
                const std::string name = entry.path().filename();
                ASSERT_TRUE(name == "settings.json" || name.ends_with(".bak")) << what << " left " << name;
                if (name.ends_with(".bak")) {
                    ASSERT_EQ(vx::core::readFile(entry.path()), before) << what;
                    fs::remove(entry.path());
                }
            }
            write(before);
        });
    }

    tests::TestFolder folder;
    fs::path file = folder / "settings.json";
};

TEST_F(MemoryOfFiles, StayWholeWhileTheyAreChanged)
{
    tests::SampleSettings sample;
    const auto tree = vx::core::loadTree(sample);
    const auto releases = vx::core::loadReleaseChanges(sample);
    vx::core::SettingsEditor changer(tree, releases, file);
    const std::string text = "{\"settings\": {\"verdix.commandwindow.WrapLines\": true}}\n";
    sweepChange("set a colour", text, [&] {
        changer.apply({{"colors.KeywordColor", vx::core::ValueText{"[1 2 3]"}}});
    });
    sweepChange("migrate",
                "{\"release\": \"R2020a\", \"settings\": {\"verdix.commandwindow.EightyColumns\": true, "
                "\"verdix.findfiles.GoToFileEnabled\": true}}\n",
                [&] {
                    vx::core::LockedFile locked(file);
                    const auto migration =
                        vx::core::migrateSettings(vx::core::SettingsFile(*locked.content()), tree, releases);
                    static_cast<void>(vx::core::checkMigratedValues(migration, file, tree, releases));
                    static_cast<void>(locked.keepCopy("settings.json.bak"));
                    locked.replace(migration.text);
                });
}

}  // namespace
