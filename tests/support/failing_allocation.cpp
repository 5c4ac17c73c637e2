#include <cstdlib>
#include <limits>
#include <tests/support/failing_allocation.hpp>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();
thread_local std::size_t remaining = never;

}  // namespace

// Replaces the one of the standard library for the whole program, shared libraries included.
void* operator new(std::size_t size)
{
    if (remaining != never && remaining-- == 0) {
        remaining = never;
        throw std::bad_alloc();
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace tests {

FailingAllocation::FailingAllocation(std::size_t index) noexcept
{
    remaining = index;
}

FailingAllocation::~FailingAllocation()
{
    remaining = never;
}

}  // namespace tests
