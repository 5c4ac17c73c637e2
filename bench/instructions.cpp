// For callgrind, with collection off at the start: counts the instructions for building a tree. Another tree
// is built before, to bind all symbols and initialise all function-local static variables.

#include <bench/live_bundle.hpp>
#include <valgrind/callgrind.h>

int main()
{
    auto& loader = bench::liveLoader();
    static_cast<void>(vx::core::loadTree(loader));
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_TOGGLE_COLLECT;
    const auto tree = vx::core::loadTree(loader);
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_STOP_INSTRUMENTATION;
    return tree.nodes().empty() ? 1 : 0;
}
