#include "logic/controls/ListLogic.h"

#include "logic/text/Text.h"

#include <algorithm>
#include <string>

namespace logic {

namespace {

constexpr std::int32_t SHORTEST_THUMB = 16;
constexpr char END_OF_FILE = 0x1A; // at the end of old text files

} // namespace

NumberedItems::NumberedItems(Items items) : items_(std::move(items)) {
    byNumber_.reserve(items_.Size());
    for (std::int32_t index = 0; index < Size(); ++index) {
        byNumber_.emplace_back(Number(index), index);
    }
    if (!std::is_sorted(byNumber_.begin(), byNumber_.end())) {
        std::sort(byNumber_.begin(), byNumber_.end());
    }
}

std::optional<std::int32_t> NumberedItems::IndexOf(std::int32_t number) const {
    const auto found = std::lower_bound(byNumber_.begin(), byNumber_.end(), std::pair(number, 0));
    return found != byNumber_.end() && found->first == number ? std::optional(found->second) : std::nullopt;
}

int NumberedItems::LongestNumber() const {
    if (byNumber_.empty()) {
        return 0;
    }
    return static_cast<int>(std::max(std::to_string(byNumber_.front().first).size(),
                                     std::to_string(byNumber_.back().first).size()));
}

bool IsBinary(std::string_view bytes) {
    return std::any_of(bytes.begin(), bytes.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x20 && !IsBlank(byte) && byte != END_OF_FILE;
    });
}

std::int32_t ListScroll::LimitTop(std::int64_t top) const {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(top, 0, std::max<std::int64_t>(std::int64_t{entries} - rows, 0)));
}

std::int32_t ListScroll::TopShowing(std::int32_t entry, std::int32_t top) const {
    return LimitTop(std::clamp<std::int64_t>(top, std::int64_t{entry} - std::max(rows, 1) + 1, entry));
}

std::optional<std::int32_t> ListScroll::MoveMark(std::optional<std::int32_t> mark, std::int32_t top,
                                                 ListKey key) const {
    if (entries <= 0 || key == ListKey::Left || key == ListKey::Right) {
        return std::nullopt;
    }
    const std::int32_t last = entries - 1;
    if (key == ListKey::Home || key == ListKey::End) {
        return key == ListKey::Home ? 0 : last;
    }
    if (!mark) {
        return LimitTop(top);
    }
    const std::int32_t page = std::max(rows - 1, 1);
    const std::int64_t step = key == ListKey::Up       ? -1
                              : key == ListKey::Down   ? 1
                              : key == ListKey::PageUp ? -page
                                                       : page;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(*mark + step, 0, last));
}

ListScroll::Thumb ListScroll::ThumbAt(std::int32_t top, std::int32_t track) const {
    if (!NeedsBar()) {
        return {0, std::max(track, 0)};
    }
    const auto proportional = static_cast<std::int32_t>(std::int64_t{track} * rows / entries);
    const std::int32_t length = std::clamp(proportional, std::min(SHORTEST_THUMB, track), track);
    return {static_cast<std::int32_t>(std::int64_t{track - length} * LimitTop(top) / (entries - rows)),
            length};
}

std::int32_t ListScroll::TopOfThumb(std::int32_t start, std::int32_t track) const {
    const std::int32_t travel = track - ThumbAt(0, track).length;
    if (!NeedsBar() || travel <= 0) {
        return 0;
    }
    // The nearest one.
    return LimitTop((2 * std::int64_t{start} * (entries - rows) + travel) / (2 * std::int64_t{travel}));
}

} // namespace logic
