#include "Panel/TraceWindow.h"

#include "Panel/TraceLog.h"
#include "Panel/resource.h"
#include "Panelhost/Trace.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

constexpr int WIDTH = 640;
constexpr int HEIGHT = 320;

enum Column { COLUMN_TIME, COLUMN_KIND, COLUMN_TEXT };

struct ColumnHeader {
    const char* title;
    int width;
};
constexpr ColumnHeader COLUMNS[] = {{"Time", 84}, {"Kind", 50}, {"Message", 1000}};

std::string TimeText(const SYSTEMTIME& time) {
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03d", time.wHour, time.wMinute, time.wSecond,
                  time.wMilliseconds);
    return text;
}

std::string ColumnText(const TraceLine& line, int column) {
    switch (column) {
    case COLUMN_TIME:
        return TimeText(line.time);
    case COLUMN_KIND:
        return line.kind == TRACE_EDIT ? "Edit" : "Debug";
    default:
        return line.text;
    }
}

void CopyToClipboard(HWND owner, const std::string& text) {
    if (!OpenClipboard(owner)) {
        return;
    }
    EmptyClipboard();
    if (HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1)) {
        if (void* target = GlobalLock(memory)) {
            std::memcpy(target, text.c_str(), text.size() + 1);
            GlobalUnlock(memory);
        }
        if (!SetClipboardData(CF_TEXT, memory)) { // otherwise the clipboard owns it
            GlobalFree(memory);
        }
    }
    CloseClipboard();
}

} // namespace

bool TraceWindow::Create(HWND frame, HFONT font) {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    const RECT place{0, 0, WIDTH, HEIGHT};
    if (!Window::Create("PanelTrace", "Trace", WS_OVERLAPPEDWINDOW & ~(WS_MINIMIZEBOX | WS_MAXIMIZEBOX),
                        WS_EX_TOOLWINDOW, place, frame, LoadMenuA(instance, MAKEINTRESOURCEA(IDM_TRACE)),
                        nullptr)) {
        return false;
    }
    keys_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDA_TRACE));
    RECT client;
    GetClientRect(Handle(), &client);
    list_ = CreateWindowExA(0, WC_LISTVIEWA, "",
                            WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, 0, 0,
                            client.right, client.bottom, Handle(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_TRACE_LIST)), instance, nullptr);
    if (!list_) {
        return false;
    }
    SetWindowFont(list_, font, FALSE);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT);
    for (int i = 0; i < static_cast<int>(std::size(COLUMNS)); ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = const_cast<char*>(COLUMNS[i].title);
        column.cx = COLUMNS[i].width;
        SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    return true;
}

// Below the frame, as far as the screen allows.
void TraceWindow::Place() {
    const HWND frame = GetWindow(Handle(), GW_OWNER);
    const RECT work = WorkArea(frame);
    RECT beside{};
    GetWindowRect(frame, &beside);
    SetWindowPos(Handle(), nullptr,
                 std::clamp(beside.left, work.left, std::max(work.left, work.right - WIDTH)),
                 std::clamp(beside.bottom, work.top, std::max(work.top, work.bottom - HEIGHT)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void TraceWindow::Show(bool shown) {
    if (shown && !placed_) {
        Place();
        placed_ = true;
    }
    ShowWindow(Handle(), shown ? SW_SHOW : SW_HIDE);
    Update();
}

void TraceWindow::Update() {
    const TraceLog::Change change = log_.Collect();
    const int count = static_cast<int>(log_.Lines().size());
    const int shown = ListView_GetItemCount(list_);
    if (!IsShown() || (change.added == 0 && shown == count)) {
        return;
    }
    const bool atEnd = ListView_GetTopIndex(list_) + ListView_GetCountPerPage(list_) >= shown;
    // Lines that went moved all others up.
    const DWORD flags = LVSICF_NOSCROLL | (change.dropped == 0 && count > shown ? LVSICF_NOINVALIDATEALL : 0);
    SendMessageA(list_, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), static_cast<LPARAM>(flags));
    if (atEnd && count > 0) {
        ListView_EnsureVisible(list_, count - 1, FALSE);
    }
}

bool TraceWindow::TranslateKey(MSG& message) const {
    return (message.hwnd == Handle() || IsChild(Handle(), message.hwnd)) &&
           TranslateAcceleratorA(Handle(), keys_, &message);
}

LRESULT TraceWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        SetWindowPos(list_, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case WM_SETFOCUS:
        SetFocus(list_);
        return 0;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
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

void TraceWindow::OnCommand(int command) {
    switch (command) {
    case CMD_TRACE_COPY:
        Copy();
        break;
    case CMD_TRACE_SELECT_ALL:
        ListView_SetItemState(list_, -1, LVIS_SELECTED, LVIS_SELECTED);
        break;
    case CMD_TRACE_CLEAR:
        log_.Clear();
        Update();
        break;
    case CMD_TRACE_CLOSE:
        Show(false);
        break;
    default:
        break;
    }
}

LRESULT TraceWindow::OnNotify(const NMHDR& header) const {
    if (header.idFrom != IDC_TRACE_LIST || header.code != LVN_GETDISPINFOA) {
        return 0;
    }
    LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(const_cast<NMHDR*>(&header))->item;
    const auto& lines = log_.Lines();
    if ((item.mask & LVIF_TEXT) && item.cchTextMax > 0 && item.iItem >= 0 &&
        item.iItem < static_cast<int>(lines.size())) {
        const std::string text = ColumnText(lines[static_cast<std::size_t>(item.iItem)], item.iSubItem);
        lstrcpynA(item.pszText, text.c_str(), item.cchTextMax);
    }
    return 0;
}

// The selected lines, or all when none is.
void TraceWindow::Copy() const {
    const auto& lines = log_.Lines();
    std::string text;
    const auto append = [&text](const TraceLine& line) {
        text +=
            ColumnText(line, COLUMN_TIME) + "\t" + ColumnText(line, COLUMN_KIND) + "\t" + line.text + "\r\n";
    };
    if (ListView_GetSelectedCount(list_) == 0) {
        std::for_each(lines.begin(), lines.end(), append);
    }
    for (int i = ListView_GetNextItem(list_, -1, LVNI_SELECTED); i >= 0 && i < static_cast<int>(lines.size());
         i = ListView_GetNextItem(list_, i, LVNI_SELECTED)) {
        append(lines[static_cast<std::size_t>(i)]);
    }
    CopyToClipboard(Handle(), text);
}
