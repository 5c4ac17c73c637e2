// Times how long after the personal settings file is replaced by renaming an observer on another thread is
// called with the new value. Prints the median and the 99th percentile in microseconds as a JSON object.
//
//   vx_bench_change_latency ROUNDS

#include <settings_core/files/settings_observer.hpp>

#include <algorithm>
#include <bench/live_bundle.hpp>
#include <bench/temporary_folder.hpp>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <semaphore>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* observedPath = "verdix.commandwindow.NumberOfLinesInScrollBuffer";

/// Replaces the file with one that sets 20 settings, the observed one among them, and returns when the rename
/// began.
Clock::time_point replace(const std::filesystem::path& file, std::size_t round,
                          const std::vector<const vx::core::Node*>& others)
{
    const std::filesystem::path replacement = file.string() + ".new";
    {
        std::ofstream stream(replacement);
        stream << R"({"settings": {")" << observedPath << "\": " << 1000 + round % 20000;
        for (const vx::core::Node* setting : others) {
            stream << ",\n\"" << setting->fullName() << "\": true";
        }
        stream << "}}\n";
    }
    const auto start = Clock::now();
    std::filesystem::rename(replacement, file);
    return start;
}

std::vector<const vx::core::Node*> someLogicalSettings(const vx::core::SettingsTree& tree)
{
    auto settings = bench::settingsWithValue(tree);
    std::erase_if(settings, [](const vx::core::Node* setting) {
        return setting->properties().factoryValue.getType() != foundation::verdixdata::ArrayType::LOGICAL;
    });
    settings.resize(std::min<std::size_t>(settings.size(), 19));
    return settings;
}

/// Returns the time of each round in microseconds.
std::vector<double> measure(std::size_t rounds)
{
    const bench::TemporaryFolder folder;
    const auto file = folder.path() / "settings.json";
    const vx::core::SettingsTree tree = vx::core::loadTree(bench::liveLoader());
    const auto others = someLogicalSettings(tree);
    replace(file, rounds, others);

    Clock::time_point called;
    std::binary_semaphore isCalled(0);
    std::binary_semaphore isReady(0);
    const std::jthread thread([&] {
        vx::core::SettingsObserver observer(tree, {{}, file},
                                            [](const vx::core::Diagnostic&) { std::abort(); });
        std::size_t calls = 0;
        const auto subscription =
            observer.subscribe(*tree.find(observedPath), [&](const vx::core::EffectiveChange&) {
                called = Clock::now();
                ++calls;
                isCalled.release();
            });
        isReady.release();
        while (calls < rounds) {
            observer.dispatch(std::chrono::milliseconds(-1));
        }
    });
    isReady.acquire();
    std::vector<double> times;
    for (std::size_t round = 0; round < rounds; ++round) {
        const auto start = replace(file, round, others);
        isCalled.acquire();
        times.push_back(std::chrono::duration<double, std::micro>(called - start).count());
    }
    return times;
}

}  // namespace

int main(int argc, char** argv)
{
    const long rounds = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (rounds <= 0) {
        std::fprintf(stderr, "usage: %s ROUNDS\n", argv[0]);
        return 2;
    }
    std::vector<double> times = measure(static_cast<std::size_t>(rounds));
    std::ranges::sort(times);
    std::printf("{ \"median\": %.1f, \"percentile99\": %.1f }\n", times[times.size() / 2],
                times[times.size() * 99 / 100]);
}
