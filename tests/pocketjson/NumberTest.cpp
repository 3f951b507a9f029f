#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "Text.h"

namespace pocketjson {
namespace {

// What the C library makes of numbers is the reference for both directions.

std::string formattedByC(double number) {
    char buffer[128];
    std::snprintf(buffer, sizeof buffer, "%.17g", number);
    return buffer;
}

std::vector<double> manyDoubles() {
    std::mt19937_64 random(1);
    std::vector<double> numbers;
    const auto addWithNeighbours = [&numbers](double number) {
        for (const double sign : {1.0, -1.0})
            for (const double direction : {0.0, 1.0, HUGE_VAL})
                numbers.push_back(sign * std::nextafter(number, number * direction));
    };
    for (int exponent = -1074; exponent < 1024; ++exponent) addWithNeighbours(std::ldexp(1.0, exponent));
    for (int exponent = -323; exponent <= 308; ++exponent)
        addWithNeighbours(std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr));
    for (int i = 1; i <= 20000; ++i) {
        numbers.push_back(i);
        numbers.push_back(i / 100.0);
        numbers.push_back(static_cast<double>(random() >> (i % 64)));
        numbers.push_back(std::bit_cast<double>(random() >> 12));  // subnormal
        for (int j = 0; j < 3; ++j) numbers.push_back(std::bit_cast<double>(random()));
    }
    std::erase_if(numbers, [](double number) { return number == 0 || !std::isfinite(number); });
    return numbers;
}

TEST(Numbers, AreFormattedAsTheCLibraryDoesAndReadBack) {
    std::string json;
    for (const double number : manyDoubles()) {
        json.clear();
        ASSERT_TRUE(write(number, json));
        ASSERT_EQ(json, formattedByC(number));
        ASSERT_EQ(parsed(json).asDouble(), number) << json;
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
}

}  // namespace
}  // namespace pocketjson
