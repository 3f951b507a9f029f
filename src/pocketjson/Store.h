// The memory of containers.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>

// The address sanitizer is told what is in use, so that it finds uses of what was released.
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(memory, size) (static_cast<void>(memory), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(memory, size) (static_cast<void>(memory), static_cast<void>(size))
#endif

namespace pocketjson {

/// Hands out memory for small objects, well below the 16 KiB of a region, from regions each of which is filled from its
/// beginning to its end and used again when nothing in it is left. So objects that are made one after the other lie one
/// after the other, and a program that makes and drops them over and over does so in the same few pages.
///
/// Memory may be released on any thread. One region is open at a time, for whoever comes next; a thread that finds
/// none, because another one is filling it, opens one of its own. There is no lock and nothing per thread: an object
/// by itself takes one atomic exchange, as many as a Filler makes take two, and releasing one is an atomic decrement.
class Store {
    static constexpr std::size_t kRegionSize = 16384;
    static constexpr std::size_t kUnit = 16;  // sizes and alignments are multiples of it

    // At the beginning of a region, which is aligned to its size.
    struct Region {
        std::atomic<std::uint32_t> left;  // units not released; kOpen less those released while more may be made
    };
    static constexpr std::uint32_t kOpen = 1U << 31;

    // How far a region is filled: its address, and in the bits that are zero in it the number of units. 0 is none.
    using Filling = std::uintptr_t;
    static_assert(sizeof(Region) <= kUnit);

    static constexpr std::size_t unitsFor(std::size_t size) noexcept { return (size + kUnit - 1) / kUnit; }
    static std::size_t unitsOf(Filling filling) noexcept { return filling % kRegionSize; }
    static Region* regionOf(std::uintptr_t inside) noexcept {
        return reinterpret_cast<Region*>(inside / kRegionSize * kRegionSize);  // NOLINT(performance-no-int-to-ptr)
    }
    static char* nextIn(Filling filling) noexcept {
        return reinterpret_cast<char*>(regionOf(filling)) + unitsOf(filling) * kUnit;
    }
    static bool hasRoom(Filling filling, std::size_t units) noexcept {
        return filling != 0 && unitsOf(filling) + units <= kRegionSize / kUnit;
    }

 public:
    /// Has a region to itself while it lives. Belongs to one thread.
    class Filler {
     public:
        Filler() noexcept = default;
        ~Filler();
        Filler(const Filler&) = delete;
        Filler& operator=(const Filler&) = delete;

        /// Throws std::bad_alloc.
        void* allocate(std::size_t size) {
            size = unitsFor(size) * kUnit;
            if (size > static_cast<std::size_t>(end_ - next_)) open(size);
            ASAN_UNPOISON_MEMORY_REGION(next_, size);
            return std::exchange(next_, next_ + size);
        }
        /// Takes back what was allocated last.
        void takeBack(void* memory) noexcept {
            next_ = static_cast<char*>(memory);
            ASAN_POISON_MEMORY_REGION(next_, end_ - next_);
        }

     private:
        void open(std::size_t size);
        void fill(Filling filling) noexcept;
        Filling filling() const noexcept;

        char* next_ = nullptr;  // in the region that ends at end_
        char* end_ = nullptr;
    };

    /// Takes objects back, those of one region in a row at once.
    class Releaser {
     public:
        Releaser() noexcept = default;
        ~Releaser() { flush(); }
        Releaser(const Releaser&) = delete;
        Releaser& operator=(const Releaser&) = delete;

        void release(void* memory, std::size_t size) noexcept {
            ASAN_POISON_MEMORY_REGION(memory, size);
            Region* const region = regionOf(reinterpret_cast<std::uintptr_t>(memory));
            if (region != region_) {
                flush();
                region_ = region;
            }
            units_ += static_cast<std::uint32_t>(unitsFor(size));
        }

     private:
        void flush() noexcept {
            if (region_) Store::release(region_, units_);
            units_ = 0;
        }

        Region* region_ = nullptr;
        std::uint32_t units_ = 0;
    };

    /// One object by itself. Throws std::bad_alloc.
    static void* allocate(std::size_t size) {
        const std::size_t units = unitsFor(size);
        Filling filling = open_.load(std::memory_order_relaxed);
        while (hasRoom(filling, units)) {
            if (!open_.compare_exchange_weak(filling, filling + units, std::memory_order_acquire,
                                             std::memory_order_relaxed))
                continue;
            ASAN_UNPOISON_MEMORY_REGION(nextIn(filling), size);
            return nextIn(filling);
        }
        return Filler().allocate(size);
    }
    static void release(void* memory, std::size_t size) noexcept { Releaser().release(memory, size); }

 private:
    static void release(Region* region, std::uint32_t units) noexcept {
        if (region->left.fetch_sub(units, std::memory_order_acq_rel) == units) recycle(region);
    }
    static Filling beginOf(Region* region) noexcept;
    static Filling openEmpty();
    static void close(Filling filling) noexcept;
    static void recycle(Region* region) noexcept;
    static void freeSpares() noexcept;

    static std::atomic<Filling> open_;  // of the region that no filler has
};

}  // namespace pocketjson
