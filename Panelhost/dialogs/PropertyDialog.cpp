// The generic property dialog: the keywords of an object with their values, changed one at a time by property
// lines.

#include "Panelhost/Dialogs.h"

#include "Panelhost/Guard.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/dialogs/resource.h"

#include <algorithm>
#include <commctrl.h>
#include <string>

namespace {

constexpr int KEYWORD_COLUMN_SHARE = 3; // of the list's width, as a fraction

HOSTINFO* ObjectOf(HWND dialog) {
    auto* object = reinterpret_cast<HOSTINFO*>(GetWindowLongPtrA(dialog, GWLP_USERDATA));
    return a_IsAlive(object) ? object : nullptr;
}

HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_PROPERTY_LIST);
}

int SelectedRow(HWND dialog) {
    return static_cast<int>(
        SendMessageA(List(dialog), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::string CellText(HWND dialog, int row, int column) {
    char text[TEXT_SIZE] = "";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = TEXT_SIZE;
    SendMessageA(List(dialog), LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

void Select(HWND dialog, int row) {
    LVITEMA item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = item.stateMask;
    SendMessageA(List(dialog), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void Refill(HWND dialog) {
    const HOSTINFO* object = ObjectOf(dialog);
    if (object == nullptr) {
        return;
    }
    const HWND list = List(dialog);
    const int row = std::max(SelectedRow(dialog), 0);
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, LVM_DELETEALLITEMS, 0, 0);
    SendMessageA(object->window, CWM_SAVETOLISTCTRL, 0, reinterpret_cast<LPARAM>(list));
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    Select(dialog, row);
}

void ShowSelected(HWND dialog) {
    const int row = SelectedRow(dialog);
    SetDlgItemTextA(dialog, IDC_PROPERTY_VALUE, row < 0 ? "" : CellText(dialog, row, 1).c_str());
    SetDlgItemTextA(dialog, IDC_PROPERTY_STATUS, "");
}

void SetSelected(HWND dialog) {
    const HOSTINFO* object = ObjectOf(dialog);
    const int row = SelectedRow(dialog);
    if (object == nullptr || row < 0) {
        return;
    }
    char value[TEXT_SIZE];
    GetDlgItemTextA(dialog, IDC_PROPERTY_VALUE, value, TEXT_SIZE);
    const std::string keyword = CellText(dialog, row, 0);
    const std::string line = keyword + "=" + value;
    const bool taken = line.size() < TEXT_SIZE && SendMessageA(object->window, CWM_LOAD, LOAD_FROM_DIALOG,
                                                               reinterpret_cast<LPARAM>(line.c_str())) != 0;
    if (taken) {
        Refill(dialog);
        ShowSelected(dialog);
    } else { // what was typed stays, so that it can be mended
        SetDlgItemTextA(dialog, IDC_PROPERTY_STATUS, ("\"" + keyword + "\" cannot take this value.").c_str());
    }
}

void Initialize(HWND dialog, HOSTINFO* object) {
    SetWindowLongPtrA(dialog, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    SetWindowTextA(dialog, (object->name + " - Properties").c_str());
    const HWND list = List(dialog);
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    RECT client;
    GetClientRect(list, &client);
    const int keywordWidth = client.right / KEYWORD_COLUMN_SHARE;
    const int scrollBar = GetSystemMetrics(SM_CXVSCROLL);
    for (int column = 0; column < 2; ++column) {
        LVCOLUMNA header{};
        header.mask = LVCF_TEXT | LVCF_WIDTH;
        header.pszText = const_cast<char*>(column == 0 ? "Keyword" : "Value");
        header.cx = column == 0 ? keywordWidth : client.right - keywordWidth - scrollBar;
        SendMessageA(list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&header));
    }
    SendDlgItemMessageA(dialog, IDC_PROPERTY_VALUE, EM_LIMITTEXT, TEXT_SIZE - 1, 0);
    Refill(dialog);
    ShowSelected(dialog);
}

INT_PTR HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        Initialize(dialog, reinterpret_cast<HOSTINFO*>(lParam));
        return TRUE;
    case CWM_ATTACHDIALOG:
        Refill(dialog);
        return TRUE;
    case WM_NOTIFY: {
        const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lParam);
        if (change.hdr.idFrom == IDC_PROPERTY_LIST && change.hdr.code == LVN_ITEMCHANGED &&
            (change.uNewState & LVIS_SELECTED) != 0) {
            ShowSelected(dialog);
        }
        return TRUE;
    }
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_PROPERTY_SET) {
            SetSelected(dialog);
        } else if (LOWORD(wParam) == IDCANCEL) {
            DestroyWindow(dialog);
        }
        return TRUE;
    case WM_DESTROY:
        if (HOSTINFO* object = ObjectOf(dialog); object != nullptr && object->dialog == dialog) {
            object->dialog = nullptr;
        }
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    return Guarded(INT_PTR{FALSE}, [&] { return HandleMessage(dialog, message, wParam, lParam); });
}

} // namespace

HWND a_PropertyDlg(int, HOSTINFO* parent, HOSTINFO* object) {
    if (!a_IsAlive(object)) {
        return nullptr;
    }
    HINSTANCE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&DialogProc), &module);
    const HOSTINFO* root = a_FindRootHostinfo(parent);
    HWND owner = root == nullptr ? nullptr : GetAncestor(root->window, GA_ROOT);
    HWND dialog = CreateDialogParamA(module, MAKEINTRESOURCEA(IDD_PROPERTIES), owner, DialogProc,
                                     reinterpret_cast<LPARAM>(object));
    if (dialog != nullptr) {
        ShowWindow(dialog, SW_SHOW);
    }
    return dialog;
}
