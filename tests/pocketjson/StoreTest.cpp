#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstring>
#include <set>
#include <string_view>
#include <thread>
#include <vector>

#include "pocketjson/Store.h"

using pocketjson::Store;

namespace {

constexpr std::array<std::size_t, 5> sizes{1, 48, 64, 40, 1000};

struct Block {
    void* memory;
    std::size_t size;
    char content;

    Block(void* allocated, std::size_t bytes, char byte) : memory(allocated), size(bytes), content(byte) {
        std::memset(memory, content, size);
    }
    bool isIntact() const {
        const std::string_view bytes(static_cast<const char*>(memory), size);
        return bytes.find_first_not_of(content) == bytes.npos;
    }
};

// As a parser makes them, in one batch, and one by one.
std::vector<Block> makeBlocks(std::size_t count, char content) {
    std::vector<Block> blocks;
    Store::BatchAllocator batch;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t size = sizes[i % sizes.size()];
        blocks.emplace_back(i % 3 == 0 ? Store::allocate(size) : batch.allocate(size), size, content);
    }
    return blocks;
}

// Returns whether all were as they had been made.
bool release(const std::vector<Block>& blocks) {
    bool intact = true;
    for (const Block& block : blocks) {
        intact = intact && block.isIntact();
        Store::release(block.memory, block.size);
    }
    return intact;
}

TEST(Store, UsesItsMemoryAgain) {
    std::set<std::uintptr_t> pages;
    std::size_t afterFirstRound = 0;
    for (char round = 0; round < 6; ++round) {
        const auto blocks = makeBlocks(2000, round);
        for (const Block& block : blocks) {
            const auto address = reinterpret_cast<std::uintptr_t>(block.memory);
            EXPECT_EQ(address % 16, 0U);
            pages.insert(address / 4096);
        }
        EXPECT_TRUE(release(blocks));
        if (round == 0) afterFirstRound = pages.size();
    }
    EXPECT_LT(pages.size(), afterFirstRound * 3 / 2);
}

TEST(Store, AllocatesAgainWhatABatchHasReleasedLast) {
    Store::BatchAllocator batch;
    void* const kept = batch.allocate(48);
    void* const last = batch.allocate(64);
    batch.releaseLast(last);
    void* const next = batch.allocate(32);
    EXPECT_EQ(last, next);
    Store::release(kept, 48);
    Store::release(next, 32);
}

// Each thread releases what another one has made.
TEST(StoreThreads, HandObjectsToEachOther) {
    std::array<std::atomic<std::vector<Block>*>, 4> places{};
    std::atomic<int> damaged{0};
    const auto work = [&](std::size_t number) {
        for (std::size_t round = 0; round < 300; ++round) {
            auto* const made = new std::vector<Block>(makeBlocks(1 + round % 50, static_cast<char>(number)));
            if (auto* const others = places[(number + round) % places.size()].exchange(made)) {
                damaged += !release(*others);
                delete others;
            }
        }
    };
    {
        std::vector<std::jthread> threads;
        for (std::size_t number = 0; number < places.size(); ++number) threads.emplace_back(work, number);
    }
    for (auto& place : places) {
        if (auto* const left = place.load()) {
            damaged += !release(*left);
            delete left;
        }
    }
    EXPECT_EQ(damaged, 0);
}

}  // namespace
