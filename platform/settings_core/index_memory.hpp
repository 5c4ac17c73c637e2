#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <new>

namespace vx::core {

/// Memory for the indexes that groups keep of their children while a tree is described. Their entries come
/// and go by the hundred and are of two sizes, so each that is given back serves the next of its size. For
/// one thread.
class IndexMemory final : public std::pmr::memory_resource
{
private:
    struct Freed
    {
        Freed* next;
    };
    static constexpr std::size_t step = alignof(std::max_align_t);
    static constexpr std::size_t largest = 512;  // what is larger is not given back before the end

    void* do_allocate(std::size_t bytes, std::size_t alignment) override
    {
        const std::size_t rank = (bytes + step - 1) / step;
        if (rank < freed_.size()) {
            if (Freed* const again = freed_[rank]) {
                freed_[rank] = again->next;
                return again;
            }
        }
        return memory_.allocate(rank * step, alignment);
    }

    void do_deallocate(void* block, std::size_t bytes, std::size_t /*alignment*/) override
    {
        const std::size_t rank = (bytes + step - 1) / step;
        if (rank < freed_.size()) {
            freed_[rank] = new (block) Freed{freed_[rank]};
        }
    }

    [[nodiscard]] bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override
    {
        return this == &other;
    }

    std::pmr::monotonic_buffer_resource memory_;
    std::array<Freed*, largest / step + 1> freed_{};
};

}  // namespace vx::core
