#include "Panel/lists/ListWindow.h"

#include "Panel/resource.h"
#include "Panel/theme/Theme.h"
#include "base/Clipboard.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr int WIDTH = 640;
constexpr int HEIGHT = 320;

void CopyToClipboard(HWND owner, const std::string& text) {
    if (const Clipboard clipboard(owner); clipboard.Empty()) {
        clipboard.PutText(text);
    }
}

} // namespace

bool ListWindow::Create(const char* className, const char* title, HWND frame, HFONT font, int menu,
                        std::span<const ListColumn> columns, int keys, DWORD listStyle) {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    const RECT place{0, 0, WIDTH, HEIGHT};
    if (!Window::Create(className, title, WS_OVERLAPPEDWINDOW & ~(WS_MINIMIZEBOX | WS_MAXIMIZEBOX),
                        WS_EX_TOOLWINDOW, place, frame, LoadMenuA(instance, MAKEINTRESOURCEA(menu)),
                        nullptr)) {
        return false;
    }
    keys_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(keys));
    RECT client;
    GetClientRect(Handle(), &client);
    list_ =
        CreateWindowExA(0, WC_LISTVIEWA, "",
                        WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | listStyle, 0,
                        0, client.right, client.bottom, Handle(),
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_LIST)), instance, nullptr);
    if (!list_) {
        return false;
    }
    SetWindowFont(list_, font, FALSE);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT);
    for (const ListColumn& given : columns) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<char*>(given.title);
        column.cx = given.width;
        SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(columns_++),
                     reinterpret_cast<LPARAM>(&column));
    }
    return true;
}

HWND ListWindow::AddField(const char* className, const char* text, DWORD style, DWORD exStyle, int id,
                          HFONT font) const {
    const HWND field = CreateWindowExA(exStyle, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                                       Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                       GetModuleHandleA(nullptr), nullptr);
    if (field) {
        SetWindowFont(field, font, FALSE);
    }
    return field;
}

std::string ListWindow::TextOf(HWND field) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(field)), '\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextA(field, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

// Below the frame, as far as the screen allows.
void ListWindow::Place() {
    const HWND frame = GetWindow(Handle(), GW_OWNER);
    const RECT work = WorkArea(frame);
    RECT beside{};
    RECT own{};
    GetWindowRect(frame, &beside);
    GetWindowRect(Handle(), &own);
    const int width = own.right - own.left;
    const int height = own.bottom - own.top;
    SetWindowPos(Handle(), nullptr,
                 std::clamp(beside.left, work.left, std::max(work.left, work.right - width)),
                 std::clamp(beside.bottom, work.top, std::max(work.top, work.bottom - height)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ListWindow::Show(bool shown) {
    if (shown && !placed_) {
        Place();
        ApplyTheme(Handle());
        placed_ = true;
    }
    ShowWindow(Handle(), shown ? SW_SHOW : SW_HIDE);
    Update();
}

bool ListWindow::TranslateKey(MSG& message) {
    const bool isHere = message.hwnd == Handle() || IsChild(Handle(), message.hwnd);
    const bool isTyping = isHere && ListView_GetEditControl(list_) != nullptr;
    return isHere && !isTyping && TranslateAcceleratorA(Handle(), keys_, &message);
}

LRESULT ListWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        SetWindowPos(list_, nullptr, 0, Top(), LOWORD(lParam), std::max(0, HIWORD(lParam) - Top()),
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case WM_ERASEBKGND: {
        RECT head;
        GetClientRect(Handle(), &head);
        head.bottom = Top();
        FillThemed(reinterpret_cast<HDC>(wParam), head, Colours().ground);
        return 1;
    }
    case WM_SETFOCUS:
        SetFocus(list_);
        return 0;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
        return 0;
    case WM_MENUSELECT: // the frame tells what commands do
        return SendMessageA(GetWindow(Handle(), GW_OWNER), message, wParam, lParam);
    case WM_NOTIFY:
        return reinterpret_cast<const NMHDR*>(lParam)->idFrom == IDC_LIST
                   ? OnListNotify(*reinterpret_cast<const NMHDR*>(lParam))
                   : 0;
    case WM_CONTEXTMENU: {
        POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        if (point.x == -1 && point.y == -1) { // asked for with a key
            point = {0, 0};
            ClientToScreen(list_, &point);
        }
        TrackPopupMenu(GetSubMenu(GetMenu(Handle()), 0), TPM_RIGHTBUTTON, point.x, point.y, 0, Handle(),
                       nullptr);
        return 0;
    }
    case WM_CLOSE:
        Show(false);
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}

void ListWindow::OnCommand(int command) {
    switch (command) {
    case CMD_TRACE_COPY:
        Copy();
        break;
    case CMD_TRACE_SELECT_ALL:
        ListView_SetItemState(list_, -1, LVIS_SELECTED, LVIS_SELECTED);
        break;
    case CMD_TRACE_CLOSE:
        Show(false);
        break;
    default:
        break;
    }
}

LRESULT ListWindow::OnListNotify(const NMHDR& header) {
    if (header.code != LVN_GETDISPINFOA) {
        return 0;
    }
    LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(const_cast<NMHDR*>(&header))->item;
    if ((item.mask & LVIF_TEXT) && item.cchTextMax > 0 && item.iItem >= 0 && item.iItem < Count()) {
        lstrcpynA(item.pszText, Cell(item.iItem, item.iSubItem).c_str(), item.cchTextMax);
    }
    return 0;
}

// The selected lines, or all when none is.
void ListWindow::Copy() const {
    std::string text;
    const bool all = ListView_GetSelectedCount(list_) == 0;
    for (int row = 0; row < Count(); ++row) {
        if (all || ListView_GetItemState(list_, row, LVIS_SELECTED) != 0) {
            for (int column = 0; column < columns_; ++column) {
                text += Cell(row, column) + (column + 1 < columns_ ? "\t" : "\r\n");
            }
        }
    }
    CopyToClipboard(Handle(), text);
}
