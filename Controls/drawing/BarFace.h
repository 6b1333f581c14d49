#pragma once

#include "logic/controls/BarLogic.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

enum class BarDirection { Up, Down, Left, Right };
enum class BarStyle { Solid, Gradient, Segments };

// How a bar graph looks, whatever it shows.
struct BarFace {
    RECT client;
    RECT track; // of the client area, what the bar takes when all of it is lit
    BarDirection direction;
    BarStyle style;
    int segment; // pixels of one with its gap
    logic::TravelRange range;
    COLORREF plain; // without zones
    const std::vector<logic::Zone>& zones;
    std::optional<COLORREF> ground; // none: what is there
    HFONT font;
    std::optional<COLORREF> textColour; // none: what can be read on the ground

    bool IsVertical() const { return direction == BarDirection::Up || direction == BarDirection::Down; }
    int Length() const { return IsVertical() ? track.bottom - track.top : track.right - track.left; }
    int SegmentLength() const { return style == BarStyle::Segments ? segment : 0; }
    RECT AreaOf(const logic::Span& span) const;
    // What of it a number over the bar may cover, with what is around it; empty without one.
    RECT NumberPlace(HDC dc, const std::string& number) const;
    void Draw(HDC dc, const logic::BarSpans& spans, const std::string& number) const;

private:
    void DrawBar(HDC dc, const std::vector<logic::ColourRun>& runs) const;
    void DrawNumber(HDC dc, const logic::Span& lit, const std::string& number, COLORREF behind,
                    const std::vector<logic::ColourRun>& colours) const;
};
