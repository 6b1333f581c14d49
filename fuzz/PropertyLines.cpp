// Panel files: lines, headers and lists out of any bytes.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/Fuzzer.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/text/PropertyLine.h"

using namespace logic;

namespace {

using Lines = std::vector<std::pair<std::string, bool>>;

// Feeds blocks of the lengths that the function gives in turn.
Lines Read(std::string_view bytes, const std::function<std::size_t()>& blockLength) {
    LineReader reader;
    Lines lines;
    std::string line;
    bool usable = false;
    const auto take = [&] {
        while (reader.Next(line, usable)) {
            Require(line.size() <= (usable ? LineReader::maximumLength : LineReader::excerptLength));
            Require(line.find('\n') == std::string::npos);
            Require(!usable || line.find('\0') == std::string::npos);
            lines.emplace_back(line, usable);
            Require(reader.LineNumber() == lines.size());
        }
    };
    while (!bytes.empty()) {
        const std::string_view block = bytes.substr(0, blockLength());
        reader.Feed(block);
        take();
        bytes.remove_prefix(block.size());
    }
    reader.Finish();
    take();
    return lines;
}

void CheckLine(const std::string& text) {
    const PropertyLine line = SplitPropertyLine(text);
    Require(line.keyword.find_first_of("*=") == std::string_view::npos);
    Require(line.object.find('=') == std::string_view::npos);
    if (line.hasEquals) {
        const std::string back = std::string(line.keyword) + '=' + std::string(line.value);
        Require(back == text || std::string(line.object) + '*' + back == text);
    }

    if (const auto header = ParseControlHeader(line.value)) {
        Require(!header->className.empty() && header->className.size() <= 64);
        Require(header->name.find_first_of("\"*") == std::string::npos);
        const auto rectangle = ParseRectangle(RectangleText(header->rectangle));
        Require(rectangle && RectangleText(*rectangle) == RectangleText(header->rectangle));
    }

    Require(QuestionText(text).size() <= text.size());
    const Placeholder placeholders[] = {{'l', "%l%c"}, {'c', ""}};
    Require(ExpandTemplate(text, placeholders).size() <= 2 * text.size() && ExpandTemplate(text, {}) == text);
    const std::vector<std::string> entries = SplitList(line.value);
    Require(SplitList(JoinList(entries)) == entries);
    const std::string name = CleanName(line.object);
    Require(name.size() <= 63 && CleanName(name) == name);
    Require(name.find_first_of("*=;\"%") == std::string::npos);
    const std::string folded = FoldName(line.object);
    Require(folded.size() == line.object.size() && FoldName(folded) == folded);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string& bytes = input.bytes;
    if (input.choice % 2 == 1) {
        input.Lengthen('x');
    }
    const Lines lines = Read(bytes, [&] { return bytes.size(); });
    Require(lines == Read(bytes, BlockLengths(input.choice)));
    for (const auto& [text, usable] : lines) {
        if (usable) {
            CheckLine(text);
        }
    }
    return 0;
}
