// The children of the forms on panels of the style "dark".

#include "Controls/families/DarkForm.h"

#include "Controls/drawing/DarkParts.h"
#include "Panelhost/Background.h"
#include "base/Gdi.h"

#include <commctrl.h>
#include <string>

namespace {

HFONT FontOf(HWND child) {
    return reinterpret_cast<HFONT>(SendMessageA(child, WM_GETFONT, 0, 0));
}

DarkState StateOf(const FORMPROPERTIES& form, HWND child) {
    return {.isEnabled = IsWindowEnabled(child) != FALSE,
            .isDimmed = form.IsDimmed(form.RowOfChild(child)),
            .isFocused = GetFocus() == child};
}

// What a closed list shows.
std::string FaceText(const FORMPROPERTIES& form, HWND list) {
    const auto item = static_cast<WPARAM>(SendMessageA(list, CB_GETCURSEL, 0, 0));
    const LRESULT length = SendMessageA(list, CB_GETLBTEXTLEN, item, 0);
    if (length < 0) {
        return form.UnlistedText(GetDlgCtrlID(list));
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(list, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string TitleOf(HWND child) {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(child, text, sizeof text);
    return text;
}

void DrawChild(const FORMPROPERTIES& form, FormPart part, HWND child, HDC dc, const RECT& area) {
    DarkState state = StateOf(form, child);
    if (part == FormPart::Toggle) {
        const LRESULT pressed = SendMessageA(child, BM_GETSTATE, 0, 0);
        const bool isOn = SendMessageA(child, BM_GETCHECK, 0, 0) == BST_CHECKED;
        state.isDown = (pressed & BST_PUSHED) != 0;
        state.isDimmed = false; // it is what brings the rest back
        DrawDarkButton(dc, area, isOn ? std::optional<COLORREF>(logic::PANEL_YELLOW) : std::nullopt, state);
        const Selected font(dc, FontOf(child));
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, DarkCaptionColour(isOn, state));
        RECT place = area;
        DrawTextA(dc, TitleOf(child).c_str(), -1, &place,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    } else if (part == FormPart::Spin) {
        state.isFocused = GetFocus() == reinterpret_cast<HWND>(SendMessageA(child, UDM_GETBUDDY, 0, 0));
        DrawDarkArrows(dc, area, PressedArrowOf(child), state);
    } else {
        state.isDown = SendMessageA(child, CB_GETDROPPEDSTATE, 0, 0) != 0;
        DrawDarkList(dc, area, FaceText(form, child), FontOf(child), state);
    }
}

void PaintChild(const FORMPROPERTIES& form, FormPart part, HWND child, HDC target) {
    RECT area{};
    GetClientRect(child, &area);
    const cOffScreen buffer(target, area.right, area.bottom);
    const int saved = SaveDC(buffer.Dc());
    DrawChild(form, part, child, buffer.Dc(), area);
    RestoreDC(buffer.Dc(), saved);
    buffer.Show();
}

// Whether the message makes the system's child paint something at once.
bool ChangesLook(UINT message) {
    switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
    case WM_COMMAND:
    case BM_SETCHECK:
    case BM_SETSTATE:
    case CB_SETCURSEL:
    case CB_SHOWDROPDOWN:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<LRESULT> PaintDarkChild(const FORMPROPERTIES& form, FormPart part, const ChildMessage& of) {
    if (part == FormPart::Label || part == FormPart::Title) {
        return std::nullopt;
    }
    if (part == FormPart::Field) {
        if (of.message == WM_NCPAINT) {
            DrawDarkFrame(of.window, form.HasArrows(form.RowOfChild(of.window)), StateOf(form, of.window));
            return 0;
        }
        return std::nullopt;
    }
    switch (of.message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        if (const HDC dc = BeginPaint(of.window, &paint); dc != nullptr) {
            PaintChild(form, part, of.window, dc);
            EndPaint(of.window, &paint);
        }
        return 0;
    }
    case WM_PRINTCLIENT:
        PaintChild(form, part, of.window, reinterpret_cast<HDC>(of.wParam));
        return 0;
    case WM_NCPAINT:
        return 0;
    case WM_ERASEBKGND:
        return 1;
    default:
        return std::nullopt;
    }
}

DarkChange::DarkChange(FormPart part, const ChildMessage& of) : isField_(part == FormPart::Field) {
    if (!ChangesLook(of.message) || part == FormPart::Label || part == FormPart::Title) {
        return;
    }
    child_ = of.window;
    // The system's button paints itself at once, without being asked to.
    const bool isPainted = part == FormPart::Toggle && of.message != WM_LBUTTONDOWN &&
                           of.message != WM_LBUTTONUP && of.message != WM_CAPTURECHANGED;
    if (isPainted && (GetWindowLongA(child_, GWL_STYLE) & WS_VISIBLE) != 0) {
        isStill_ = true;
        DefWindowProcA(child_, WM_SETREDRAW, FALSE, 0);
    }
}

DarkChange::~DarkChange() {
    if (child_ == nullptr || !IsWindow(child_)) {
        return;
    }
    if (isStill_) {
        DefWindowProcA(child_, WM_SETREDRAW, TRUE, 0);
    }
    const UINT frame = isField_ ? RDW_FRAME : 0;
    RedrawWindow(child_, nullptr, nullptr, RDW_INVALIDATE | frame);
    if (const HWND beside = GetWindow(child_, GW_HWNDNEXT); isField_ && beside != nullptr) {
        InvalidateRect(beside, nullptr, FALSE);
    }
}

void DrawDarkItem(const FORMPROPERTIES& form, const DRAWITEMSTRUCT& item, const char* text) {
    const HDC dc = item.hDC;
    const bool isDropped = (item.itemState & ODS_COMBOBOXEDIT) == 0;
    const bool isMarked = isDropped && (item.itemState & (ODS_SELECTED | ODS_FOCUS)) != 0;
    const bool isEnabled = (item.itemState & ODS_DISABLED) == 0;
    const DarkState state{.isEnabled = isEnabled};
    SetDCBrushColor(dc, isMarked ? logic::PANEL_ACCENT : logic::PANEL_WELL);
    FillRect(dc, &item.rcItem, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, isMarked ? logic::PANEL_WELL : state.TextColour());
    TextOutA(dc, item.rcItem.left + 2, item.rcItem.top + 2, text, lstrlenA(text));
    const bool isListed = item.itemID != static_cast<UINT>(-1);
    if (!isListed || !isDropped) {
        return;
    }
    const auto list = static_cast<int>(item.CtlID);
    if (isMarked) {
        form.DrawPicture(list, static_cast<int>(item.itemID), dc, item.rcItem);
        return;
    }
    // Pictures are dark on bright.
    const RECT place{0, 0, item.rcItem.right - item.rcItem.left, item.rcItem.bottom - item.rcItem.top};
    const Bitmap pixels(CreatePixels(place.right, place.bottom));
    const MemoryDc picture(pixels.get());
    FillRect(picture.Get(), &place, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    form.DrawPicture(list, static_cast<int>(item.itemID), picture.Get(), place);
    BitBlt(dc, item.rcItem.left, item.rcItem.top, place.right, place.bottom, picture.Get(), 0, 0, MERGEPAINT);
}
