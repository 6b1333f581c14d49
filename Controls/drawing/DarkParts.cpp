#include "Controls/drawing/DarkParts.h"

#include "base/Gdi.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <iterator>

namespace {

constexpr int ARROW_PLACE = 9; // of the middle of a list's arrow, from the right end
constexpr int TEXT_PLACE = 4;  // of a list's text, from the left end

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void Rim(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FrameRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

RECT Inside(RECT area, int by) {
    InflateRect(&area, -by, -by);
    return area;
}

// A triangle that points down or up, of that many rows, with its base that wide.
void Triangle(HDC dc, POINT middle, int rows, bool isUp, COLORREF colour) {
    for (int row = 0; row < rows; ++row) {
        const int half = isUp ? row : rows - 1 - row;
        const int y = middle.y - rows / 2 + row;
        Fill(dc, {middle.x - half, y, middle.x + half + 1, y + 1}, colour);
    }
}

} // namespace

void DrawDarkRim(HDC dc, const RECT& area, const DarkState& state) {
    Rim(dc, area, state.isFocused ? static_cast<COLORREF>(logic::PANEL_ACCENT) : DARK_RIM);
}

void DrawDarkList(HDC dc, const RECT& area, const std::string& text, HFONT font, const DarkState& state,
                  const DarkListLook& look) {
    Fill(dc, area, look.ground);
    DrawDarkRim(dc, area, state);
    Triangle(dc, {area.right - ARROW_PLACE, (area.top + area.bottom) / 2}, 4, state.isDown,
             state.isEnabled && !state.isDimmed ? static_cast<COLORREF>(logic::PANEL_FAINT) : DARK_DIM_TEXT);
    RECT place = Inside(area, 1);
    place.left += TEXT_PLACE - 1 + look.room;
    place.right = area.right - ARROW_PLACE - 5;
    const Selected selected(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, look.text && state.isEnabled ? *look.text : state.TextColour());
    DrawTextA(dc, text.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void DrawDarkArrows(HDC dc, const RECT& area, PressedArrow pressed, const DarkState& state) {
    Fill(dc, area, logic::PANEL_WELL);
    const int middle = (area.top + area.bottom) / 2;
    const int x = (area.left + area.right - 1) / 2;
    for (const bool isUp : {true, false}) {
        const bool isPressed = pressed == (isUp ? PressedArrow::Up : PressedArrow::Down);
        const RECT half{area.left, isUp ? area.top : middle, area.right, isUp ? middle : area.bottom};
        if (isPressed) {
            Fill(dc, half, DARK_OFF);
        }
        Triangle(dc, {x, (half.top + half.bottom) / 2}, 3, isUp,
                 isPressed                            ? static_cast<COLORREF>(logic::PANEL_TEXT)
                 : state.isEnabled && !state.isDimmed ? static_cast<COLORREF>(logic::PANEL_FAINT)
                                                      : DARK_DIM_TEXT);
    }
    // The left edge is the field's.
    RECT rim = area;
    rim.left -= 1;
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    DrawDarkRim(dc, rim, state);
    RestoreDC(dc, saved);
}

PressedArrow PressedArrowOf(HWND arrows) {
    RECT area{};
    GetClientRect(arrows, &area);
    POINT cursor{};
    GetCursorPos(&cursor);
    ScreenToClient(arrows, &cursor);
    if (GetCapture() != arrows || !PtInRect(&area, cursor)) {
        return PressedArrow::None;
    }
    return cursor.y < area.bottom / 2 ? PressedArrow::Up : PressedArrow::Down;
}

void DrawDarkFrame(HWND window, bool goesOn, const DarkState& state) {
    const HDC dc = GetWindowDC(window);
    if (dc == nullptr) {
        return;
    }
    RECT whole{};
    RECT client{};
    GetWindowRect(window, &whole);
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -whole.left, -whole.top);
    OffsetRect(&whole, -whole.left, -whole.top);
    ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    Fill(dc, whole, logic::PANEL_WELL);
    if (goesOn) {
        ++whole.right;
    }
    DrawDarkRim(dc, whole, state);
    ReleaseDC(window, dc);
}

void DrawDarkButton(HDC dc, const RECT& area, std::optional<COLORREF> lit, const DarkState& state) {
    const COLORREF base = lit ? *lit : DARK_OFF;
    // What is raised is bright above, what is held down below.
    const COLORREF bright = MixedColour(base, RGB(255, 255, 255), lit ? 25 : 12);
    const COLORREF dark = MixedColour(base, RGB(0, 0, 0), 18);
    const RECT inside = Inside(area, state.isFocused ? 2 : 1);
    const int rows = std::max<int>(inside.bottom - inside.top, 1);
    for (int row = 0; row < rows; ++row) {
        const int way = rows == 1 ? 0 : 100 * row / (rows - 1);
        Fill(dc, {inside.left, inside.top + row, inside.right, inside.top + row + 1},
             MixedColour(bright, dark, state.isDown ? 100 - way : way));
    }
    Rim(dc, area, state.isFocused ? static_cast<COLORREF>(logic::PANEL_ACCENT) : logic::PANEL_WELL);
    if (state.isFocused) { // a line that keeps the rim apart from a face of a similar colour
        Rim(dc, Inside(area, 1), logic::PANEL_WELL);
    }
}

COLORREF DarkCaptionColour(bool isLit, const DarkState& state) {
    return isLit ? static_cast<COLORREF>(logic::PANEL_WELL) : state.TextColour();
}

void DrawDarkMark(HDC dc, const RECT& area) {
    constexpr int SIDE = 6;
    for (int row = 0; row < SIDE; ++row) {
        const int y = area.top + 1 + row;
        Fill(dc, {area.left + 1, y, area.left + 1 + SIDE - row, y + 1}, logic::PANEL_ACCENT);
    }
}

void DrawDarkLamp(HDC dc, const RECT& area, std::optional<COLORREF> lit) {
    const int size = std::min(area.right - area.left, area.bottom - area.top);
    const int left = (area.left + area.right - size) / 2;
    const int top = (area.top + area.bottom - size) / 2;
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(NULL_PEN));
    SetDCBrushColor(dc, logic::PANEL_WELL);
    Ellipse(dc, left, top, left + size + 1, top + size + 1);
    SetDCBrushColor(dc, lit.value_or(DARK_OFF));
    Ellipse(dc, left + 1, top + 1, left + size, top + size);
}

std::optional<COLORREF> ColourOfPicture(const std::string& name) {
    struct Word {
        const char* word;
        COLORREF colour;
    };
    static constexpr Word WORDS[] = {{"red", logic::PANEL_RED},
                                     {"yellow", logic::PANEL_YELLOW},
                                     {"green", logic::PANEL_GREEN},
                                     {"blue", logic::PANEL_BLUE}};
    std::string lower = name.substr(name.find_last_of("\\/") + 1);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const auto found = std::find_if(std::begin(WORDS), std::end(WORDS),
                                    [&](const Word& word) { return lower.find(word.word) != lower.npos; });
    return found == std::end(WORDS) ? std::nullopt : std::optional(found->colour);
}

void FittingCaption::Measure(const std::string& text) {
    constexpr int HEIGHT = 32;
    constexpr int ROOM = 8; // on either side
    HDC screen = GetDC(nullptr);
    SIZE extent{};
    {
        const Selected font(screen, font_.Get());
        GetTextExtentPoint32A(screen, text.data(), static_cast<int>(text.size()), &extent);
    }
    ReleaseDC(nullptr, screen);
    const int width = 2 * extent.cx + 2 * ROOM;
    std::uint32_t* bits = nullptr;
    const Bitmap bitmap(CreatePixels(width, HEIGHT, &bits));
    const MemoryDc dc(bitmap.get());
    const Selected font(dc.Get(), font_.Get());
    SetBkMode(dc.Get(), TRANSPARENT);
    SetTextColor(dc.Get(), RGB(255, 255, 255));
    TextOutA(dc.Get(), ROOM, 0, text.data(), static_cast<int>(text.size()));
    GdiFlush();
    ink_ = {};
    for (int at = 0; bits != nullptr && at < width * HEIGHT; ++at) {
        const int x = at % width - ROOM;
        if (const RECT pixel{x, at / width, x + 1, at / width + 1}; (bits[at] & 0xFFFFFF) != 0) {
            const RECT before = ink_;
            UnionRect(&ink_, &before, &pixel);
        }
    }
}

void FittingCaption::Fit(const std::string& text, int width, int points) {
    constexpr int LEAST_POINTS = 5;
    if (font_.Get() != nullptr && text == text_ && width == width_ && points == points_) {
        return;
    }
    text_ = text;
    width_ = width;
    points_ = points;
    int size = points;
    do {
        font_.Load("Tahoma," + std::to_string(size));
        Measure(text);
    } while (ink_.right - ink_.left > width && --size >= LEAST_POINTS);
}

void FittingCaption::Draw(HDC dc, const std::string& text, const RECT& area, int points, COLORREF colour) {
    constexpr int MARGIN = 2;
    Fit(text, area.right - area.left - 2 * MARGIN, points);
    const Selected selected(dc, font_.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    ExtTextOutA(dc, (area.left + area.right - ink_.right - ink_.left) / 2,
                (area.top + area.bottom - ink_.bottom - ink_.top) / 2, ETO_CLIPPED, &area, text.data(),
                static_cast<UINT>(text.size()), nullptr);
}
