#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "runtime/Gate.h"
#include "runtime/Owned.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using torvo::gated;
namespace platform = torvo::platform;

struct Six {
    std::int64_t numbers[6];
};
Six sixOf(double a, const char* b, std::uint8_t c, std::int64_t d, float e, const std::int32_t* f) {
    return {{static_cast<std::int64_t>(a), static_cast<std::int64_t>(std::string(b).size()), c, d,
             static_cast<std::int64_t>(e), *f}};
}

TEST(Gate, PassesArgumentsAndResultsOfAnyType) {
    const std::int32_t sixth = -6;
    EXPECT_THAT(gated(sixOf)(1.5, "ab", 3, std::int64_t{1} << 40, 5.5F, &sixth).numbers,
                testing::ElementsAre(1, 2, 3, std::int64_t{1} << 40, 5, -6));
}

struct Twelve {
    std::int32_t numbers[11];
};
Twelve elevenOf(std::int8_t a, std::int8_t b, std::int8_t c, std::int8_t d, std::int8_t e, std::int8_t f, double g,
                std::int8_t h, std::int8_t i, std::int8_t j, std::int8_t k) {
    return {{a, b, c, d, e, f, static_cast<std::int32_t>(g), h, i, j, k}};
}
double sumOfFour(double a, float b, std::int32_t c, double d) {
    return a + static_cast<double>(b) + c + d;
}
struct Small {
    std::int32_t numbers[2];
};
Small pairOf(std::int32_t a) {
    return {{a, -a}};
}

TEST(Gate, PassesAsManyArgumentsAsThereAre) {
    EXPECT_THAT(gated(elevenOf)(1, 2, 3, 4, 5, 6, 7.5, 8, 9, 10, 11).numbers,
                testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
    EXPECT_EQ(gated(sumOfFour)(1.5, 2, 3, 4), 10.5);
    EXPECT_THAT(gated(pairOf)(4).numbers, testing::ElementsAre(4, -4));
}

void throwText(const char* text) {
    throw std::runtime_error(text);
}
int throwIf(bool condition) {
    if (condition) throwText("as it is");
    return 1;
}

TEST(Gate, PassesExceptionsOfOurCompilerAsTheyAre) {
    try {
        gated(throwIf)(true);
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "as it is");
    }
    gated(throwText).callQuietly("dropped");
}

int released = 0;
void throwOnRelease(int*) {
    ++released;
    throwText("from a release");
}

TEST(Owned, IsReleasedOnceWhateverTheReleaseThrows) {
    released = 0;
    int handle = 0;
    const torvo::Release release(gated(throwOnRelease));
    { const torvo::Owned<int> owned(&handle, release); }
    { const torvo::Owned<int> nothing(nullptr, release); }
    EXPECT_EQ(released, 1);
}

#ifdef _WIN32

/// Counts the frames of ours that are left.
struct Frame {
    static inline int left = 0;
    ~Frame() { ++left; }
};

std::uint32_t raise(DWORD code, DWORD flags) {
    RaiseException(code, flags, 0, nullptr);
    return 7;
}

/// What becomes of an exception that a companion raises.
std::string outcomeOf(DWORD code, DWORD flags = 0) {
    try {
        const Frame frame;
        return std::to_string(gated(raise)(code, flags));
    } catch (const platform::ForeignException&) {
        return "foreign";
    }
}

TEST(Gate, TurnsForeignExceptionsIntoOneOfOurs) {
    constexpr DWORD ofMicrosoftsCompiler = 0xE06D7363, ofDotNet = 0xE0434352, ofDelphi = 0x0EEDFADE, ofRpc = 1722,
                    ofDelayedLoading = 0xC06D007E, ofHeapsWithoutMemory = STATUS_NO_MEMORY, ofCom = 0x80004005,
                    ofNobody = 0x40000001, almostOfGcc = 0xE0474343;
    Frame::left = 0;
    int count = 0;
    for (const DWORD code : {ofMicrosoftsCompiler, ofDotNet, ofDelphi, ofRpc, ofDelayedLoading, ofHeapsWithoutMemory,
                             ofCom, ofNobody, almostOfGcc}) {
        for (const DWORD flags : {0UL, DWORD{EXCEPTION_NONCONTINUABLE}}) {
            EXPECT_EQ(outcomeOf(code, flags), "foreign") << code;
            EXPECT_EQ(Frame::left, ++count);
        }
    }
}

TEST(Gate, LeavesFaultsAndMessagesToTheProcess) {
    constexpr DWORD illegalInstruction = 0xC000001D, breakpoint = 0x80000003, threadName = 0x406D1388;
    // The function goes on where it raised.
    const auto previous =
        SetUnhandledExceptionFilter([](EXCEPTION_POINTERS*) -> LONG { return EXCEPTION_CONTINUE_EXECUTION; });
    for (const DWORD code : {illegalInstruction, breakpoint, threadName}) EXPECT_EQ(outcomeOf(code), "7") << code;
    SetUnhandledExceptionFilter(previous);
}

template <class... Numbers>
int raiseWith(Numbers...) {
    RaiseException(0xE06D7363, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    return 0;
}
template <class... Numbers>
void expectForeign(Numbers... numbers) {
    const std::string outcome = "left";
    EXPECT_THROW(gated(raiseWith<Numbers...>)(numbers...), platform::ForeignException) << sizeof...(Numbers);
    EXPECT_EQ(outcome, "left");
}

template <int... Number>
void expectForeignUpTo(std::integer_sequence<int, Number...> numbers) {
    expectForeign(Number...);
    if constexpr (numbers.size() > 0) expectForeignUpTo(std::make_integer_sequence<int, numbers.size() - 1>());
}

TEST(Gate, TurnsForeignExceptionsWithAnyNumberOfArguments) {
    expectForeignUpTo(std::make_integer_sequence<int, 12>());
}

std::string innerOutcome;
std::uint32_t callBack(std::uint32_t (*callback)(), DWORD code) {
    callback();
    return raise(code, 0);
}
std::uint32_t onCallback() noexcept {
    innerOutcome = outcomeOf(0xE06D7363);
    return 0;
}

TEST(Gate, IsNestedByCallbacks) {
    innerOutcome.clear();
    EXPECT_THROW(gated(callBack)(onCallback, 0xE0000001), platform::ForeignException);
    EXPECT_EQ(innerOutcome, "foreign");
}

#endif

}  // namespace
