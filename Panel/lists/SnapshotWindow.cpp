#include "Panel/lists/SnapshotWindow.h"

#include "Panel/common/Paths.h"
#include "Panel/common/Report.h"
#include "Panel/resource.h"
#include "Panel/theme/Theme.h"
#include "Panelhost/HostInterface.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <unordered_map>

namespace {

enum Column { COLUMN_ADDRESS, COLUMN_SNAPSHOT, COLUMN_NOW, COLUMN_STATE };
constexpr ListColumn COLUMNS[] = {{"Parameter", 150}, {"Snapshot", 90}, {"Now", 90}, {"State", 130}};

constexpr int NAMES_WIDTH = 150;
constexpr int ROW_HEIGHT = 23;
constexpr int GAP = 6;
constexpr ULONGLONG COMPARE_EVERY = 1000; // milliseconds
constexpr ULONGLONG FOLLOW_EVERY = 200;   // while a recall is under way

// Parts of the lower edge from left to right, in two rows.
struct Part {
    int id, row, left, width;
};
constexpr Part PARTS[] = {
    {IDC_SNAPSHOT_NAME, 0, GAP, NAMES_WIDTH - GAP},
    {CMD_SNAPSHOT_TAKE, 1, GAP, NAMES_WIDTH - GAP},
    {IDC_SNAPSHOT_DIFFERENCES, 0, NAMES_WIDTH + GAP, 130},
    {IDC_SNAPSHOT_FADE, 0, NAMES_WIDTH + 142, 50},
    {IDC_SNAPSHOT_SECONDS, 0, NAMES_WIDTH + 196, 110},
    {CMD_SNAPSHOT_RECALL, 1, NAMES_WIDTH + GAP, 90},
    {CMD_SNAPSHOT_RECALL_SELECTED, 1, NAMES_WIDTH + 102, 120},
    {CMD_SNAPSHOT_STOP, 1, NAMES_WIDTH + 228, 70},
};

const char* StateText(int state) {
    switch (state) {
    case SNAPSHOT_EQUAL:
        return "the same";
    case SNAPSHOT_DIFFERS:
        return "differs";
    default:
        return "not known";
    }
}

} // namespace

bool SnapshotWindow::Create(HWND frame, HFONT font) {
    font_ = font;
    if (!ListWindow::Create("PanelSnapshots", "Snapshots", frame, font, IDM_SNAPSHOTS, COLUMNS)) {
        return false;
    }
    Add(WC_LISTBOXA, "", WS_BORDER | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
        IDC_SNAPSHOT_LIST);
    Add(WC_EDITA, "", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, IDC_SNAPSHOT_NAME);
    Add(WC_BUTTONA, "&Take", WS_TABSTOP, CMD_SNAPSHOT_TAKE);
    Add(WC_BUTTONA, "&Differences only", WS_TABSTOP | BS_AUTOCHECKBOX, IDC_SNAPSHOT_DIFFERENCES);
    Add(WC_EDITA, "0", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, IDC_SNAPSHOT_FADE);
    Add(WC_STATICA, "s of fade", SS_CENTERIMAGE, IDC_SNAPSHOT_SECONDS);
    Add(WC_BUTTONA, "&Recall", WS_TABSTOP, CMD_SNAPSHOT_RECALL);
    Add(WC_BUTTONA, "Recall &selected", WS_TABSTOP, CMD_SNAPSHOT_RECALL_SELECTED);
    Add(WC_BUTTONA, "St&op", WS_TABSTOP, CMD_SNAPSHOT_STOP);
    Add(WC_STATICA, "", SS_CENTERIMAGE | SS_NOPREFIX | SS_ENDELLIPSIS, IDC_SNAPSHOT_REPORT);
    Arrange();
    return Item(IDC_SNAPSHOT_REPORT) != nullptr;
}

HWND SnapshotWindow::Add(const char* className, const char* text, DWORD style, int id) const {
    const HWND part = CreateWindowExA(0, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, Handle(),
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                      GetModuleHandleA(nullptr), nullptr);
    SetWindowFont(part, font_, FALSE);
    return part;
}

void SnapshotWindow::Arrange() const {
    RECT client;
    GetClientRect(Handle(), &client);
    const int below = 3 * ROW_HEIGHT + 4 * GAP;
    const int height = std::max(0L, client.bottom - below);
    const auto place = [](HWND window, int left, int top, int width, int high) {
        SetWindowPos(window, nullptr, left, top, width, high, SWP_NOZORDER | SWP_NOACTIVATE);
    };
    place(Item(IDC_SNAPSHOT_LIST), 0, 0, NAMES_WIDTH, height);
    place(List(), NAMES_WIDTH, 0, std::max(0L, client.right - NAMES_WIDTH), height);
    for (const Part& part : PARTS) {
        place(Item(part.id), part.left, height + GAP + part.row * (ROW_HEIGHT + GAP), part.width, ROW_HEIGHT);
    }
    place(Item(IDC_SNAPSHOT_REPORT), GAP, height + 2 * ROW_HEIGHT + 3 * GAP,
          std::max(0L, client.right - 2 * GAP), ROW_HEIGHT);
    InvalidateRect(Handle(), nullptr, TRUE);
}

std::string SnapshotWindow::TextOf(int id) const {
    char text[256] = "";
    GetDlgItemTextA(Handle(), id, text, sizeof text);
    return text;
}

void SnapshotWindow::Tell(const std::string& text) const {
    if (text != TextOf(IDC_SNAPSHOT_REPORT)) {
        SetDlgItemTextA(Handle(), IDC_SNAPSHOT_REPORT, text.c_str());
    }
}

void SnapshotWindow::SetPanel(HOSTINFO* root) {
    root_ = root;
    recalled_.clear();
    wasUnderWay_ = false;
    Tell("");
    ListNames("");
}

void SnapshotWindow::ShowNow() {
    ListNames(name_);
    Show(true);
    SetFocus(Item(IDC_SNAPSHOT_LIST));
}

void SnapshotWindow::ListNames(const std::string& selected) {
    const HWND list = Item(IDC_SNAPSHOT_LIST);
    ListBox_ResetContent(list);
    for (const std::string& name : a_ListSnapshots(root_)) {
        ListBox_AddString(list, name.c_str());
    }
    const int index = selected.empty() ? LB_ERR : ListBox_FindStringExact(list, -1, selected.c_str());
    ListBox_SetCurSel(list, index);
    if (root_ != nullptr && a_SnapshotFile(root_, "x").empty()) {
        Tell("Snapshots lie beside the panel file: save the panel first.");
    }
    Choose();
}

// Reads the one that is selected.
void SnapshotWindow::Choose() {
    char name[256] = "";
    const HWND list = Item(IDC_SNAPSHOT_LIST);
    const int index = ListBox_GetCurSel(list);
    if (index != LB_ERR && ListBox_GetTextLen(list, index) < static_cast<int>(sizeof name)) {
        ListBox_GetText(list, index, name);
        SetDlgItemTextA(Handle(), IDC_SNAPSHOT_NAME, name);
    }
    name_ = name;
    rows_.clear();
    if (SNAPSHOT snapshot; !name_.empty() && a_ReadSnapshot(a_SnapshotFile(root_, name).c_str(), &snapshot)) {
        for (SNAPSHOTVALUE& value : snapshot.values) {
            rows_.push_back({std::move(value), {}, {}, true});
        }
        Tell(snapshot.panel + ", " + snapshot.time + ", " + std::to_string(rows_.size()) + " values");
    } else if (!name_.empty()) {
        Tell("The file of " + name_ + " cannot be read.");
    }
    Compare();
}

void SnapshotWindow::Compare() {
    std::unordered_map<std::string, RECALLEDVALUE> report;
    if (recalled_ == name_) {
        for (RECALLEDVALUE& value : a_ListRecall(root_)) {
            std::string address = value.address;
            report[std::move(address)] = std::move(value);
        }
    }
    const bool isDifferencesOnly = Button_GetCheck(Item(IDC_SNAPSHOT_DIFFERENCES)) == BST_CHECKED;
    std::vector<std::size_t> shown;
    for (Row& row : rows_) {
        row.now.clear();
        const int compared = a_CompareWithNow(root_, row.value, &row.now);
        const auto found = report.find(row.value.address);
        const int state = found == report.end() ? RECALL_DONE : found->second.state;
        row.state = state == RECALL_UNDER_WAY ? "on its way"
                    : state == RECALL_DONE    ? StateText(compared)
                                              : found->second.why;
        if (!isDifferencesOnly || compared != SNAPSHOT_EQUAL) {
            shown.push_back(static_cast<std::size_t>(&row - rows_.data()));
        }
    }
    if (shown != shown_) { // other rows: what was selected are others now
        ListView_SetItemState(List(), -1, 0, LVIS_SELECTED);
        shown_ = std::move(shown);
        ListView_SetItemCountEx(List(), Count(), LVSICF_NOSCROLL);
    }
    InvalidateRect(List(), nullptr, FALSE);
    next_ = GetTickCount64() + COMPARE_EVERY;
}

void SnapshotWindow::Update() {
    if (IsShown()) {
        Compare();
    }
}

void SnapshotWindow::Tick() {
    if (!IsShown() || root_ == nullptr) {
        return;
    }
    const int underWay = ph_ListRecall(root_, nullptr, nullptr);
    EnableWindow(Item(CMD_SNAPSHOT_STOP), underWay > 0);
    if (underWay > 0 && !wasUnderWay_) {
        next_ = 0;
    }
    const bool hasEnded = wasUnderWay_ && underWay == 0;
    wasUnderWay_ = underWay > 0;
    if (GetTickCount64() < next_ && !hasEnded) {
        return;
    }
    Compare();
    if (underWay > 0) {
        next_ = GetTickCount64() + FOLLOW_EVERY;
        Tell(std::to_string(underWay) + " values on their way");
    } else if (hasEnded || (recalled_ == name_ && !recalled_.empty())) {
        int failed = 0;
        int overtaken = 0;
        int stopped = 0;
        const auto values = a_ListRecall(root_);
        for (const RECALLEDVALUE& value : values) {
            failed += value.state == RECALL_FAILED ? 1 : 0;
            overtaken += value.state == RECALL_OVERTAKEN ? 1 : 0;
            stopped += value.state == RECALL_STOPPED ? 1 : 0;
        }
        const auto part = [](int count, const char* what) {
            return count == 0 ? std::string() : ", " + std::to_string(count) + what;
        };
        Tell(recalled_ + ": " +
             std::to_string(static_cast<int>(values.size()) - failed - overtaken - stopped) + " of " +
             std::to_string(values.size()) + " values set" + part(failed, " could not be set") +
             part(overtaken, " set by somebody else") + part(stopped, " stopped"));
    }
}

std::string SnapshotWindow::Cell(int row, int column) const {
    const Row& shown = rows_[shown_[static_cast<std::size_t>(row)]];
    switch (column) {
    case COLUMN_ADDRESS:
        return shown.value.address;
    case COLUMN_SNAPSHOT:
        return shown.value.text;
    case COLUMN_NOW:
        return shown.now;
    default:
        return shown.state;
    }
}

void SnapshotWindow::Take() {
    const std::string name = TextOf(IDC_SNAPSHOT_NAME);
    const std::string file = a_SnapshotFile(root_, name.c_str());
    if (file.empty()) {
        reporter_.Warn(Handle(), a_SnapshotFile(root_, "x").empty()
                                     ? "the panel has no file yet: save it first, snapshots lie beside it"
                                     : "\"" + name + "\" cannot be the name of a snapshot");
        return;
    }
    if (FileExists(file) && reporter_.Ask(Handle(), "Replace the snapshot " + name + "?") != IDYES) {
        return;
    }
    SetLastError(ERROR_SUCCESS);
    const int count = ph_TakeSnapshot(root_, file.c_str(), nullptr);
    if (count < 0) {
        reporter_.Warn(Handle(), "cannot write " + file + ": " + ErrorText(GetLastError()));
        return;
    }
    recalled_.clear();
    ListNames(name);
}

void SnapshotWindow::Recall(bool isSelectionOnly) {
    const std::string file = a_SnapshotFile(root_, name_.c_str());
    char* end = nullptr;
    const std::string seconds = TextOf(IDC_SNAPSHOT_FADE);
    const double fade = std::strtod(seconds.c_str(), &end);
    if (name_.empty() || file.empty()) {
        return;
    }
    constexpr double longest = 3600; // seconds
    if (end == seconds.c_str() || *end != '\0' || !(fade >= 0 && fade <= longest)) {
        reporter_.Warn(Handle(), "the fade takes 0 to 3600 seconds, not \"" + seconds + "\"");
        return;
    }
    const int milliseconds = static_cast<int>(std::lround(fade * 1000));
    std::list<std::string> chosen;
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        if (ListView_GetItemState(List(), static_cast<int>(i), LVIS_SELECTED) != 0) {
            chosen.push_back(rows_[shown_[i]].value.address);
        }
    }
    const int started = isSelectionOnly ? a_RecallSnapshot(root_, file.c_str(), chosen, milliseconds)
                                        : ph_RecallSnapshot(root_, file.c_str(), milliseconds);
    if (started < 0) {
        reporter_.Warn(Handle(), "cannot read " + file);
        return;
    }
    recalled_ = name_;
    wasUnderWay_ = true;
    next_ = 0;
    Tick();
}

void SnapshotWindow::OnCommand(int command) {
    if (root_ == nullptr) {
        return;
    }
    switch (command) {
    case CMD_SNAPSHOT_TAKE:
        return Take();
    case CMD_SNAPSHOT_RECALL:
        return Recall(false);
    case CMD_SNAPSHOT_RECALL_SELECTED:
        return Recall(true);
    case CMD_SNAPSHOT_STOP:
        ph_StopRecall(root_);
        return Tick();
    case IDC_SNAPSHOT_DIFFERENCES:
        return Compare();
    default:
        return ListWindow::OnCommand(command);
    }
}

bool SnapshotWindow::TranslateKey(MSG& message) {
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) {
        return false;
    }
    char className[16] = "";
    GetClassNameA(message.hwnd, className, sizeof className);
    const bool isText = lstrcmpiA(className, WC_EDITA) == 0; // has keys of its own
    const bool isEscape = message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE;
    return ((!isText || isEscape) && ListWindow::TranslateKey(message)) ||
           IsDialogMessageA(Handle(), &message);
}

LRESULT SnapshotWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_ERASEBKGND: {
        RECT client;
        GetClientRect(Handle(), &client);
        FillThemed(reinterpret_cast<HDC>(wParam), client, Colours().ground);
        return 1;
    }
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_SNAPSHOT_LIST) {
            if (HIWORD(wParam) == LBN_SELCHANGE && root_ != nullptr) {
                Choose();
            }
            return 0;
        }
        break;
    default:
        break;
    }
    return ListWindow::OnMessage(message, wParam, lParam);
}
