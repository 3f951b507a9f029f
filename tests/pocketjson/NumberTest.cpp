#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "Text.h"
#include "pocketjson/Number.h"

namespace pocketjson {
namespace {

// What the C library makes of numbers is the reference for both directions.

// Doubles of all kinds, among them those where one digit or bit more or less decides.
class Doubles {
 public:
    double next() {
        const auto neighbourOf = [this](double number) {
            return std::bit_cast<double>(std::bit_cast<std::uint64_t>(number) + random_() % 5 - 2);
        };
        switch (++count_ % 8) {
            case 0:  // subnormal
                return std::bit_cast<double>(random_() >> (12 + random_() % 52));
            case 1:
                return neighbourOf(std::ldexp(1.0, static_cast<int>(random_() % 2098) - 1074));
            case 2:
                return neighbourOf(powersOfTen_[random_() % powersOfTen_.size()]);
            case 3: {  // has 18 digits of which the last is a 5: a tie
                const auto power = static_cast<int>(random_() % 19) + 7;
                const double least = 1e17 / std::pow(5.0, power);
                return std::ldexp(std::floor(least * (1 + static_cast<double>(random_() % 9000) / 1000)), -power);
            }
            case 4:
                return static_cast<double>(random_() >> (random_() % 64));
            case 5:
                return static_cast<double>(random_() % 100000) / powersOfTen_[323 + random_() % 12];
            default:
                return std::bit_cast<double>(random_());
        }
    }

 private:
    static std::vector<double> powersOfTen() {
        std::vector<double> powers;
        for (int exponent = -323; exponent <= 308; ++exponent)
            powers.push_back(std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr));
        return powers;
    }

    std::mt19937_64 random_{1};
    std::uint64_t count_ = 0;
    const std::vector<double> powersOfTen_ = powersOfTen();
};

// PELL_DOUBLES sets how many are tried: all is well with 100 million of them, which take minutes.
TEST(Numbers, AreFormattedAndReadAsTheCLibraryDoes) {
    const char* const wanted = std::getenv("PELL_DOUBLES");
    const std::int64_t count = wanted ? std::atoll(wanted) : 200000;
    Doubles doubles;
    NumberBuffer buffer;
    for (std::int64_t i = 0; i < count; ++i) {
        const double number = doubles.next();
        if (number == 0 || !std::isfinite(number)) continue;
        char byC[128];
        std::snprintf(byC, sizeof byC, "%.17g", number);
        const std::string_view text = formatNumber(number, buffer);
        ASSERT_EQ(text, byC);
        double read = 0;
        ASSERT_TRUE(readNumber(text, read)) << text;
        ASSERT_EQ(read, number) << text;
        // Halfway to the next one, in all of its digits, and a hair more.
        const double next = std::nextafter(number, HUGE_VAL);
        if (i % 64 != 0 || number < 0 || !std::isfinite(next)) continue;
        char digits[1200];
        std::snprintf(digits, sizeof digits, "%.1100Lg", (static_cast<long double>(number) + next) / 2);
        std::string halfway = digits;
        const bool isEven = std::bit_cast<std::uint64_t>(number) % 2 == 0;
        ASSERT_EQ(parsed(halfway).asDouble(), isEven ? number : next) << halfway;
        if (halfway.find('.') == halfway.npos) continue;
        halfway.insert(std::min(halfway.find('e'), halfway.size()), "1");
        ASSERT_EQ(parsed(halfway).asDouble(), next) << halfway;
    }
}

TEST(Numbers, WithoutAPointAreFormattedAndReadAsTheStandardLibraryDoes) {
    std::vector<std::int64_t> numbers{std::numeric_limits<std::int64_t>::min(),
                                      std::numeric_limits<std::int64_t>::max()};
    for (std::int64_t number = -10; number < 10100; ++number) numbers.push_back(number);
    for (std::int64_t power = 10000; power <= 1000000000000000000; power *= 10)
        for (const std::int64_t number : {power - 1, power, power + 1, power / 9 * 8, power / 7 * 8})
            numbers.insert(numbers.end(), {number, -number});
    NumberBuffer buffer;
    for (const std::int64_t number : numbers) {
        const std::string expected = std::to_string(number);
        ASSERT_EQ(formatNumber(number, buffer), expected);
        ASSERT_EQ(parsed(expected), Value(number));
    }
}

TEST(Numbers, AreReadAsTheCLibraryDoes) {
    std::mt19937 random(2);
    for (int i = 0; i < 60000; ++i) {
        std::string text = random() % 2 ? "-" : "";
        text += static_cast<char>('1' + random() % 9);
        const auto addDigits = [&](std::uint_fast32_t count) {
            while (count-- > 0) text += static_cast<char>('0' + random() % 10);
        };
        addDigits(random() % 25);
        text += '.';
        addDigits(1 + random() % 25);
        if (random() % 2) text += 'e' + std::to_string(static_cast<int>(random() % 700) - 360);
        ASSERT_EQ(parsed(text).asDouble(1), std::strtod(text.c_str(), nullptr)) << text;
    }
    // Halfway between two doubles, and a hair above: digits far behind decide.
    const std::string halfway = "9007199254740993." + std::string(1000, '0');
    EXPECT_EQ(parsed(halfway).asDouble(), 9007199254740992.0);
    EXPECT_EQ(parsed(halfway + '1').asDouble(), 9007199254740994.0);
    EXPECT_EQ(parsed("9007199254740994." + std::string(1000, '9')).asDouble(), 9007199254740994.0);
    for (const char* text : {"9007199254740993e0", "9007199254740995e0", "9007199254740993e1", "1.3e-324", "1.9e-324",
                             "2.4e-324", "2.5e-324"})
        EXPECT_EQ(parsed(text).asDouble(1), std::strtod(text, nullptr)) << text;
}

}  // namespace
}  // namespace pocketjson
