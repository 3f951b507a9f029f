#pragma once

#include <string>
#include <string_view>

#include "pocketjson/Value.h"

namespace pocketjson {

/// Without Pretty there is no whitespace at all, and the other flags mean nothing. The unit of indentation is two
/// spaces unless exactly one of FourSpaces and Tab is given.
enum WriteFlags : unsigned {
    FourSpaces = 1,
    Tab = 2,
    CarriageReturn = 4,  ///< Lines end with a carriage return and a line feed instead of a line feed alone.
    Pretty = 128,
};

/// Appends a value as JSON text, members in the byte order of their names. Returns false if the value holds a number
/// that is not finite; the output then ends where that number would stand.
///
/// Floats have up to 17 significant digits and look like integers if they have no fraction: 1.0 is "1". Zero is "0.0".
bool write(const Value& value, std::string& output, unsigned flags = 0);

/// Appends a text as a JSON string.
void writeString(std::string_view text, std::string& output);

}  // namespace pocketjson
