// Loaded in front of a program's own libraries: the allocation with the number in VX_FAILING_ALLOCATION,
// counted from the beginning of main, fails; with VX_FAILING=on all after it as well.

#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>
#include <tests/support/allocations.hpp>

namespace {

tests::Failing mode()
{
    const char* failing = std::getenv("VX_FAILING");
    return failing != nullptr && std::string_view(failing) == "on" ? tests::Failing::fromThenOn
                                                                   : tests::Failing::once;
}

}  // namespace

// The program's main says first of all how it takes a closed pipe.
extern "C" [[gnu::visibility("default")]] sighandler_t signal(int number, sighandler_t handler) noexcept
{
    using Signal = sighandler_t(int, sighandler_t);
    if (const char* index = std::getenv("VX_FAILING_ALLOCATION")) {
        static const tests::FailingAllocation failing(std::strtoul(index, nullptr, 10), mode());
    }
    return reinterpret_cast<Signal*>(dlsym(RTLD_NEXT, "signal"))(number, handler);
}
