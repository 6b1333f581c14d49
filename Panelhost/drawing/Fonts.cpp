// Fonts by description, each made once.

#include "Panelhost/Fonts.h"

#include "base/Guard.h"
#include "logic/text/Numbers.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <cstring>
#include <unordered_map>

namespace {

struct CachedFont {
    HFONT font = nullptr;
    int references = 0;
};

std::unordered_map<std::string, CachedFont>& Cache() {
    static std::unordered_map<std::string, CachedFont> cache;
    return cache;
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
    auto& cache = Cache();
    for (auto entry = cache.begin(); entry != cache.end(); ++entry) { // a panel uses a handful of fonts
        if (entry->second.font == font) {
            if (--entry->second.references == 0) {
                DeleteObject(font);
                cache.erase(entry);
            }
            return;
        }
    }
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
