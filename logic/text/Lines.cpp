#include "logic/text/Lines.h"

#include <algorithm>

#include "logic/text/Text.h"

namespace logic {

namespace {

std::size_t EscapedSize(char character) {
    return character == '\n' || character == '\\' ? 2 : 1;
}

std::size_t EscapedSize(std::string_view text) {
    std::size_t size = 0;
    for (const char character : text) {
        size += EscapedSize(character);
    }
    return size;
}

} // namespace

std::string EscapeLines(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        if (character == '\n') {
            escaped += "\\n";
        } else if (character == '\\') {
            escaped += "\\\\";
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string UnescapeLines(std::string_view escaped) {
    std::string text;
    text.reserve(escaped.size());
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        const std::string_view pair = escaped.substr(i, 2);
        if (pair == "\\n" || pair == "\r\n") {
            text += '\n';
            ++i;
        } else if (pair == "\\\\") {
            text += '\\';
            ++i;
        } else {
            text += escaped[i] != '\n' && IsControl(escaped[i]) ? ' ' : escaped[i];
        }
    }
    return text;
}

std::string_view NewestLines(std::string_view text, std::size_t maximum, std::size_t maximumEscaped) {
    const auto fieldSize = [&] {
        return text.size() + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    };
    while (fieldSize() > maximum || EscapedSize(text) > maximumEscaped) {
        const std::size_t end = text.find('\n');
        text.remove_prefix(end == std::string_view::npos ? 1 : end + 1);
    }
    return text;
}

std::string_view FrontThatFits(std::string_view text, std::size_t maximumEscaped) {
    std::size_t end = 0;
    for (std::size_t size = 0; end < text.size(); ++end) {
        size += EscapedSize(text[end]);
        if (size > maximumEscaped) {
            break;
        }
    }
    return text.substr(0, end);
}

std::string WithReturns(std::string_view text) {
    std::string with;
    for (const char character : text) {
        if (character == '\n') {
            with += '\r';
        }
        with += character;
    }
    return with;
}

std::string WithoutReturns(std::string_view text) {
    std::string without(text);
    std::erase(without, '\r');
    return without;
}

} // namespace logic
