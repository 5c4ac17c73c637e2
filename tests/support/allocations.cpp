#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <limits>
#include <tests/support/allocations.hpp>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

struct Plan
{
    std::size_t remaining = never;
    tests::Failing failing = tests::Failing::once;
    bool hasFailed = false;
};

thread_local Plan plan;
thread_local bool isSure = false;
thread_local std::size_t made = 0;
std::atomic<long> live{0};

bool shallFail() noexcept
{
    if (plan.remaining == never || isSure) {
        return false;
    }
    if (plan.remaining != 0) {
        --plan.remaining;
        return false;
    }
    plan.hasFailed = true;
    if (plan.failing == tests::Failing::once) {
        plan.remaining = never;
    }
    return true;
}

void* allocate(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) noexcept
{
    void* memory = std::aligned_alloc(alignment, (size / alignment + 1) * alignment);
    if (memory != nullptr) {
        made += isSure ? 0 : 1;
        live.fetch_add(1, std::memory_order_relaxed);
    }
    return memory;
}

}  // namespace

// These replace the ones of the standard library for the whole program, shared libraries included.
void* operator new(std::size_t size)
{
    return operator new(size, std::align_val_t(alignof(std::max_align_t)));
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    void* const memory = shallFail() ? nullptr : allocate(size, static_cast<std::size_t>(alignment));
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

// Asks for what the caller can do without; it never fails on purpose.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr) {
        live.fetch_sub(1, std::memory_order_relaxed);
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept
{
    operator delete(memory);
}

void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept
{
    operator delete(memory);
}

// By the language, an exception in the initialisation of a library ends the program; so nothing fails in
// there.
extern "C" [[gnu::visibility("default")]] void* dlopen(const char* file, int flags) noexcept
{
    using Open = void*(const char*, int);
    isSure = true;
    void* const library = reinterpret_cast<Open*>(dlsym(RTLD_NEXT, "dlopen"))(file, flags);
    isSure = false;
    return library;
}

namespace tests {

long liveAllocations() noexcept
{
    return live.load(std::memory_order_relaxed);
}

std::size_t allocationsMade() noexcept
{
    return made;
}

FailingAllocation::FailingAllocation(std::size_t index, Failing failing) noexcept
{
    plan = {index, failing, false};
}

FailingAllocation::~FailingAllocation()
{
    plan = {};
}

bool FailingAllocation::hasFailed() const noexcept
{
    return plan.hasFailed;
}

}  // namespace tests
