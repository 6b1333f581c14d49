// What can be chosen from a list: entries "caption" or "caption=value".
//
// The last "=" divides an entry. A backslash in front of ";", "=" or another backslash makes that a plain
// character; in front of anything else it is one itself. Blanks around captions and values do not count, and
// entries of nothing but blanks are skipped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

class Items {
public:
    Items() = default;

    // Any text can be read. Entries are joined by ";", as in a keyword ...
    static Items OfList(std::string_view text);
    // ... or stand one a line, as in a file; lines end with "\n" or "\r\n", and a ";" is a plain character.
    static Items OfLines(std::string_view text);

    std::size_t Size() const { return entries_.size(); }

    // Of an entry there is, counted from 0. The views lie inside this object. A caption can be empty.
    std::string_view Caption(std::size_t index) const;
    bool HasValue(std::size_t index) const { return entries_[index].hasValue; }
    // The value; without one the caption.
    std::string_view Value(std::size_t index) const;
    // The value as a whole number; without one, or when it is none, the place of the entry, the first being
    // 1.
    std::int32_t Number(std::size_t index) const;
    bool IsNumbered(std::size_t index) const; // its value is a whole number

    // The first entry of that value, letter by letter; by a walk through all.
    std::optional<std::size_t> IndexOfValue(std::string_view value) const;

    // As OfList reads it.
    std::string Text() const;

private:
    struct Entry {
        std::uint32_t caption, value, end; // in the text: where they begin, and where the value ends
        bool hasValue;
    };

    void Add(std::string_view escaped);

    std::string text_; // captions and values, without escapes
    std::vector<Entry> entries_;
};

// One entry, escaped; the value is left out where there is none.
std::string ItemText(std::string_view caption, std::optional<std::string_view> value);

} // namespace logic
