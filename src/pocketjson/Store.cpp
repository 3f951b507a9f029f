#include "Store.h"

#include <array>
#include <new>

namespace pocketjson {

namespace {

constexpr std::size_t kMaximumSpares = 64;

}  // namespace

// The open region that no filler has, and regions with nothing in them.
struct Store::Spares {
    std::atomic<Region*> open{nullptr};
    std::array<std::atomic<Region*>, kMaximumSpares> empty{};
};

constinit Store::Spares Store::spares_;

void Store::Filler::open(std::size_t size) {
    if (!region_) {
        region_ = spares_.open.exchange(nullptr, std::memory_order_acquire);
        if (region_ && region_->left.load(std::memory_order_acquire) == kOpen - region_->made) makeEmpty(region_);
        if (size <= room()) return;
    }
    if (region_) close(region_);
    region_ = nullptr;
    region_ = emptyRegion();
}

Store::Filler::~Filler() {
    if (!region_) return;
    // Released here if another thread has left an open region meanwhile.
    if (Region* const other = spares_.open.exchange(region_, std::memory_order_acq_rel)) close(other);
}

void Store::makeEmpty(Region* region) noexcept {
    region->next = beginOf(region);
    region->made = 0;
    region->left.store(kOpen, std::memory_order_relaxed);
}

Store::Region* Store::emptyRegion() {
    for (auto& spare : spares_.empty)
        if (spare.load(std::memory_order_relaxed))
            if (Region* const region = spare.exchange(nullptr, std::memory_order_acquire)) return region;

    static const struct Cleanup {
        ~Cleanup() { freeSpares(); }
    } cleanup;
    auto* const region = new (::operator new (kRegionSize, std::align_val_t{kRegionSize})) Region;
    makeEmpty(region);
    return region;
}

void Store::close(Region* region) noexcept {
    const std::uint32_t notMade = kOpen - region->made;
    if (region->left.fetch_sub(notMade, std::memory_order_acq_rel) == notMade) recycle(region);
}

void Store::recycle(Region* region) noexcept {
    makeEmpty(region);
    for (auto& spare : spares_.empty) {
        Region* none = nullptr;
        if (!spare.load(std::memory_order_relaxed) &&
            spare.compare_exchange_strong(none, region, std::memory_order_release, std::memory_order_relaxed))
            return;
    }
    ::operator delete (region, std::align_val_t{kRegionSize});
}

void Store::freeSpares() noexcept {
    const auto free = [](std::atomic<Region*>& spare) {
        if (Region* const region = spare.exchange(nullptr, std::memory_order_acquire))
            ::operator delete (region, std::align_val_t{kRegionSize});
    };
    for (auto& spare : spares_.empty) free(spare);
    // Goes the way of the others unless a value is left that outlives the library.
    if (Region* const open = spares_.open.exchange(nullptr, std::memory_order_acquire)) close(open);
    for (auto& spare : spares_.empty) free(spare);
}

}  // namespace pocketjson
