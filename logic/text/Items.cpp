#include "logic/text/Items.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

namespace {

bool IsEscaped(char character) {
    return character == ';' || character == '=' || character == '\\';
}

bool IsEscape(std::string_view text, std::size_t place) {
    return text[place] == '\\' && place + 1 < text.size() && IsEscaped(text[place + 1]);
}

// The first of the characters that is not escaped, or the length of the text.
std::size_t FindPlain(std::string_view text, char character) {
    std::size_t place = 0;
    while (place < text.size() && text[place] != character) {
        place += IsEscape(text, place) ? 2 : 1;
    }
    return place;
}

// Takes the text up to the separator, and the separator.
std::string_view TakeUpTo(std::size_t end, std::string_view& text) {
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(end < text.size() ? end + 1 : end);
    return piece;
}

void AppendPlain(std::string& text, std::string_view escaped) {
    for (std::size_t place = 0; place < escaped.size(); ++place) {
        place += IsEscape(escaped, place) ? 1 : 0;
        text += escaped[place];
    }
}

void AppendEscaped(std::string& text, std::string_view plain) {
    for (const char character : plain) {
        if (IsEscaped(character)) {
            text += '\\';
        }
        text += character;
    }
}

} // namespace

Items Items::OfList(std::string_view text) {
    Items items;
    items.text_.reserve(text.size());
    while (!text.empty()) {
        items.Add(TakeUpTo(FindPlain(text, ';'), text));
    }
    return items;
}

Items Items::OfLines(std::string_view text) {
    Items items;
    items.text_.reserve(text.size());
    while (!text.empty()) {
        items.Add(TakeUpTo(std::min(text.find('\n'), text.size()), text));
    }
    return items;
}

void Items::Add(std::string_view escaped) {
    escaped = TrimBlanks(escaped);
    if (escaped.empty()) {
        return;
    }
    std::size_t divider = FindPlain(escaped, '=');
    const bool hasValue = divider < escaped.size();
    for (std::size_t next = divider; next < escaped.size();) {
        divider = next;
        next += 1 + FindPlain(escaped.substr(next + 1), '=');
    }
    Entry entry{};
    entry.hasValue = hasValue;
    entry.caption = static_cast<std::uint32_t>(text_.size());
    AppendPlain(text_, TrimBlanks(escaped.substr(0, divider)));
    entry.value = static_cast<std::uint32_t>(text_.size());
    AppendPlain(text_, TrimBlanks(escaped.substr(hasValue ? divider + 1 : divider)));
    entry.end = static_cast<std::uint32_t>(text_.size());
    entries_.push_back(entry);
}

std::string_view Items::Caption(std::size_t index) const {
    const Entry& entry = entries_[index];
    return std::string_view(text_).substr(entry.caption, entry.value - entry.caption);
}

std::string_view Items::Value(std::size_t index) const {
    const Entry& entry = entries_[index];
    return entry.hasValue ? std::string_view(text_).substr(entry.value, entry.end - entry.value)
                          : Caption(index);
}

bool Items::IsNumbered(std::size_t index) const {
    return HasValue(index) && ParseWholeInteger(Value(index));
}

std::int32_t Items::Number(std::size_t index) const {
    const auto number = HasValue(index) ? ParseWholeInteger(Value(index)) : std::nullopt;
    return number.value_or(static_cast<std::int32_t>(index) + 1);
}

std::optional<std::size_t> Items::IndexOfValue(std::string_view value) const {
    for (std::size_t index = 0; index < Size(); ++index) {
        if (Value(index) == value) {
            return index;
        }
    }
    return std::nullopt;
}

std::string Items::Text() const {
    std::string text;
    for (std::size_t index = 0; index < Size(); ++index) {
        text += index > 0 ? ";" : "";
        text += ItemText(Caption(index), HasValue(index) ? std::optional(Value(index)) : std::nullopt);
    }
    return text;
}

std::string ItemText(std::string_view caption, std::optional<std::string_view> value) {
    std::string text;
    AppendEscaped(text, caption);
    if (value) {
        text += '=';
        AppendEscaped(text, *value);
    }
    return text;
}

} // namespace logic
