// Addresses (OBJECT*keyword, or OBJECT for its default value) inside the values of keywords: where they
// stand, and putting others in their place.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// How the value of a keyword holds addresses.
enum class AddressForm {
    None,
    Functions,   // of device parameters, joined by ";"
    Connections, // of controls, joined by ";"
    Pattern,     // one, in which %i and %o stand for the numbers of inputs and outputs
    Line,     // a property line for later, OBJECT*keyword=value: the object may be an insertion such as %n,
              // and the value may hold addresses itself
    Inserted, // a text with addresses in it, %{OBJECT*keyword}
};

// One of them, in bytes of the text. Nothing of a list or of braces belongs to it.
struct AddressPlace {
    std::size_t from;
    std::size_t length;
    AddressForm form; // of what it stands in; behind the "=" of a line that of the line's keyword

    std::string_view In(std::string_view text) const { return text.substr(from, length); }
};

// How the value of that keyword holds addresses, whatever object it is of: asked for lines within lines.
using FormOfKeyword = std::function<AddressForm(std::string_view keyword)>;

// The addresses in a value, in order. A line that names no object has none of its own.
std::vector<AddressPlace> FindAddresses(AddressForm form, std::string_view text,
                                        const FormOfKeyword& formOf = {});

// The text with another address at each of the places that FindAddresses gave; nothing when the addresses in
// it would not be these any more (one holds ";" in a list, or "=" in a line).
std::optional<std::string> WithAddresses(AddressForm form, std::string_view text,
                                         const std::vector<AddressPlace>& places,
                                         const std::vector<std::string>& addresses,
                                         const FormOfKeyword& formOf = {});

} // namespace logic
