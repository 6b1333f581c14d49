#include "Panel/bindings/ReplaceWindow.h"

#include "Panel/editing/Editor.h"
#include "Panel/resource.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr UINT_PTR LOOK_TIMER = 1;
constexpr UINT LOOK_PERIOD = 500; // milliseconds
constexpr int MARGIN = 6;         // pixels
constexpr int FIELD_HEIGHT = 20;
constexpr int LABEL_WIDTH = 70;
constexpr int BUTTON_WIDTH = 90;

enum Column { COLUMN_CONTROL, COLUMN_KEYWORD, COLUMN_BEFORE, COLUMN_AFTER, COLUMN_STATE };
constexpr ListColumn COLUMNS[] = {
    {"Control", 130}, {"Keyword", 80}, {"Now", 140}, {"Then", 140}, {"Found there", 120}};

std::string Counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "es");
}

} // namespace

bool ReplaceWindow::Create(HWND frame, HFONT font) {
    if (!ListWindow::Create("PanelReplace", "Replace in Bindings", frame, font, IDM_REPLACE, COLUMNS,
                            IDA_REPLACE)) {
        return false;
    }
    labels_[0] = AddField("STATIC", "&Find", 0, 0, 0, font);
    find_ = AddField("EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, IDC_REPLACE_FIND, font);
    labels_[1] = AddField("STATIC", "Replace &by", 0, 0, 0, font);
    by_ = AddField("EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, IDC_REPLACE_BY, font);
    selectedAlone_ = AddField("BUTTON", "Only in &selected controls", WS_TABSTOP | BS_AUTOCHECKBOX, 0,
                              CMD_REPLACE_SELECTED, font);
    replace_ = AddField("BUTTON", "&Replace", WS_TABSTOP | BS_DEFPUSHBUTTON, 0, CMD_REPLACE_ALL, font);
    told_ = AddField("STATIC", "", SS_LEFTNOWORDWRAP, 0, IDC_REPLACE_TOLD, font);
    return find_ && by_ && selectedAlone_ && replace_ && told_ && labels_[0] && labels_[1];
}

int ReplaceWindow::Top() const {
    return 3 * FIELD_HEIGHT + 4 * MARGIN;
}

void ReplaceWindow::PlaceFields(int width) {
    const int left = LABEL_WIDTH + 2 * MARGIN;
    const int room = std::max(0, width - left - BUTTON_WIDTH - 2 * MARGIN);
    const int second = FIELD_HEIGHT + 2 * MARGIN;
    const int third = 2 * FIELD_HEIGHT + 3 * MARGIN;
    MoveWindow(labels_[0], MARGIN, MARGIN + 3, LABEL_WIDTH, FIELD_HEIGHT - 3, TRUE);
    MoveWindow(find_, left, MARGIN, room, FIELD_HEIGHT, TRUE);
    MoveWindow(labels_[1], MARGIN, second + 3, LABEL_WIDTH, FIELD_HEIGHT - 3, TRUE);
    MoveWindow(by_, left, second, room, FIELD_HEIGHT, TRUE);
    MoveWindow(replace_, left + room + MARGIN, MARGIN, BUTTON_WIDTH, FIELD_HEIGHT + 2, TRUE);
    MoveWindow(selectedAlone_, left, third, 170, FIELD_HEIGHT, TRUE);
    MoveWindow(told_, left + 170 + MARGIN, third + 3, std::max(0, width - left - 170 - 2 * MARGIN),
               FIELD_HEIGHT - 3, TRUE);
}

void ReplaceWindow::SetEditor(Editor* editor) {
    editor_ = editor;
    plan_ = {};
    if (editor_ == nullptr && IsShown()) {
        Show(false);
    }
}

void ReplaceWindow::Open() {
    Show(true);
    SetFocus(find_);
    Edit_SetSel(find_, 0, -1);
}

bool ReplaceWindow::TranslateKey(MSG& message) {
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) {
        return false;
    }
    const bool isEdit = (message.hwnd == find_ || message.hwnd == by_) && GetKeyState(VK_CONTROL) < 0;
    return (!isEdit && ListWindow::TranslateKey(message)) || IsDialogMessageA(Handle(), &message);
}

LRESULT ReplaceWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SHOWWINDOW:
        if (wParam != FALSE) {
            SetTimer(Handle(), LOOK_TIMER, LOOK_PERIOD, nullptr);
        } else {
            KillTimer(Handle(), LOOK_TIMER);
        }
        return 0;
    case WM_TIMER:
        if (IsOutdated()) {
            Look();
        }
        return 0;
    case WM_SIZE:
        PlaceFields(LOWORD(lParam));
        break;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_REPLACE_FIND || LOWORD(wParam) == IDC_REPLACE_BY) {
            if (HIWORD(wParam) == EN_CHANGE) {
                Look();
            }
            return 0;
        }
        break;
    default:
        break;
    }
    return ListWindow::OnMessage(message, wParam, lParam);
}

void ReplaceWindow::OnCommand(int command) {
    switch (command) {
    case IDOK: // Enter
    case CMD_REPLACE_ALL:
        return Replace();
    case CMD_REPLACE_SELECTED:
        return Look();
    case IDCANCEL:
        return ListWindow::OnCommand(CMD_TRACE_CLOSE);
    default:
        return ListWindow::OnCommand(command);
    }
}

// Bindings may change, and others be selected, while the window is open.
bool ReplaceWindow::IsOutdated() {
    return editor_ != nullptr &&
           (version_ != a_BindingsVersion(editor_->Edits().Root()) ||
            (Button_GetCheck(selectedAlone_) == BST_CHECKED && selected_ != editor_->Selected()));
}

void ReplaceWindow::Look() {
    plan_ = {};
    why_.clear();
    std::string told;
    if (editor_ != nullptr && IsShown()) {
        HOSTINFO* root = editor_->Edits().Root();
        version_ = a_BindingsVersion(root);
        selected_ = editor_->Selected();
        const auto replacement = logic::AddressReplacement::Parse(TextOf(find_), TextOf(by_), why_);
        told = why_;
        if (replacement) {
            const bool isOfSelected = Button_GetCheck(selectedAlone_) == BST_CHECKED;
            plan_ = PlanReplacement(root, isOfSelected ? &selected_ : nullptr, *replacement);
            told = plan_.entries.empty() ? "Nothing found" : Counted(plan_.entries.size(), "address");
            if (plan_.unresolved > 0) {
                told += ", " + std::to_string(plan_.unresolved) + " of them will name nothing";
            }
        }
    }
    SendMessageA(List(), LVM_SETITEMCOUNT, static_cast<WPARAM>(Count()), 0);
    SetWindowTextA(told_, told.c_str());
    EnableWindow(replace_, !plan_.lines.empty());
}

std::string ReplaceWindow::Cell(int row, int column) const {
    const ReplacePlan::Entry& entry = plan_.entries[static_cast<std::size_t>(row)];
    if (!a_IsAlive(entry.object)) {
        return "";
    }
    switch (column) {
    case COLUMN_CONTROL:
        return entry.object->name;
    case COLUMN_KEYWORD:
        return entry.keyword->keyword;
    case COLUMN_BEFORE:
        return entry.before;
    case COLUMN_AFTER:
        return entry.after;
    default:
        return entry.isTaken ? a_StateName(entry.state) : "cannot stand there";
    }
}

void ReplaceWindow::Replace() {
    if (editor_ == nullptr) {
        return;
    }
    if (IsOutdated()) {
        Look(); // what is replaced is what was shown
        return;
    }
    const ReplacePlan plan = std::move(plan_);
    if (plan.lines.empty()) {
        return;
    }
    const int taken = editor_->Apply("Replace in Bindings", plan.lines);
    Look();
    const std::string told =
        plan.lines.size() == 1
            ? taken == 1 ? "1 property changed" : "The control refuses it"
            : std::to_string(taken) + " of " + std::to_string(plan.lines.size()) + " properties changed";
    SetWindowTextA(told_, told.c_str());
}
