// Counts the allocations for one tree, separately for the module and for the settings core, and the memory
// that a tree keeps. Prints a JSON object.

#include <boost/smart_ptr/make_shared.hpp>

#include <algorithm>
#include <bench/live_bundle.hpp>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

struct Allocated
{
    long count = 0;
    long bytes = 0;

    Allocated& operator+=(const Allocated& other)
    {
        count += other.count;
        bytes += other.bytes;
        return *this;
    }
    friend Allocated operator-(const Allocated& left, const Allocated& right)
    {
        return {left.count - right.count, left.bytes - right.bytes};
    }
};

Allocated allocated;
long kept = 0;

}  // namespace

// These replace the operators of the whole program including shared libraries. Only one thread allocates, so
// no lock is needed.
void* operator new(std::size_t size)
{
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    allocated += {1, static_cast<long>(size)};
    kept += static_cast<long>(malloc_usable_size(memory));
    return memory;
}

void* operator new(std::size_t size, std::align_val_t /*alignment*/)
{
    return operator new(size);  // nothing here needs more than the alignment of malloc
}

void operator delete(void* memory) noexcept
{
    kept -= memory == nullptr ? 0 : static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept
{
    operator delete(memory);
}

namespace bench {

namespace {

struct Shares
{
    Allocated core;
    Allocated counting;  ///< allocations for the counting itself
};

/// Forwards all calls to a node of the settings core and counts its allocations.
class CountedNode final : public settings::core::MSettings
{
public:
    CountedNode(Shares& shares, Handle node) : shares_(shares), node_(std::move(node)) {}

    [[nodiscard]] std::string getFullName() const override
    {
        const Allocated before = allocated;
        std::string path = node_->getFullName();
        shares_.core += allocated - before;
        return path;
    }

    Handle createFactorySetting(const std::string& name, bool isSetting,
                                const Properties& properties) override
    {
        const Allocated before = allocated;
        Handle node = node_->createFactorySetting(name, isSetting, properties);
        const Allocated after = allocated;
        Handle counted = boost::make_shared<CountedNode>(shares_, std::move(node));
        shares_.core += after - before;
        shares_.counting += allocated - after;
        return counted;
    }

private:
    Shares& shares_;
    Handle node_;
};

double settingsIn(const vx::core::SettingsTree& tree)
{
    return static_cast<double>(std::ranges::count_if(
        tree.nodes(), [](const vx::core::Node* node) { return node->kind() != vx::core::NodeKind::group; }));
}

void printShare(const char* name, const Allocated& share, double settings)
{
    std::printf("\"%s\": {\"allocations\": %.2f, \"bytes\": %.0f}, ", name,
                static_cast<double>(share.count) / settings, static_cast<double>(share.bytes) / settings);
}

void printShares()
{
    Shares shares;
    vx::core::SettingsTree tree("verdix");
    const Handle root = boost::make_shared<CountedNode>(shares, tree.root());
    const Allocated before = allocated;
    auto group = rootGroup(root, "verdix");
    liveLoader().createTree(group);
    const Allocated all = allocated - before;
    const double settings = settingsIn(tree);
    printShare("module", all - shares.core - shares.counting, settings);
    printShare("core", shares.core, settings);
}

void printKept()
{
    const char* separator = "";
    std::printf("\"kept\": {");
    for (const int copies : {1, 10, 100}) {
        const long before = kept;
        const auto tree = buildCopies(copies);
        std::printf("%s\"%d\": %.0f", separator, copies,
                    static_cast<double>(kept - before) / settingsIn(tree));
        separator = ", ";
    }
    std::printf("}");
}

}  // namespace

}  // namespace bench

int main()
{
    static_cast<void>(vx::core::loadTree(bench::liveLoader()));  // initialises what is allocated only once
    std::printf("{");
    bench::printShares();
    bench::printKept();
    std::printf("}\n");
}
