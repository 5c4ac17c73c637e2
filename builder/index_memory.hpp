#pragma once

#include <array>
#include <cstddef>
#include <new>
#include <type_traits>

namespace verdix::settings::detail {

/// Memory for the entries of groups' indexes while a tree is described. They come and go by the hundred and
/// are of two sizes, so what one group gives back serves the next. For one thread; it must outlive the
/// groups.
class IndexMemory
{
public:
    IndexMemory() = default;
    IndexMemory(const IndexMemory&) = delete;
    IndexMemory& operator=(const IndexMemory&) = delete;
    ~IndexMemory()
    {
        for (Freed* block : freed_) {
            while (block != nullptr) {
                Freed* const next = block->next;
                ::operator delete(block);
                block = next;
            }
        }
    }

    /// Raises std::bad_alloc.
    template <std::size_t Bytes>
    [[nodiscard]] void* allocate()
    {
        Freed*& freed = freed_[rank<Bytes>];
        if (freed == nullptr) {
            return ::operator new(Bytes);
        }
        Freed* const block = freed;
        freed = block->next;
        return block;
    }

    /// Takes back what allocate() of that size gave.
    template <std::size_t Bytes>
    void release(void* block) noexcept
    {
        Freed*& freed = freed_[rank<Bytes>];
        freed = new (block) Freed{freed};
    }

private:
    struct Freed
    {
        Freed* next;
    };
    static constexpr std::size_t largest = 512;

    template <std::size_t Bytes>
    requires(Bytes <= largest &&
             Bytes % sizeof(Freed) == 0) static constexpr std::size_t rank = Bytes / sizeof(Freed);

    std::array<Freed*, largest / sizeof(Freed) + 1> freed_{};
};

/// The standard's allocator that has a container take its entries, one by one, from an IndexMemory; from the
/// heap where there is none. A copy of the container is without, as nobody knows how long it lives.
template <class Entry>
class IndexAllocator
{
public:
    /// As the standard has them.
    ///@{
    using value_type = Entry;
    using propagate_on_container_move_assignment = std::true_type;

    IndexAllocator() = default;
    template <class Other>
    IndexAllocator(const IndexAllocator<Other>& other) noexcept : memory_(other.memory())
    {}

    [[nodiscard]] IndexAllocator select_on_container_copy_construction() const noexcept { return {}; }

    [[nodiscard]] Entry* allocate(std::size_t /*one*/)
    {
        return static_cast<Entry*>(memory_ == nullptr ? ::operator new(sizeof(Entry))
                                                      : memory_->allocate<sizeof(Entry)>());
    }

    void deallocate(Entry* entry, std::size_t /*one*/) noexcept
    {
        if (memory_ == nullptr) {
            ::operator delete(entry);
        } else {
            memory_->release<sizeof(Entry)>(entry);
        }
    }

    friend bool operator==(const IndexAllocator&, const IndexAllocator&) = default;
    ///@}

    /// Takes entries from `memory`; null is the heap.
    explicit IndexAllocator(IndexMemory* memory) noexcept : memory_(memory) {}

    /// Where the entries come from; null is the heap.
    [[nodiscard]] IndexMemory* memory() const noexcept { return memory_; }

private:
    IndexMemory* memory_ = nullptr;
};

}  // namespace verdix::settings::detail
