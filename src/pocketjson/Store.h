// The memory of containers.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace pocketjson {

/// Hands out memory for small objects from regions, each of which is filled from its beginning to its end and used
/// again when nothing in it is left. So objects that are made one after the other lie one after the other, and a
/// program that makes and drops them over and over does so in the same few pages.
///
/// Memory may be released on any thread. One region is open at a time, for the thread that has it; a thread that finds
/// it taken opens one of its own. There is no lock and nothing per thread: a Filler needs two atomic exchanges for as
/// many objects as it makes, and releasing an object is one atomic decrement.
class Store {
    static constexpr std::size_t kRegionSize = 16384;
    static constexpr std::size_t kAlignment = 16;

    // At the beginning of a region, which is aligned to its size.
    struct Region {
        char* next;                       // where the next object goes
        std::uint32_t made;               // objects since the region was empty
        std::atomic<std::uint32_t> left;  // objects not released; kOpen less those released as long as more are made
    };
    static constexpr std::uint32_t kOpen = 1U << 31;

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
            size = (size + kAlignment - 1) / kAlignment * kAlignment;
            if (size > room()) open(size);
            char* const memory = region_->next;
            region_->next += size;
            ++region_->made;
            return memory;
        }

     private:
        std::size_t room() const noexcept {
            return region_ ? static_cast<std::size_t>(endOf(region_) - region_->next) : 0;
        }
        void open(std::size_t size);

        Region* region_ = nullptr;
    };

    /// One object by itself.
    static void* allocate(std::size_t size) { return Filler().allocate(size); }

    /// Takes objects back, those of one region in a row at once.
    class Releaser {
     public:
        Releaser() noexcept = default;
        ~Releaser() { flush(); }
        Releaser(const Releaser&) = delete;
        Releaser& operator=(const Releaser&) = delete;

        void release(void* memory) noexcept {
            Region* const region = regionOf(memory);
            if (region != region_) {
                flush();
                region_ = region;
            }
            ++count_;
        }

     private:
        void flush() noexcept {
            if (count_ != 0 && region_->left.fetch_sub(count_, std::memory_order_acq_rel) == count_) recycle(region_);
            count_ = 0;
        }

        Region* region_ = nullptr;
        std::uint32_t count_ = 0;
    };

    /// One object by itself.
    static void release(void* memory) noexcept { Releaser().release(memory); }

 private:
    static Region* regionOf(void* memory) noexcept {
        return reinterpret_cast<Region*>(reinterpret_cast<std::uintptr_t>(memory) & ~(kRegionSize - 1));
    }
    static char* beginOf(Region* region) noexcept {
        return reinterpret_cast<char*>(region) + (sizeof(Region) + kAlignment - 1) / kAlignment * kAlignment;
    }
    static char* endOf(Region* region) noexcept { return reinterpret_cast<char*>(region) + kRegionSize; }
    static void makeEmpty(Region* region) noexcept;
    static Region* emptyRegion();
    static void close(Region* region) noexcept;
    static void recycle(Region* region) noexcept;
    static void freeSpares() noexcept;

    struct Spares;
    static Spares spares_;
};

}  // namespace pocketjson
