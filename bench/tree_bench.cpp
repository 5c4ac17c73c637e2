// Times building the tree, building it with the minimum that the interface between loader and module demands,
// and looking up a path. Destroying a tree is not timed.

#include <benchmark/benchmark.h>

#include <bench/live_bundle.hpp>
#include <limits>
#include <malloc.h>
#include <memory>

namespace bench {

namespace {

/// Times make(), but not the destruction of its result.
template <class Make>
void timeMaking(benchmark::State& state, Make make)
{
    for ([[maybe_unused]] auto step : state) {
        auto made = std::make_unique<decltype(make())>(make());
        state.PauseTiming();
        made.reset();
        state.ResumeTiming();
    }
}

void treeBuilt(benchmark::State& state)
{
    auto& loader = liveLoader();
    timeMaking(state, [&] { return vx::core::loadTree(loader); });
}

void treeLimit(benchmark::State& state)
{
    const RecordedCalls calls(liveLoader());
    timeMaking(state, [&] {
        vx::core::SettingsTree tree("verdix");
        calls.buildUnder(rootGroup(tree.root(), "verdix"));
        return tree;
    });
}

void treeCopies(benchmark::State& state)
{
    const int copies = static_cast<int>(state.range(0));
    timeMaking(state, [&] { return buildCopies(copies); });
}

void treeFind(benchmark::State& state)
{
    const vx::core::SettingsTree tree = vx::core::loadTree(liveLoader());
    const auto settings = settingsWithValue(tree);
    std::vector<std::string> paths;
    for (const auto* setting : settings) {
        paths.push_back(setting->getFullName());
    }
    std::size_t next = 0;
    for ([[maybe_unused]] auto step : state) {
        benchmark::DoNotOptimize(tree.find(paths[next])->properties().factoryValue);
        next = next + 1 == paths.size() ? 0 : next + 1;
    }
}

BENCHMARK(treeBuilt)->Name("tree/built")->Unit(benchmark::kMicrosecond);
BENCHMARK(treeLimit)->Name("tree/limit")->Unit(benchmark::kMicrosecond);
BENCHMARK(treeCopies)->Name("tree/copies")->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(treeFind)->Name("tree/find");

}  // namespace

}  // namespace bench

int main(int argc, char** argv)
{
    // Never return memory to the system, so that no iteration pays for memory that the previous one returned.
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_THRESHOLD, 32 << 20);  // the maximum
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
