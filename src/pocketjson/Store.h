// The memory of containers.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "Compiler.h"

namespace pocketjson {

/// Allocates small objects, well below 16 KiB, out of regions:
///
///     |<------------------------- 16 KiB, aligned to as much ------------------------->|
///     +--------+----------+---------------+--------+--------------------------+--------+
///     | object | released | object        | object | not allocated yet        | header |
///     +--------+----------+---------------+--------+--------------------------+--------+
///     ^ begin                                      ^ cursor                   ^ end
///
/// Objects are allocated one after the other, from the beginning of a region to its end. What is released among them is
/// not used again until the whole region is empty; the header counts, and an object's address leads to it. A region is
///
///     open    while a cursor is in it, which is that of a batch or, for at most one region, that of everybody else;
///     closed  when its cursor has gone to another region, until the last object in it is released;
///     spare   when it is empty, until it is opened again. Only so many are kept.
///
/// A text becomes many small containers, made one after the other and mostly released in the same way. So they lie one
/// after the other in a few pages, which the next request finds in the cache; allocating one is an addition, and
/// releasing many of one region is a single subtraction. No lock is needed and nothing per thread: the cursor that
/// threads share is exchanged atomically, whoever finds none opens a region of his own, and memory may be released on
/// any thread.
class Store {
    static constexpr std::size_t kRegionSize = 16384;
    static constexpr std::size_t kUnit = 16;  // sizes and alignments of objects are multiples of it

    struct alignas(kUnit) Region {
        static Region* of(void* inside) noexcept {
            const std::size_t offset = reinterpret_cast<std::uintptr_t>(inside) % kRegionSize;
            return reinterpret_cast<Region*>(static_cast<std::byte*>(inside) - offset);
        }
        std::byte* begin() noexcept { return objects.data(); }
        std::byte* end() noexcept { return objects.data() + objects.size(); }

        // More units than any region has.
        static constexpr std::uint32_t kOpen = 1U << 31;

        std::array<std::byte, kRegionSize - kUnit> objects;
        // Units allocated less those released, so that whoever comes to 0 has released the last ones. While the region
        // is open, kOpen stands for all that may be allocated.
        std::atomic<std::uint32_t> units{kOpen};
    };
    static_assert(sizeof(Region) == kRegionSize);

    // Where the next object goes, in an open region, or null.
    struct Cursor {
        std::byte* next = nullptr;

        bool hasSpaceFor(std::size_t size) const noexcept {
            return next && size <= static_cast<std::size_t>(Region::of(next)->end() - next);
        }
    };

    static constexpr std::uint32_t unitsFor(std::size_t size) noexcept {
        return static_cast<std::uint32_t>((size + kUnit - 1) / kUnit);
    }

 public:
    /// Has a region to itself while it lives, so that it allocates many objects without atomic operations. Belongs to
    /// one thread.
    class BatchAllocator {
     public:
        BatchAllocator() noexcept = default;
        ~BatchAllocator();
        BatchAllocator(const BatchAllocator&) = delete;
        BatchAllocator& operator=(const BatchAllocator&) = delete;

        /// Throws std::bad_alloc.
        void* allocate(std::size_t size) {
            size = unitsFor(size) * kUnit;
            if (size > static_cast<std::size_t>(end_ - next_)) openRegion(size);
            unpoison(next_, size);
            return std::exchange(next_, next_ + size);
        }
        void releaseLast(void* memory) noexcept {
            next_ = static_cast<std::byte*>(memory);
            poison(next_, static_cast<std::size_t>(end_ - next_));
        }

     private:
        void openRegion(std::size_t size);
        void moveTo(Cursor cursor) noexcept;

        std::byte* next_ = nullptr;  // in the region that ends at end_
        std::byte* end_ = nullptr;
    };

    /// One object by itself. Throws std::bad_alloc.
    static void* allocate(std::size_t size) {
        const std::size_t wholeUnits = unitsFor(size) * kUnit;
        Cursor cursor = shared_.load(std::memory_order_relaxed);
        while (cursor.hasSpaceFor(wholeUnits)) {
            const Cursor after{cursor.next + wholeUnits};
            if (!shared_.compare_exchange_weak(cursor, after, std::memory_order_acquire, std::memory_order_relaxed))
                continue;
            unpoison(cursor.next, size);
            return cursor.next;
        }
        return BatchAllocator().allocate(size);
    }
    static void release(void* memory, std::size_t size) noexcept {
        poison(memory, size);
        release(Region::of(memory), unitsFor(size));
    }

 private:
    // Whoever releases the last units of a region makes it a spare one.
    static void release(Region* region, std::uint32_t units) noexcept {
        if (region->units.fetch_sub(units, std::memory_order_acq_rel) == units) keepSpare(region);
    }
    static Cursor openSpare();
    static void close(Cursor cursor) noexcept;
    static void keepSpare(Region* region) noexcept;
    static void freeSpares() noexcept;

    static std::atomic<Cursor> shared_;  // where everybody but batches allocates
    static_assert(std::atomic<Cursor>::is_always_lock_free);
};

}  // namespace pocketjson
