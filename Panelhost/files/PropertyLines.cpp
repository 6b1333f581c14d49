// The parts of a property line, rectangles as text, and templates of lines.

#include "Panelhost/PropertyLines.h"

#include "Panelhost/Messages.h"
#include "base/Guard.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

int CopyPart(std::string_view part, char* out) {
    const std::size_t length = std::min<std::size_t>(part.size(), TEXT_SIZE - 1);
    std::memcpy(out, part.data(), length);
    out[length] = '\0';
    return length > 0 ? 1 : 0;
}

logic::PropertyLine Split(const char* line) {
    return logic::SplitPropertyLine(line == nullptr ? "" : line);
}

} // namespace

int a_GetObjectName(const char* line, char* objectOut) {
    return CopyPart(Split(line).object, objectOut);
}

int a_GetKeyword(const char* line, char* keywordOut) {
    return CopyPart(Split(line).keyword, keywordOut);
}

int a_GetParameter(const char* line, char* valueOut) {
    return CopyPart(Split(line).value, valueOut);
}

std::string a_GetRectString(const RECT& rectangle) {
    return Guarded<std::string>({}, [&] {
        return logic::RectangleText(
            {static_cast<std::int32_t>(rectangle.left), static_cast<std::int32_t>(rectangle.top),
             static_cast<std::int32_t>(rectangle.right), static_cast<std::int32_t>(rectangle.bottom)});
    });
}

int a_ReadRectString(const char* text, RECT* rectangle) {
    const auto read = logic::ParseRectangle(text == nullptr ? "" : text);
    if (!read || rectangle == nullptr) {
        return 0;
    }
    *rectangle = {read->left, read->top, read->right, read->bottom};
    return 1;
}

int a_InsertString(char* text, std::initializer_list<INSERTION> insertions) {
    return Guarded(0, [&] {
        std::vector<logic::Placeholder> placeholders;
        for (const INSERTION& insertion : insertions) {
            placeholders.push_back({insertion.letter, insertion.text == nullptr ? "" : insertion.text});
        }
        const std::string expanded = logic::ExpandTemplate(text, placeholders);
        if (expanded.size() >= TEXT_SIZE) {
            return 0;
        }
        std::memcpy(text, expanded.c_str(), expanded.size() + 1);
        return 1;
    });
}
