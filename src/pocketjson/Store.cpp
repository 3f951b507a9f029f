#include "Store.h"

#include <array>
#include <new>

namespace pocketjson {

namespace {

constexpr std::size_t kMaximumSpares = 64;

constinit std::array<std::atomic<void*>, kMaximumSpares> spares{};

}  // namespace

constinit std::atomic<Store::Cursor> Store::shared_{Cursor{}};

void Store::BatchAllocator::moveTo(Cursor cursor) noexcept {
    next_ = cursor.next;
    end_ = cursor.region()->end();
}

void Store::BatchAllocator::openRegion(std::size_t size) {
    if (!end_) {
        // The one that all share, if there is still space; from its beginning, if all objects in it have been released.
        if (Cursor cursor = shared_.exchange({}, std::memory_order_acquire); cursor.next) {
            Region& region = *cursor.region();
            if (region.units.load(std::memory_order_acquire) == Region::kOpen - cursor.allocatedUnits()) {
                region.units.store(Region::kOpen, std::memory_order_relaxed);
                cursor.next = region.begin();
            }
            moveTo(cursor);
            if (size <= cursor.space()) return;
        }
    }
    if (end_) close({next_});
    end_ = next_ = nullptr;
    moveTo(openSpare());
}

Store::BatchAllocator::~BatchAllocator() {
    if (!end_) return;
    // Another thread may have left another region open meanwhile.
    if (const Cursor other = shared_.exchange({next_}, std::memory_order_acq_rel); other.next) close(other);
}

Store::Cursor Store::openSpare() {
    const auto open = [](void* memory) {
        auto* const region = new (memory) Region;
        poison(region->begin(), region->objects.size());
        return Cursor{region->begin()};
    };
    for (auto& spare : spares)
        if (spare.load(std::memory_order_relaxed))
            if (void* const memory = spare.exchange(nullptr, std::memory_order_acquire)) return open(memory);
    return open(::operator new (kRegionSize, std::align_val_t{kRegionSize}));
}

void Store::close(Cursor cursor) noexcept {
    release(cursor.region(), Region::kOpen - cursor.allocatedUnits());
}

void Store::keepSpare(Region* region) noexcept {
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
    if (const Cursor cursor = shared_.exchange({}, std::memory_order_acquire); cursor.next) close(cursor);
    free();
}

}  // namespace pocketjson
