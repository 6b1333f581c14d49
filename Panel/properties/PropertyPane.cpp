// The property pane: its window.

#include "Panel/properties/PropertyPane.h"

#include "Panel/editing/Editor.h"
#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"
#include "base/Handles.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr int SPLITTER = 5; // pixels, at the left
constexpr int TITLE_HEIGHT = 24;
constexpr int HELP_HEIGHT = 100;
constexpr int NAME_SHARE = 42; // percent of a row
constexpr int LEAST_WIDTH = 180;
constexpr int LARGEST_SHARE = 60; // percent of the frame
constexpr int ROW_PADDING = 6;    // room for the border of the field, pixels

} // namespace

PropertyPane::~PropertyPane() {
    edit_ = nullptr; // what is typed is dropped
    if (IsWindow(list_)) {
        DestroyWindow(list_);
    }
}

bool PropertyPane::Create(HWND frame, HFONT font) {
    font_ = font;
    LOGFONTA description{};
    GetObjectA(font, sizeof description, &description);
    description.lfWeight = FW_BOLD;
    bold_.reset(CreateFontIndirectA(&description));
    if (!Window::Create("PanelProperties", "Properties", WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, {},
                        frame, nullptr, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)))) {
        return false;
    }
    list_ =
        CreateWindowExA(WS_EX_CLIENTEDGE, WC_LISTVIEWA, "Properties",
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | LVS_REPORT | LVS_SINGLESEL |
                            LVS_SHOWSELALWAYS | LVS_OWNERDATA | LVS_NOCOLUMNHEADER | LVS_SHAREIMAGELISTS,
                        0, 0, 0, 0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_PROPERTIES)),
                        GetModuleHandleA(nullptr), nullptr);
    if (!list_ || !SetWindowSubclass(list_, PartProc, 0, reinterpret_cast<DWORD_PTR>(this))) {
        return false;
    }
    SetWindowFont(list_, font, FALSE);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    for (int column = 0; column <= NOTE; ++column) {
        LVCOLUMNA added{};
        added.mask = LVCF_WIDTH; // none for the note, which stands below the list
        SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&added));
    }
    MakeRowsHigher();
    return choices_.Create(frame, font, [this](const std::string& choice) { Choose(choice); }) &&
           button_.Create(list_, [this](int step) { step == 0 ? OpenChooser() : Step(step); });
}

// A list view has no row height of its own; its rows are as high as their images.
void PropertyPane::MakeRowsHigher() {
    const WindowDc dc(list_, 0);
    const Selected font(dc.Get(), font_);
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc.Get(), &metrics);
    rowHeight_.reset(ImageList_Create(1, metrics.tmHeight + ROW_PADDING, ILC_COLOR, 0, 1));
    SendMessageA(list_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(rowHeight_.get()));
}

void PropertyPane::SetEditor(Editor* editor) {
    EndEdit();
    editor_ = editor;
    objects_.clear();
    refused_.clear();
    Replace({});
    ShowWindow(Handle(), editor && isShown_ ? SW_SHOWNA : SW_HIDE);
    Update();
}

void PropertyPane::Show(bool shown) {
    isShown_ = shown;
    if (!shown) {
        Finish();
        EndEdit();
    }
    ShowWindow(Handle(), shown && editor_ ? SW_SHOWNA : SW_HIDE);
    nextRead_ = 0;
    Update();
}

// Layout.

int PropertyPane::HelpTop() const {
    RECT client;
    GetClientRect(Handle(), &client);
    return std::max<int>(TITLE_HEIGHT, client.bottom - HELP_HEIGHT);
}

void PropertyPane::Arrange() {
    RECT client;
    GetClientRect(Handle(), &client);
    SetWindowPos(list_, nullptr, SPLITTER, TITLE_HEIGHT, std::max(0L, client.right - SPLITTER),
                 HelpTop() - TITLE_HEIGHT, SWP_NOZORDER | SWP_NOACTIVATE);
    FitColumns();
    InvalidateRect(Handle(), nullptr, TRUE);
}

// A scroll bar may have come or gone.
void PropertyPane::FitColumns() {
    RECT client;
    GetClientRect(list_, &client);
    const LONG name = client.right * NAME_SHARE / 100;
    const LONG widths[] = {name, client.right - name};
    for (int column = 0; column < NOTE; ++column) {
        if (SendMessageA(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0) != widths[column]) {
            SendMessageA(list_, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), widths[column]);
        }
    }
    PlaceEdit();
    InvalidateRect(list_, nullptr, TRUE);
}

void PropertyPane::ResizeTo(int width) {
    RECT frame;
    GetClientRect(GetParent(Handle()), &frame);
    const int largest = std::max<int>(LEAST_WIDTH, frame.right * LARGEST_SHARE / 100);
    if (width = std::clamp(width, LEAST_WIDTH, largest); width != width_) {
        width_ = width;
        SendMessageA(GetParent(Handle()), WM_SIZE, SIZE_RESTORED, MAKELPARAM(frame.right, frame.bottom));
        UpdateWindow(GetParent(Handle()));
    }
}

RECT PropertyPane::ValueCell(int line) const {
    RECT cell{};
    cell.left = LVIR_BOUNDS;
    SendMessageA(list_, LVM_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&cell));
    cell.left += static_cast<LONG>(SendMessageA(list_, LVM_GETCOLUMNWIDTH, 0, 0));
    return cell;
}

// Focus and messages.

void PropertyPane::TakeFocus() {
    SetFocus(edit_ ? edit_ : list_);
}

bool PropertyPane::HasFocus() const {
    return IsChild(Handle(), GetFocus());
}

bool PropertyPane::KeepsKey(const MSG& message) const {
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) {
        return false;
    }
    // While nothing is being typed, what Ctrl commands is meant for the panel, but for what would be of a
    // text.
    const bool isOfText = message.wParam == 'X' || message.wParam == 'C' || message.wParam == 'V';
    return edit_ || GetKeyState(VK_CONTROL) >= 0 || isOfText;
}

LRESULT PropertyPane::OnNotify(NMHDR& header) {
    if (header.hwndFrom != list_) {
        return 0;
    }
    switch (header.code) {
    case static_cast<UINT>(NM_CUSTOMDRAW):
        return DrawPart(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
    case static_cast<UINT>(LVN_GETDISPINFOA): {
        LVITEMA& item = reinterpret_cast<NMLVDISPINFOA&>(header).item;
        if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0 &&
            static_cast<std::size_t>(item.iItem) < lines_.size()) {
            lstrcpynA(item.pszText, CellText(item.iItem, item.iSubItem).c_str(), item.cchTextMax);
        }
        return 0;
    }
    case static_cast<UINT>(LVN_ITEMCHANGED): {
        RECT help;
        GetClientRect(Handle(), &help);
        help.top = HelpTop();
        InvalidateRect(Handle(), &help, TRUE);
        InvalidateRect(list_, nullptr, FALSE); // rows are drawn a little wider than the list thinks
        return 0;
    }
    case static_cast<UINT>(NM_CLICK):
    case static_cast<UINT>(NM_DBLCLK): {
        const auto& click = reinterpret_cast<const NMITEMACTIVATE&>(header);
        if (RowAt(click.iItem) && (click.ptAction.x >= ValueCell(click.iItem).left) ==
                                      (header.code == static_cast<UINT>(NM_CLICK))) {
            Activate(click.iItem);
        }
        return 0;
    }
    default:
        return 0;
    }
}

LRESULT PropertyPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_SETFOCUS:
        TakeFocus();
        return 0;
    case WM_SETCURSOR: {
        POINT point;
        GetCursorPos(&point);
        ScreenToClient(Handle(), &point);
        if (reinterpret_cast<HWND>(wParam) == Handle() && point.x < SPLITTER) {
            SetCursor(LoadCursorA(nullptr, IDC_SIZEWE));
            return TRUE;
        }
        break;
    }
    case WM_LBUTTONDOWN:
        if (GET_X_LPARAM(lParam) < SPLITTER) {
            resizing_ = true;
            grip_ = GET_X_LPARAM(lParam);
            SetCapture(Handle());
        } else {
            TakeFocus();
        }
        return 0;
    case WM_MOUSEMOVE:
        if (resizing_) {
            RECT place;
            GetWindowRect(Handle(), &place);
            POINT point{GET_X_LPARAM(lParam), 0};
            ClientToScreen(Handle(), &point);
            ResizeTo(place.right - point.x + grip_);
        }
        return 0;
    case WM_LBUTTONUP:
    case WM_CANCELMODE:
    case WM_CAPTURECHANGED:
        if (resizing_) {
            resizing_ = false;
            if (GetCapture() == Handle()) {
                ReleaseCapture();
            }
        }
        return 0;
    default:
        break;
    }
    return Window::OnMessage(message, wParam, lParam);
}

// The list.

bool PropertyPane::OnListKey(WPARAM key) {
    const int line = SelectedLine();
    const PropertyRow* row = RowAt(line);
    switch (key) {
    case VK_UP:
    case VK_DOWN:
        if (const int next = NextLine(line, key == VK_UP ? -1 : 1); next != NO_LINE) {
            Select(next);
        }
        return true;
    case VK_RETURN:
    case VK_F2:
        Activate(line);
        return true;
    case VK_SPACE:
        if (row && row->IsSwitch()) {
            Activate(line);
        }
        return true;
    case VK_TAB:
        MoveOn(GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
        return true;
    case VK_ESCAPE:
        if (row && RefusalOf(*row)) {
            PutBack(IdOf(*row));
        } else if (editor_) {
            SetFocus(editor_->Panel());
        }
        return true;
    default:
        return false;
    }
}

bool PropertyPane::OnListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
        return OnListKey(wParam);
    case WM_SYSKEYDOWN:
        if (wParam == VK_DOWN) {
            BeginEdit(SelectedLine());
            OpenChooser();
            return true;
        }
        return false;
    case WM_CHAR: // a printable one begins an edit; the list is not to search for any
        if (const PropertyRow* row = RowAt(SelectedLine());
            row && wParam > ' ' && GetKeyState(VK_CONTROL) >= 0 && !row->isFixed && !row->IsSwitch()) {
            BeginEdit(SelectedLine());
            SendMessageA(edit_, WM_CHAR, wParam, 0); // in place of what is selected: the whole value
        }
        return true;
    case WM_COMMAND:
        if (edit_ && reinterpret_cast<HWND>(lParam) == edit_ && HIWORD(wParam) == EN_CHANGE) {
            Suggest(false);
        }
        return true;
    default:
        return false;
    }
}

LRESULT CALLBACK PropertyPane::PartProc(HWND part, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR self) noexcept {
    auto& pane = *reinterpret_cast<PropertyPane*>(self);
    try {
        const bool isServed = part == pane.list_ ? pane.OnListMessage(message, wParam, lParam)
                                                 : part == pane.edit_ && pane.OnEditMessage(message, wParam);
        if (isServed) {
            return 0;
        }
    } catch (...) {
        return 0;
    }
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(part, PartProc, 0);
    }
    const LRESULT result = DefSubclassProc(part, message, wParam, lParam);
    try {
        if (message == WM_KILLFOCUS && part == pane.edit_ && !pane.applying_) {
            // Behind the system's own handling, which does not stand it when the field goes meanwhile.
            pane.Finish();
            pane.EndEdit();
        } else if (part == pane.list_ && (message == WM_VSCROLL || message == WM_HSCROLL ||
                                          message == WM_MOUSEWHEEL || message == WM_KEYDOWN)) {
            pane.PlaceEdit();
        } else if (part == pane.list_ && (message == WM_SETFOCUS || message == WM_KILLFOCUS)) {
            InvalidateRect(part, nullptr, FALSE);
        }
    } catch (...) {
        return result;
    }
    return result;
}
