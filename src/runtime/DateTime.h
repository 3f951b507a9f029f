// A calendar date with a time of day.
#pragma once

#include <cstdint>
#include <string>

namespace torvo {

struct DateTime {
    std::uint16_t year = 0;
    std::uint8_t month = 0;  ///< from 1
    std::uint8_t day = 0;
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;

    /// "2024-01-15 09:05:00": at least four digits for the year and two for the rest. What is no date is written as it
    /// is.
    std::string text() const;
};

}  // namespace torvo
