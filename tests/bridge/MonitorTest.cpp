// The verbs, with functions that lie.
#include <gtest/gtest.h>

#include "bridge/Monitor.h"

namespace torvo {

namespace {

constexpr auto stall = static_cast<DmResult>(0x80000008);

DmResult answersStall(const char*, const char*) {
    return stall;
}
DmResult answersUnknown(const char*, const char*) {
    return DmUnknown;
}
DmResult answersNo(const char*, const char*) {
    return 0;
}

DmResult writesTwo(const char*, const char*, std::int16_t* numbers, std::uint32_t count) {
    if (count > 0) numbers[0] = -1;
    if (count > 1) numbers[1] = 2;
    return count > 1000 ? stall : 0;
}

template <class Item>
DmResult claimsToHaveMost(const char*, const char*, Item* items, std::uint32_t* count) {
    if (!items) *count = 0xFFFFFFFF;
    return 0;
}

int timesAsked = 0;
DmResult saysNoCount(const char*, const char*, std::uint8_t*, std::uint32_t*) {
    ++timesAsked;
    return 0;
}

template <DmResult Result>
DmResult answers(const char*, const char*, std::uint32_t*) {
    return Result;
}

struct Big {
    char bytes[4096];
};

DmResult writesWithoutNul(const char*, const char*, char* text, std::uint32_t size) {
    std::fill(text, text + size, 'x');
    return 0;
}

/// A function that no library has.
constexpr NamedFunction<DmResult(const char*, const char*)> missing{"DmCtrlThatNoLibraryHas"};

const Monitor monitor("10000001", "TQ271-P");

std::string reasonOf(const auto& work) {
    try {
        work();
    } catch (const BridgeResultError& error) {
        return error.result.error.get("reason").text();
    }
    return "no failure";
}

TEST(Verbs, CheckSupportOnlyWhereTheyAreAskedTo) {
    EXPECT_TRUE(monitor.supports(answersStall));
    EXPECT_EQ(reasonOf([] { monitor.supportsChecked(answersStall, "Support it."); }), "Support it.");
    EXPECT_TRUE(monitor.supportsChecked(answersUnknown, "Support it."));
    EXPECT_FALSE(monitor.supportsChecked(answersNo, "Support it."));
    EXPECT_EQ(monitor.call(answersStall), stall);
}

TEST(Verbs, TakeALibraryWithoutTheFunctionForTheOlderGeneration) {
    EXPECT_FALSE(monitor.isOffered(missing));
    EXPECT_FALSE(monitor.isNewer(missing));
    EXPECT_TRUE(monitor.isNewer(answersUnknown));
    EXPECT_FALSE(monitor.isNewer(answersNo));
}

TEST(Verbs, CanReadWhatAnswersNoFailure) {
    EXPECT_TRUE(monitor.canRead(answers<0>));
    EXPECT_TRUE(monitor.canRead(answers<1>));
    EXPECT_FALSE(monitor.canRead(answers<DmUnknown>));
}

TEST(Verbs, TakeAListWithoutACountForEmpty) {
    timesAsked = 0;
    EXPECT_TRUE(monitor.enumerate(saysNoCount, "Get them.").empty());
    EXPECT_EQ(timesAsked, 1);
}

TEST(Verbs, ReadListsOfALengthThatIsGiven) {
    EXPECT_EQ(monitor.readList(writesTwo, "Get them.", 3), (std::vector<std::int16_t>{-1, 2, 0}));
    EXPECT_EQ(monitor.readList(writesTwo, "Get them.", 0), std::vector<std::int16_t>());
    EXPECT_EQ(reasonOf([] { monitor.readList(writesTwo, "Get them.", 4000000000); }), "Get them.");
}

TEST(Verbs, BoundListsByTheirItemsAndByTheirBytes) {
    EXPECT_EQ(monitor.enumerate(claimsToHaveMost<std::uint8_t>, "Get them.").size(), Monitor::maximumItems);
    EXPECT_EQ(monitor.enumerate(claimsToHaveMost<Big>, "Get them.").size(), Monitor::maximumListBytes / sizeof(Big));
}

TEST(Verbs, BoundTexts) {
    EXPECT_EQ(monitor.readText(3, writesWithoutNul, "Get it."), "xxx");
    EXPECT_EQ(monitor.readText(0, writesWithoutNul, "Get it."), "");
    EXPECT_EQ(monitor.readText(4000000000, writesWithoutNul, "Get it.").size(), Monitor::maximumText);
}

}  // namespace

}  // namespace torvo
