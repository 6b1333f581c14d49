#include "Controls/families/Button.h"

#include "Controls/drawing/BitmapParts.h"
#include "Controls/drawing/Shading.h"
#include "Controls/framework/Keywords.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace {

BUTTONPROPERTIES& Button(HOSTINFO* object) {
    return *static_cast<BUTTONPROPERTIES*>(object);
}

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

// Keyword handlers

int CaptionKeyword(VALUERECORD* record, HOSTINFO* object) {
    const int answer = TextKeyword<&BUTTONPROPERTIES::caption>(record, object);
    if (record->command == COMMAND_SET && answer != 0) {
        Button(object).Redraw();
    }
    return answer;
}

int ButtonPropertiesKeyword(VALUERECORD* record, HOSTINFO* object) {
    BUTTONPROPERTIES& button = Button(object);
    if (record->command == COMMAND_GET) {
        const std::string text = std::to_string(button.onValue) + "," + std::to_string(button.offValue);
        return a_AnswerText(record, text.c_str());
    }
    const auto text = TextToSet(record);
    std::int32_t values[] = {button.onValue, button.offValue};
    if (!text || !logic::ParseIntegers(*text, values)) {
        return 0;
    }
    button.onValue = values[0];
    button.offValue = values[1];
    return 1;
}

int TextColorKeyword(VALUERECORD* record, HOSTINFO* object) {
    BUTTONPROPERTIES& button = Button(object);
    if (record->command == COMMAND_GET) {
        char text[32];
        std::snprintf(text, sizeof text, "0x%08x,0x%08x", static_cast<unsigned>(button.textColorReleased),
                      static_cast<unsigned>(button.textColorPressed));
        return a_AnswerText(record, text);
    }
    const auto text = TextToSet(record);
    const auto fields = logic::SplitFields(text ? std::string_view(*text) : "", ',');
    if (fields.size() != 2) {
        return 0;
    }
    const auto released = logic::ParseWholeHex(fields[0]);
    const auto pressed = logic::ParseWholeHex(fields[1]);
    if (!released || !pressed || *released > HIGHEST_COLOUR || *pressed > HIGHEST_COLOUR) {
        return 0;
    }
    button.textColorReleased = *released;
    button.textColorPressed = *pressed;
    button.Redraw();
    return 1;
}

// Appearance

int BUTTONPROPERTIES::PreferredWidth() const {
    return image.Get() != nullptr ? BitmapParts(*image.Get(), FrameCount()).Width()
                                  : CONTROLPROPERTIES::PreferredWidth();
}

void BUTTONPROPERTIES::BitmapChanged() {
    if (image.Get() != nullptr) {
        const BitmapParts frames(*image.Get(), FrameCount());
        Resize(frames.Width(), frames.Height());
    }
    Redraw();
}

void BUTTONPROPERTIES::FontChanged() {
    SendMessageA(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    if (!caption.empty()) {
        Redraw();
    }
}

void BUTTONPROPERTIES::DrawFace(HDC dc, const RECT& client, int frame, bool lit) const {
    if (image.Get() != nullptr) {
        const BitmapParts frames(*image.Get(), FrameCount());
        // Of two frames, a switch that is on would begin behind the last one, so it is shown as one that is
        // held down.
        frames.Draw(dc, std::min(frame, FrameCount() - 1), {0, 0, frames.Width(), frames.Height()});
        return;
    }
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    SelectObject(dc, GetStockObject(BLACK_PEN));
    Rectangle(dc, client.left, client.top, client.right, client.bottom);
    RECT face = client;
    InflateRect(&face, -1, -1);
    if (lit) {
        DrawShadedColumns(dc, face, BRIGHT_BAR_COLOUR);
    } else {
        DrawShadedRows(dc, face, BAR_COLOUR);
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

bool BUTTONPROPERTIES::IsConfirmed(const std::string& question) const {
    const std::string title = caption; // it may be replaced, or go, while the question is open
    return MessageBoxA(window, logic::QuestionText(question).c_str(), title.c_str(),
                       MB_YESNO | MB_DEFBUTTON2) == IDYES;
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
