#include "Panel/lists/CheckWindow.h"

#include "Panel/resource.h"

#include <commctrl.h>

namespace {

enum Column { COLUMN_KIND, COLUMN_OBJECT, COLUMN_TEXT };
constexpr ListColumn COLUMNS[] = {{"Kind", 90}, {"Object", 150}, {"Finding", 1000}};

} // namespace

bool CheckWindow::Create(HWND frame, HFONT font) {
    return ListWindow::Create("PanelCheck", "Check of the panel", frame, font, IDM_CHECK, COLUMNS);
}

void CheckWindow::SetFindings(const std::list<PANELFINDING>& findings) {
    findings_.assign(findings.begin(), findings.end());
    Update();
}

bool CheckWindow::TranslateKey(MSG& message) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN && message.hwnd == List()) {
        Go();
        return true;
    }
    return ListWindow::TranslateKey(message);
}

void CheckWindow::OnCommand(int command) {
    return command == CMD_BINDINGS_GO ? Go() : ListWindow::OnCommand(command);
}

LRESULT CheckWindow::OnListNotify(const NMHDR& header) {
    if (header.code == static_cast<UINT>(NM_DBLCLK)) {
        Go();
    }
    return ListWindow::OnListNotify(header);
}

void CheckWindow::Go() const {
    const int row = ListView_GetNextItem(List(), -1, LVNI_SELECTED);
    if (row >= 0 && row < static_cast<int>(findings_.size())) {
        goTo_(findings_[static_cast<std::size_t>(row)].object);
    }
}

void CheckWindow::Update() {
    ListView_SetItemCountEx(List(), Count(), 0);
    InvalidateRect(List(), nullptr, FALSE);
}

std::string CheckWindow::Cell(int row, int column) const {
    if (findings_.empty()) {
        return column == COLUMN_TEXT ? "Nothing was found." : "";
    }
    const PANELFINDING& finding = findings_[static_cast<std::size_t>(row)];
    return column == COLUMN_KIND     ? a_FindingName(finding.kind)
           : column == COLUMN_OBJECT ? (finding.object.empty() ? "(panel)" : finding.object)
                                     : finding.text;
}
