// A keyword table as rows of a list view, and the writing of property text.

#include "Panelhost/PropertyTable.h"

#include "Panelhost/Messages.h"
#include "Panelhost/files/PanelSaving.h"

#include <commctrl.h>

LRESULT a_ListProperties(HOSTINFO* object, const KEYWORDROW* table, HWND listView, bool allRows) {
    if (object == nullptr || table == nullptr) {
        return 0;
    }
    char value[TEXT_SIZE];
    for (int row = 0; table[row].keyword != nullptr; ++row) {
        if (table[row].handler == nullptr || (table[row].flags == 0 && !allRows)) {
            continue;
        }
        value[0] = '\0';
        VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, value, nullptr, 0};
        table[row].handler(&record, object);
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = row; // the list view counts rows that are not shown out again
        item.pszText = const_cast<char*>(table[row].keyword);
        const auto place =
            static_cast<WPARAM>(SendMessageA(listView, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)));
        item.iSubItem = 1;
        item.pszText = value;
        SendMessageA(listView, LVM_SETITEMTEXTA, place, reinterpret_cast<LPARAM>(&item));
    }
    return 0;
}

int a_WriteText(HANDLE file, const char* text, std::size_t length) {
    DWORD written = 0;
    if (length == 0) {
        return 1;
    }
    if (!WriteFile(file, text, static_cast<DWORD>(length), &written, nullptr)) {
        PanelSaving::Failed(GetLastError());
        return 0;
    }
    if (written != length) {
        PanelSaving::Failed(ERROR_DISK_FULL);
        return 0;
    }
    return 1;
}
