#include "Store.h"

#include <array>
#include <new>

namespace pocketjson {

namespace {

constexpr std::size_t kMaximumSpares = 64;

// Regions with nothing in them.
constinit std::array<std::atomic<void*>, kMaximumSpares> spares{};

}  // namespace

constinit std::atomic<Store::Filling> Store::open_{0};

void Store::Filler::fill(Filling filling) noexcept {
    next_ = nextIn(filling);
    end_ = reinterpret_cast<char*>(regionOf(filling)) + kRegionSize;
}

Store::Filling Store::Filler::filling() const noexcept {
    const char* const begin = end_ - kRegionSize;
    return reinterpret_cast<Filling>(begin) + static_cast<std::size_t>(next_ - begin) / kUnit;
}

void Store::Filler::open(std::size_t size) {
    if (!end_) {
        if (const Filling filling = open_.exchange(0, std::memory_order_acquire)) {
            Region* const region = regionOf(filling);
            const bool isEmpty = region->left.load(std::memory_order_acquire) == kOpen - (filling - beginOf(region));
            if (isEmpty) region->left.store(kOpen, std::memory_order_relaxed);
            fill(isEmpty ? beginOf(region) : filling);
            if (size <= static_cast<std::size_t>(end_ - next_)) return;
        }
    }
    if (end_) close(filling());
    end_ = next_ = nullptr;
    fill(openEmpty());
}

Store::Filler::~Filler() {
    if (!end_) return;
    // Released here if another thread has left an open region meanwhile.
    if (const Filling other = open_.exchange(filling(), std::memory_order_acq_rel)) close(other);
}

// Behind what tells of the region.
Store::Filling Store::beginOf(Region* region) noexcept {
    return reinterpret_cast<std::uintptr_t>(region) + 1;
}

Store::Filling Store::openEmpty() {
    const auto open = [](void* memory) {
        auto* const region = new (memory) Region;
        region->left.store(kOpen, std::memory_order_relaxed);
        return beginOf(region);
    };
    for (auto& spare : spares)
        if (spare.load(std::memory_order_relaxed))
            if (void* const memory = spare.exchange(nullptr, std::memory_order_acquire)) return open(memory);

    static const struct Cleanup {
        ~Cleanup() { freeSpares(); }
    } cleanup;
    return open(::operator new (kRegionSize, std::align_val_t{kRegionSize}));
}

void Store::close(Filling filling) noexcept {
    Region* const region = regionOf(filling);
    const std::size_t made = filling - beginOf(region);
    release(region, kOpen - static_cast<std::uint32_t>(made));
}

void Store::recycle(Region* region) noexcept {
    for (auto& spare : spares) {
        void* none = nullptr;
        if (!spare.load(std::memory_order_relaxed) &&
            spare.compare_exchange_strong(none, region, std::memory_order_release, std::memory_order_relaxed))
            return;
    }
    ::operator delete (region, std::align_val_t{kRegionSize});
}

void Store::freeSpares() noexcept {
    const auto free = [] {
        for (auto& spare : spares)
            if (void* const memory = spare.exchange(nullptr, std::memory_order_acquire))
                ::operator delete (memory, std::align_val_t{kRegionSize});
    };
    free();
    // Goes the way of the others unless a value is left that outlives the library.
    if (const Filling open = open_.exchange(0, std::memory_order_acquire)) close(open);
    free();
}

}  // namespace pocketjson
