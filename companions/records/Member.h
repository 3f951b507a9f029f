// Tables of the companions' records: the members of each record by name, used wherever a record is written as an object
// or read from one (C++ only). The tables stand beside this file, one file for each family of records.
//
// A table lists its members in the order in which they are checked and read:
//
//     template <>
//     inline constexpr auto members<DmTarget> = std::tuple(
//         Member{"id", &DmTarget::id}.required(Needs::Number, "data must have id."), Flag{"enable",
//         &DmTarget::enable});
//
// Members may be numbers of any width and sign, texts (arrays of char), lists (arrays) and records with a table of
// their own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <tuple>

namespace companions {

/// What a body must have of a member.
enum class Needs : std::uint8_t { Nothing, Anything, Number, Object };

/// What members of all kinds may have beside their name. Each of the three functions returns a copy that has it.
template <class Self>
struct MemberOptions {
    const char* nameInBodies = nullptr;  ///< where a body names the member differently from an answer
    const char* refusal = nullptr;       ///< how a body without the member is refused
    Needs needs = Needs::Nothing;
    bool mayNotApply = false;  ///< a number with all bits set means that the member does not apply: answers omit it

    constexpr Self required(Needs what, const char* message) const {
        Self copy = static_cast<const Self&>(*this);
        copy.needs = what;
        copy.refusal = message;
        return copy;
    }
    constexpr Self writtenAs(const char* name) const {
        Self copy = static_cast<const Self&>(*this);
        copy.nameInBodies = name;
        return copy;
    }
    constexpr Self omittedWhenAllOnes() const {
        Self copy = static_cast<const Self&>(*this);
        copy.mayNotApply = true;
        return copy;
    }
};

template <class Record, class T>
struct Member : MemberOptions<Member<Record, T>> {
    constexpr Member(const char* memberName, T Record::*memberPointer) : name(memberName), pointer(memberPointer) {}

    const char* name;
    T Record::*pointer;
};

/// A number that stands for a boolean: anything but zero is true.
template <class Record, class T>
struct Flag : MemberOptions<Flag<Record, T>> {
    constexpr Flag(const char* memberName, T Record::*memberPointer) : name(memberName), pointer(memberPointer) {}

    const char* name;
    T Record::*pointer;
};

/// A record of which only the members of another table count.
template <class Record, class T, class Table>
struct Part : MemberOptions<Part<Record, T, Table>> {
    constexpr Part(const char* memberName, T Record::*memberPointer, const Table& partTable)
        : name(memberName), pointer(memberPointer), table(partTable) {}

    const char* name;
    T Record::*pointer;
    Table table;
};

/// An unsigned number of one, two or four bytes in a part whose layout varies.
struct Field {
    const char* name = nullptr;  ///< null: there is none
    std::size_t offset = 0;
    std::size_t width = 0;

    std::uint32_t read(const std::uint8_t* part) const {
        std::uint32_t number = 0;
        std::memcpy(&number, part + offset, width);  // little-endian, as all of the machines in question
        return number;
    }
    void write(std::uint8_t* part, std::uint32_t number) const { std::memcpy(part + offset, &number, width); }
};

/// The fields that a record of this type has, in order.
struct Layout {
    std::uint32_t type;
    std::array<Field, 5> fields;
};

/// The part of a record whose layout depends on a number that stands before it in the record and its table. A record of
/// a type without a layout has no fields.
template <class Record, std::size_t Size, std::size_t Layouts>
struct Variant {
    std::uint32_t Record::*type;
    std::uint8_t (Record::*pointer)[Size];
    std::array<Layout, Layouts> layouts;

    const std::array<Field, 5>& fieldsOf(const Record& record) const {
        static constexpr std::array<Field, 5> none{};
        for (const Layout& layout : layouts)
            if (layout.type == record.*type) return layout.fields;
        return none;
    }
};

/// A tuple of the record's members, specialised for each record.
template <class Record>
inline constexpr auto members = nullptr;

}  // namespace companions
