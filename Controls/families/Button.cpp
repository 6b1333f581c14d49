#include "Controls/families/Button.h"

#include "Controls/drawing/Shading.h"
#include "Controls/families/DarkStrip.h"
#include "base/Guard.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstdio>
#include <oleacc.h>
#include <shellapi.h>

namespace {

constexpr LPARAM REPEATED = 1 << 30; // of a key that was down already

void Press(BUTTONPROPERTIES& button, WPARAM keys) {
    SetFocus(button.window);
    if (IsPanelClick(button, keys)) {
        ForwardToPanel(button, WM_LBUTTONDOWN, keys);
    } else if (!button.IsHeldByKey()) {
        button.Hold(0);
    }
}

void Release(BUTTONPROPERTIES& button, WPARAM keys) {
    const bool held = GetCapture() == button.window && !button.IsHeldByKey();
    if (IsPanelClick(button, keys)) {
        if (held) { // it became the panel's while it was held: that cancels the click
            ReleaseCapture();
        }
        ForwardToPanel(button, WM_LBUTTONUP, keys);
    } else if (held) {
        button.ReleaseHold();
    }
}

// Whether the key is one of the button's.
bool KeyDown(BUTTONPROPERTIES& button, WPARAM key, LPARAM lParam) {
    const auto use = button.UseOf(key);
    if (use == BUTTONPROPERTIES::KeyUse::None) {
        return false;
    }
    if ((lParam & REPEATED) == 0 && !button.dragging && button.Hold(key) &&
        use == BUTTONPROPERTIES::KeyUse::Click) {
        button.ReleaseHold();
    }
    return true;
}

// What the button has to see before all others do.
void Watch(BUTTONPROPERTIES& button, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KILLFOCUS:
        if (button.IsHeldByKey()) {
            button.EndHold();
        }
        break;
    case WM_SHOWWINDOW:
        if (wParam == FALSE) {
            button.LetGo(false);
        }
        break;
    case WM_WINDOWPOSCHANGED:
        if ((reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_HIDEWINDOW) != 0) {
            button.LetGo(false);
        }
        break;
    case WM_TIMER:
        if (button.dragging && button.wasVisible && IsWindowVisible(button.window) == FALSE) {
            button.LetGo(false); // with what it is a part of
        }
        break;
    default:
        break;
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

std::optional<COLORREF> BUTTONPROPERTIES::DarkLight() const {
    return face.Get() == nullptr && IsDark() ? std::optional<COLORREF>(logic::PANEL_BLUE) : ShownLight(*this);
}

void BUTTONPROPERTIES::DrawFace(HDC dc, const RECT& client, int frame, bool lit) const {
    if (const auto light = DarkLight()) {
        DrawDarkButton(dc, client, lit ? light : std::nullopt, {.isDown = IsHeldDown()});
        if (notEqual) {
            DrawDarkMark(dc, client);
        }
        return;
    }
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

// Black, which new buttons have, is not to be read on it while it is off.
void BUTTONPROPERTIES::DrawDarkCaption(HDC dc, RECT client, bool lit, COLORREF colour) const {
    constexpr int LOW = 16; // pixels high
    const COLORREF shown = colour == 0 ? DarkCaptionColour(lit, {}) : colour;
    if (IsStripFont(*this, font)) {
        fitting_.Draw(dc, caption, client, client.bottom - client.top > LOW ? 7 : 6, shown);
        return;
    }
    SelectObject(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, shown);
    DrawTextA(dc, caption.c_str(), -1, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void BUTTONPROPERTIES::DrawCaption(HDC dc, RECT client, bool down, bool lit, COLORREF colour) const {
    if (caption.empty()) {
        return;
    }
    if (DarkLight()) {
        DrawDarkCaption(dc, client, lit, colour);
        return;
    }
    if (down) {
        OffsetRect(&client, 1, 1);
    }
    SelectObject(dc, font.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    DrawTextA(dc, caption.c_str(), -1, &client,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

// A click

void BUTTONPROPERTIES::SetDefaults() {
    interval = 1000;
    DragAcceptFiles(window, TRUE);
}

// Called by the panel itself, into which no exception may go, and not through the window.
LRESULT BUTTONPROPERTIES::OnSystem(WPARAM event, LPARAM lParam) {
    const Held held(*this);
    if (event == SYSTEM_EDITING || event == SYSTEM_CLOSING) {
        Guarded([&] { LetGo(event == SYSTEM_CLOSING); });
    }
    return CONTROLPROPERTIES::OnSystem(event, lParam);
}

bool BUTTONPROPERTIES::Hold(WPARAM key) {
    ShowHeldDown(true);
    dragging = false; // a capture that it has already is not lost
    SetCapture(window);
    if (GetCapture() != window) { // who lost the focus or the capture took it away
        return false;
    }
    heldKey = key;
    wasVisible = IsWindowVisible(window) != FALSE;
    dragging = true;
    Pressed();
    return dragging;
}

void BUTTONPROPERTIES::ReleaseHold() {
    dragging = false; // first, so that the loss of the capture is no cancellation
    ReleaseCapture();
    Released();
}

void BUTTONPROPERTIES::EndHold() {
    if (dragging) {
        ReleaseCapture();
    }
}

void BUTTONPROPERTIES::ShowHeldDown(bool down) {
    SetHeldDown(down);
    Redraw();
    UpdateWindow(window);
}

void BUTTONPROPERTIES::MoveDrag(POINT) {
    if (IsHeldByKey()) {
        return;
    }
    POINT cursor;
    GetCursorPos(&cursor);
    const bool isOver = WindowFromPoint(cursor) == window;
    if (isOver != IsHeldDown()) {
        ShowHeldDown(isOver);
    }
}

LONG BUTTONPROPERTIES::SpokenState() const {
    return IsHeldDown() ? STATE_SYSTEM_PRESSED : 0;
}

void BUTTONPROPERTIES::CancelDrag() {
    if (IsHeldDown()) {
        SetHeldDown(false);
        Redraw();
    }
}

// Whoever gets the value may lead to another one being sent, which is then the newer one.
void BUTTONPROPERTIES::Send(int value) {
    const Held held(*this);
    const unsigned sending = ++sendings_;
    for (const REQUESTITEM& item : ItemsOf(requests)) {
        if (sendings_ != sending) {
            return;
        }
        int copy = value;
        a_SendToItem(item, COMMAND_SET, DATATYPE_INTEGER, &copy);
    }
}

LRESULT CALLBACK ButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& button = *PropertiesOf<BUTTONPROPERTIES>(window);
    Watch(button, message, wParam, lParam);
    switch (message) {
    case WM_LBUTTONDOWN:
        Press(button, wParam);
        return 0;
    case WM_LBUTTONUP:
        Release(button, wParam);
        return 0;
    case WM_KEYDOWN:
        if (PassInput(button, message, wParam, lParam) || KeyDown(button, wParam, lParam)) {
            return 0;
        }
        break;
    case WM_KEYUP:
        if (button.IsHeldByKey() && button.heldKey == wParam) {
            button.ReleaseHold();
            return 0;
        }
        break;
    case WM_GETDLGCODE: // a dialog would take Enter for its own button
        if (const auto* key = reinterpret_cast<const MSG*>(lParam);
            key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_RETURN) {
            return DLGC_WANTARROWS | DLGC_WANTMESSAGE;
        }
        break;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}
