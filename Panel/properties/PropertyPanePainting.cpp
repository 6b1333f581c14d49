// How the property pane looks.

#include "Panel/properties/PropertyPane.h"

#include "Panel/theme/Theme.h"
#include "logic/text/Numbers.h"

#include <windowsx.h>

#include <algorithm>

namespace {

constexpr int MARGIN = 6;
constexpr int TITLE_HEIGHT = 24;
constexpr int HELP_MARGIN = 8;
constexpr int SWATCH = 14;
constexpr int CHECK = 13;

void DrawString(HDC dc, const std::string& text, RECT place, UINT format) {
    DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &place, format | DT_NOPREFIX);
}

constexpr UINT ONE_LINE = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;

} // namespace

void PropertyPane::Paint() const {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT client;
    GetClientRect(Handle(), &client);
    SetBkMode(dc, TRANSPARENT);
    FillThemed(dc, {0, 0, 1, client.bottom}, Colours().edge);
    {
        const Selected font(dc, bold_.get());
        SetTextColor(dc, Colours().text);
        DrawString(dc, title_, {MARGIN + 4, 0, client.right - MARGIN, TITLE_HEIGHT}, ONE_LINE);
    }
    const int line = SelectedLine();
    if (const PropertyRow* row = RowAt(line)) {
        RECT help{MARGIN + 4, HelpTop() + HELP_MARGIN / 2, client.right - MARGIN, client.bottom - 2};
        const bool isRefused = RefusalOf(*row) != nullptr;
        SetTextColor(dc, isRefused ? Colours().refusedText : Colours().text);
        TEXTMETRICA metrics{};
        {
            const Selected font(dc, bold_.get());
            GetTextMetricsA(dc, &metrics);
            DrawString(dc, row->name, help, DT_SINGLELINE | DT_END_ELLIPSIS);
        }
        help.top += metrics.tmHeight + 2;
        const Selected font(dc, font_);
        DrawString(dc, NoteOf(line), help, DT_WORDBREAK | DT_END_ELLIPSIS | DT_EDITCONTROL);
    }
    EndPaint(Handle(), &paint);
}

LRESULT PropertyPane::DrawPart(const NMLVCUSTOMDRAW& draw) const {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        DrawLine(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
        return CDRF_SKIPDEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

// Drawn here, because the list view knows neither headings nor what stands beside a text.
void PropertyPane::DrawLine(HDC dc, int line) const {
    if (static_cast<std::size_t>(line) >= lines_.size()) {
        return;
    }
    RECT value = ValueCell(line);
    RECT name{0, value.top, value.left, value.bottom};
    const COLORREF rule = Colours().rule;
    SetBkMode(dc, TRANSPARENT);
    const PropertyRow* row = RowAt(line);
    if (!row) {
        FillThemed(dc, {0, value.top, value.right, value.bottom}, rule);
        const Selected font(dc, bold_.get());
        SetTextColor(dc, Colours().text);
        name.left = MARGIN;
        name.right = value.right;
        return DrawString(dc, GroupName(lines_[static_cast<std::size_t>(line)].group), name, ONE_LINE);
    }
    const bool isSelected = line == SelectedLine();
    const bool isRefused = RefusalOf(*row) != nullptr;
    const bool isLit = isSelected && HasFocus();
    FillThemed(dc, name, isLit ? Colours().selection : isSelected ? rule : Colours().field);
    FillThemed(dc, value, isRefused ? Colours().refusedGround : Colours().field);
    FillThemed(dc, {0, value.bottom - 1, value.right, value.bottom}, rule);
    FillThemed(dc, {value.left, value.top, value.left + 1, value.bottom}, rule);
    const Selected font(dc, font_);
    SetTextColor(dc, isLit ? Colours().selectionText : Colours().text);
    name.left = 2 * MARGIN;
    DrawString(dc, row->name, name, ONE_LINE);
    SetTextColor(dc, isRefused                      ? Colours().refusedText
                     : row->isFixed || row->isMixed ? Colours().dimText
                                                    : Colours().text);
    value.left += MARGIN;
    value.bottom -= 1;
    DrawValue(dc, *row, value);
}

void PropertyPane::DrawValue(HDC dc, const PropertyRow& row, RECT cell) const {
    const LONG middle = (cell.top + cell.bottom) / 2;
    const bool isAsHeld = RefusalOf(row) == nullptr && !row.isMixed;
    if (row.IsSwitch() && RefusalOf(row) == nullptr) {
        RECT box{cell.left, middle - CHECK / 2, cell.left + CHECK, middle - CHECK / 2 + CHECK};
        const bool isOn = row.value == row.words.substr(row.words.find(',') + 1);
        const UINT kind =
            row.isMixed ? DFCS_BUTTON3STATE | DFCS_CHECKED : DFCS_BUTTONCHECK | (isOn ? DFCS_CHECKED : 0);
        DrawFrameControl(dc, &box, DFC_BUTTON, kind);
        cell.left += CHECK + MARGIN;
    }
    const auto colour =
        row.kind == KeywordKind::Colour || (row.kind == KeywordKind::Picture && row.value.starts_with("0x"))
            ? logic::ParseWholeHex(row.value)
            : std::nullopt;
    if (isAsHeld && colour) {
        const RECT box{cell.left, middle - SWATCH / 2, cell.left + SWATCH, middle - SWATCH / 2 + SWATCH};
        FillThemed(dc, box, static_cast<COLORREF>(*colour & 0xFFFFFF));
        SetDCBrushColor(dc, Colours().edge);
        FrameRect(dc, &box, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        cell.left += SWATCH + MARGIN;
    }
    DrawString(dc, ShownText(row), cell, ONE_LINE);
}
