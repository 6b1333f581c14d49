#include "Controls/families/EditField.h"

#include <cstring>

namespace {

constexpr WPARAM CTRL_A = 0x01; // their characters
constexpr WPARAM CTRL_ENTER = '\n';

} // namespace

void EditField::Begin() {
    SendMessageA(field_, EM_LIMITTEXT, TEXT_SIZE - 1, 0);
    SendMessageA(field_, EM_SETMODIFY, FALSE, 0);
    displayed_ = Text();
}

std::string EditField::Text() const {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(field_, text, sizeof text);
    return text;
}

bool EditField::IsEdited() const {
    return control_.HasFocus() && SendMessageA(field_, EM_GETMODIFY, 0, 0) != 0;
}

void EditField::Show() {
    const HWND window = field_;
    const std::string text = control_.hasNoValue ? CONTROLPROPERTIES::NO_VALUE : owner_.TextOfValue();
    // A field that the mouse is just selecting in keeps its text as well.
    if (IsEdited() || (control_.HasFocus() && GetCapture() == window) ||
        (text == displayed_ && GetWindowTextLengthA(window) == static_cast<int>(displayed_.size()))) {
        return;
    }
    displayed_ = text;
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const bool wasAllSelected = end > start && static_cast<int>(end - start) == GetWindowTextLengthA(window);
    isSettingText_ = true;
    SetWindowTextA(window, displayed_.c_str());
    isSettingText_ = false;
    if (control_.HasFocus()) {
        SendMessageA(window, EM_SETSEL, wasAllSelected ? 0 : start,
                     wasAllSelected ? -1 : static_cast<LPARAM>(end));
    }
}

void EditField::TakeTyped(bool isLeaving) {
    std::string text = Text();
    if (control_.hasNoValue && text.rfind(CONTROLPROPERTIES::NO_VALUE, 0) == 0) {
        text.erase(0, std::strlen(CONTROLPROPERTIES::NO_VALUE)); // somebody has typed behind it
    }
    const bool taken = owner_.TakeTyped(text);
    if (taken || isLeaving || !owner_.KeepsRefused()) {
        Restore();
    }
    if (taken) {
        owner_.TypedTaken();
    }
}

void EditField::Restore() {
    SendMessageA(field_, EM_SETMODIFY, FALSE, 0);
    displayed_.clear(); // the field holds what was typed
    Show();
}

// What is typed next replaces a single line.
void EditField::SelectForNext() const {
    if (!owner_.HasLines()) {
        SelectAll();
    }
}

void EditField::SelectAll() const {
    SendMessageA(field_, EM_SETSEL, 0, -1);
}

// Whether the field hands a key to its control even in a dialog, which closes at Escape otherwise.
bool EditField::WantsKey(const MSG* key) const {
    return key != nullptr && (key->message == WM_KEYDOWN || key->message == WM_CHAR) &&
           (key->wParam == VK_RETURN || (key->wParam == VK_ESCAPE && IsEdited()));
}

// Whether it was a key of the control. Its character is kept from the field, which would beep.
bool EditField::HandleKey(UINT message, WPARAM key) {
    if (message == WM_CHAR && key == CTRL_ENTER) {
        return true;
    }
    if (key == VK_RETURN) {
        if (owner_.HasLines() && (message == WM_CHAR || GetKeyState(VK_CONTROL) >= 0)) {
            return false;
        }
        if (message == WM_KEYDOWN) {
            if (IsEdited()) {
                TakeTyped(false);
            }
            SelectForNext();
        }
        return true;
    }
    if (key == VK_ESCAPE) {
        if (message == WM_KEYDOWN && IsEdited()) {
            Restore();
            SelectForNext();
            owner_.TypedDropped();
        }
        return true;
    }
    if (message == WM_CHAR && key == CTRL_A) {
        SelectAll();
        return true;
    }
    return false;
}

// The focus goes: what was typed is taken.
LRESULT EditField::Leave(WPARAM wParam, LPARAM lParam) {
    const bool wasEdited = IsEdited();
    const LRESULT result = owner_.FieldDoes(WM_KILLFOCUS, wParam, lParam);
    if (wasEdited) {
        TakeTyped(true);
    }
    return result;
}

std::optional<LRESULT> EditField::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETDLGCODE: {
        LRESULT code = owner_.FieldDoes(message, wParam, lParam);
        if (owner_.HasLines()) {
            code &= ~(DLGC_WANTTAB | DLGC_WANTALLKEYS); // it would take Tab as well
        }
        return WantsKey(reinterpret_cast<const MSG*>(lParam)) ? code | DLGC_WANTMESSAGE : code;
    }
    case WM_KEYDOWN:
    case WM_CHAR:
        return HandleKey(message, wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_KILLFOCUS:
        return Leave(wParam, lParam);
    case WM_SETTEXT:
        return !isSettingText_ && lParam != 0 && owner_.TextGiven(reinterpret_cast<const char*>(lParam))
                   ? std::optional<LRESULT>(TRUE)
                   : std::nullopt;
    case WM_CONTEXTMENU: { // the right button belongs to the panel, the key to the field
        const bool isFields = control_.mode == 0 && lParam == -1;
        return isFields ? std::nullopt : std::optional<LRESULT>(0);
    }
    default:
        return std::nullopt;
    }
}

void EditField::Handled(UINT message) {
    if (message == WM_CAPTURECHANGED) {
        Show(); // the text may have waited for this
    }
}
