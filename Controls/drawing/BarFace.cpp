#include "Controls/drawing/BarFace.h"

#include "Controls/drawing/Shading.h"
#include "Controls/drawing/TextColours.h"
#include "base/Gdi.h"
#include "logic/drawing/PanelColours.h"

#include <algorithm>

namespace {

// Around a number, for what a glyph has beyond its cell and for the edge of the plate behind it.
constexpr int BESIDE = 3;
constexpr int ABOVE = 1;

} // namespace

RECT BarFace::AreaOf(const logic::Span& span) const {
    switch (direction) {
    case BarDirection::Up:
        return {track.left, track.bottom - span.last, track.right, track.bottom - span.first};
    case BarDirection::Down:
        return {track.left, track.top + span.first, track.right, track.top + span.last};
    case BarDirection::Left:
        return {track.right - span.last, track.top, track.right - span.first, track.bottom};
    default:
        return {track.left + span.first, track.top, track.left + span.last, track.bottom};
    }
}

RECT BarFace::NumberPlace(HDC dc, const std::string& number) const {
    if (number.empty()) {
        return {};
    }
    SIZE extent{};
    const Selected selected(dc, font);
    GetTextExtentPoint32A(dc, number.c_str(), static_cast<int>(number.size()), &extent);
    const int left = (client.right - extent.cx) / 2 - BESIDE;
    const int top = (client.bottom - extent.cy) / 2 - ABOVE;
    return {left, top, left + extent.cx + 2 * BESIDE + 1, top + extent.cy + 2 * ABOVE + 1};
}

void BarFace::Draw(HDC dc, const logic::BarSpans& spans, const std::string& number) const {
    COLORREF behind = ground.value_or(0);
    if (!ground && !number.empty()) {
        behind = GetPixel(dc, client.right / 2, client.bottom / 2); // before the bar is over it
    }
    const auto colours = style == BarStyle::Gradient ? logic::GradientRuns(range, zones, plain, Length())
                                                     : logic::ZoneRuns(range, zones, plain, Length());
    std::vector<logic::ColourRun> drawn;
    for (const logic::Span& part : {spans.lit, spans.peak}) {
        for (const logic::ColourRun& run : logic::DrawnRuns(colours, part, SegmentLength())) {
            drawn.push_back(run);
        }
    }
    DrawBar(dc, drawn);
    if (!number.empty()) {
        DrawNumber(dc, spans.lit, number, behind, colours);
    }
}

// On a ground of one colour all at once, else one by one.
void BarFace::DrawBar(HDC dc, const std::vector<logic::ColourRun>& runs) const {
    if (!ground || Length() <= 0) {
        for (const logic::ColourRun& run : runs) {
            FillGround(dc, run.colour, AreaOf(run.span));
        }
        return;
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(Length()), PixelOf(*ground));
    for (const logic::ColourRun& run : runs) {
        std::fill(pixels.begin() + run.span.first, pixels.begin() + run.span.last, PixelOf(run.colour));
    }
    if (direction == BarDirection::Up || direction == BarDirection::Left) {
        std::reverse(pixels.begin(), pixels.end());
    }
    if (IsVertical()) {
        DrawRows(dc, track, pixels);
    } else {
        DrawColumns(dc, track, pixels);
    }
}

// Without a colour of its own it can be read over the bar and beside it: each part in the colour for it. The
// gaps between segments would cut through it, so that there it stands on a plate.
void BarFace::DrawNumber(HDC dc, const logic::Span& lit, const std::string& number, COLORREF behind,
                         const std::vector<logic::ColourRun>& colours) const {
    const RECT place = NumberPlace(dc, number);
    const Selected selected(dc, font);
    SetBkMode(dc, TRANSPARENT);
    const auto draw = [&](COLORREF colour) {
        SetTextColor(dc, colour);
        TextOutA(dc, place.left + BESIDE, place.top + ABOVE, number.c_str(), static_cast<int>(number.size()));
    };
    if (style == BarStyle::Segments) {
        const COLORREF plate = ground.value_or(logic::PANEL_WELL);
        FillGround(dc, plate, place);
        draw(textColour.value_or(ReadableOn(plate)));
        return;
    }
    if (textColour) {
        draw(*textColour);
        return;
    }
    const int middle = Length() / 2;
    const auto run = std::ranges::find_if(colours, [&](const auto& one) { return middle < one.span.last; });
    const RECT bar = run == colours.end() ? RECT{} : AreaOf(lit);
    RECT covered{};
    IntersectRect(&covered, &bar, &place);
    if (EqualRect(&covered, &place) == FALSE) {
        draw(ReadableOn(behind));
    }
    if (IsRectEmpty(&covered) == FALSE) {
        const int saved = SaveDC(dc);
        IntersectClipRect(dc, covered.left, covered.top, covered.right, covered.bottom);
        draw(ReadableOn(run->colour));
        RestoreDC(dc, saved);
    }
}
