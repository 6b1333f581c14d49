#include "Panel/editing/NewControls.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "base/Gdi.h"

#include <algorithm>
#include <cstdint>

namespace {

struct Art {
    const char* className;
    const char* dark;  // lines for a dark ground, joined by a line feed
    const char* light; // for a light one
};
constexpr Art ARTS[] = {
    {"BBUTTON", "bitmap=.\\Controls\\BUTTON_blue_64x24.bmp", "bitmap=.\\Controls\\BUTTON_grey_64x24.bmp"},
    {"BRADIOBUTTON", "textcolor=0x00f5f1ee,0x00f5f1ee", ""},
    {"BTRISTATEBUTTON",
     "bitmap=.\\Controls\\SWITCHBUTTON_slim_green_40x16.bmp\ntextcolor=0x00f5f1ee,0x00171310",
     "bitmap=.\\Controls\\SWITCHBUTTON_lamp_green_56x28.bmp"},
    {"CONDITIONALLED", "bitmap=.\\Controls\\LED_slim_green_16x16.bmp",
     "bitmap=.\\Controls\\LED_green_16x16.bmp"},
    {"FADER", "bitmap=.\\Controls\\FADER_slim_vertical_32x208.bmp",
     "bitmap=.\\Controls\\FADER_vertical_30x200.bmp"},
    {"KNOB", "bitmap=.\\Controls\\Knob.bmp", "bitmap=.\\Controls\\KNOB_silver.bmp"},
    {"LED", "bitmap=.\\Controls\\LED_slim_green_16x16.bmp", "bitmap=.\\Controls\\LED_green_16x16.bmp"},
    {"LSBBUTTON", "bitmap=.\\Controls\\BUTTON_blue_64x24.bmp", "bitmap=.\\Controls\\BUTTON_grey_64x24.bmp"},
    {"METER", "bitmap=.\\Controls\\METER_slim_16x208.bmp", "bitmap=.\\Controls\\METER_16x160.bmp"},
    {"REVMETER", "bitmap=.\\Controls\\METER_slim_16x208_blue.bmp",
     "bitmap=.\\Controls\\METER_20x200_blue.bmp"},
    {"SWITCH", "bitmap=.\\Controls\\ROCKER_slim_green_32x56.bmp",
     "bitmap=.\\Controls\\ROCKER_slim_green_32x56.bmp"},
};

} // namespace

bool IsDarkGround(COLORREF ground) {
    return 2 * GetRValue(ground) + 5 * GetGValue(ground) + GetBValue(ground) < 8 * 110;
}

COLORREF GroundOf(HWND panel, const RECT& place) {
    RECT client;
    GetClientRect(panel, &client);
    RECT seen;
    if (!IntersectRect(&seen, &client, &place)) {
        seen = client;
    }
    const int width = std::min(seen.right - seen.left, 256L);
    const int height = std::min(seen.bottom - seen.top, 256L);
    std::uint32_t* bits = nullptr;
    const Bitmap bitmap(CreatePixels(width, height, &bits));
    if (!bitmap || width <= 0 || height <= 0) {
        return GetSysColor(COLOR_BTNFACE);
    }
    const MemoryDc dc(bitmap.get());
    SetWindowOrgEx(dc.Get(), seen.left, seen.top, nullptr);
    SendMessageA(panel, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.Get()), 0);
    GdiFlush();
    std::uint64_t sums[3] = {};
    const auto count = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    for (std::uint64_t i = 0; i < count; ++i) {
        for (int part = 0; part < 3; ++part) {
            sums[part] += bits[i] >> (8 * part) & 0xFF;
        }
    }
    return RGB(sums[2] / count, sums[1] / count, sums[0] / count);
}

std::vector<std::string> ArtFor(const std::string& className, COLORREF ground) {
    const auto art = std::find_if(std::begin(ARTS), std::end(ARTS),
                                  [&](const Art& row) { return className == row.className; });
    std::vector<std::string> lines;
    std::string rest = art == std::end(ARTS) ? "" : IsDarkGround(ground) ? art->dark : art->light;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        lines.push_back(rest.substr(0, end));
        rest.erase(0, end + 1);
    }
    return lines;
}

void GiveArt(const HOSTINFO& control, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        SendMessageA(control.window, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
    }
}
