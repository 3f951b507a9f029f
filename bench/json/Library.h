#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace bench {

/// A JSON library, as a competent user calls it for one text after the other: nothing is kept from one to the next.
template <class Library>
concept JsonLibrary = requires(const std::string& text, const typename Library::Document& document,
                               const typename Library::Text& written) {
    { Library::name } -> std::convertible_to<std::string>;
    requires std::movable<typename Library::Document>;
    /// Throws when the library refuses the text.
    { Library::parse(text) } -> std::same_as<typename Library::Document>;
    /// Into what the library puts text in most naturally.
    { Library::write(document) } -> std::same_as<typename Library::Text>;
    { Library::view(written) } -> std::convertible_to<std::string_view>;
    /// Walks through everything, looking up each member by its name: the sum of numbers and true booleans, and 1 for
    /// each string that is not empty and for each name.
    { Library::readAll(document) } -> std::same_as<double>;
    /// Makes a copy, independent of the document, with a member "changed" more or with a 1 as the first element (if it
    /// has one), and gives it up.
    Library::copyAndChange(document);
};

}  // namespace bench
