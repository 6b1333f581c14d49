#include "Panel/lists/TraceWindow.h"

#include "Panel/lists/TraceLog.h"
#include "Panel/resource.h"
#include "Panelhost/Trace.h"

#include <commctrl.h>

#include <cstdio>

namespace {

enum Column { COLUMN_TIME, COLUMN_KIND, COLUMN_TEXT };

constexpr ListColumn COLUMNS[] = {{"Time", 84}, {"Kind", 50}, {"Message", 1000}};

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

} // namespace

bool TraceWindow::Create(HWND frame, HFONT font) {
    return ListWindow::Create("PanelTrace", "Trace", frame, font, IDM_TRACE, COLUMNS);
}

void TraceWindow::Update() {
    const TraceLog::Change change = log_.Collect();
    const int count = static_cast<int>(log_.Lines().size());
    const int shown = ListView_GetItemCount(List());
    if (!IsShown() || (change.added == 0 && shown == count)) {
        return;
    }
    const bool atEnd = ListView_GetTopIndex(List()) + ListView_GetCountPerPage(List()) >= shown;
    // Lines that went moved all others up.
    const DWORD flags = LVSICF_NOSCROLL | (change.dropped == 0 && count > shown ? LVSICF_NOINVALIDATEALL : 0);
    SendMessageA(List(), LVM_SETITEMCOUNT, static_cast<WPARAM>(count), static_cast<LPARAM>(flags));
    if (atEnd && count > 0) {
        ListView_EnsureVisible(List(), count - 1, FALSE);
    }
}

void TraceWindow::OnCommand(int command) {
    if (command == CMD_TRACE_CLEAR) {
        log_.Clear();
        Update();
    } else {
        ListWindow::OnCommand(command);
    }
}

int TraceWindow::Count() const {
    return static_cast<int>(log_.Lines().size());
}

std::string TraceWindow::Cell(int row, int column) const {
    return ColumnText(log_.Lines()[static_cast<std::size_t>(row)], column);
}
