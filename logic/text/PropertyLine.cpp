#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <array>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::int32_t MAXIMUM_COORDINATE = 32767;
constexpr std::size_t MAXIMUM_CLASS_NAME = 64;
constexpr std::size_t MAXIMUM_NAME = 63;
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// Takes the text up to the next blank and the blanks around it.
std::string_view TakeWord(std::string_view& text) {
    text = TrimBlanks(text);
    std::size_t end = 0;
    while (end < text.size() && !IsBlank(text[end])) {
        ++end;
    }
    const std::string_view word = text.substr(0, end);
    text = TrimBlanks(text.substr(end));
    return word;
}

// Takes `"name"` and the blank that must follow it.
std::optional<std::string_view> TakeQuoted(std::string_view& text) {
    if (!text.starts_with('"')) {
        return std::nullopt;
    }
    const std::size_t end = text.find('"', 1);
    if (end == std::string_view::npos || end + 1 == text.size() || !IsBlank(text[end + 1])) {
        return std::nullopt;
    }
    const std::string_view quoted = text.substr(1, end - 1);
    text.remove_prefix(end + 1);
    return quoted;
}

} // namespace

PropertyLine SplitPropertyLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    const bool hasEquals = equals != std::string_view::npos;
    const std::string_view front = line.substr(0, equals);
    const std::size_t star = front.rfind('*');
    const bool hasObject = star != std::string_view::npos;
    const std::string_view object = hasObject ? front.substr(0, star) : std::string_view();
    const std::string_view last = hasObject ? front.substr(star + 1) : front;
    if (!hasEquals) {
        return {object, {}, last, false};
    }
    return {object, last, line.substr(equals + 1), true};
}

bool IsEmptyBinding(std::string_view keyword, std::string_view value) {
    return value.empty() && (keyword == "connection" || keyword.starts_with("function"));
}

std::optional<Rectangle> ParseRectangle(std::string_view text) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    std::array<std::int32_t, 4> edges{};
    if (fields.size() != edges.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const std::optional<std::int32_t> edge = ParseWholeInteger(fields[i]);
        if (!edge || *edge < -MAXIMUM_COORDINATE || *edge > MAXIMUM_COORDINATE) {
            return std::nullopt;
        }
        edges[i] = *edge;
    }
    return Rectangle{edges[0], edges[1], edges[2], edges[3]};
}

std::string RectangleText(const Rectangle& rectangle) {
    return std::to_string(rectangle.left) + ',' + std::to_string(rectangle.top) + ',' +
           std::to_string(rectangle.right) + ',' + std::to_string(rectangle.bottom);
}

std::optional<ControlHeader> ParseControlHeader(std::string_view value) {
    const std::optional<std::uint32_t> extendedStyle = ParseWholeHex(TakeWord(value));
    const std::string_view className = TakeWord(value);
    const std::optional<std::string_view> name = TakeQuoted(value);
    const std::optional<std::uint32_t> style = ParseWholeHex(TakeWord(value));
    const std::optional<Rectangle> rectangle = ParseRectangle(value);
    if (!extendedStyle || !name || !style || !rectangle) {
        return std::nullopt;
    }
    if (className.empty() || className.size() > MAXIMUM_CLASS_NAME ||
        name->find('*') != std::string_view::npos) {
        return std::nullopt;
    }
    return ControlHeader{*extendedStyle, std::string(className), std::string(*name), *style, *rectangle};
}

std::vector<std::string> SplitList(std::string_view text) {
    std::vector<std::string> entries;
    for (const std::string_view field : SplitFields(text, ';')) {
        const std::string_view entry = TrimBlanks(field);
        if (!entry.empty()) {
            entries.emplace_back(entry);
        }
    }
    return entries;
}

std::size_t EntriesThatFit(std::string_view text) {
    std::size_t entries = 0;
    std::size_t length = 0;
    for (const std::string& entry : SplitList(text)) {
        length += entry.size() + (entries > 0 ? 1 : 0);
        if (length > MAXIMUM_VALUE) {
            break;
        }
        ++entries;
    }
    return entries;
}

std::string FoldName(std::string_view name) {
    std::string folded(name);
    for (char& character : folded) {
        const auto code = static_cast<unsigned char>(character);
        const bool isCapital = (code >= 'A' && code <= 'Z') || (code >= 0xC0 && code <= 0xDE && code != 0xD7);
        if (isCapital) {
            character = static_cast<char>(code + 0x20);
        } else if (code == 0x8A || code == 0x8C || code == 0x8E) { // S with caron, OE, Z with caron
            character = static_cast<char>(code + 0x10);
        } else if (code == 0x9F) { // Y with diaeresis
            character = static_cast<char>(0xFF);
        }
    }
    return folded;
}

std::string FoldAddress(std::string_view address) {
    const auto star = std::min(address.rfind('*'), address.size());
    return FoldName(address.substr(0, star)).append(address.substr(star));
}

std::string CleanName(std::string_view name) {
    std::string clean(TrimBlanks(TrimBlanks(name).substr(0, MAXIMUM_NAME)));
    for (char& character : clean) {
        if (IsControl(character) || std::string_view("*=;\"%").find(character) != std::string_view::npos) {
            character = '_';
        }
    }
    return clean;
}

void LineReader::Feed(std::string_view bytes) {
    if (finished_) {
        return;
    }
    buffer_.erase(0, position_);
    scanned_ -= position_;
    position_ = 0;
    buffer_.append(bytes);
}

void LineReader::Finish() {
    finished_ = true;
}

// False while it cannot be told yet whether the stream starts with the mark.
bool LineReader::SkipByteOrderMark() {
    if (buffer_.starts_with(BYTE_ORDER_MARK)) {
        position_ = scanned_ = BYTE_ORDER_MARK.size();
    } else if (!finished_ && BYTE_ORDER_MARK.starts_with(buffer_)) {
        return false;
    }
    started_ = true;
    return true;
}

bool LineReader::Next(std::string& line, bool& usable) {
    if (!started_ && !SkipByteOrderMark()) {
        return false;
    }
    const std::string_view bytes = buffer_;
    const std::size_t lineEnd = bytes.find('\n', scanned_);
    if (lineEnd == std::string_view::npos) {
        // One byte more than the longest line may be the first half of its end.
        if (!dropping_ && bytes.size() - position_ > std::max(maximumLength, leftLength_) + 1) {
            excerpt_ = bytes.substr(position_, leftLength_);
            dropping_ = true;
        }
        scanned_ = bytes.size();
        if (dropping_) {
            position_ = scanned_;
        }
        const bool isLastLine = finished_ && (dropping_ || position_ < bytes.size());
        if (!isLastLine) {
            return false;
        }
    }
    std::string_view text =
        bytes.substr(position_, (lineEnd == std::string_view::npos ? bytes.size() : lineEnd) - position_);
    position_ = scanned_ = lineEnd == std::string_view::npos ? bytes.size() : lineEnd + 1;
    ++lineNumber_;
    wasCut_ = dropping_;
    if (dropping_) {
        line = excerpt_;
        usable = false;
        dropping_ = false;
        return true;
    }
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    usable = text.size() <= maximumLength && text.find('\0') == std::string_view::npos;
    wasCut_ = !usable && text.size() > leftLength_;
    line = usable ? text : text.substr(0, leftLength_);
    return true;
}

} // namespace logic
