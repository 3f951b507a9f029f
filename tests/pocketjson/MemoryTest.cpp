// What the library asks of memory and of the C library, counted and made to fail. Native only: there a program's own
// operator new and memcmp are also those of the libraries that it is linked with.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <limits>
#include <new>

#include "Text.h"
#include "pocketjson/Store.h"

namespace {

long allocations = 0;
long untilFailure = 0;  // counts down to the failing allocation; 0 fails none
bool regionsFail = false;
long regions = 0;
long comparisons = 0;

void* allocate(std::size_t size, std::size_t alignment) {
    ++allocations;
    if (untilFailure > 0 && --untilFailure == 0) throw std::bad_alloc();
    if (void* memory = std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)) return memory;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size, alignof(std::max_align_t));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    if (regionsFail) throw std::bad_alloc();
    ++regions;
    return allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    --regions;
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}

// All comparisons of names end here.
extern "C" int memcmp(const void* left, const void* right, std::size_t size) noexcept {
    ++comparisons;
    const auto* const a = static_cast<const unsigned char*>(left);
    const auto* const b = static_cast<const unsigned char*>(right);
    for (std::size_t i = 0; i < size; ++i)
        if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    return 0;
}

namespace pocketjson {
namespace {

// Holds all that the store has at hand, so that the next container needs a region of its own.
class ExhaustedStore {
 public:
    ExhaustedStore() {
        blocks_.reserve(200000);
        regionsFail = true;
        try {
            while (blocks_.size() < blocks_.capacity()) blocks_.push_back(Store::allocate(1));
        } catch (const std::bad_alloc&) {
        }
        regionsFail = false;
    }
    ~ExhaustedStore() {
        for (void* block : blocks_) Store::release(block, 1);
    }
    ExhaustedStore(const ExhaustedStore&) = delete;
    ExhaustedStore& operator=(const ExhaustedStore&) = delete;

 private:
    std::vector<void*> blocks_;
};

TEST(Memory, FailingAtAnyAllocationLeavesTheValueAsItWas) {
    const std::string longText(100, 'x');
    const std::string aLongName = "a name that needs memory";
    std::string message;
    const Value starts[] = {Value(),
                            7,
                            longText,
                            "s",
                            Value::array({1, longText, Value{{"a", 2}}}),
                            Value{{"a", Value::array({1})}, {aLongName, longText}}};
    const std::pair<const char*, std::function<void(Value&)>> changes[] = {
        {"member", [&](Value& value) { value["b"]; }},
        {"member of a long name", [&](Value& value) { value[longText] = 1; }},
        {"member that is there", [&](Value& value) { value["a"] = 1; }},
        {"append", [&](Value& value) { value.append(1); }},
        {"element", [&](Value& value) { value.element(1) = 1; }},
        {"element far behind", [&](Value& value) { value.element(30) = 1; }},
        {"remove", [&](Value& value) { value.remove(aLongName); }},
        {"setType to string", [&](Value& value) { value.setType(Value::String); }},
        {"setType to object", [&](Value& value) { value.setType(Value::Object); }},
        {"setType to array", [&](Value& value) { value.setType(Value::Array); }},
        {"text", [&](Value& value) { value = std::string_view(longText + "y"); }},
        {"longer text", [&](Value& value) { value = longText + longText; }},
        {"text of its own",
         [&](Value& value) { value = std::string_view(value.text()).substr(value.text().size() / 2); }},
        {"members",
         [&](Value& value) {
             value = {{"x", longText}, {aLongName, {{"y", 1}}}, {"x", 2}};
         }},
        {"elements",
         [&](Value& value) {
             value = Value::array({longText, 1, longText});
         }},
        {"parse", [&](Value& value) { parse(message, value, R"([{"a":"a text that is not short"},[1,2],3.5])"); }},
        {"failing parse",
         [&](Value& value) { parse(message, value, R"({"a":["a text that is not short",{"a\n name so long":x)"); }},
        {"parse with more behind", [&](Value& value) { parse(message, value, "[1] x"); }},
    };
    for (const Value& start : starts) {
        for (const auto& [name, change] : changes) {
            for (const bool isShared : {false, true}) {
                const std::string before = written(start);
                bool failed = true;
                for (long n = 1; failed; ++n) {
                    Value value = parsed(before);
                    message = std::string();
                    const Value copy = isShared ? value : Value();
                    failed = false;
                    {
                        const ExhaustedStore exhausted;
                        untilFailure = n;
                        try {
                            change(value);
                        } catch (const std::bad_alloc&) {
                            failed = true;
                        }
                        untilFailure = 0;
                    }
                    if (failed) ASSERT_EQ(written(value), before) << name << ", allocation " << n;
                    if (isShared) ASSERT_EQ(written(copy), before) << name << ", allocation " << n;
                }
            }
        }
    }
}

TEST(Memory, AnIndexThatNoMemoryHoldsIsAFailureToo) {
    for (const Value& start : {Value(1), Value::array({1, 2})}) {
        Value value = start;
        EXPECT_THROW(value.element(std::numeric_limits<std::size_t>::max()), std::bad_alloc);
        EXPECT_THROW(value.element(std::numeric_limits<std::size_t>::max() / sizeof(Value)), std::bad_alloc);
        EXPECT_EQ(value, start);
    }
}

TEST(Memory, OfTheStoreIsFreedInTheEnd) {
    Store::freeSpares();
    const long before = regions;
    parsed("[" + std::string(100000, '[') + std::string(100000, ']') + "]");
    EXPECT_GT(regions, before);
    for (int round = 0; round < 2; ++round) {
        Store::freeSpares();
        EXPECT_EQ(regions, before);
    }
}

TEST(Memory, LookUpsAllocateNothingAndCompareFewNames) {
    constexpr int kNames = 20000;
    constexpr long kEnough = 2 * 16 + 2;  // for a balanced tree of them: twice the logarithm, and a test at the end
    const auto name = [](int number) { return std::string(100, 'k') + std::to_string(1000000 + number); };
    Value value;
    for (int number = 0; number < kNames; ++number) value[name(number)] = number;

    const std::string names[] = {"", name(-1), name(0), name(kNames / 2), name(kNames - 1), name(kNames), "l"};
    for (const std::string& each : names) {
        const auto measured = [](auto look) {
            allocations = comparisons = 0;
            look();
            EXPECT_EQ(allocations, 0);
            return comparisons;
        };
        const Value& constant = value;
        EXPECT_LE(measured([&] { constant.get(each); }), kEnough);
        EXPECT_LE(measured([&] { constant.has(each); }), kEnough);
        if (!value.has(each)) continue;
        EXPECT_GT(measured([&] { value[each]; }), 0);
        EXPECT_LE(measured([&] { value[each]; }), kEnough);
        EXPECT_LE(measured([&] { value.remove(each); }), 2 * kEnough);
    }
}

}  // namespace
}  // namespace pocketjson
