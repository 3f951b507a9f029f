#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pocketjson/Parser.h"
#include "pocketjson/Serializer.h"

namespace pocketjson {

inline std::string written(const Value& value, unsigned flags = 0) {
    std::string output;
    EXPECT_TRUE(write(value, output, flags));
    return output;
}

inline Value parsed(std::string_view text, unsigned flags = 0) {
    Value value;
    std::string error;
    EXPECT_TRUE(parse(error, value, text, flags)) << text;
    EXPECT_EQ(error, "");
    return value;
}

inline void PrintTo(const Value& value, std::ostream* stream) {
    *stream << written(value);
}

// Writes the events down, and cancels at the one with the given number.
class Recorder : public SaxHandler {
 public:
    explicit Recorder(int cancelAt = -1) : remaining_(cancelAt) {}

    bool null() override { return record("null"); }
    bool boolean(bool value) override { return record(value ? "true" : "false"); }
    bool integer(std::int64_t value) override { return record("i" + std::to_string(value)); }
    bool floating(double value) override { return record("f" + Value(value).asString()); }
    bool string(std::string_view text) override { return record("s" + std::string(text)); }
    bool startArray() override { return record("["); }
    bool endArray() override { return record("]"); }
    bool startObject() override { return record("{"); }
    bool key(std::string_view name) override { return record("k" + std::string(name)); }
    bool endObject() override { return record("}"); }

    std::vector<std::string> events;

 private:
    bool record(std::string event) {
        events.push_back(std::move(event));
        return remaining_-- != 0;
    }

    int remaining_;
};

}  // namespace pocketjson
