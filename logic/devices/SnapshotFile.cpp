#include "logic/devices/SnapshotFile.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::string_view FIRST_LINE = "snapshot=1";
constexpr std::size_t LONGEST_NAME = 100;

bool IsLine(std::string_view text) {
    return std::ranges::none_of(text, [](char c) { return IsControl(c); });
}

// Names that stand for devices of the system, whatever stands behind a point.
bool IsReserved(std::string_view name) {
    std::string stem(name.substr(0, name.find('.')));
    std::ranges::transform(stem, stem.begin(), [](char c) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    });
    constexpr std::array<std::string_view, 4> whole{"CON", "PRN", "AUX", "NUL"};
    const bool isNumbered = stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) &&
                            stem.back() >= '0' && stem.back() <= '9';
    return isNumbered || std::ranges::find(whole, stem) != whole.end();
}

} // namespace

std::string SnapshotText(const Snapshot& snapshot) {
    std::string text(FIRST_LINE);
    text += "\r\n";
    const auto add = [&](std::string_view name, const std::string& value) {
        if (IsLine(value)) {
            text += std::string(name) + "=" + value + "\r\n";
        }
    };
    add("panel", snapshot.panel);
    add("time", snapshot.time);
    add("program", snapshot.program);
    for (const SnapshotValue& value : snapshot.values) {
        add(value.address, value.text);
    }
    return text;
}

bool SnapshotReader::Take(std::string_view line) {
    if (TrimBlanks(line).empty()) {
        return true;
    }
    if (isFirst_) {
        isFirst_ = false;
        isSnapshot_ = line == FIRST_LINE;
        return isSnapshot_;
    }
    const PropertyLine parts = SplitPropertyLine(line);
    if (!isSnapshot_ || !parts.hasEquals || !IsLine(line)) {
        return false;
    }
    if (parts.object.empty()) {
        std::string* head = parts.keyword == "panel"     ? &snapshot_.panel
                            : parts.keyword == "time"    ? &snapshot_.time
                            : parts.keyword == "program" ? &snapshot_.program
                                                         : nullptr;
        if (head != nullptr) {
            *head = parts.value;
        }
        return line.find('*') >= line.find('=');
    }
    if (snapshot_.values.size() == MOST_VALUES) {
        isTooLong_ = true;
        return false;
    }
    if (parts.keyword.empty()) {
        return false;
    }
    snapshot_.values.push_back({std::string(line.substr(0, parts.object.size() + 1 + parts.keyword.size())),
                                std::string(parts.value)});
    return true;
}

std::optional<Snapshot> SnapshotReader::Finish() {
    return isSnapshot_ && !isTooLong_ ? std::optional(std::move(snapshot_)) : std::nullopt;
}

bool IsSnapshotName(std::string_view name) {
    return !name.empty() && name.size() <= LONGEST_NAME && TrimBlanks(name) == name && name.front() != '.' &&
           name.back() != '.' && IsLine(name) &&
           name.find_first_of("\\/:*?\"<>|,;=%") == std::string_view::npos && !IsReserved(name);
}

std::optional<SnapshotRecall> ReadSnapshotRecall(std::string_view text) {
    SnapshotRecall recall;
    if (const std::size_t comma = text.rfind(','); comma != std::string_view::npos) {
        const auto milliseconds = ParseWholeInteger(text.substr(comma + 1));
        if (!milliseconds || *milliseconds < 0 || *milliseconds > LONGEST_FADE) {
            return std::nullopt;
        }
        recall.milliseconds = *milliseconds;
        text = text.substr(0, comma);
    }
    recall.name = TrimBlanks(text);
    return IsSnapshotName(recall.name) ? std::optional(std::move(recall)) : std::nullopt;
}

} // namespace logic
