// The frame that shows which control has the focus or is selected.

#include "Panelhost/Hostinfo.h"

namespace {

constexpr COLORREF FOCUS_COLOUR = RGB(255, 176, 0);
constexpr COLORREF SELECTION_COLOUR = RGB(64, 160, 255);
constexpr int HANDLE_SIZE = 5;

void DrawHandles(HDC dc, const RECT& client, HBRUSH brush) {
    const int columns[] = {0, static_cast<int>((client.right - HANDLE_SIZE) / 2),
                           static_cast<int>(client.right - HANDLE_SIZE)};
    const int rows[] = {0, static_cast<int>((client.bottom - HANDLE_SIZE) / 2),
                        static_cast<int>(client.bottom - HANDLE_SIZE)};
    for (const int y : rows) {
        for (const int x : columns) {
            if (x == columns[1] && y == rows[1]) {
                continue; // none in the middle
            }
            const RECT handle{x, y, x + HANDLE_SIZE, y + HANDLE_SIZE};
            FillRect(dc, &handle, brush);
        }
    }
}

} // namespace

void a_DrawSelection(const HOSTINFO* object, HDC dc) {
    if (object == nullptr) {
        return;
    }
    const bool selected = object->mode != 0 && (object->flags & FLAG_SELECTED) != 0;
    const bool focused = object->mode == 0 && (object->flags & FLAG_FOCUS) != 0;
    if (!selected && !focused) {
        return;
    }
    RECT client;
    GetClientRect(object->window, &client);
    const COLORREF previous = SetDCBrushColor(dc, selected ? SELECTION_COLOUR : FOCUS_COLOUR);
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    FrameRect(dc, &client, brush);
    if (selected) {
        DrawHandles(dc, client, brush);
    }
    SetDCBrushColor(dc, previous);
}
