// Buttons, keys and notifications of the connection dialog.

#include "Panelhost/Dialogs.h"
#include "Panelhost/dialogs/ConnectionDialog.h"
#include "Panelhost/dialogs/ListView.h"

#include <commctrl.h>
#include <windowsx.h>

namespace {

constexpr COLORREF LOST_COLOUR = RGB(176, 0, 32);
constexpr WPARAM CONTROL_F = 6; // the character

} // namespace

// Commands and keys

void ConnectionDialog::Enable(int id, bool enabled) const {
    const HWND item = Item(id);
    if (!enabled && GetFocus() == item) { // a disabled button would keep the keyboard to itself
        SetFocus(tree_.View());
    }
    EnableWindow(item, enabled);
}

void ConnectionDialog::UpdateButtons() {
    const Bindable* selected = tree_.Selected();
    const BoundList* list = ActiveList();
    const int row = list == nullptr ? -1 : SelectedRow(Item(list->id));
    Enable(IDC_ADD, selected != nullptr && !selected->address.empty() && Takes(ListFor(*selected)));
    Enable(IDC_REMOVE, row >= 0);
    Enable(IDC_UP, row > 0);
    Enable(IDC_DOWN, row >= 0 && row + 1 < RowCount(Item(list->id)));
}

void ConnectionDialog::OnCommand(int id, int code) {
    switch (id) {
    case IDC_SEARCH:
        if (code == EN_CHANGE) {
            Search();
        } else if (code == EDIT_ENTER) {
            Add();
        } else if (code == EDIT_ESCAPE && GetWindowTextLengthA(Item(IDC_SEARCH)) > 0) {
            SetDlgItemTextA(Handle(), IDC_SEARCH, "");
        } else if (code == EDIT_ESCAPE) {
            Close();
        }
        break;
    case IDC_ADD:
        if (ListOf(GetFocus()) == nullptr) { // Enter among what is bound presses the default button too
            Add();
        }
        break;
    case IDC_REMOVE:
        Remove();
        break;
    case IDC_UP:
        Move(-1);
        break;
    case IDC_DOWN:
        Move(1);
        break;
    default:
        break;
    }
}

bool ConnectionDialog::OnListNotify(const BoundList& list, const NMHDR& header, LRESULT& result) {
    if (header.code == static_cast<UINT>(NM_CUSTOMDRAW)) {
        auto& draw = reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(header));
        const auto row = static_cast<std::size_t>(draw.nmcd.dwItemSpec);
        result = draw.nmcd.dwDrawStage == CDDS_PREPAINT ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
        if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && row < list.shown.size() &&
            !list.shown[row].reachable) {
            draw.clrText = LOST_COLOUR;
        }
        return true;
    }
    if (header.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
        if ((change.uNewState & LVIS_SELECTED) != 0) { // one entry of both lists
            for (const BoundList& other : lists_) {
                if (other.id != list.id) {
                    SelectRow(Item(other.id), -1);
                }
            }
        }
        UpdateButtons();
    }
    return false;
}

bool ConnectionDialog::OnKey(HWND item, WPARAM key) {
    if (key == 'F' && GetKeyState(VK_CONTROL) < 0) {
        SetFocus(Item(IDC_SEARCH));
        SendDlgItemMessageA(Handle(), IDC_SEARCH, EM_SETSEL, 0, -1);
        return true;
    }
    if (key == VK_DELETE && ListOf(item) != nullptr) {
        Remove();
        return true;
    }
    if (key == VK_DOWN && item == Item(IDC_SEARCH)) {
        SetFocus(tree_.View());
        return true;
    }
    if (key == VK_RETURN && item == tree_.View()) {
        Add();
        return true;
    }
    return false;
}

bool ConnectionDialog::OnDoubleClick(POINT place) {
    const Bindable* bindable = tree_.SelectAt(place);
    if (bindable == nullptr || bindable->address.empty()) {
        return false;
    }
    Add();
    return true;
}

std::optional<LRESULT> ConnectionDialog::OnPartMessage(HWND part, UINT message, WPARAM wParam,
                                                       LPARAM lParam) {
    const bool handled =
        (message == WM_KEYDOWN && OnKey(part, wParam)) ||
        (message == WM_CHAR && (wParam == CONTROL_F || (wParam == VK_RETURN && part == tree_.View()))) ||
        (message == WM_LBUTTONDBLCLK && part == tree_.View() &&
         OnDoubleClick({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
    return handled ? std::optional<LRESULT>(0) : std::nullopt;
}

bool ConnectionDialog::OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL) {
            break;
        }
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return true;
    case WM_NOTIFY: {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.hwndFrom == tree_.View()) {
            if (tree_.OnNotify(reinterpret_cast<const NMTREEVIEWA&>(header))) {
                UpdateButtons();
            }
            return false;
        }
        const BoundList* list = ListOf(header.hwndFrom);
        return list != nullptr && OnListNotify(*list, header, result);
    }
    default:
        break;
    }
    return ObjectDialog::OnObjectMessage(message, wParam, lParam, result);
}
