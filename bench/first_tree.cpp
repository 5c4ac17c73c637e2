// Compares building the first tree of a process, cold, with building later ones, warm. Prints both times in
// microseconds and the number of page faults of the first.

#include <algorithm>
#include <array>
#include <bench/live_bundle.hpp>
#include <chrono>
#include <cstdio>
#include <sys/resource.h>

namespace {

struct Measurement
{
    double microseconds;
    long pageFaults;
};

long pageFaults()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt + usage.ru_majflt;
}

/// Times building a tree, but not destroying it.
Measurement buildTree()
{
    auto& loader = bench::liveLoader();
    const long faults = pageFaults();
    const auto start = std::chrono::steady_clock::now();
    const auto tree = vx::core::loadTree(loader);
    const auto end = std::chrono::steady_clock::now();
    return {std::chrono::duration<double, std::micro>(end - start).count(), pageFaults() - faults};
}

}  // namespace

int main()
{
    bench::liveLoader();
    const Measurement first = buildTree();
    std::array<double, 15> warm{};
    std::ranges::generate(warm, [] { return buildTree().microseconds; });
    std::ranges::nth_element(warm, warm.begin() + warm.size() / 2);
    std::printf("%.1f %.1f %ld\n", first.microseconds, warm[warm.size() / 2], first.pageFaults);
}
