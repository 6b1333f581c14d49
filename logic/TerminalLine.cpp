#include "logic/TerminalLine.h"

#include <algorithm>

#include "logic/PropertyLine.h"

namespace logic {

void TerminalText::Append(char character) {
    if (length_ < capacity - 1)
        characters_[length_++] = character;
}

void TerminalText::Erase() {
    if (length_ > 0)
        --length_;
}

void TerminalText::Set(std::string_view text) {
    length_ = std::min(text.size(), capacity - 1);
    std::copy_n(text.begin(), length_, characters_.begin());
}

std::string_view TerminalText::View() const {
    const std::string_view all(characters_.data(), length_);
    return all.substr(0, all.find('\0'));
}

void TerminalAddress::Read(std::string_view line) {
    const PropertyLine parts = SplitPropertyLine(line);
    if (!parts.object.empty())
        object_ = parts.object.substr(0, maximumLength);
    if (!parts.keyword.empty())
        keyword_ = parts.keyword.substr(0, maximumLength);
    value_ = parts.value.substr(0, maximumLength);
}

void TerminalAddress::Forget() {
    object_.clear();
    keyword_.clear();
    value_.clear();
}

void TerminalAddress::CapitaliseObject() {
    for (char& character : object_)
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
}

std::string TerminalAddress::Prompt() const {
    return (object_.empty() ? "" : object_ + "*") + KeywordPart();
}

std::string TerminalAddress::StarredPrompt() const {
    return object_ + "*" + KeywordPart();
}

} // namespace logic
