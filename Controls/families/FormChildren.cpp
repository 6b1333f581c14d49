// The children of the forms: what they are made of, and what they do with keys and with presses that
// are the panel's.

#include "Controls/families/FormChildren.h"

#include "Controls/families/DarkForm.h"
#include "Controls/families/SystemChild.h"
#include "base/Clipboard.h"

#include <algorithm>
#include <commctrl.h>
#include <string>

namespace {

constexpr int CTRL_ENTER = '\n';
constexpr int SELECT_ALL = 1; // the character of Ctrl and A
constexpr int CLOSED_LIST_HEIGHT = 24;

struct PartClass {
    const char* className;
    DWORD style;
    DWORD extendedStyle;
};

PartClass ClassOf(FormPart part) {
    switch (part) {
    case FormPart::Label:
        return {"STATIC", SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX, 0};
    case FormPart::Title:
        return {"STATIC", SS_CENTER | SS_NOTIFY | SS_NOPREFIX, 0};
    case FormPart::List:
        return {"COMBOBOX", CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL, 0};
    case FormPart::TextList:
        return {"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, 0};
    case FormPart::Field:
        return {"EDIT", ES_MULTILINE | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case FormPart::Spin:
        return {UPDOWN_CLASSA, UDS_ALIGNRIGHT | UDS_AUTOBUDDY | UDS_ARROWKEYS | UDS_HOTTRACK, 0};
    default:
        return {"BUTTON", BS_AUTOCHECKBOX | BS_PUSHLIKE, 0};
    }
}

bool IsTabPress(const MSG* key) {
    return key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_TAB;
}

// What a child wants of the keyboard. The Tab that leaves the panel is left to whoever moves the focus there.
LRESULT WantedKeys(FORMPROPERTIES& form, HWND child, LPARAM lParam, LRESULT usual, bool isField) {
    const auto* key = reinterpret_cast<const MSG*>(lParam);
    if (IsTabPress(key)) {
        const bool stays = form.MoveFocus(child, GetKeyState(VK_SHIFT) < 0, true);
        return stays ? usual | DLGC_WANTTAB : usual & ~(DLGC_WANTTAB | DLGC_WANTALLKEYS);
    }
    const bool isAnswer = key != nullptr && isField && (key->wParam == VK_RETURN || key->wParam == VK_ESCAPE);
    return isAnswer ? usual | DLGC_WANTMESSAGE : usual;
}

// True when the key is done with.
bool KeyDown(FORMPROPERTIES& form, HWND child, WPARAM key, bool isField) {
    if (key == VK_TAB) {
        const bool backwards = GetKeyState(VK_SHIFT) < 0;
        if (GetKeyState(VK_CONTROL) >= 0 && !form.MoveFocus(child, backwards, false)) {
            form.LeaveByTab(backwards);
        }
        return true;
    }
    if (isField && (key == VK_RETURN || key == VK_ESCAPE)) {
        NotifyForm(child, key == VK_RETURN ? FIELD_ENTER : FIELD_ESCAPE);
        return true;
    }
    return false;
}

// The first line of what is on the clipboard: a field has but one.
void PasteLine(HWND field) {
    std::string line = Clipboard(field).GetText();
    line.resize(std::min({line.size(), line.find_first_of("\r\n"), std::size_t{TEXT_SIZE - 1}}));
    SendMessageA(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(line.c_str()));
}

LRESULT HandleChild(FORMPROPERTIES& form, const ChildMessage& of, bool isField) {
    const auto& [child, system, message, wParam, lParam] = of;
    // The wheel reaches a child that it is over without the focus, and would choose another item of a list.
    const bool isOperation = (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_MOUSEWHEEL;
    if (PassPress(form, of) || (isOperation && form.mode != 0)) {
        return 0;
    }
    switch (message) {
    case WM_GETDLGCODE:
        return WantedKeys(form, child, lParam, of.SystemDoes(), isField);
    case WM_KEYDOWN:
        if (KeyDown(form, child, wParam, isField)) {
            return 0;
        }
        break;
    case WM_CHAR:
        if (isField && wParam == SELECT_ALL) {
            SendMessageA(child, EM_SETSEL, 0, -1);
            return 0;
        }
        if (wParam == VK_TAB ||
            (isField && (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == CTRL_ENTER))) {
            return 0;
        }
        break;
    case WM_PASTE:
        if (isField) {
            PasteLine(child);
            return 0;
        }
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: // in the middle of it the system's list takes the focus, and must not end there
        if ((GetWindowLongA(child, GWL_STYLE) & WS_TABSTOP) != 0 && GetFocus() != child) {
            SetFocus(child);
            if (!IsWindow(child)) {
                return 0;
            }
        }
        break;
    case WM_SETFOCUS:
        form.ChildFocused(GetDlgCtrlID(child));
        break;
    case WM_KILLFOCUS: {
        const LRESULT result = of.SystemDoes();
        if (isField && IsWindow(child)) {
            NotifyForm(child, FIELD_LEFT);
        }
        return result;
    }
    default:
        break;
    }
    return of.SystemDoes();
}

template <FormPart part>
LRESULT HandlePart(FORMPROPERTIES& form, const ChildMessage& of) {
    constexpr bool isField = part == FormPart::Field;
    if (!form.IsDark()) {
        return HandleChild(form, of, isField);
    }
    if (const auto answer = PaintDarkChild(form, part, of)) {
        return *answer;
    }
    const DarkChange change(part, of);
    return HandleChild(form, of, isField);
}
template <FormPart part>
using Child = SystemChild<HandlePart<part>>;

void Subclass(HWND child, FormPart part) {
    switch (part) {
    case FormPart::Label:
        return Child<FormPart::Label>::Subclass(child);
    case FormPart::Title:
        return Child<FormPart::Title>::Subclass(child);
    case FormPart::List:
        return Child<FormPart::List>::Subclass(child);
    case FormPart::TextList:
        return Child<FormPart::TextList>::Subclass(child);
    case FormPart::Field:
        return Child<FormPart::Field>::Subclass(child);
    case FormPart::Spin:
        return Child<FormPart::Spin>::Subclass(child);
    case FormPart::Toggle:
        return Child<FormPart::Toggle>::Subclass(child);
    }
}

// What the frame adds depends on the system. Each list is begun with what was right for the one before:
// setting a height twice takes longer than all the rest of making it.
void SetClosedHeight(HWND list) {
    static int inside = FORM_ITEM_HEIGHT;
    SendMessageA(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), inside);
    RECT closed{};
    GetWindowRect(list, &closed);
    if (const int lack = CLOSED_LIST_HEIGHT - (closed.bottom - closed.top); lack != 0) {
        inside += lack;
        SendMessageA(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), inside);
    }
}

} // namespace

HWND CreateFormChild(const FormChild& row, HWND parent, HFONT font) {
    const PartClass partClass = ClassOf(row.part);
    const DWORD shown = row.isHidden ? 0 : WS_VISIBLE;
    HWND child = CreateWindowExA(partClass.extendedStyle, partClass.className, row.text,
                                 WS_CHILD | shown | partClass.style | row.style, row.x, row.y, row.width,
                                 row.height, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(row.id)),
                                 ModuleInstance(), nullptr);
    SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (IsList(row.part)) {
        SetClosedHeight(child);
    } else if (row.part == FormPart::Field) {
        SendMessageA(child, EM_SETLIMITTEXT, TEXT_SIZE - 1, 0);
    } else if (row.part == FormPart::Spin) {
        // In the middle of its range, where both arrows report; it stays there.
        SendMessageA(child, UDM_SETRANGE, 0, MAKELPARAM(0, 100));
        SendMessageA(child, UDM_SETPOS, 0, MAKELPARAM(50, 0));
    }
    Subclass(child, row.part);
    return child;
}

LRESULT NotifyForm(HWND field, UINT code) {
    NMHDR header{field, static_cast<UINT_PTR>(GetDlgCtrlID(field)), code};
    return SendMessageA(GetParent(field), WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}
