#include "Controls/dialog/BindingLists.h"

#include "Panelhost/Dialogs.h"

#include <commctrl.h>
#include <iterator>

void InitializeList(ControlDialog& dialog, int id, const char* title) {
    const HWND list = dialog.Item(id);
    SendMessageA(list, LVM_SETBKCOLOR, 0, FIELD_COLOUR);
    SendMessageA(list, LVM_SETTEXTBKCOLOR, 0, FIELD_COLOUR);
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP);
    RECT client;
    GetClientRect(list, &client);
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = const_cast<char*>(title);
    column.cx = client.right - GetSystemMetrics(SM_CXVSCROLL);
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
}

void FillList(ControlDialog& dialog, int id, const BINDINGLIST& bindings) {
    const HWND list = dialog.Item(id);
    SendMessageA(list, LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const std::string& address : bindings) {
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = row++;
        item.pszText = const_cast<char*>(address.c_str());
        SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
}

namespace {

void DeleteEntries(ControlDialog& dialog, int id, bool all) {
    const bool isFunctions = id == IDC_FUNCTION_LIST;
    const CONTROLPROPERTIES& object = *dialog.object;
    BINDINGLIST bindings = isFunctions ? object.functions : object.connections;
    const auto selected = static_cast<int>(
        SendDlgItemMessageA(dialog.Handle(), id, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (all) {
        bindings.clear();
    } else if (selected >= 0 && static_cast<std::size_t>(selected) < bindings.size()) {
        bindings.erase(std::next(bindings.begin(), selected));
    }
    dialog.SendLine((isFunctions ? "*function=" : "*connection=") + a_BuildString(bindings));
}

} // namespace

void ShowListMenu(ControlDialog& dialog, int id) {
    const HMENU menus = LoadMenuA(ModuleInstance(), MAKEINTRESOURCEA(IDR_LIST_MENU));
    POINT cursor;
    GetCursorPos(&cursor);
    const int command = TrackPopupMenu(GetSubMenu(menus, 0), TPM_RETURNCMD | TPM_RIGHTBUTTON, cursor.x,
                                       cursor.y, 0, dialog.Handle(), nullptr);
    DestroyMenu(menus);
    if (command != 0) {
        DeleteEntries(dialog, id, command == IDM_DELETE_ALL);
    }
}
