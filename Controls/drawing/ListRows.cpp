#include "Controls/drawing/ListRows.h"

#include "Controls/drawing/TextColours.h"
#include "base/Gdi.h"

#include <algorithm>

namespace {

constexpr int EDGE = 2;    // for the focus frame
constexpr int PADDING = 4; // above, below and beside a text
constexpr int BAR_WIDTH = 12;

constexpr COLORREF MARK_COLOUR = RGB(255, 176, 46);
constexpr COLORREF TRACK_COLOUR = RGB(34, 37, 42);
constexpr COLORREF THUMB_COLOUR = RGB(112, 120, 132);

COLORREF Shifted(COLORREF colour, int by) {
    const auto channel = [by](int part) { return static_cast<BYTE>(std::clamp(part + by, 0, 255)); };
    return RGB(channel(GetRValue(colour)), channel(GetGValue(colour)), channel(GetBValue(colour)));
}

// Lit from above left, or from below right what is held down.
void DrawRaised(HDC dc, const RECT& area, COLORREF face, bool isDown = false) {
    const int light = isDown ? -24 : 24;
    FillGround(dc, Shifted(face, -light), area);
    FillGround(dc, Shifted(face, light), {area.left, area.top, area.right - 1, area.bottom - 1});
    FillGround(dc, isDown ? Shifted(face, -12) : face,
               {area.left + 1, area.top + 1, area.right - 1, area.bottom - 1});
}

// A text that does not fit ends with dots. Those that do are many, and drawn without the system's layout.
void DrawLine(HDC dc, const ListLetters& letters, std::string_view text, RECT place, UINT alignment) {
    const int length = static_cast<int>(text.size());
    const int width = place.right - place.left;
    SIZE extent{};
    if (length > width / letters.widest &&
        (GetTextExtentPoint32A(dc, text.data(), length, &extent) == 0 || extent.cx > width)) {
        DrawTextA(dc, text.data(), length, &place,
                  DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        return;
    }
    SetTextAlign(dc, alignment);
    ExtTextOutA(dc, alignment == TA_RIGHT ? place.right : place.left,
                (place.top + place.bottom - letters.height) / 2, ETO_CLIPPED, &place, text.data(),
                static_cast<UINT>(length), nullptr);
    SetTextAlign(dc, TA_LEFT);
}

} // namespace

ListLetters::ListLetters(HFONT with) : font(with) {
    if (font == nullptr) {
        return;
    }
    const HDC dc = GetDC(nullptr);
    {
        const Selected selected(dc, font);
        TEXTMETRICA metrics{};
        SIZE zero{};
        SIZE letter{};
        GetTextMetricsA(dc, &metrics);
        GetTextExtentPoint32A(dc, "0", 1, &zero);
        GetTextExtentPoint32A(dc, "W", 1, &letter);
        height = std::max<int>(metrics.tmHeight, 1);
        digit = std::max<int>(zero.cx, 1);
        widest = std::max<int>(letter.cx, 1);
    }
    ReleaseDC(nullptr, dc);
}

ListLayout::ListLayout(const RECT& client, const ListLetters& letters, int wantedRows, int digits)
    : numberWidth(digits > 0 ? digits * letters.digit + 2 * PADDING : 0),
      inside{EDGE, EDGE, std::max<LONG>(client.right - EDGE, EDGE),
             std::max<LONG>(client.bottom - EDGE, EDGE)} {
    const int height = inside.bottom - inside.top;
    const int fitting = letters.height + 2 * PADDING;
    rows = std::min(wantedRows > 0 ? wantedRows : std::max(height / fitting, 1), height);
    rowHeight = wantedRows > 0 && rows > 0 ? height / rows : std::min(fitting, height);
}

void ListLayout::AddBar() {
    bar = inside;
    bar.left = std::max(inside.left, inside.right - BAR_WIDTH);
    inside.right = std::max(inside.left, bar.left - EDGE);
}

RECT ListLayout::Row(int row) const {
    const int top = inside.top + row * rowHeight;
    return {inside.left, top, inside.right, top + rowHeight};
}

RECT ListLayout::Button(int row) const {
    RECT area = Row(row);
    area.left = std::min<LONG>(area.left + numberWidth, area.right);
    area.bottom = std::max(area.bottom - 1, area.top); // a gap
    return area;
}

std::optional<int> ListLayout::RowAt(POINT point) const {
    if (rowHeight <= 0 || !PtInRect(&inside, point)) {
        return std::nullopt;
    }
    const int row = (point.y - inside.top) / rowHeight;
    return row < rows ? std::optional(row) : std::nullopt;
}

void DrawListRow(HDC dc, const ListLayout& layout, int row, const ListRowLook& look,
                 const ListLetters& letters, const ListColours& colours) {
    const RECT button = layout.Button(row);
    RECT place = layout.Row(row);
    const COLORREF ground = Shifted(colours.row, -28);
    FillGround(dc, ground, place);
    place.right = button.left - PADDING;
    SetTextColor(dc, colours.text.value_or(ReadableOn(ground)));
    DrawLine(dc, letters, look.number, place, TA_RIGHT);

    const COLORREF face = look.isActive ? colours.lit : colours.row;
    DrawRaised(dc, button, face, look.isDown);
    if (look.isMarked) {
        SetDCBrushColor(dc, MARK_COLOUR);
        FrameRect(dc, &button, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    place = button;
    InflateRect(&place, -PADDING, 0);
    OffsetRect(&place, look.isDown ? 1 : 0, look.isDown ? 1 : 0);
    SetTextColor(dc, colours.text.value_or(ReadableOn(face)));
    DrawLine(dc, letters, look.caption, place, TA_LEFT);
}

void DrawListBar(HDC dc, const RECT& bar, const RECT& thumb) {
    FillGround(dc, TRACK_COLOUR, bar);
    DrawRaised(dc, thumb, THUMB_COLOUR);
}
