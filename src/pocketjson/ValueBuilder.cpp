#include "ValueBuilder.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

namespace pocketjson {

namespace {

// Bytes as a number in which the first byte is the most significant one.
template <class Number>
std::uint64_t inTextOrder(const char* bytes) noexcept {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    std::uint64_t swapped = number;  // which has them the other way round
    swapped = (swapped & 0x00FF00FF00FF00FF) << 8 | (swapped >> 8 & 0x00FF00FF00FF00FF);
    swapped = (swapped & 0x0000FFFF0000FFFF) << 16 | (swapped >> 16 & 0x0000FFFF0000FFFF);
    return swapped << 32 | swapped >> 32;
}

// The first eight bytes of a text as a number: texts are ordered as these numbers are, unless those are equal.
std::uint64_t beginningOf(std::string_view text) noexcept {
    const char* const bytes = text.data();
    const std::size_t size = text.size();
    if (size >= 8) return inTextOrder<std::uint64_t>(bytes);
    if (size >= 4)
        return inTextOrder<std::uint32_t>(bytes) | inTextOrder<std::uint32_t>(bytes + size - 4) >> (8 * (size - 4));
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (56 - 8 * i);
    return number;
}

}  // namespace

ValueBuilder::~ValueBuilder() {
    while (!values_.empty()) takeValue();
}

Value ValueBuilder::takeValue() noexcept {
    Value value;
    value.unpack(values_.pop());
    return value;
}

bool ValueBuilder::string(std::string_view text) {
    return add(Value(Value::String, new (memory_) Value::Container<std::string>(text)));
}

bool ValueBuilder::key(std::string_view name, bool isTemporary) {
    if (isTemporary) name = temporaryNames_.emplace_front(name);
    names_.push({name, beginningOf(name), values_.size()});
    return true;
}

bool ValueBuilder::endArray(std::size_t count) {
    auto* const array = new (memory_) Value::Container<Value::Elements>(count);
    const std::size_t first = values_.size() - count;
    const Value::Packed* packed = values_.at(first);
    for (Value& element : array->payload) element.unpack(*packed++);
    values_.cutTo(first);
    return add(Value(Value::Array, array));
}

bool ValueBuilder::endObject(std::size_t count) {
    auto* const object = new (memory_) Value::Container<Value::Members>;
    Value value(Value::Object, object);
    const std::size_t firstName = names_.size() - count;
    if (count > 0 && names_.top().value == values_.size()) --count;
    const std::span<Name> names(names_.at(firstName), count);
    if (!std::is_sorted(names.begin(), names.end())) std::sort(names.begin(), names.end());
    // From the last name to the first: the map then compares each only once to put it before the others. Of equal names
    // the last one counts, which is met first.
    const Name* after = nullptr;
    for (auto name = names.rbegin(); name != names.rend(); after = &*name++) {
        Value member;
        member.unpack(std::exchange(*values_.at(name->value), Value().pack()));
        if (!after || !name->isSameAs(*after))
            object->payload.emplace_hint(object->payload.begin(), name->text, std::move(member));
    }
    names_.cutTo(firstName);
    values_.cutTo(values_.size() - count);
    return add(std::move(value));
}

}  // namespace pocketjson
