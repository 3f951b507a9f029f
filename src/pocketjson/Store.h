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
/// not allocated again until the whole region is empty: an object's address leads to the header, which counts. A region
/// is
///
///     open    while a cursor is in it: that of a batch or, in at most one region, the cursor that all threads share;
///     closed  when its cursor has gone to another region, until the last object in it is released;
///     spare   when it is empty, until it is opened again. Only so many are kept; others go back to the system.
///
/// The reason is the life of containers: a text becomes many small ones, made one after the other and mostly released
/// in the same way. Here they lie one after the other in a few pages, which the next request finds in the cache, and
/// each takes an addition to make and an atomic subtraction to release, which is a tenth to a third faster than malloc.
/// There is no lock and nothing per thread. A batch takes the open region away from all others, so that threads that
/// parse at the same time do not write to the same cache lines: with two of them, that halves the time. Whoever finds
/// no region open opens another one, and memory may be released on any thread.
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

        static constexpr std::uint32_t kOpen = 1U << 31;  // more units than there are

        std::array<std::byte, kRegionSize - kUnit> objects;
        // Units allocated less units released: whoever brings it to 0 has released the last object. While the region is
        // open, kOpen stands for the units that will have been allocated.
        std::atomic<std::uint32_t> units{kOpen};
    };
    static_assert(sizeof(Region) == kRegionSize);

    static constexpr std::uint32_t unitsFor(std::size_t size) noexcept {
        return static_cast<std::uint32_t>((size + kUnit - 1) / kUnit);
    }

    // Where the next object goes, in an open region; or null.
    struct Cursor {
        std::byte* next = nullptr;

        Region* region() const noexcept { return Region::of(next); }
        std::size_t space() const noexcept { return static_cast<std::size_t>(region()->end() - next); }
        std::uint32_t allocatedUnits() const noexcept {
            return unitsFor(static_cast<std::size_t>(next - region()->begin()));
        }
    };

 public:
    /// Allocates many objects in a region that it has to itself while it lives. Belongs to one thread.
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
        /// Releases the object that was allocated last, before there is another one.
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
        while (cursor.next && cursor.space() >= wholeUnits) {
            const Cursor after{cursor.next + wholeUnits};
            if (!shared_.compare_exchange_weak(cursor, after, std::memory_order_acquire, std::memory_order_relaxed))
                continue;
            unpoison(cursor.next, size);
            return cursor.next;
        }
        return BatchAllocator().allocate(size);
    }
    /// Of the size that it was allocated with, by itself or in a batch.
    static void release(void* memory, std::size_t size) noexcept {
        poison(memory, size);
        release(Region::of(memory), unitsFor(size));
    }

    /// Returns what is empty to the system: for whoever unloads the code, as the last thing that it does. Without that,
    /// memory stays taken. A region in which an object is left stays.
    static void freeSpares() noexcept;

 private:
    // Whoever releases the last units of a region makes it a spare one.
    static void release(Region* region, std::uint32_t units) noexcept {
        if (region->units.fetch_sub(units, std::memory_order_acq_rel) == units) keepSpare(region);
    }
    static Cursor openSpare();
    static void close(Cursor cursor) noexcept;
    static void keepSpare(Region* region) noexcept;

    static std::atomic<Cursor> shared_;  // where everybody but batches allocates
    static_assert(std::atomic<Cursor>::is_always_lock_free);
};

}  // namespace pocketjson
