// The parameters of simulated functions, whatever their C types: what a function is given, and what it writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>

#include "simulator/core/Json.h"

namespace simulator {

/// How values of a C type are written as JSON and read from it (see Values.h).
struct Type {
    std::size_t size;
    bool isPlain;  ///< any bytes make a value
    Json (*toJson)(const void* value);
    bool (*fromJson)(const Json& json, void* value);  ///< false: the JSON does not suit; a null value only tests that
};

/// Values.cpp has the types that companions pass: a new record without its line there does not link.
template <class T>
const Type& typeOf();

/// Refers to what a function is given, or to a value that it answers.
class Input {
 public:
    template <class Number>
    requires(std::is_arithmetic_v<Number>) Input(const Number& number) : Input(typeOf<Number>(), &number) {}

    /// A record by its address, which may be null.
    template <class Record>
    requires(std::is_class_v<Record>) Input(const Record* record) : Input(typeOf<Record>(), record) {}

    Input(const char* text) : kind_(Kind::text), value_(text) {}
    Input(const std::string& text) : Input(text.c_str()) {}

    template <class T>
    static Input list(const T* items, std::uint32_t count) {
        return {typeOf<T>(), items, count};
    }

    /// Null for a null text or record.
    Json json() const;

 private:
    enum class Kind { value, text, list };

    Input(const Type& type, const void* value) : kind_(Kind::value), type_(&type), value_(value) {}
    Input(const Type& type, const void* items, std::uint32_t count)
        : kind_(Kind::list), type_(&type), value_(items), count_(count) {}

    Kind kind_;
    const Type* type_ = nullptr;
    const void* value_;
    std::uint32_t count_ = 0;
};

/// An out-parameter. Null pointers are left alone.
class Output {
 public:
    /// A number or a record.
    template <class T>
    requires(!std::is_same_v<T, char>) Output(T* value) : Output(Kind::value, value) { type_ = &typeOf<T>(); }

    /// A text buffer of `capacity` bytes. A text that is too long fills it without a NUL.
    static Output text(char* buffer, std::size_t capacity) {
        Output output(Kind::text, buffer);
        output.capacity_ = capacity;
        return output;
    }

    /// A text in two steps: a null buffer asks for the size, the NUL included; otherwise `*size` is the capacity on
    /// entry and the size on return. A JSON number sets only the size, true or not.
    static Output text(char* buffer, std::uint32_t* size) {
        Output output(Kind::sizedText, buffer);
        output.count_ = size;
        return output;
    }

    /// A list of at most `capacity` items, for callers who know how many there are.
    template <class T>
    static Output list(T* items, std::uint32_t capacity) {
        Output output(Kind::list, items);
        output.type_ = &typeOf<T>();
        output.capacity_ = capacity;
        return output;
    }

    /// A list in two steps: null items ask for the count; otherwise `*count` is the capacity on entry. A JSON list
    /// writes what fits and its own length as the count; a JSON number writes only the count, true or not.
    template <class T>
    static Output list(T* items, std::uint32_t* count) {
        auto output = list(items, count ? *count : 0);
        output.kind_ = Kind::countedList;
        output.count_ = count;
        return output;
    }

    /// A handle, which is a number.
    template <class T>
    static Output handle(T** handle) {
        return {Kind::handle, handle};
    }

    /// False when the value does not suit. A JSON null leaves the out-parameter untouched.
    bool write(const Json& json) const;

    /// Makes every number, text, count and size here the lie, a number or a text, where it suits; the rest stays true.
    void distort(const Json& lie) const;

    /// Writes these bytes, over and over, to all the memory that the caller offers. Handles and counts are left alone.
    void overwrite(std::span<const std::uint8_t> bytes) const;

    /// Of a text or a list in two steps: its size or count, true or not.
    void overwriteCount(std::uint32_t count) const {
        if (count_) *count_ = count;
    }

 private:
    enum class Kind { value, text, sizedText, list, countedList, handle };

    Output(Kind kind, void* value) : kind_(kind), value_(value) {}

    bool writeCount(const Json& json) const;
    bool writeText(const Json& json) const;
    bool writeItems(const Json& json) const;
    bool writeHandle(const Json& json) const;
    void distortItem(void* item, const Json& lie) const;

    Kind kind_;
    void* value_;
    const Type* type_ = nullptr;
    std::size_t capacity_ = 0;
    std::uint32_t* count_ = nullptr;
};

}  // namespace simulator
