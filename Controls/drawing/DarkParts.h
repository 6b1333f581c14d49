#pragma once

#include "Controls/drawing/FontProperty.h"
#include "logic/drawing/PanelColours.h"

#include <windows.h>

#include <optional>
#include <string>

// Fields, lists, arrows, buttons and lamps as they look on panels of the style "dark": in the colours of
// panels, lit only where they are on.

// A colour that lies so many percent of the way to another one.
constexpr COLORREF MixedColour(COLORREF from, COLORREF to, int percent) {
    COLORREF mixed = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const auto of = static_cast<int>(from >> shift & 0xFF);
        const auto towards = static_cast<int>(to >> shift & 0xFF);
        mixed |= static_cast<COLORREF>(of + (towards - of) * percent / 100) << shift;
    }
    return mixed;
}

constexpr COLORREF DARK_RIM = MixedColour(logic::PANEL_PLATE, logic::PANEL_EDGE, 45);
constexpr COLORREF DARK_OFF = MixedColour(logic::PANEL_PLATE, logic::PANEL_EDGE, 25); // of what could be lit
// Of what is there but has no effect, or cannot be operated.
constexpr COLORREF DARK_DIM_TEXT = MixedColour(logic::PANEL_EDGE, logic::PANEL_FAINT, 20);

struct DarkState {
    bool isEnabled = true;
    bool isDimmed = false; // part of something that is bypassed
    bool isFocused = false;
    bool isDown = false; // pressed, or dropped down

    COLORREF TextColour() const {
        return isEnabled && !isDimmed ? static_cast<COLORREF>(logic::PANEL_TEXT) : DARK_DIM_TEXT;
    }
};

// One pixel wide, in the colour of the focus where it is there.
void DrawDarkRim(HDC dc, const RECT& area, const DarkState& state);
// A list that is closed, with the arrow at its right end.
struct DarkListLook {
    COLORREF ground = logic::PANEL_WELL;
    std::optional<COLORREF> text; // none: by its state
    int room = 0;                 // that is left free in front of the text, pixels
};
void DrawDarkList(HDC dc, const RECT& area, const std::string& text, HFONT font, const DarkState& state,
                  const DarkListLook& look = {});
enum class PressedArrow { None, Up, Down };
// The arrows at the right end of a field, as its continuation.
void DrawDarkArrows(HDC dc, const RECT& area, PressedArrow pressed, const DarkState& state);
// Which of the system's arrows is held down.
PressedArrow PressedArrowOf(HWND arrows);
// The frame of a system window, in place of what the system draws there: well and rim. The rim goes on to the
// right where other windows continue it.
void DrawDarkFrame(HWND window, bool goesOn, const DarkState& state);
// Neutral, or filled with the colour that it is lit in.
void DrawDarkButton(HDC dc, const RECT& area, std::optional<COLORREF> lit, const DarkState& state);
// The colour of a caption on it.
COLORREF DarkCaptionColour(bool isLit, const DarkState& state);
// That what it shows may not be so, in the upper left corner: in the colour of the not-equal sign, and
// smaller.
void DrawDarkMark(HDC dc, const RECT& area);
void DrawDarkLamp(HDC dc, const RECT& area, std::optional<COLORREF> lit);

// The colour that a picture of this library is lit in, by the word in its name: "SWITCHBUTTON_red_26x16.bmp".
std::optional<COLORREF> ColourOfPicture(const std::string& name);

// A caption in the largest size of the type face of panels, from that many points down, in which it fits. It
// is measured by what is painted, as the widths that systems tell of small sizes are not those, and only when
// it is another one.
class FittingCaption {
public:
    // In the middle of the area.
    void Draw(HDC dc, const std::string& text, const RECT& area, int points, COLORREF colour);

private:
    void Fit(const std::string& text, int width, int points);
    void Measure(const std::string& text);

    FontProperty font_;
    std::string text_;
    int width_ = 0;
    int points_ = 0;
    RECT ink_{}; // what is painted of it, from where it is written
};
