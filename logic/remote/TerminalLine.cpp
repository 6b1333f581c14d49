#include "logic/remote/TerminalLine.h"

#include <algorithm>

#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

namespace logic {

void TerminalText::Append(char character) {
    if (length_ < maximumLength) {
        characters_[length_++] = character;
    } else {
        isTooLong_ = true;
    }
}

void TerminalText::Erase() {
    if (length_ > 0) {
        --length_;
    }
}

void TerminalText::Set(std::string_view text) {
    length_ = std::min(text.size(), maximumLength);
    std::copy_n(text.begin(), length_, characters_.begin());
    isTooLong_ = false;
}

std::string_view TerminalText::View() const {
    const std::string_view all(characters_.data(), length_);
    return all.substr(0, all.find('\0'));
}

void TerminalAddress::Read(std::string_view line) {
    const PropertyLine parts = SplitPropertyLine(line);
    if (!parts.object.empty()) {
        object_ = parts.object;
    }
    if (!parts.keyword.empty()) {
        keyword_ = parts.keyword;
    }
    isQuestion_ = parts.value == "?";
    value_ = isQuestion_ ? "" : parts.value == "??" ? "?" : parts.value;
    if (StarredPrompt().size() > TerminalText::maximumLength) {
        Forget();
    }
}

void TerminalAddress::ForgetValue() {
    value_.clear();
    isQuestion_ = false;
}

void TerminalAddress::Forget() {
    object_.clear();
    keyword_.clear();
    ForgetValue();
}

void TerminalAddress::CapitaliseObject() {
    for (char& character : object_) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
}

std::string TerminalAddress::Prompt() const {
    return (object_.empty() ? "" : object_ + "*") + KeywordPart();
}

std::string TerminalAddress::StarredPrompt() const {
    return object_ + "*" + KeywordPart();
}

std::string ValueLine(std::string value) {
    std::replace_if(value.begin(), value.end(), IsControl, ' ');
    return value + "\r\n";
}

} // namespace logic
