#include "Panel/devices/DevicesWindow.h"

#include "Panel/common/FileDialogs.h"
#include "Panel/common/Paths.h"
#include "Panel/common/Report.h"
#include "Panel/devices/AddDeviceDialog.h"
#include "Panel/resource.h"
#include "Panel/theme/Theme.h"
#include "Panelhost/Devices.h"
#include "logic/text/Text.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr int WIDTH = 720;
constexpr int HEIGHT = 520;
constexpr int GAP = 6; // pixels
constexpr int ROW_HEIGHT = 24;
constexpr int LIST_HEIGHT = 92;
constexpr UINT_PTR CHECK_TIMER = 1;
constexpr UINT CHECK_AFTER = 300; // milliseconds after a change
constexpr UINT_PTR SUBCLASS = 2;

enum Column { COLUMN_LINE, COLUMN_WHY, COLUMN_TEXT };
constexpr ListColumn COLUMNS[] = {{"Line", 50}, {"What is wrong", 340}, {"Text", 290}};

struct ButtonRow {
    int command;
    const char* text;
    int width;
};
constexpr ButtonRow BUTTONS[] = {{CMD_DEVICES_ADD, "&Add Device...", 110},
                                 {CMD_DEVICES_SAVE, "&Save", 80},
                                 {CMD_DEVICES_RELOAD, "&Reload", 80},
                                 {CMD_DEVICES_CHOOSE, "&Choose File...", 110}};

std::string Counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

bool DevicesWindow::Create(HWND frame, HFONT font) {
    if (!ListWindow::Create("PanelDevices", "Devices", frame, font, IDM_DEVICES, COLUMNS, IDA_DEVICES,
                            LVS_SINGLESEL)) {
        return false;
    }
    font_.reset(CreateFontA(-13, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                            CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, "Courier New"));
    path_ =
        AddField(WC_STATICA, "", SS_CENTERIMAGE | SS_NOPREFIX | SS_PATHELLIPSIS, 0, IDC_DEVICES_FILE, font);
    text_ = AddField(WC_EDITA, "",
                     WS_BORDER | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                         ES_AUTOHSCROLL | ES_NOHIDESEL | ES_WANTRETURN,
                     0, IDC_DEVICES_TEXT, font_.get());
    told_ =
        AddField(WC_STATICA, "", SS_CENTERIMAGE | SS_NOPREFIX | SS_ENDELLIPSIS, 0, IDC_DEVICES_TOLD, font);
    bool areMade = path_ && text_ && told_ && numbers_.Create(Handle(), text_, font_.get());
    for (const ButtonRow& row : BUTTONS) {
        areMade = areMade && AddField(WC_BUTTONA, row.text, WS_TABSTOP, 0, row.command, font);
    }
    if (!areMade || !SetWindowSubclass(text_, TextProcedure, SUBCLASS, 0)) {
        return false;
    }
    Edit_LimitText(text_, DeviceText::LONGEST);
    SetWindowPos(Handle(), nullptr, 0, 0, WIDTH, HEIGHT, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

// Tab and Escape are the window's.
LRESULT CALLBACK DevicesWindow::TextProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                              UINT_PTR, DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, TextProcedure, SUBCLASS);
    }
    const auto* key = message == WM_GETDLGCODE ? reinterpret_cast<const MSG*>(lParam) : nullptr;
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    return key && (key->wParam == VK_TAB || key->wParam == VK_ESCAPE)
               ? result & ~(DLGC_WANTALLKEYS | DLGC_WANTTAB | DLGC_WANTMESSAGE)
               : result;
}

void DevicesWindow::Arrange() const {
    RECT client;
    GetClientRect(Handle(), &client);
    const auto place = [](HWND window, int left, int top, int width, int height) {
        SetWindowPos(window, nullptr, left, top, std::max(0, width), std::max(0, height),
                     SWP_NOZORDER | SWP_NOACTIVATE);
    };
    const int width = client.right;
    const int buttons = client.bottom - GAP - ROW_HEIGHT;
    const int list = buttons - GAP - LIST_HEIGHT;
    const int top = ROW_HEIGHT + GAP;
    place(path_, GAP, GAP / 2, width - 2 * GAP, ROW_HEIGHT);
    place(numbers_.Handle(), 0, top, LineNumbers::WIDTH, list - top);
    place(text_, LineNumbers::WIDTH, top, width - LineNumbers::WIDTH, list - top);
    place(List(), 0, list, width, LIST_HEIGHT);
    int left = GAP;
    for (const ButtonRow& row : BUTTONS) {
        place(GetDlgItem(Handle(), row.command), left, buttons, row.width, ROW_HEIGHT);
        left += row.width + GAP;
    }
    place(told_, left, buttons, width - left - GAP, ROW_HEIGHT);
    InvalidateRect(Handle(), nullptr, TRUE);
}

// What is shown.

void DevicesWindow::Open() {
    if (!IsModified()) {
        ReadFile(actions_.look().file);
    }
    Show(true);
    SetFocus(text_);
}

void DevicesWindow::Follow(bool isOtherPanel) {
    if (isOtherPanel || (!IsModified() && document_.File() != actions_.look().file)) {
        ReadFile(actions_.look().file);
    } else {
        Update();
    }
}

void DevicesWindow::ReadFile(const std::string& file) {
    fault_ = document_.Read(file);
    SetWindowTextA(text_, document_.Text().c_str());
    if (fault_.empty() && TextOf(text_) != document_.Text()) {
        fault_ = "it has characters that this system cannot show";
    }
    Edit_SetReadOnly(text_, !fault_.empty());
    Edit_SetModify(text_, FALSE);
    Check();
}

bool DevicesWindow::IsModified() const {
    return Edit_GetModify(text_) != FALSE && fault_.empty();
}

void DevicesWindow::Check() {
    KillTimer(Handle(), CHECK_TIMER);
    const Panel panel = actions_.look();
    const std::list<DEVICELINEFAULT> found = a_CheckDeviceText(
        panel.root, (document_.File().empty() ? panel.proposed : document_.File()).c_str(), TextOf(text_));
    faults_.assign(found.begin(), found.end());
    std::set<int> marked;
    for (const DEVICELINEFAULT& fault : faults_) {
        marked.insert(static_cast<int>(fault.line));
    }
    numbers_.Mark(std::move(marked));
    ListView_SetItemCountEx(List(), Count(), 0);
    InvalidateRect(List(), nullptr, FALSE);
    Tell();
}

void DevicesWindow::Update() {
    if (IsShown()) {
        Tell();
    }
}

void DevicesWindow::Tell() const {
    const Panel panel = actions_.look();
    const std::string& file = document_.File();
    const std::string title =
        "Devices - " + (file.empty() ? "no file yet" : FileName(file)) + (IsModified() ? " *" : "");
    const std::string path = file.empty() ? "The panel has no device file. Add a device, or choose a file."
                             : file == panel.file ? panel.shown
                                                  : file;
    std::size_t devices = 0;
    std::size_t notLive = 0;
    for (const auto& [name, status] : a_ListDevices(panel.root)) {
        ++devices;
        notLive += status.state == DEVICE_LIVE ? 0 : 1;
    }
    const std::string told =
        !fault_.empty() ? "This file cannot be edited here: " + fault_
        : IsModified()  ? "Not saved"
        : !faults_.empty()
            ? Counted(faults_.size(), "line") + " cannot be read"
            : Counted(devices, "device") + (devices == 0   ? ""
                                            : notLive == 0 ? ", live"
                                                           : ", " + std::to_string(notLive) + " not live");
    const auto set = [](HWND window, const std::string& text) {
        if (TextOf(window) != text) {
            SetWindowTextA(window, text.c_str());
        }
    };
    set(Handle(), title);
    set(path_, path);
    set(told_, told);
    const HMENU menu = GetMenu(Handle());
    const auto enable = [&](int command, bool enabled) {
        EnableMenuItem(menu, static_cast<UINT>(command), enabled ? MF_ENABLED : MF_GRAYED);
        if (const HWND button = GetDlgItem(Handle(), command)) {
            EnableWindow(button, enabled);
        }
    };
    enable(CMD_DEVICES_SAVE, fault_.empty());
    enable(CMD_DEVICES_ADD, fault_.empty());
    enable(CMD_DEVICES_RELOAD, !file.empty());
    enable(CMD_DEVICES_CHOOSE, panel.mayChoose);
    enable(CMD_DEVICES_BESIDE, panel.mayChoose && panel.isNamed);
    enable(CMD_DEVICES_UNDO, Edit_CanUndo(text_) != FALSE);
    enable(CMD_DEVICES_NEXT, !faults_.empty());
}

std::string DevicesWindow::Cell(int row, int column) const {
    const DEVICELINEFAULT& fault = faults_[static_cast<std::size_t>(row)];
    switch (column) {
    case COLUMN_LINE:
        return std::to_string(fault.line);
    case COLUMN_WHY:
        return fault.why;
    default: {
        std::string text = fault.text;
        std::replace_if(text.begin(), text.end(), logic::IsControl, ' ');
        return text;
    }
    }
}

// Commands.

bool DevicesWindow::MayDiscard() {
    if (!IsModified()) {
        return true;
    }
    const std::string name = document_.File().empty() ? "the device file" : FileName(document_.File());
    switch (reporter_.Ask(Handle(), "Save the changes to " + name + "?")) {
    case IDYES:
        return Save();
    case IDNO:
        ReadFile(document_.File());
        return true;
    default:
        return false;
    }
}

bool DevicesWindow::Save() {
    if (!fault_.empty()) {
        return false;
    }
    std::string file = document_.File();
    if (file.empty()) {
        file = AskDeviceFileToSave(Handle(), actions_.look().proposed);
        if (file.empty()) {
            return false;
        }
    } else if (document_.IsOtherOutside() &&
               reporter_.Ask(Handle(), FileName(file) + " was changed by another program since it was read "
                                                        "here.\n\nSave this text in its place?") != IDYES) {
        return false;
    }
    if (const std::string why = document_.Write(file, TextOf(text_)); !why.empty()) {
        reporter_.Warn(Handle(), "cannot save " + file + ": " + why);
        return false;
    }
    Edit_SetModify(text_, FALSE);
    actions_.use(file);
    Check();
    return true;
}

void DevicesWindow::Reload() {
    const std::string file = document_.File();
    if (!file.empty() && MayDiscard()) {
        ReadFile(file);
        actions_.use(file);
        Tell();
    }
}

void DevicesWindow::Choose() {
    if (!actions_.look().mayChoose || !MayDiscard()) {
        return;
    }
    if (const std::string file = AskDeviceFileToOpen(Handle(), document_.File()); !file.empty()) {
        actions_.use(file);
        Follow(false);
    }
}

void DevicesWindow::UseBeside() {
    if (actions_.look().mayChoose && MayDiscard()) {
        actions_.useBeside();
        Follow(false);
    }
}

void DevicesWindow::AddDevice() {
    if (!fault_.empty()) {
        return;
    }
    const Panel panel = actions_.look();
    const std::string text = TextOf(text_);
    const auto lines = AskForDevice(Handle(), panel.root,
                                    document_.File().empty() ? panel.proposed : document_.File(), text);
    if (lines) {
        const std::string gap = text.empty() ? "" : text.ends_with('\n') ? "\r\n" : "\r\n\r\n";
        const int end = Edit_GetTextLength(text_);
        Edit_SetSel(text_, end, end);
        SendMessageA(text_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>((gap + *lines).c_str()));
        Edit_ScrollCaret(text_);
        Check();
    }
    SetFocus(text_);
}

void DevicesWindow::GoToFault(int row) {
    if (row < 0 || row >= Count()) {
        return;
    }
    const int line = static_cast<int>(faults_[static_cast<std::size_t>(row)].line) - 1;
    const int start = Edit_LineIndex(text_, line);
    if (start >= 0) {
        Edit_SetSel(text_, start, start + Edit_LineLength(text_, start));
        Edit_ScrollCaret(text_);
        SetFocus(text_);
    }
}

void DevicesWindow::NextFault() {
    Check();
    const auto line = static_cast<std::size_t>(Edit_LineFromChar(text_, -1)) + 1;
    const auto next = std::ranges::find_if(faults_, [&](const auto& fault) { return fault.line > line; });
    GoToFault(next == faults_.end() ? 0 : static_cast<int>(next - faults_.begin()));
}

void DevicesWindow::OnCommand(int command) {
    switch (command) {
    case CMD_DEVICES_SAVE:
        Save();
        return;
    case CMD_DEVICES_RELOAD:
        return Reload();
    case CMD_DEVICES_CHOOSE:
        return Choose();
    case CMD_DEVICES_BESIDE:
        return UseBeside();
    case CMD_DEVICES_ADD:
        return AddDevice();
    case CMD_DEVICES_UNDO:
        Edit_Undo(text_);
        return;
    case CMD_DEVICES_NEXT:
        return NextFault();
    case IDCANCEL:
        return ListWindow::OnCommand(CMD_TRACE_CLOSE);
    default:
        return ListWindow::OnCommand(command);
    }
}

LRESULT DevicesWindow::OnListNotify(const NMHDR& header) {
    if (header.code == LVN_ITEMACTIVATE || header.code == NM_DBLCLK) {
        GoToFault(ListView_GetNextItem(List(), -1, LVNI_SELECTED));
        return 0;
    }
    return ListWindow::OnListNotify(header);
}

bool DevicesWindow::TranslateKey(MSG& message) {
    return (message.hwnd == Handle() || IsChild(Handle(), message.hwnd)) &&
           (ListWindow::TranslateKey(message) || IsDialogMessageA(Handle(), &message));
}

LRESULT DevicesWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
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
    case WM_SETFOCUS:
        SetFocus(text_);
        return 0;
    case WM_TIMER:
        if (wParam == CHECK_TIMER) {
            Check();
        }
        return 0;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_DEVICES_TEXT) {
            if (HIWORD(wParam) == EN_CHANGE) {
                SetTimer(Handle(), CHECK_TIMER, CHECK_AFTER, nullptr);
                Update();
            }
            return 0;
        }
        break;
    default:
        break;
    }
    return ListWindow::OnMessage(message, wParam, lParam);
}
