#include "Panel/bindings/BindingsWindow.h"

#include "Panel/common/Paths.h"
#include "Panel/common/TextFile.h"
#include "Panel/resource.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr UINT_PTR LOOK_TIMER = 1;
constexpr UINT LOOK_PERIOD = 1000; // milliseconds
constexpr int MARGIN = 6;          // pixels
constexpr int FIELD_HEIGHT = 20;
constexpr int SEARCH_WIDTH = 200;
constexpr int NOT_LIVE_WIDTH = 150;
constexpr std::size_t MOST_SELECTED = 100; // that stay selected when the list is another one

constexpr ListColumn COLUMNS[BINDING_COLUMNS] = {{BINDING_TITLES[0], 130}, {BINDING_TITLES[1], 80},
                                                 {BINDING_TITLES[2], 160}, {BINDING_TITLES[3], 110},
                                                 {BINDING_TITLES[4], 80},  {BINDING_TITLES[5], 50}};

// What a row is about, whatever place it has.
struct Identity {
    const HOSTINFO* object;
    const KEYWORDROW* keyword;
    std::string address;

    bool operator==(const BINDING& binding) const {
        return object == binding.object && keyword == binding.row && address == binding.address;
    }
};

} // namespace

bool BindingsWindow::Create(HWND frame, HFONT font) {
    if (!ListWindow::Create("PanelBindings", "Bindings", frame, font, IDM_BINDINGS, COLUMNS, IDA_BINDINGS)) {
        return false;
    }
    search_ = AddField("EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, IDC_BINDING_SEARCH, font);
    notLive_ = AddField("BUTTON", "Only what is not &live", WS_TABSTOP | BS_AUTOCHECKBOX, 0,
                        CMD_BINDINGS_NOT_LIVE, font);
    counts_ = AddField("STATIC", "", SS_LEFTNOWORDWRAP, 0, IDC_BINDING_COUNTS, font);
    return search_ && notLive_ && counts_;
}

int BindingsWindow::Top() const {
    return FIELD_HEIGHT + 2 * MARGIN;
}

void BindingsWindow::SetRoot(HOSTINFO* root) {
    root_ = root;
    table_.Clear();
    Look();
}

void BindingsWindow::Open(bool onlyNotLive) {
    Button_SetCheck(notLive_, onlyNotLive ? BST_CHECKED : BST_UNCHECKED);
    table_.ShowOnlyNotLive(onlyNotLive);
    if (onlyNotLive) {
        SetWindowTextA(search_, ""); // what is hidden by it could be what is looked for
    }
    if (IsShown()) {
        Look();
    }
    Show(true);
    SetFocus(List());
}

std::string BindingsWindow::Cell(int row, int column) const {
    return table_.Cell(row, static_cast<BindingColumn>(column));
}

// Keys and commands.

bool BindingsWindow::TranslateKey(MSG& message) {
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) {
        return false;
    }
    const bool isEdit = message.hwnd == search_ && GetKeyState(VK_CONTROL) < 0 &&
                        (message.wParam == 'C' || message.wParam == 'A');
    return (!isEdit && ListWindow::TranslateKey(message)) || IsDialogMessageA(Handle(), &message);
}

void BindingsWindow::OnCommand(int command) {
    switch (command) {
    case IDOK: // Enter
    case CMD_BINDINGS_GO:
        return GoTo();
    case IDCANCEL:
        return ListWindow::OnCommand(CMD_TRACE_CLOSE);
    case CMD_BINDINGS_SEARCH:
        SetFocus(search_);
        Edit_SetSel(search_, 0, -1);
        return;
    case CMD_BINDINGS_NOT_LIVE:
        return Change([this] { table_.ShowOnlyNotLive(Button_GetCheck(notLive_) == BST_CHECKED); });
    case CMD_BINDINGS_EXPORT:
        return Export();
    case CMD_DEVICES: // a device that is not live may want another address
        PostMessageA(GetWindow(Handle(), GW_OWNER), WM_COMMAND, CMD_DEVICES, 0);
        return;
    default:
        return ListWindow::OnCommand(command);
    }
}

LRESULT BindingsWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SHOWWINDOW:
        isOpen_ = wParam != FALSE;
        if (isOpen_) {
            SetTimer(Handle(), LOOK_TIMER, LOOK_PERIOD, nullptr);
            Look();
        } else {
            KillTimer(Handle(), LOOK_TIMER);
            table_.Clear();
            SendMessageA(List(), LVM_SETITEMCOUNT, 0, 0);
        }
        return 0;
    case WM_TIMER:
        Look();
        return 0;
    case WM_SIZE: {
        const int width = LOWORD(lParam);
        const int countsLeft = SEARCH_WIDTH + NOT_LIVE_WIDTH + 3 * MARGIN;
        MoveWindow(search_, MARGIN, MARGIN, SEARCH_WIDTH, FIELD_HEIGHT, TRUE);
        MoveWindow(notLive_, SEARCH_WIDTH + 2 * MARGIN, MARGIN, NOT_LIVE_WIDTH, FIELD_HEIGHT, TRUE);
        MoveWindow(counts_, countsLeft, MARGIN + 3, std::max(0, width - countsLeft - MARGIN),
                   FIELD_HEIGHT - 3, TRUE);
        break;
    }
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_BINDING_SEARCH) {
            if (HIWORD(wParam) == EN_CHANGE) {
                Change([this] { table_.Search(TextOf(search_)); });
            }
            return 0;
        }
        if (LOWORD(wParam) == CMD_BINDINGS_NOT_LIVE && lParam == 0) { // by its key
            Button_SetCheck(notLive_, Button_GetCheck(notLive_) == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED);
        }
        break;
    default:
        break;
    }
    return ListWindow::OnMessage(message, wParam, lParam);
}

LRESULT BindingsWindow::OnListNotify(const NMHDR& header) {
    if (header.code == static_cast<UINT>(NM_DBLCLK)) {
        GoTo();
    } else if (header.code == static_cast<UINT>(LVN_COLUMNCLICK)) {
        SortBy(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
    } else {
        return ListWindow::OnListNotify(header);
    }
    return 0;
}

// What is listed.

void BindingsWindow::Look() {
    Change([this] {
        if (root_ != nullptr && isOpen_) {
            table_.Read(root_);
        }
    });
}

template <class Action>
void BindingsWindow::Change(Action action) {
    std::vector<Identity> selected;
    for (int row = -1; (row = ListView_GetNextItem(List(), row, LVNI_SELECTED)) >= 0;) {
        if (row < table_.Count() && selected.size() < MOST_SELECTED) {
            selected.push_back({table_[row].object, table_[row].row, table_[row].address});
        }
    }
    const int before = table_.Count();
    const std::vector<std::size_t> shown = table_.Shown();
    action();
    if (table_.Shown() != shown) {
        ListView_SetItemState(List(), -1, 0, LVIS_SELECTED);
    }
    if (table_.Count() != before || ListView_GetItemCount(List()) != before) {
        SendMessageA(List(), LVM_SETITEMCOUNT, static_cast<WPARAM>(table_.Count()), LVSICF_NOSCROLL);
    }
    if (table_.Shown() != shown) {
        for (int row = 0; !selected.empty() && row < table_.Count(); ++row) {
            if (std::find(selected.begin(), selected.end(), table_[row]) != selected.end()) {
                ListView_SetItemState(List(), row, LVIS_SELECTED, LVIS_SELECTED);
            }
        }
    }
    const int top = ListView_GetTopIndex(List());
    ListView_RedrawItems(List(), top, top + ListView_GetCountPerPage(List()));
    ShowCounts();
}

void BindingsWindow::ShowCounts() {
    std::string text =
        std::to_string(table_.Total()) + " bindings, " + std::to_string(table_.NotLive()) + " not live";
    if (table_.Count() != table_.Total()) {
        text = std::to_string(table_.Count()) + " of " + text;
    }
    if (text != countsText_) {
        countsText_ = text;
        SetWindowTextA(counts_, text.c_str());
    }
}

void BindingsWindow::SortBy(int column) {
    descending_ = column == sorted_ && !descending_;
    const HWND header = ListView_GetHeader(List());
    for (int i = 0; i < BINDING_COLUMNS; ++i) {
        HDITEMA item{};
        item.mask = HDI_FORMAT;
        SendMessageA(header, HDM_GETITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        item.fmt |= i != column ? 0 : descending_ ? HDF_SORTDOWN : HDF_SORTUP;
        SendMessageA(header, HDM_SETITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    sorted_ = column;
    Change([this] { table_.SortBy(static_cast<BindingColumn>(sorted_), descending_); });
}

void BindingsWindow::GoTo() {
    const int row = ListView_GetNextItem(List(), -1, LVNI_SELECTED);
    if (row < 0 || row >= table_.Count()) {
        return;
    }
    HOSTINFO* object = table_[row].object;
    if (!a_IsAlive(object)) {
        return Look();
    }
    if (const std::string why = actions_.goTo(object); !why.empty()) {
        countsText_ = why;
        SetWindowTextA(counts_, why.c_str()); // until the next look
    }
}

void BindingsWindow::Export() {
    const std::string file = actions_.askFile(Handle());
    if (file.empty()) {
        return;
    }
    const bool isTable = file.size() >= 4 && lstrcmpiA(file.c_str() + file.size() - 4, ".csv") == 0;
    Look();
    if (const DWORD error = WriteTextFile(file, isTable ? table_.Csv() : table_.Text())) {
        actions_.warn(file + " cannot be written: " + ErrorText(error));
    }
}
