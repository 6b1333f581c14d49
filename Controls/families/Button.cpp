#include "Controls/families/Button.h"

#include "Controls/drawing/Shading.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstdio>

namespace {

void Press(BUTTONPROPERTIES& button, WPARAM keys) {
    SetFocus(button.window);
    if (IsPanelClick(button, keys)) {
        ForwardToPanel(button, WM_LBUTTONDOWN, keys);
        return;
    }
    button.ShowHeldDown(true);
    button.dragging = false; // a capture that it has already is not lost
    SetCapture(button.window);
    if (GetCapture() == button.window) { // unless who lost the focus or the capture took it away
        button.dragging = true;
        button.Pressed();
    }
}

void Release(BUTTONPROPERTIES& button, WPARAM keys) {
    const bool held = GetCapture() == button.window;
    if (IsPanelClick(button, keys)) {
        if (held) { // it became the panel's while it was held: that cancels the click
            ReleaseCapture();
        }
        ForwardToPanel(button, WM_LBUTTONUP, keys);
        return;
    }
    if (held) {
        button.dragging = false; // first, so that the loss of the capture is no cancellation
        ReleaseCapture();
        button.Released();
    }
}

} // namespace

// Values of the keywords

std::string BUTTONPROPERTIES::ValuesText() const {
    return std::to_string(onValue) + "," + std::to_string(offValue);
}

bool BUTTONPROPERTIES::SetValues(const std::string& text) {
    std::int32_t values[] = {onValue, offValue};
    if (!logic::ParseIntegers(text, values)) {
        return false;
    }
    onValue = values[0];
    offValue = values[1];
    return true;
}

std::string BUTTONPROPERTIES::ColoursText() const {
    char text[32];
    std::snprintf(text, sizeof text, "0x%08x,0x%08x", static_cast<unsigned>(textColorReleased),
                  static_cast<unsigned>(textColorPressed));
    return text;
}

bool BUTTONPROPERTIES::SetColours(const std::string& text) {
    const auto fields = logic::SplitFields(text, ',');
    if (fields.size() != 2) {
        return false;
    }
    const auto released = logic::ParseWholeHex(fields[0]);
    const auto pressed = logic::ParseWholeHex(fields[1]);
    if (!released || !pressed || *released > HIGHEST_COLOUR || *pressed > HIGHEST_COLOUR) {
        return false;
    }
    textColorReleased = *released;
    textColorPressed = *pressed;
    Redraw();
    return true;
}

// Appearance

void BUTTONPROPERTIES::FontChanged() {
    SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    if (!caption.empty()) {
        Redraw();
    }
}

void BUTTONPROPERTIES::DrawFace(HDC dc, const RECT& client, int frame, bool lit) const {
    if (face.Get() != nullptr) {
        const BitmapParts frames = Frames();
        // Of two frames, a switch that is on would begin behind the last one, so it is shown as one that is
        // held down.
        frames.Draw(dc, std::min(frame, FrameCount() - 1), {0, 0, frames.Width(), frames.Height()});
        return;
    }
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    SelectObject(dc, GetStockObject(BLACK_PEN));
    Rectangle(dc, client.left, client.top, client.right, client.bottom);
    RECT inside = client;
    InflateRect(&inside, -1, -1);
    if (lit) {
        DrawShadedColumns(dc, inside, BRIGHT_BAR_COLOUR);
    } else {
        DrawShadedRows(dc, inside, BAR_COLOUR);
    }
}

void BUTTONPROPERTIES::DrawCaption(HDC dc, RECT client, bool down, COLORREF colour) const {
    if (caption.empty()) {
        return;
    }
    if (down) {
        OffsetRect(&client, 1, 1);
    }
    SelectObject(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    DrawTextA(dc, caption.c_str(), -1, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

// A click

void BUTTONPROPERTIES::ShowHeldDown(bool down) {
    SetHeldDown(down);
    Redraw();
    UpdateWindow(window);
}

void BUTTONPROPERTIES::MoveDrag(POINT) {
    POINT cursor;
    GetCursorPos(&cursor);
    const bool isOver = WindowFromPoint(cursor) == window;
    if (isOver != IsHeldDown()) {
        ShowHeldDown(isOver);
    }
}

void BUTTONPROPERTIES::CancelDrag() {
    if (IsHeldDown()) {
        SetHeldDown(false);
        Redraw();
    }
}

void BUTTONPROPERTIES::Send(int value) {
    a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr);
}

LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& button = *PropertiesOf<BUTTONPROPERTIES>(window);
    switch (message) {
    case WM_LBUTTONDOWN:
        Press(button, wParam);
        return 0;
    case WM_LBUTTONUP:
        Release(button, wParam);
        return 0;
    default:
        return CommonProc(window, message, wParam, lParam);
    }
}
