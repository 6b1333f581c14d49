#include "tests/windows/FormPanels.h"

#include "Panelhost/PropertyLines.h"
#include "tests/windows/HeldKeys.h"

std::string TakeAll(std::vector<std::string>& log) {
    std::string all;
    for (const std::string& text : log) {
        all += (all.empty() ? "" : " | ") + text;
    }
    log.clear();
    return all;
}

std::string PlaceOf(HWND child) {
    RECT place;
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&place), 2);
    return a_GetRectString(place);
}

std::string ItemsOf(HWND list) {
    std::string items;
    const LRESULT count = SendMessageA(list, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        char text[TEXT_SIZE] = "";
        SendMessageA(list, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        items += (i == 0 ? "" : ",") + std::string(text);
    }
    return items;
}

std::string LayoutOf(HWND panel) {
    std::string layout;
    for (HWND child = GetWindow(panel, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const auto style = static_cast<DWORD>(GetWindowLongA(child, GWL_STYLE));
        char name[32] = "";
        GetClassNameA(child, name, sizeof name);
        const std::string kind = name;
        const auto buddy = reinterpret_cast<HWND>(SendMessageA(child, UDM_GETBUDDY, 0, 0));
        std::string place = PlaceOf(child);
        if (kind == UPDOWN_CLASSA) {
            RECT arrows{};
            RECT field{};
            GetWindowRect(child, &arrows);
            GetWindowRect(buddy, &field);
            CHECK((arrows.left == field.right || arrows.right > field.right)); // beside or on it
            place = std::to_string(GetDlgCtrlID(buddy));
        } else if (kind == "Edit") {
            place.resize(place.find(',', place.find(',') + 1));
        }
        layout += (layout.empty() ? "" : "; ") + std::to_string(GetDlgCtrlID(child)) + " " + kind + " " +
                  (kind == "Edit" || kind == "ComboBox" ? "" : TextOf(child)) + " " + place;
        layout += IsShown(child) ? "" : " hidden";
        layout += (style & WS_TABSTOP) != 0 ? " Tab" : "";
        layout += kind == "Static" && (style & SS_CENTERIMAGE) != 0 ? " centred" : "";
        layout += kind == "Edit" && (style & ES_AUTOHSCROLL) != 0 ? " scrolls" : "";
    }
    return layout;
}

void TypeInto(HWND panel, int fieldId, const char* typed, WPARAM key) {
    const HWND field = Item(panel, fieldId);
    SetWindowTextA(field, typed);
    SendMessageA(field, WM_KEYDOWN, key, 0);
    if (IsWindow(field)) {
        SendMessageA(field, WM_CHAR, key, 0);
    }
}

void LeaveField(HWND panel, int fieldId, const char* typed) {
    const HWND field = Item(panel, fieldId);
    SetFocus(field);
    SetWindowTextA(field, typed);
    SetFocus(panel);
}

void StepSpin(HWND panel, int spinId, int delta) {
    NMUPDOWN step{
        {Item(panel, spinId), static_cast<UINT_PTR>(spinId), static_cast<UINT>(UDN_DELTAPOS)}, 50, delta};
    SendMessageA(panel, WM_NOTIFY, step.hdr.idFrom, reinterpret_cast<LPARAM>(&step));
    DispatchCommands(panel);
}

std::string Enter(HWND panel, const Entry& entry, WPARAM key) {
    const auto buddy = reinterpret_cast<HWND>(SendMessageA(Item(panel, entry.id), UDM_GETBUDDY, 0, 0));
    if (buddy == nullptr) {
        TypeInto(panel, entry.id, entry.typed, key);
        return TextOf(Item(panel, entry.id));
    }
    if (*entry.typed != '\0') {
        SetWindowTextA(buddy, entry.typed);
    }
    StepSpin(panel, entry.id, entry.delta);
    return TextOf(buddy);
}

void ChooseItem(HWND panel, int listId, int item) {
    const HWND list = Item(panel, listId);
    SendMessageA(list, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageA(panel, WM_COMMAND, MAKEWPARAM(listId, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
    DispatchCommands(panel);
}

void PressKey(WPARAM key, bool shift) {
    const HeldKeys held(shift ? "Shift" : "");
    SendMessageA(GetFocus(), WM_KEYDOWN, key, 0);
    SendMessageA(GetFocus(), WM_KEYUP, key, 0);
}

bool WaitForMenu(bool isOpen) {
    for (int i = 0; i < 4000; ++i) {
        if ((FindWindowA("#32768", nullptr) != nullptr) == isOpen) {
            return true;
        }
        Sleep(5);
        if (!isOpen && i == 60) { // an entry that cannot be chosen leaves it open
            return false;
        }
    }
    return false;
}

namespace {

LRESULT CALLBACK WithoutMouse(int code, WPARAM wParam, LPARAM lParam) {
    const UINT message = reinterpret_cast<const MSG*>(lParam)->message;
    const bool isMouse = (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                         (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
    return code == MSGF_MENU && isMouse ? 1 : CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

MenusByKeyboard::MenusByKeyboard()
    : hook_(SetWindowsHookExA(WH_MSGFILTER, WithoutMouse, nullptr, GetCurrentThreadId())) {}

bool ChooseShownEntry(HWND owner, int down) {
    const HWND popup = FindWindowA("#32768", nullptr);
    const auto menu = reinterpret_cast<HMENU>(SendMessageA(popup, 0x1E1, 0, 0));
    const auto state = [menu](int i) { return GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION); };
    int wanted = -1;
    for (int left = down; left > 0 && ++wanted < GetMenuItemCount(menu);) {
        left -= (state(wanted) & MF_SEPARATOR) == 0 ? 1 : 0;
    }
    const auto lit = [&] {
        int i = GetMenuItemCount(menu) - 1;
        while (i >= 0 && (state(i) & MF_HILITE) == 0) {
            --i;
        }
        return i;
    };
    for (int presses = 0; presses < 50 && down > 0 && lit() != wanted && IsWindow(popup); ++presses) {
        const int before = lit();
        PostMessageA(owner, WM_KEYDOWN, VK_DOWN, 0);
        // On the way from one entry to the next none is lit for a moment.
        for (int i = 0, now = before; i < 1000 && (now == before || now < 0) && IsWindow(popup); ++i) {
            Sleep(2);
            now = lit();
        }
    }
    const bool isThere = IsWindow(popup) && (down == 0 || lit() == wanted);
    if (IsWindow(popup)) {
        PostMessageA(owner, WM_KEYDOWN, isThere && down > 0 ? VK_RETURN : VK_ESCAPE, 0);
    }
    return isThere;
}

void ChooseFromMenu(HWND panel, int childId, int down) {
    const MenusByKeyboard menus;
    std::thread user([panel, down] {
        WaitForMenu(true);
        ChooseShownEntry(panel, down);
        if (!WaitForMenu(false)) {
            PostMessageA(panel, WM_KEYDOWN, VK_ESCAPE, 0);
        }
    });
    SendMessageA(panel, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Item(panel, childId)), At(200, 200));
    user.join();
    Pump(1);
}

void PutOnClipboard(UINT format, const void* bytes, std::size_t size) {
    REQUIRE(OpenClipboard(nullptr));
    EmptyClipboard();
    if (bytes != nullptr) {
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(block), bytes, size);
        GlobalUnlock(block);
        SetClipboardData(format, block);
    }
    CloseClipboard();
}
