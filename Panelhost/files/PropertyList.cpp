// A keyword table as rows of a list view, and the writing of property text.

#include "Panelhost/PropertyList.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "Panelhost/files/PanelSaving.h"
#include "Panelhost/files/TextCollector.h"
#include "Panelhost/SecretKeywords.h"

#include <commctrl.h>
#include <optional>

LRESULT a_ListProperties(HOSTINFO* object, const KEYWORDROW* table, HWND listView, bool allRows) {
    if (object == nullptr || table == nullptr) {
        return 0;
    }
    char value[TEXT_SIZE];
    for (int row = 0; table[row].keyword != nullptr; ++row) {
        if (table[row].handler == nullptr || IsSecret(table[row]) || (!table[row].IsListed() && !allRows)) {
            continue;
        }
        value[0] = '\0';
        // By message: an exception of the handler has to stay in its library.
        VALUERECORD record = VALUERECORD::GetText(value, row);
        SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
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

namespace {

int WriteAll(HANDLE file, const char* text, std::size_t length) {
    if (const auto collected = TextCollector::Append(file, text, length)) {
        if (!*collected) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        }
        return *collected ? 1 : 0;
    }
    DWORD written = 0;
    if (!WriteFile(file, text, static_cast<DWORD>(length), &written, nullptr)) {
        if (GetLastError() == ERROR_SUCCESS) {
            SetLastError(ERROR_WRITE_FAULT);
        }
        return 0;
    }
    if (written != length) {
        SetLastError(ERROR_DISK_FULL);
        return 0;
    }
    return 1;
}

} // namespace

int a_WriteText(HANDLE file, const char* text, std::size_t length) {
    if (length == 0 || WriteAll(file, text, length) != 0) {
        return 1;
    }
    PanelSaving::NoteFailure(file, GetLastError());
    return 0;
}
