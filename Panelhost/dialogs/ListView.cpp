#include "Panelhost/dialogs/ListView.h"

#include "Panelhost/Messages.h"

#include <commctrl.h>

std::string WindowText(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void AddColumn(HWND list, int column, const char* title, int width) {
    LVCOLUMNA header{};
    header.mask = LVCF_TEXT | LVCF_WIDTH;
    header.pszText = const_cast<char*>(title);
    header.cx = width;
    SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&header));
}

int RowCount(HWND list) {
    return static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0));
}

std::string CellText(HWND list, int row, int column) {
    char text[TEXT_SIZE] = "";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = TEXT_SIZE;
    SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

void SetCell(HWND list, int row, int column, const std::string& text) {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text.c_str());
    SendMessageA(list, LVM_SETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void AddRow(HWND list, const std::string& text, int image) {
    LVITEMA item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = RowCount(list);
    item.pszText = const_cast<char*>(text.c_str());
    item.iImage = image;
    SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

int SelectedRow(HWND list) {
    return static_cast<int>(SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void SelectRow(HWND list, int row) {
    LVITEMA item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = row < 0 ? 0 : item.stateMask;
    SendMessageA(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    if (row >= 0) {
        SendMessageA(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    }
}

void SetListColours(HWND list, COLORREF ground) {
    SendMessageA(list, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(ground));
    SendMessageA(list, LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(ground));
}
