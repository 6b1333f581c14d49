#include "logic/editing/RecoveryCopy.h"

#include "logic/text/Numbers.h"

#include <cstdint>

namespace logic {

namespace {

constexpr std::string_view START = "panelcopy=1\r\n";

// The rest of the line that begins with "keyword=", which is taken off the front of the text.
std::optional<std::string_view> TakeLine(std::string_view& text, std::string_view keyword) {
    const std::size_t end = text.find("\r\n");
    const std::string_view line = text.substr(0, end);
    if (end == std::string_view::npos || !line.starts_with(keyword) ||
        line.substr(keyword.size()).substr(0, 1) != "=") {
        return std::nullopt;
    }
    text.remove_prefix(end + 2);
    return line.substr(keyword.size() + 1);
}

// Tells a text that was not written whole by a system that went down: its size may be right all the same.
std::string Checksum(std::string_view text) {
    std::uint32_t sum = 2166136261U;
    for (const char character : text) {
        sum = (sum ^ static_cast<unsigned char>(character)) * 16777619U;
    }
    return std::to_string(sum);
}

std::optional<std::int32_t> TakeNumber(std::string_view& text, std::string_view keyword) {
    const auto line = TakeLine(text, keyword);
    return line ? ParseWholeInteger(*line) : std::nullopt;
}

} // namespace

std::string RecoveryText(const RecoveryCopy& copy) {
    const auto line = [](const char* keyword, const std::string& value) {
        return std::string(keyword) + "=" + value + "\r\n";
    };
    return std::string(START) + line("file", copy.file) + line("devices", copy.devices) +
           line("changes", std::to_string(copy.changes)) + line("bytes", std::to_string(copy.panel.size())) +
           line("sum", Checksum(copy.panel)) + copy.panel;
}

std::optional<RecoveryCopy> ParseRecoveryText(std::string_view text) {
    if (!text.starts_with(START)) {
        return std::nullopt;
    }
    text.remove_prefix(START.size());
    const auto file = TakeLine(text, "file");
    const auto devices = TakeLine(text, "devices");
    const auto changes = TakeNumber(text, "changes");
    const auto bytes = TakeNumber(text, "bytes");
    const auto sum = TakeLine(text, "sum");
    if (!file || !devices || !changes || !bytes || !sum || *changes < 1 || *bytes < 0 ||
        text.size() != static_cast<std::size_t>(*bytes) || *sum != Checksum(text)) {
        return std::nullopt;
    }
    return RecoveryCopy{std::string(*file), std::string(*devices), *changes, std::string(text)};
}

} // namespace logic
