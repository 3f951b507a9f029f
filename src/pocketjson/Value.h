#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "pocketjson/Store.h"

namespace pocketjson {

template <class T>
concept IntegralNumber = std::integral<T> && !std::same_as<T, bool>;

template <class T>
concept TextLike = std::convertible_to<const T&, std::string_view> && !std::same_as<T, std::nullptr_t>;

template <class Range, class Item>
concept RangeOf = requires(const Range& range) {
    { *std::begin(range) } -> std::convertible_to<Item>;
};

/// A JSON value: null, a boolean, a number, a string, an object or an array.
///
/// Scalars are held inline. Strings, objects and arrays live in reference-counted containers which copies share until
/// one of them is changed (copy-on-write), so copying never costs more than a counter. The counters are plain integers:
/// a value and all its copies belong to one thread at a time.
///
/// Reading never fails: a missing member or element is a null, and a conversion that makes no sense yields the
/// caller's fallback. Changing a value of another kind makes it the kind that the change needs. Only running out of
/// memory is an error; std::bad_alloc then leaves the value as it was.
///
/// References into a value (members, elements, text) are good until that value is changed, copied or destroyed.
/// Nesting has no limit: no operation uses call stack for it, and destruction allocates nothing.
class Value {
 public:
    enum Type : std::uint32_t { Null = 0, Boolean = 1, Integer = 2, Float = 4, String = 16, Object = 32, Array = 64 };

    class AbstractContainer;
    template <class T>
    class Container;

    /// Ordered by the bytes of the names; they are looked up by any kind of text.
    using Members = std::map<std::string, Value, std::less<>>;
    using Elements = std::vector<Value>;

    Value() noexcept = default;
    Value(std::nullptr_t) noexcept {}
    Value(std::same_as<bool> auto boolean) noexcept : type_(Boolean) { payload_.boolean = boolean; }
    /// An unsigned number beyond the signed 64-bit range becomes a Float, as it does in the parser.
    Value(IntegralNumber auto integer) noexcept;
    Value(std::floating_point auto number) noexcept : type_(Float) { payload_.floating = static_cast<double>(number); }
    /// NUL-terminated; not null.
    Value(const char* text) : Value(std::string(text)) {}
    Value(std::string_view text) : Value(std::string(text)) {}
    Value(std::string text);
    /// An object: `Value{{"name", "pen"}, {"sizes", Value::array({1, 2})}}`. Of two members of one name the later
    /// counts.
    Value(std::initializer_list<std::pair<std::string_view, Value>> members);

    Value(const Value& other) noexcept;
    Value(Value&& other) noexcept;
    ~Value() { release(); }

    /// Taken by value, so that `v["a"] = v` stores what v was and not v in itself.
    Value& operator=(Value other) noexcept;
    /// Replaces the text in place if this is a string that no copy shares.
    Value& operator=(const TextLike auto& text) { return assignText(std::string_view(text)); }
    template <std::same_as<std::string> String>
    Value& operator=(String&& text) {
        return assignText(std::forward<String>(text));
    }

    static Value object() { return Value(std::initializer_list<std::pair<std::string_view, Value>>{}); }
    static Value array(std::initializer_list<Value> elements = {}) { return fromElements(Elements(elements)); }
    /// An array of everything in a range whose items convert to a Value.
    template <RangeOf<Value> Range>
    static Value array(const Range& range) {
        return fromElements(Elements(std::begin(range), std::end(range)));
    }
    template <std::same_as<Elements> Moved>
    static Value array(Moved&& elements) {
        return fromElements(std::forward<Moved>(elements));
    }

    void swap(Value& other) noexcept;
    friend void swap(Value& left, Value& right) noexcept { left.swap(right); }

    Type type() const noexcept { return type_; }
    /// Turns the value into an empty one of another kind (false, 0, "", {} or []); keeps it if it is of that kind.
    void setType(Type type);

    bool isNull() const noexcept { return type_ == Null; }
    bool isBoolean() const noexcept { return type_ == Boolean; }
    bool isInteger() const noexcept { return type_ == Integer; }
    bool isFloat() const noexcept { return type_ == Float; }
    bool isNumber() const noexcept { return isInteger() || isFloat(); }
    bool isString() const noexcept { return type_ == String; }
    bool isObject() const noexcept { return type_ == Object; }
    bool isArray() const noexcept { return type_ == Array; }

    /// The member of that name, inserted as null if it is missing. Any other kind of value becomes an object first.
    Value& operator[](std::string_view name);
    /// The member of that name; a null that lives for the whole program if there is none.
    const Value& get(std::string_view name) const noexcept;
    /// Whether there is a member of that name, be it null.
    bool has(std::string_view name) const noexcept;
    /// Returns whether there was a member of that name.
    bool remove(std::string_view name);

    /// Adds an element at the end and returns it. Any other kind of value becomes an array first.
    Value& append(Value element);
    /// The element at that index; a null that lives for the whole program if there is none.
    const Value& at(std::size_t index) const noexcept;
    /// The element at that index, for changing it. As with operator[], any other kind of value becomes an array first,
    /// and nulls are appended to an array that is too short.
    Value& element(std::size_t index);

    /// The number of members, elements or bytes of text; 0 for all other kinds.
    std::size_t size() const noexcept;
    bool empty() const noexcept { return size() == 0; }

    /// What an object, array or string holds, in order; nothing for a value of another kind.
    const Members& members() const& noexcept { return isObject() ? payload<Members>() : empty<Members>(); }
    const Elements& elements() const& noexcept { return isArray() ? payload<Elements>() : empty<Elements>(); }
    void members() const&& = delete;   // a loop over those of a temporary value would outlive it
    void elements() const&& = delete;  // likewise
    const std::string& text() const noexcept { return isString() ? payload<std::string>() : empty<std::string>(); }

    /// true is 1 and false is 0; a Float is rounded to the nearest integer, halves away from zero; a string counts if
    /// all of its text is an integer (with an optional sign; "0x" introduces hexadecimal digits and "0" octal ones).
    /// Everything else, and what is out of the result's range, is the fallback.
    std::int32_t asInt(std::int32_t fallback = 0) const noexcept;
    std::int64_t asInt64(std::int64_t fallback = 0) const noexcept;
    /// As asInt, except that an Integer yields its low 32 bits if it is greater than 0, and the fallback if it is 0.
    std::uint32_t asUInt(std::uint32_t fallback = 0) const noexcept;
    /// true is 1 and false is 0; a string counts if all of its text is a decimal number within the range of a double.
    double asDouble(double fallback = 0) const noexcept;
    /// A number is true unless it is zero; of the strings only "true" and "false" count.
    bool asBool(bool fallback = false) const noexcept;
    /// A string as it is; booleans and numbers as write() puts them, and numbers that are not finite as "nan", "inf"
    /// and "-inf"; the fallback for null, objects and arrays.
    std::string asString(std::string_view fallback = {}) const;

    /// Same kind and same content: the Integer 1 differs from the Float 1.0. A NaN equals a NaN, so that every value
    /// equals its copy.
    friend bool operator==(const Value& left, const Value& right);

 private:
    friend class ValueBuilder;
    friend class Writer;

    union Payload {
        std::int64_t integer = 0;
        double floating;
        bool boolean;
        AbstractContainer* container;
    };

    static constexpr std::uint32_t kNestedMask = Object | Array;
    static constexpr std::uint32_t kContainerMask = String | kNestedMask;

    Value(Type type, AbstractContainer* container) noexcept : type_(type) { payload_.container = container; }

    static Value fromElements(Elements&& elements);
    /// One for the whole program.
    template <class T>
    static const T& empty() noexcept;

    // A value as plain data, which owns what the value owned.
    struct Packed {
        Type type;
        std::int64_t payload;
    };
    Packed pack() noexcept { return {std::exchange(type_, Null), std::bit_cast<std::int64_t>(payload_)}; }
    void unpack(const Packed& packed) noexcept {  // into a null
        type_ = packed.type;
        payload_ = std::bit_cast<Payload>(packed.payload);
    }

    /// Also false for tags that name no kind, which have the payload 0.
    bool holds(std::uint32_t mask) const noexcept { return (type_ & mask) != 0 && payload_.container != nullptr; }
    template <class T>
    T& payload() const noexcept;
    /// The payload for changing it, taken out of a container that copies share.
    template <class T>
    T& ownPayload();

    void release() noexcept {
        if (giveUpReference()) destroyContainer();
    }
    /// Returns whether it was the last one to a container, which is then to be destroyed. Otherwise the value is left
    /// without payload.
    bool giveUpReference() noexcept;
    void destroyContainer() noexcept;
    void destroy(unsigned levels) noexcept;
    void destroyStepByStep() noexcept;
    Value* entryToDescendInto() noexcept;
    Value& entryDescendedInto() noexcept;

    Value& assignText(std::string_view text);
    Value& assignText(std::string&& text);

    Type type_ = Null;
    Payload payload_;
};

static_assert(sizeof(Value) == 16);

/// The base of what values share: a reference count and a virtual destructor. Its memory comes from the Store.
class Value::AbstractContainer {
 public:
    AbstractContainer() noexcept = default;
    AbstractContainer(const AbstractContainer&) = delete;
    AbstractContainer& operator=(const AbstractContainer&) = delete;
    virtual ~AbstractContainer() = default;

    static void* operator new(std::size_t size) { return Store::allocate(size); }
    static void* operator new(std::size_t size, Store::BatchAllocator& batch) { return batch.allocate(size); }
    static void operator delete(void* memory, std::size_t size) noexcept { Store::release(memory, size); }
    static void operator delete(void* memory, Store::BatchAllocator& batch) noexcept { batch.releaseLast(memory); }

    std::int32_t references = 1;
};

/// T is std::string, Members or Elements.
template <class T>
class Value::Container final : public AbstractContainer {
 public:
    template <class... Content>
    explicit Container(Content&&... content) : payload(std::forward<Content>(content)...) {}

    T payload;
};

inline Value::Value(IntegralNumber auto integer) noexcept : type_(Integer) {
    payload_.integer = static_cast<std::int64_t>(integer);
    if (std::is_unsigned_v<decltype(integer)> && payload_.integer < 0) {
        type_ = Float;
        payload_.floating = static_cast<double>(integer);
    }
}

inline Value::Value(const Value& other) noexcept : type_(other.type_), payload_(other.payload_) {
    if (holds(kContainerMask)) ++payload_.container->references;
}

inline Value::Value(Value&& other) noexcept
    : type_(std::exchange(other.type_, Null)), payload_(std::exchange(other.payload_, Payload{})) {}

inline Value& Value::operator=(Value other) noexcept {
    swap(other);
    return *this;
}

inline void Value::swap(Value& other) noexcept {
    std::swap(type_, other.type_);
    std::swap(payload_, other.payload_);
}

inline bool Value::giveUpReference() noexcept {
    if (!holds(kContainerMask)) return false;
    if (--payload_.container->references == 0) return true;
    payload_.container = nullptr;
    return false;
}

template <class T>
T& Value::payload() const noexcept {
    return static_cast<Container<T>*>(payload_.container)->payload;
}

}  // namespace pocketjson
