// Records of the companion libraries as JSON and back, by the tables of their members in companions/records/.
#pragma once

#include <records/Member.h>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "bridge/Data.h"
#include "bridge/Errors.h"
#include "pocketjson/Value.h"

namespace torvo {

namespace detail {

template <class T>
inline constexpr bool isTextField = std::is_array_v<T>&& std::same_as<std::remove_extent_t<T>, char>;

template <class T>
inline constexpr bool hasTable = !std::is_null_pointer_v<std::remove_const_t<decltype(companions::members<T>)>>;

/// The table of a record.
template <class T>
constexpr const auto& tableOf() {
    static_assert(hasTable<T>, "this record (T) has no table of members in companions/records/");
    return companions::members<T>;
}

template <class Number>
constexpr bool isAllOnes(Number number) {
    return number == static_cast<Number>(~Number{});
}

}  // namespace detail

// ---- From records to JSON -------------------------------------------------------------------------------------------

/// A number as it is; a text up to its NUL or the end of its field; a list as an array; a record as an object of its
/// members, flags as booleans. Members that do not apply are left out.
template <class T>
pocketjson::Value toValue(const T& value);

/// The members of a record that a table lists.
template <class Record, class Table>
pocketjson::Value toValue(const Record& record, const Table& table);

namespace detail {

template <class Record, class T>
void addMember(pocketjson::Value& object, const Record& record, const companions::Member<Record, T>& member) {
    if constexpr (std::integral<T>)
        if (member.mayNotApply && isAllOnes(record.*member.pointer)) return;
    object[member.name] = toValue(record.*member.pointer);
}

template <class Record, class T>
void addMember(pocketjson::Value& object, const Record& record, const companions::Flag<Record, T>& flag) {
    object[flag.name] = record.*flag.pointer != 0;
}

template <class Record, class T, class Table>
void addMember(pocketjson::Value& object, const Record& record, const companions::Part<Record, T, Table>& part) {
    object[part.name] = toValue(record.*part.pointer, part.table);
}

template <class Record, std::size_t Size, std::size_t Layouts>
void addMember(pocketjson::Value& object, const Record& record,
               const companions::Variant<Record, Size, Layouts>& variant) {
    for (const companions::Field& field : variant.fieldsOf(record))
        if (field.name) object[field.name] = field.read(record.*variant.pointer);
}

}  // namespace detail

template <class Record, class Table>
pocketjson::Value toValue(const Record& record, const Table& table) {
    pocketjson::Value object = pocketjson::Value::object();
    std::apply([&](const auto&... member) { (detail::addMember(object, record, member), ...); }, table);
    return object;
}

template <class T>
pocketjson::Value toValue(const T& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        return value;
    } else if constexpr (detail::isTextField<T>) {
        return std::string_view(std::begin(value), std::find(std::begin(value), std::end(value), '\0'));
    } else if constexpr (std::is_array_v<T>) {
        pocketjson::Value::Elements elements;
        elements.reserve(std::size(value));
        for (const auto& element : value) elements.push_back(toValue(element));
        return pocketjson::Value::array(std::move(elements));
    } else {
        return toValue(value, detail::tableOf<T>());
    }
}

// ---- From JSON to records -------------------------------------------------------------------------------------------

namespace detail {

/// What becomes of a member that the data lacks, or has as something else.
enum class Lacking {
    IsKept,  ///< It stays as it is: only a number is a number, a boolean a flag, a text a text.
    IsZero   ///< It becomes zero: doubles, flags and whole numbers are read leniently (see Data.h).
};

template <Lacking lacking, class T>
void readInto(T& target, const pocketjson::Value& data);

/// "BadRequestError" unless the text fits with its NUL; what is behind it is zero.
template <std::size_t Size>
void readText(char (&target)[Size], const pocketjson::Value& data) {
    checkRequest(isText(data), "data has a text with a NUL inside.");
    checkRequest(data.text().size() < Size, "data has a text that is too long.");
    std::fill(std::copy(data.text().begin(), data.text().end(), target), target + Size, '\0');
}

template <Lacking lacking, class Record, class Table>
void readMembers(Record& record, const pocketjson::Value& data, const Table& table);

template <class Member>
const pocketjson::Value& valueFor(const Member& member, const pocketjson::Value& data) {
    return data.get(member.nameInBodies ? member.nameInBodies : member.name);
}

template <Lacking lacking, class Record, class T>
void readMember(Record& record, const companions::Member<Record, T>& member, const pocketjson::Value& data) {
    readInto<lacking>(record.*member.pointer, valueFor(member, data));
}

template <Lacking lacking, class Record, class T>
void readMember(Record& record, const companions::Flag<Record, T>& flag, const pocketjson::Value& data) {
    const pocketjson::Value& value = valueFor(flag, data);
    if (lacking == Lacking::IsZero || value.isBoolean()) record.*flag.pointer = T{lenientFlag(value)};
}

template <Lacking lacking, class Record, class T, class Table>
void readMember(Record& record, const companions::Part<Record, T, Table>& part, const pocketjson::Value& data) {
    readMembers<lacking>(record.*part.pointer, valueFor(part, data), part.table);
}

template <Lacking lacking, class Record, std::size_t Size, std::size_t Layouts>
void readMember(Record& record, const companions::Variant<Record, Size, Layouts>& variant,
                const pocketjson::Value& data) {
    for (const companions::Field& field : variant.fieldsOf(record)) {
        if (!field.name) continue;
        std::uint32_t number = field.read(record.*variant.pointer);
        readInto<lacking>(number, data.get(field.name));
        field.write(record.*variant.pointer, number);
    }
}

template <Lacking lacking, class Record, class Table>
void readMembers(Record& record, const pocketjson::Value& data, const Table& table) {
    std::apply([&](const auto&... member) { (readMember<lacking>(record, member, data), ...); }, table);
}

template <Lacking lacking, class T>
void readInto(T& target, const pocketjson::Value& data) {
    if constexpr (std::is_arithmetic_v<T>) {
        if (isNumber(data))
            target = toNumber<T>(data);
        else if (lacking == Lacking::IsZero)
            target = std::floating_point<T> ? static_cast<T>(lenientDouble(data)) : T{};
    } else if constexpr (isTextField<T>) {
        if (lacking == Lacking::IsZero) std::fill(std::begin(target), std::end(target), '\0');
        if (data.isString()) readText(target, data);
    } else if constexpr (std::is_array_v<T>) {
        for (std::size_t i = 0; i < std::size(target); ++i) readInto<lacking>(target[i], data.at(i));
    } else {
        readMembers<lacking>(target, data, tableOf<T>());
    }
}

/// Whether the data has what a member needs.
inline bool isMet(companions::Needs needs, const pocketjson::Value& value) noexcept {
    switch (needs) {
        case companions::Needs::Nothing:
            return true;
        case companions::Needs::Anything:
            return isPresent(value);
        case companions::Needs::Number:
            return isNumber(value);
        case companions::Needs::Object:
            return isObject(value);
    }
    return true;
}

template <class Record>
void checkMembers(const pocketjson::Value& data) {
    const auto check = [&data]<class Member>(const Member& member) {
        if constexpr (requires { member.needs; })
            checkRequest(isMet(member.needs, valueFor(member, data)), member.refusal);
    };
    std::apply([&](const auto&... member) { (check(member), ...); }, tableOf<Record>());
}

}  // namespace detail

/// Replaces in a record what the data has: a member that the data lacks, or has as another kind of value, stays as it
/// is. "BadRequestError" for a required member that is missing, and for a text that its field cannot hold; the record
/// is not to be used then.
template <class Record>
void replaceMembers(Record& record, const pocketjson::Value& data) {
    detail::checkMembers<Record>(data);
    detail::readInto<detail::Lacking::IsKept>(record, data);
}

/// Refuses what `replaceMembers` would refuse, for a record that is still to be read.
template <class Record>
void checkRecord(const pocketjson::Value& data) {
    Record record{};
    replaceMembers(record, data);
}

/// A whole record from the data, read leniently: whatever the data lacks is zero. Doubles take booleans and texts of
/// decimal numbers as well, flags take numbers and the text "true"; whole numbers only numbers, texts only texts. Lists
/// have as many entries as the record, whatever the data has. "BadRequestError" as in `replaceMembers`.
template <class Record>
Record toRecord(const pocketjson::Value& data) {
    detail::checkMembers<Record>(data);
    Record record{};
    detail::readInto<detail::Lacking::IsZero>(record, data);
    return record;
}

}  // namespace torvo
