#pragma once

#include <cstdint>
#include <forward_list>
#include <string>
#include <string_view>

#include "Stack.h"
#include "pocketjson/Value.h"

namespace pocketjson {

/// Builds a value from the events of a parser. The entries of all containers that are open gather on one stack: when
/// one ends, its entries are the topmost ones, and an array is made in its exact size and an object in the order of its
/// names.
class ValueBuilder {
 public:
    ValueBuilder() noexcept = default;
    ~ValueBuilder();
    ValueBuilder(const ValueBuilder&) = delete;
    ValueBuilder& operator=(const ValueBuilder&) = delete;

    /// Whether a value is complete.
    bool hasValue() const noexcept { return !values_.empty(); }
    Value takeValue() noexcept;

    // As in a SaxHandler. Nothing cancels the parse.
    bool null() { return add(Value()); }
    bool boolean(bool value) { return add(value); }
    bool integer(std::int64_t value) { return add(value); }
    bool floating(double value) { return add(value); }
    bool string(std::string_view text);
    bool startArray() noexcept { return true; }
    bool startObject() noexcept { return true; }
    /// Another name, which stays where it is until the object ends unless it is temporary.
    bool key(std::string_view name, bool isTemporary);

    /// The last `count` values are the elements.
    bool endArray(std::size_t count);
    /// The last `count` names are those of the members. The last one does not count if it has no value.
    bool endObject(std::size_t count);

 private:
    struct Name {
        std::string_view text;
        std::uint64_t beginning;  // the first bytes as a number, by which most names are told apart
        std::size_t value;        // that belongs to it, in values_

        friend bool operator<(const Name& left, const Name& right) noexcept {
            if (left.beginning != right.beginning) return left.beginning < right.beginning;
            const int order = left.text.compare(right.text);
            return order != 0 ? order < 0 : left.value < right.value;
        }
        bool isSameAs(const Name& other) const noexcept { return beginning == other.beginning && text == other.text; }
    };

    bool add(Value value) {
        Value::Packed& packed = values_.extend();
        packed = value.pack();
        return true;
    }

    Store::BatchAllocator memory_;
    Stack<Value::Packed, 64> values_;
    Stack<Name, 16> names_;
    std::forward_list<std::string> temporaryNames_;
};

}  // namespace pocketjson
