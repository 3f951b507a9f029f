#pragma once

#include <gtest/gtest.h>

#include <string>

#include "pocketjson/Parser.h"
#include "pocketjson/Serializer.h"

namespace pocketjson {

inline std::string written(const Value& value, unsigned flags = 0) {
    std::string output;
    EXPECT_TRUE(write(value, output, flags));
    return output;
}

inline Value parsed(std::string_view text) {
    Value value;
    std::string error;
    EXPECT_TRUE(parse(error, value, text)) << error;
    return value;
}

inline void PrintTo(const Value& value, std::ostream* stream) {
    *stream << written(value);
}

}  // namespace pocketjson
