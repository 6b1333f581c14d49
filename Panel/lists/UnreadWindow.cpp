#include "Panel/lists/UnreadWindow.h"

#include "Panel/resource.h"

#include <commctrl.h>

#include <algorithm>

namespace {

enum Column { COLUMN_NUMBER, COLUMN_REASON, COLUMN_OBJECT, COLUMN_TEXT };
constexpr ListColumn COLUMNS[] = {{"Line", 50}, {"Reason", 110}, {"Object", 120}, {"Text", 1000}};

} // namespace

bool UnreadWindow::Create(HWND frame, HFONT font) {
    return ListWindow::Create("PanelUnread", "Unread lines", frame, font, IDM_UNREAD, COLUMNS);
}

void UnreadWindow::SetLines(std::vector<UnreadLine> lines) {
    lines_ = std::move(lines);
    Update();
}

void UnreadWindow::Update() {
    ListView_SetItemCountEx(List(), Count(), 0);
}

std::string UnreadWindow::Cell(int row, int column) const {
    const UnreadLine& line = lines_[static_cast<std::size_t>(row)];
    switch (column) {
    case COLUMN_NUMBER:
        return std::to_string(line.number);
    case COLUMN_REASON:
        return ReasonText(line.reason);
    case COLUMN_OBJECT:
        return line.object.empty() ? "(panel)" : line.object;
    default: {
        std::string text = line.text;
        std::replace_if(
            text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
        return text;
    }
    }
}
