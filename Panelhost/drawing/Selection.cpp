// The frames that show which control has the focus or is selected, and what it lacks.

#include "Panelhost/Editing.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Gdi.h"
#include "base/Guard.h"
#include "logic/drawing/PanelColours.h"

#include <algorithm>

namespace {

constexpr COLORREF MISSING_COLOUR = RGB(200, 64, 0);
constexpr COLORREF MISSING_LETTERS = RGB(255, 255, 255);
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

std::string a_MissingPicture(const HOSTINFO* object) {
    const PanelRoot* root = PanelRoot::Above(object);
    return root == nullptr || root->kept.IsEmpty() ? std::string() : Guarded<std::string>({}, [&] {
        return root->kept.ValueRefused(*object, PH_UNREAD_PICTURE);
    });
}

void a_DrawMissingPicture(const HOSTINFO* object, HDC dc, const RECT& frame) {
    const std::string picture = a_MissingPicture(object);
    if (picture.empty()) {
        return;
    }
    const std::size_t name = picture.find_last_of("\\/") + 1; // 0 without a folder
    const Brush brush(CreateSolidBrush(MISSING_COLOUR));
    FrameRect(dc, &frame, brush.get());
    const Selected font(dc, GetStockObject(DEFAULT_GUI_FONT));
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc, &metrics);
    RECT band = frame;
    band.top = std::max(frame.top, frame.bottom - metrics.tmHeight - 1);
    FillRect(dc, &band, brush.get());
    InflateRect(&band, -2, 0);
    const COLORREF letters = SetTextColor(dc, MISSING_LETTERS);
    const int mode = SetBkMode(dc, TRANSPARENT);
    DrawTextA(dc, picture.c_str() + name, -1, &band,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    SetBkMode(dc, mode);
    SetTextColor(dc, letters);
}

void a_DrawSelection(const HOSTINFO* object, HDC dc) {
    if (object == nullptr) {
        return;
    }
    const bool selected = object->mode != 0 && (object->flags & FLAG_SELECTED) != 0;
    const bool focused = object->mode == 0 && (object->flags & FLAG_FOCUS) != 0;
    RECT client;
    if (object->mode != 0 && GetClientRect(object->window, &client)) {
        a_DrawMissingPicture(object, dc, client);
    }
    if (!selected && !focused) {
        return;
    }
    GetClientRect(object->window, &client);
    const COLORREF previous = SetDCBrushColor(dc, logic::PANEL_ACCENT);
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    FrameRect(dc, &client, brush);
    if (selected) {
        DrawHandles(dc, client, brush);
    }
    SetDCBrushColor(dc, previous);
}
