// How the start page looks.
#include "Panel/common/VersionText.h"
#include "Panel/start/StartScreen.h"
#include "Panel/theme/Theme.h"
#include "Panelhost/Bitmap.h"

#include <algorithm>

namespace {

constexpr int NAME_HEIGHT = 44; // of name and folder below a picture
constexpr int PADDING = 8;
constexpr int ROUND = 8;

struct PageColours {
    COLORREF ground, card, hot, edge, well, text, dimText, accent, refused;
};

// Steps between ground and text, so that they hold in each theme.
PageColours ColoursOfPage() {
    const ThemeColours& theme = Colours();
    const auto between = [&](int percent) { // of the way from the ground to the text
        const auto mix = [&](int from, int to) { return from + (to - from) * percent / 100; };
        return RGB(mix(GetRValue(theme.field), GetRValue(theme.text)),
                   mix(GetGValue(theme.field), GetGValue(theme.text)),
                   mix(GetBValue(theme.field), GetBValue(theme.text)));
    };
    return {.ground = theme.field,
            .card = between(3),
            .hot = between(8),
            .edge = between(18),
            .well = between(10),
            .text = theme.text,
            .dimText = between(60),
            .accent = theme.accent,
            .refused = theme.refusedText};
}

void FillArea(HDC dc, const RECT& place, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void FillRounded(HDC dc, const RECT& place, COLORREF colour, COLORREF edge) {
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(DC_PEN));
    SetDCBrushColor(dc, colour);
    SetDCPenColor(dc, edge);
    RoundRect(dc, place.left, place.top, place.right, place.bottom, ROUND, ROUND);
}

void Write(HDC dc, const std::wstring& text, RECT place, HFONT font, COLORREF colour, UINT format = 0) {
    const Selected selected(dc, font);
    SetTextColor(dc, colour);
    DrawTextW(dc, text.c_str(), -1, &place, format | DT_NOPREFIX | DT_SINGLELINE);
}

} // namespace

void StartScreen::Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    const PageColours colours = ColoursOfPage();
    FillArea(dc, paint.rcPaint, colours.ground);
    SetBkMode(dc, TRANSPARENT);
    SetViewportOrgEx(dc, 0, -position_, nullptr);
    const auto isThere = [&](Kind kind) {
        return std::any_of(items_.begin(), items_.end(), [&](const Item& item) { return item.kind == kind; });
    };
    if (!items_.empty()) {
        const RECT& first = items_.front().place;
        Write(dc, L"Panel", {first.left, 24, first.right, 64}, titleFont_.get(), colours.text, DT_VCENTER);
        const std::string version = VersionText();
        Write(dc, L"Version " + std::wstring(version.begin(), version.end()),
              {first.left, 66, first.right, 86}, font_, colours.dimText, DT_END_ELLIPSIS);
    }
    Write(dc, L"Recent", recentHeading_, headingFont_.get(), colours.text);
    if (!isThere(Kind::Recent)) {
        RECT place = recentHeading_;
        OffsetRect(&place, 0, recentHeading_.bottom - recentHeading_.top);
        Write(dc, L"The panels that you open will be listed here.", place, font_, colours.dimText);
    }
    if (isThere(Kind::Demo)) {
        Write(dc, L"Demo panels", demoHeading_, headingFont_.get(), colours.text);
    }
    EndPaint(Handle(), &paint);
}

void StartScreen::Draw(const DRAWITEMSTRUCT& draw) {
    const Item* item = ItemOf(draw.hwndItem);
    const int width = draw.rcItem.right - draw.rcItem.left;
    const int height = draw.rcItem.bottom - draw.rcItem.top;
    const Bitmap bitmap(item ? CreatePixels(width, height) : nullptr);
    if (!bitmap) {
        return;
    }
    const MemoryDc memory(bitmap.get());
    const HDC dc = memory.Get();
    const RECT place{0, 0, width, height};
    const PageColours colours = ColoursOfPage();
    FillArea(dc, place, colours.ground);
    SetBkMode(dc, TRANSPARENT);
    const bool isHot = draw.hwndItem == hot_ || (draw.itemState & ODS_SELECTED) != 0;
    if (item->kind == Kind::New || item->kind == Kind::Open) {
        DrawCommand(dc, place, *item, isHot);
    } else {
        DrawCard(dc, place, *item, isHot);
    }
    if ((draw.itemState & ODS_FOCUS) != 0) {
        const Selected brush(dc, GetStockObject(NULL_BRUSH));
        const Selected pen(dc, GetStockObject(DC_PEN));
        SetDCPenColor(dc, item->kind == Kind::New ? colours.text : colours.accent);
        RoundRect(dc, 0, 0, width, height, ROUND, ROUND);
        RoundRect(dc, 1, 1, width - 1, height - 1, ROUND, ROUND);
    }
    BitBlt(draw.hDC, draw.rcItem.left, draw.rcItem.top, width, height, dc, 0, 0, SRCCOPY);
}

void StartScreen::DrawCommand(HDC dc, const RECT& place, const Item& item, bool isHot) const {
    const PageColours colours = ColoursOfPage();
    const ThemeColours& theme = Colours();
    const bool isFirst = item.kind == Kind::New;
    const COLORREF ground = isFirst ? theme.selection : isHot ? colours.hot : colours.card;
    const COLORREF text = isFirst ? theme.selectionText : colours.text;
    FillRounded(dc, place, ground, isHot ? colours.text : isFirst ? ground : colours.edge);
    RECT line = place;
    InflateRect(&line, -2 * PADDING, 0);
    Write(dc, item.name, line, nameFont_.get(), text, DT_VCENTER);
    Write(dc, item.note, line, font_, isFirst ? text : colours.dimText, DT_VCENTER | DT_RIGHT);
}

void StartScreen::DrawCard(HDC dc, const RECT& place, const Item& item, bool isHot) const {
    const PageColours colours = ColoursOfPage();
    FillRounded(dc, place, isHot ? colours.hot : colours.card, isHot ? colours.accent : colours.edge);
    const RECT well{PADDING, PADDING, place.right - PADDING, place.bottom - NAME_HEIGHT};
    DrawPicture(dc, well, item);
    const LONG middle = well.bottom + (place.bottom - well.bottom) / 2;
    const RECT name{well.left, well.bottom + 4, well.right, middle};
    const RECT note{well.left, middle, well.right, place.bottom - 4};
    Write(dc, item.name, name, nameFont_.get(), item.isGone ? colours.dimText : colours.text,
          DT_END_ELLIPSIS | DT_VCENTER);
    Write(dc, item.note, note, font_, colours.dimText, DT_PATH_ELLIPSIS | DT_VCENTER);
}

void StartScreen::DrawPicture(HDC dc, const RECT& well, const Item& item) const {
    const PageColours colours = ColoursOfPage();
    FillArea(dc, well, colours.well);
    const int roomX = well.right - well.left;
    const int roomY = well.bottom - well.top;
    if (item.isGone) {
        Write(dc, L"Not found", well, nameFont_.get(), colours.refused, DT_CENTER | DT_VCENTER);
    } else if (item.picture) {
        const double scale = std::min({1.0, static_cast<double>(roomX) / item.picture->Width(),
                                       static_cast<double>(roomY) / item.picture->Height()});
        const int width = std::max(1, static_cast<int>(item.picture->Width() * scale));
        const int height = std::max(1, static_cast<int>(item.picture->Height() * scale));
        SetStretchBltMode(dc, HALFTONE);
        SetBrushOrgEx(dc, 0, 0, nullptr);
        StretchBlt(dc, well.left + (roomX - width) / 2, well.top + (roomY - height) / 2, width, height,
                   item.picture->Dc(), 0, 0, item.picture->Width(), item.picture->Height(), SRCCOPY);
    } else {
        Write(dc, item.name.substr(0, 1), well, titleFont_.get(), colours.dimText, DT_CENTER | DT_VCENTER);
    }
}
