// What an editor of properties shows and takes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace logic {

// A sentence of the property reference without its marks: `code` as code, [text](page.md#place) as text.
std::string PlainSentence(std::string_view marked);

// The entry of a list joined by ";" that holds that place of the text, without blanks at its ends: where it
// begins, and its length.
struct EntryPlace {
    std::size_t begin = 0;
    std::size_t length = 0;
};
EntryPlace EntryAt(std::string_view text, std::size_t place);

} // namespace logic
