// A list of which a window shows some rows at a time: its entries, how it scrolls, what keys do to its mark.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "logic/text/Items.h"

namespace logic {

// Entries and their numbers.
class NumberedItems {
public:
    NumberedItems() = default;
    explicit NumberedItems(Items items);

    std::int32_t Size() const { return static_cast<std::int32_t>(items_.Size()); }
    // Of an entry that there is.
    std::string_view Caption(std::int32_t index) const { return items_.Caption(Place(index)); }
    std::int32_t Number(std::int32_t index) const { return items_.Number(Place(index)); }
    // The first entry of that number.
    std::optional<std::int32_t> IndexOf(std::int32_t number) const;
    // Characters that the longest number takes.
    int LongestNumber() const;

private:
    static std::size_t Place(std::int32_t index) { return static_cast<std::size_t>(index); }

    Items items_;
    std::vector<std::pair<std::int32_t, std::int32_t>> byNumber_; // numbers, each with its entry, in order
};

// Whether the bytes of a file are anything but text: they hold control characters other than those of lines
// and pages.
bool IsBinary(std::string_view bytes);

// Numbered as the keyboard's virtual-key codes.
enum class ListKey { PageUp = 0x21, PageDown, End, Home, Left, Up, Right, Down };

// So many entries in so many rows, neither of them negative.
struct ListScroll {
    std::int32_t entries, rows;

    bool NeedsBar() const { return rows > 0 && entries > rows; }
    // The entry in the first row that is nearest to the wanted one.
    std::int32_t LimitTop(std::int64_t top) const;
    // The top, moved as little as can be, with which an entry is in one of the rows.
    std::int32_t TopShowing(std::int32_t entry, std::int32_t top) const;
    // Where a key moves the mark to; nothing when it does nothing. Without a mark the first key shows it at
    // the top.
    std::optional<std::int32_t> MoveMark(std::optional<std::int32_t> mark, std::int32_t top,
                                         ListKey key) const;

    // The thumb on a track of so many pixels: its first pixel and its length. All of it without need of a
    // bar.
    struct Thumb {
        std::int32_t start, length;
    };
    Thumb ThumbAt(std::int32_t top, std::int32_t track) const;
    // The top with the thumb at that pixel.
    std::int32_t TopOfThumb(std::int32_t start, std::int32_t track) const;
};

} // namespace logic
