// Fonts by description, each made once.

#include "Panelhost/Fonts.h"

#include "base/Gdi.h"
#include "base/Guard.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace {

struct CachedFont {
    HFONT font = nullptr;
    int references = 0;
    int height = 0; // of a line; 0: not measured yet
};

std::unordered_map<std::string, CachedFont>& Cache() {
    static std::unordered_map<std::string, CachedFont> cache;
    return cache;
}

// A panel uses a handful of fonts.
auto FindFont(HFONT font) {
    return std::find_if(Cache().begin(), Cache().end(),
                        [font](const auto& entry) { return entry.second.font == font; });
}

int MeasuredHeight(HFONT font) {
    const MemoryDc dc(nullptr);
    const Selected selected(dc.Get(), font);
    TEXTMETRICA metrics{};
    return GetTextMetricsA(dc.Get(), &metrics) ? static_cast<int>(metrics.tmHeight) : 0;
}

HFONT CreateDescribedFont(const char* description) {
    const auto fields = logic::SplitFields(description, ',');
    if (fields.size() < 2 || fields.size() > 3) {
        return nullptr;
    }
    const std::string face(logic::TrimBlanks(fields[0]));
    const auto points = logic::ParseWholeInteger(fields[1]);
    const bool bold = fields.size() == 3;
    if (face.empty() || face.size() >= LF_FACESIZE || !points || *points < 1 || *points > 200 ||
        (bold && logic::FoldName(logic::TrimBlanks(fields[2])) != "bold")) {
        return nullptr;
    }
    LOGFONTA font{};
    font.lfHeight = -MulDiv(*points, 96, 72);
    font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    std::memcpy(font.lfFaceName, face.c_str(), face.size() + 1);
    return CreateFontIndirectA(&font);
}

} // namespace

HFONT a_GetFont(const char* description) {
    if (description == nullptr) {
        return nullptr;
    }
    return Guarded<HFONT>(nullptr, [&]() -> HFONT {
        const auto place = Cache().try_emplace(logic::FoldName(description)).first;
        CachedFont& entry = place->second;
        if (entry.font == nullptr) {
            entry.font = Guarded<HFONT>(nullptr, [&] { return CreateDescribedFont(description); });
        }
        if (entry.font == nullptr) {
            Cache().erase(place);
            return nullptr;
        }
        ++entry.references;
        return entry.font;
    });
}

void a_ReleaseFont(HFONT font) {
    const auto entry = FindFont(font);
    if (entry != Cache().end() && --entry->second.references == 0) {
        DeleteObject(font);
        Cache().erase(entry);
    }
}

int a_FontHeight(HFONT font) {
    const auto entry = FindFont(font);
    if (font == nullptr || entry == Cache().end()) {
        return font == nullptr ? 0 : MeasuredHeight(font);
    }
    int& height = entry->second.height;
    height = height != 0 ? height : MeasuredHeight(font);
    return height;
}

std::string a_GetFontString(HFONT font) {
    LOGFONTA described;
    if (font == nullptr || GetObjectA(font, sizeof described, &described) == 0) {
        return {};
    }
    return Guarded<std::string>({}, [&] {
        const int points = static_cast<int>(0.5 - described.lfHeight * 72 / 96.0);
        return std::string(described.lfFaceName) + "," + std::to_string(points) +
               (described.lfWeight == FW_BOLD ? ",bold" : "");
    });
}

int a_FontCount() {
    return static_cast<int>(Cache().size());
}
