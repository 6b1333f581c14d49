#include "Panel/editing/KnobGroup.h"

#include "logic/drawing/PanelColours.h"
#include "logic/editing/Groups.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

constexpr int FACE = 47; // width and height of a knob at 100 percent
constexpr int FIELD_WIDTH = 64;
constexpr int FIELD_HEIGHT = 22;
constexpr int CAPTION_HEIGHT = 16;

std::string Header(const char* windowClass, const char* name, const char* style, int left, int top, int width,
                   int height) {
    char text[200];
    std::snprintf(text, sizeof text, "control=0x00000000 %s \"%s\" %s %d,%d,%d,%d\r\n", windowClass, name,
                  style, left, top, left + width, top + height);
    return text;
}

std::string Colour(const char* object, const char* keyword, std::uint32_t colour) {
    char text[100];
    std::snprintf(text, sizeof text, "%s*%s=0x%08x\r\n", object, keyword, static_cast<unsigned>(colour));
    return text;
}

} // namespace

KnobGroup MakeKnobGroup(bool isDark, int artPercent, const std::vector<std::string>& art) {
    const int face = (FACE * artPercent + 50) / 100;
    const int width = std::max(FIELD_WIDTH, face);
    const int left = (width - face) / 2;
    std::string lines = Header("BSTATIC", "Knob caption 1", "0x50000000", 0, 0, width, CAPTION_HEIGHT) +
                        "Knob caption 1*alignment=center\r\nKnob caption 1*caption=Knob\r\n"
                        "Knob caption 1*font=Tahoma,8\r\n";
    if (isDark) {
        lines += Colour("Knob caption 1", "textcolor", logic::PANEL_FAINT);
    }
    lines += Header("KNOB", "Knob 1", "0x50010000", left, CAPTION_HEIGHT, face, face) +
             "Knob 1*properties=0,100,0\r\n";
    for (const std::string& line : art) {
        lines += "Knob 1*" + line + "\r\n";
    }
    lines +=
        Header("SPINEDIT", "Knob value 1", "0x50010000", (width - FIELD_WIDTH) / 2, CAPTION_HEIGHT + face + 1,
               FIELD_WIDTH, FIELD_HEIGHT) +
        "Knob value 1*alignment=right\r\nKnob value 1*fmt=%.1f\r\nKnob value 1*font=Tahoma,8\r\n"
        "Knob value 1*interval=100\r\nKnob value 1*properties=0,100,0\r\nKnob value 1*resolution=0.5\r\n";
    if (isDark) {
        lines += Colour("Knob value 1", "backgroundcolor", logic::PANEL_WELL) +
                 Colour("Knob value 1", "textcolor", logic::PANEL_TEXT);
    }
    lines += "Knob value 1*connection=Knob 1\r\n";
    for (const char* name : {"Knob caption 1", "Knob 1", "Knob value 1"}) {
        lines += std::string(name) + "*" + std::string(logic::GROUP_KEYWORD) + "=1\r\n";
    }
    return {lines, left, CAPTION_HEIGHT};
}
