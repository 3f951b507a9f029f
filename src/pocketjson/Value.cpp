#include "pocketjson/Value.h"

#include <cmath>
#include <limits>
#include <new>

#include "Entries.h"
#include "Number.h"

namespace pocketjson {

namespace {

// An object that is never destroyed, so that whatever runs late may still refer to it. Unlike `new`, it cannot fail.
template <class T>
union Immortal {
    Immortal() : value() {}
    ~Immortal() {}
    T value;
};

}  // namespace

template <class T>
const T& Value::empty() noexcept {
    static const Immortal<T> instance;
    return instance.value;
}
template const std::string& Value::empty() noexcept;
template const Value::Members& Value::empty() noexcept;
template const Value::Elements& Value::empty() noexcept;

Value::Value(std::string text) : Value(String, new Container<std::string>(std::move(text))) {}

Value::Value(std::initializer_list<std::pair<std::string_view, Value>> members)
    : Value(Object, new Container<Members>) {
    for (const auto& [name, value] : members) (*this)[name] = value;
}

Value Value::fromElements(Elements&& elements) {
    return Value(Array, new Container<Elements>(std::move(elements)));
}

void Value::destroyContainer() noexcept {
    constexpr unsigned kLevelsOnCallStack = 32;
    destroy(kLevelsOnCallStack);
}

// Destroys a container that has lost its last reference, and the containers in it that lose theirs with it. Their
// references are given up here: the destructors of the entries would do it as well, but each on top of the one before,
// with as much call stack as the value is deep.
void Value::destroy(unsigned levels) noexcept {
    const auto releaseEntry = [levels](Value& entry) {
        if (!entry.giveUpReference()) return;
        if (levels > 0)
            entry.destroy(levels - 1);
        else
            entry.destroyStepByStep();
    };
    if (type_ == Array)
        for (Value& element : payload<Elements>()) releaseEntry(element);
    else if (type_ == Object)
        for (auto& [name, member] : payload<Members>()) releaseEntry(member);
    delete payload_.container;
    payload_.container = nullptr;
}

// Without call stack and without memory: *this walks through the containers that have lost their last reference, and
// the entry by which it has descended into one holds the way back.
void Value::destroyStepByStep() noexcept {
    Value parent;
    for (;;) {
        if (Value* entry = entryToDescendInto()) {
            entry->swap(parent);
            swap(parent);
        } else {
            delete payload_.container;
            type_ = Null;
            payload_.container = nullptr;
            if (parent.isNull()) return;
            swap(parent);
            parent.swap(entryDescendedInto());
        }
    }
}

// Removes entries of an object or array up to the first one that has the last reference to a container. Gives that
// reference up and returns the entry, or null if there is none.
Value* Value::entryToDescendInto() noexcept {
    if (type_ == Array) {
        for (auto& elements = payload<Elements>(); !elements.empty(); elements.pop_back())
            if (elements.back().giveUpReference()) return &elements.back();
    } else if (type_ == Object) {
        auto& members = payload<Members>();
        for (auto member = members.begin(); member != members.end(); ++member) {
            if (member->second.giveUpReference()) {
                members.erase(members.begin(), member);
                return &member->second;
            }
        }
    }
    return nullptr;
}

Value& Value::entryDescendedInto() noexcept {
    return type_ == Array ? payload<Elements>().back() : payload<Members>().begin()->second;
}

template <class T>
T& Value::ownPayload() {
    if (payload_.container->references > 1) {
        auto* own = new Container<T>(payload<T>());
        --payload_.container->references;
        payload_.container = own;
    }
    return payload<T>();
}

void Value::setType(Type type) {
    if (type_ == type) return;
    Value empty;
    if (type == String)
        empty.payload_.container = new Container<std::string>;
    else if (type == Object)
        empty.payload_.container = new Container<Members>;
    else if (type == Array)
        empty.payload_.container = new Container<Elements>;
    empty.type_ = type;
    swap(empty);
}

Value& Value::assignText(std::string_view text) {
    if (type_ == String && payload_.container->references < 2)
        payload<std::string>().assign(text);
    else
        *this = Value(text);
    return *this;
}

Value& Value::assignText(std::string&& text) {
    if (type_ == String && payload_.container->references < 2)
        payload<std::string>() = std::move(text);
    else
        *this = Value(std::move(text));
    return *this;
}

Value& Value::operator[](std::string_view name) {
    if (!isObject()) {
        Value object = Value::object();
        Value& member = object[name];
        swap(object);  // only now: the name may be part of the old content, and memory may have been missing
        return member;
    }
    auto& members = ownPayload<Members>();
    auto member = members.lower_bound(name);
    if (member == members.end() || member->first != name) member = members.emplace_hint(member, name, Value());
    return member->second;
}

const Value& Value::get(std::string_view name) const noexcept {
    const auto member = members().find(name);
    return member != members().end() ? member->second : empty<Value>();
}

bool Value::has(std::string_view name) const noexcept {
    return members().contains(name);
}

bool Value::remove(std::string_view name) {
    if (!has(name)) return false;
    auto& members = ownPayload<Members>();
    members.erase(members.find(name));
    return true;
}

Value& Value::append(Value element) {
    if (!isArray()) {
        Value array = Value::array();
        Value& appended = array.append(std::move(element));
        swap(array);
        return appended;
    }
    return ownPayload<Elements>().emplace_back(std::move(element));
}

const Value& Value::at(std::size_t index) const noexcept {
    return index < elements().size() ? elements()[index] : empty<Value>();
}

Value& Value::element(std::size_t index) {
    if (!isArray()) {
        Value array = Value::array();
        Value& element = array.element(index);
        swap(array);
        return element;
    }
    if (index >= elements().max_size()) throw std::bad_alloc();
    auto& elements = ownPayload<Elements>();
    if (index >= elements.size()) elements.resize(index + 1);
    return elements[index];
}

std::size_t Value::size() const noexcept {
    if (type_ == String) return text().size();
    if (type_ == Object) return members().size();
    return elements().size();
}

std::int32_t Value::asInt(std::int32_t fallback) const noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    const auto integer = asInt64(fallback);
    return integer >= Limits::min() && integer <= Limits::max() ? static_cast<std::int32_t>(integer) : fallback;
}

std::int64_t Value::asInt64(std::int64_t fallback) const noexcept {
    switch (type_) {
        case Boolean:
            return payload_.boolean;
        case Integer:
            return payload_.integer;
        case Float: {
            const auto rounded = std::round(payload_.floating);
            return rounded >= -0x1p63 && rounded < 0x1p63 ? static_cast<std::int64_t>(rounded) : fallback;
        }
        case String:
            readInteger(text(), fallback);
            return fallback;
        default:
            return fallback;
    }
}

std::uint32_t Value::asUInt(std::uint32_t fallback) const noexcept {
    if (type_ == Integer) return payload_.integer > 0 ? static_cast<std::uint32_t>(payload_.integer) : fallback;
    const auto integer = asInt64(fallback);
    const bool fits = integer >= 0 && integer <= std::numeric_limits<std::uint32_t>::max();
    return fits ? static_cast<std::uint32_t>(integer) : fallback;
}

double Value::asDouble(double fallback) const noexcept {
    switch (type_) {
        case Boolean:
            return payload_.boolean;
        case Integer:
            return static_cast<double>(payload_.integer);
        case Float:
            return payload_.floating;
        case String: {
            double number = 0;
            return readNumber(text(), number) && std::isfinite(number) ? number : fallback;
        }
        default:
            return fallback;
    }
}

bool Value::asBool(bool fallback) const noexcept {
    switch (type_) {
        case Boolean:
            return payload_.boolean;
        case Integer:
            return payload_.integer != 0;
        case Float:
            return payload_.floating != 0;
        default:
            return text() == "true" || (fallback && text() != "false");
    }
}

std::string Value::asString(std::string_view fallback) const {
    NumberBuffer buffer;
    switch (type_) {
        case Boolean:
            return payload_.boolean ? "true" : "false";
        case Integer:
            return std::string(formatNumber(payload_.integer, buffer));
        case Float:
            if (std::isnan(payload_.floating)) return "nan";
            if (std::isinf(payload_.floating)) return payload_.floating < 0 ? "-inf" : "inf";
            return std::string(formatNumber(payload_.floating, buffer));
        case String:
            return text();
        default:
            return std::string(fallback);
    }
}

bool operator==(const Value& left, const Value& right) {
    // Whether two values are equal as far as it shows without looking into entries.
    const auto alike = [](const Value& a, const Value& b) {
        if (a.type_ != b.type_) return false;
        switch (a.type_) {
            case Value::Boolean:
                return a.payload_.boolean == b.payload_.boolean;
            case Value::Integer:
                return a.payload_.integer == b.payload_.integer;
            case Value::Float:
                return a.payload_.floating == b.payload_.floating ||
                       (std::isnan(a.payload_.floating) && std::isnan(b.payload_.floating));
            case Value::String:
                return a.text() == b.text();
            default:
                return a.size() == b.size();
        }
    };
    const auto needsLook = [](const Value& a, const Value& b) {
        return a.holds(Value::kNestedMask) && a.payload_.container != b.payload_.container;
    };

    if (!alike(left, right)) return false;
    if (!needsLook(left, right)) return true;
    std::vector<std::pair<Entries, Entries>> open{{Entries(left), Entries(right)}};
    while (!open.empty()) {
        auto& [a, b] = open.back();
        if (a.atEnd()) {
            open.pop_back();
            continue;
        }
        if (a.isObject() && a.name() != b.name()) return false;
        const Value& leftEntry = a.value();
        const Value& rightEntry = b.value();
        if (!alike(leftEntry, rightEntry)) return false;
        a.advance();
        b.advance();
        if (needsLook(leftEntry, rightEntry)) open.emplace_back(Entries(leftEntry), Entries(rightEntry));
    }
    return true;
}

}  // namespace pocketjson
