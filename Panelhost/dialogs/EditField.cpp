// Edit fields that hand Enter, Escape and the loss of the focus to their dialog.

#include "Panelhost/Dialogs.h"

#include <commctrl.h>

namespace {

constexpr UINT_PTR SUBCLASS_ID = 0x0ED1;

bool IsAnswer(WPARAM key) {
    return key == EDIT_ENTER || key == EDIT_ESCAPE; // the virtual keys and the characters have these numbers
}

void Notify(HWND edit, WORD code) {
    SendMessageA(GetParent(edit), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(edit), code),
                 reinterpret_cast<LPARAM>(edit));
}

LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                          DWORD_PTR) noexcept {
    switch (message) {
    case WM_GETDLGCODE: {
        const LRESULT code = DefSubclassProc(edit, message, wParam, lParam);
        const auto* key = reinterpret_cast<const MSG*>(lParam);
        const bool wanted = key != nullptr && (key->message == WM_KEYDOWN || key->message == WM_CHAR) &&
                            IsAnswer(key->wParam);
        return wanted ? code | DLGC_WANTMESSAGE : code;
    }
    case WM_KEYDOWN:
        if (IsAnswer(wParam)) {
            Notify(edit, static_cast<WORD>(wParam));
            return 0;
        }
        break;
    case WM_CHAR:
        if (IsAnswer(wParam)) {
            return 0; // the field would beep
        }
        break;
    case WM_KILLFOCUS: {
        // Behind the system's own handling, which does not stand it when the field goes meanwhile.
        const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
        Notify(edit, EDIT_LEFT);
        return result;
    }
    case WM_NCDESTROY:
        RemoveWindowSubclass(edit, EditProc, SUBCLASS_ID);
        break;
    default:
        break;
    }
    return DefSubclassProc(edit, message, wParam, lParam);
}

} // namespace

int a_SubclassEditControl(HWND edit) {
    return SetWindowSubclass(edit, EditProc, SUBCLASS_ID, 0) ? 1 : 0;
}
