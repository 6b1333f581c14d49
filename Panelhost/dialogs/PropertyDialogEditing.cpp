// The property dialog's edit field, and the keys of its list.

#include "Panelhost/TypedValues.h"
#include "Panelhost/dialogs/ListView.h"
#include "Panelhost/dialogs/PropertyDialog.h"

namespace {

constexpr WPARAM FIRST_PRINTABLE = ' ';
constexpr WPARAM LONGEST_TYPED = 16 * TEXT_SIZE; // more than is taken: it is refused as a whole, not cut

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

} // namespace

// Editing in place

void PropertyDialog::BeginEdit(int row) {
    if (edit_ != nullptr) {
        Apply();
        if (Handle() == nullptr) {
            return;
        }
        EndEdit();
    }
    if (row < 0 || row >= static_cast<int>(properties_.size())) {
        return;
    }
    SelectRow(list_, row);
    const Property& property = properties_[static_cast<std::size_t>(row)];
    edited_ = property.keyword;
    edit_ = CreateWindowExA(0, WC_EDITA, property.Shown().c_str(),
                            WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | ES_AUTOHSCROLL, 0, 0, 0, 0, list_,
                            reinterpret_cast<HMENU>(IDC_PROPERTY_VALUE), nullptr, nullptr);
    if (edit_ == nullptr) {
        return;
    }
    SendMessageA(edit_, WM_SETFONT, static_cast<WPARAM>(SendMessageA(list_, WM_GETFONT, 0, 0)), FALSE);
    SendMessageA(edit_, EM_LIMITTEXT, LONGEST_TYPED, 0);
    Watch(edit_);
    PlaceEdit();
    ShowWindow(edit_, SW_SHOWNA);
    SetFocus(edit_);
    SendMessageA(edit_, EM_SETSEL, 0, -1);
}

// Over the cell of its row, under the list's header.
void PropertyDialog::PlaceEdit() const {
    const int row = edit_ == nullptr ? -1 : Find(edited_);
    if (row < 0) {
        return;
    }
    const RECT cell = Cell(row, COLUMN_VALUE);
    const auto header = reinterpret_cast<HWND>(SendMessageA(list_, LVM_GETHEADER, 0, 0));
    SetWindowPos(edit_, header, cell.left, cell.top, cell.right - cell.left, cell.bottom - cell.top - 1,
                 SWP_NOACTIVATE);
}

// As property text, where it has not that form yet. What cannot be read is for the object to refuse.
std::string PropertyDialog::ValueFor(const std::string& keyword, const std::string& typed) const {
    const int row = a_FindKeyword(Object()->GetHostinfoTable(), keyword);
    const KEYWORDINFO* infos = Object()->GetKeywordInfo();
    if (row < 0 || infos == nullptr ||
        a_ReadTyped(keyword.c_str(), infos[row], typed, true).objection.empty()) {
        return typed;
    }
    const TYPEDVALUE read = a_ReadTyped(keyword.c_str(), infos[row], typed);
    return read.objection.empty() ? read.value : typed;
}

bool PropertyDialog::Apply() {
    const std::string keyword = edited_;
    const std::string text = WindowText(edit_);
    const int before = Find(keyword);
    if (before < 0) {
        return true;
    }
    bool taken = true;
    if (text != properties_[static_cast<std::size_t>(before)].value) {
        applying_ = true;
        taken = Load(keyword + "=" + ValueFor(keyword, text));
        applying_ = false;
        if (Handle() == nullptr || Object() == nullptr) {
            return false;
        }
    }
    if (const int row = Find(keyword); row >= 0) { // the rows may be others after the loading
        Property& property = properties_[static_cast<std::size_t>(row)];
        property.refused = taken ? std::nullopt : std::optional(text);
        Show(row);
    }
    if (taken) {
        Refresh();
    }
    return taken;
}

void PropertyDialog::EndEdit() {
    const HWND edit = edit_;
    edit_ = nullptr; // first, so that the loss of the focus applies nothing
    if (GetFocus() == edit) {
        SetFocus(list_);
    }
    DestroyWindow(edit);
}

void PropertyDialog::ApplyAndMove(int step, bool edit) {
    const int row = Find(edited_);
    if (!Apply()) {
        return; // the edit field stays with what was typed
    }
    EndEdit();
    const int next = row + step;
    if (next < 0 || next >= static_cast<int>(properties_.size())) {
        return;
    }
    SelectRow(list_, next);
    if (edit) {
        BeginEdit(next);
    }
}

void PropertyDialog::PutBack(int row) {
    if (row >= 0) {
        properties_[static_cast<std::size_t>(row)].refused.reset();
        Show(row);
    }
}

bool PropertyDialog::OnEditKey(WPARAM key) {
    switch (key) {
    case VK_RETURN:
        ApplyAndMove(1, false);
        return true;
    case VK_TAB:
        ApplyAndMove(IsDown(VK_SHIFT) ? -1 : 1, true);
        return true;
    case VK_ESCAPE:
        PutBack(Find(edited_));
        EndEdit();
        return true;
    default:
        return false;
    }
}

void PropertyDialog::OnEditLeft(HWND to) {
    if (edit_ == nullptr || applying_ || to == Item(IDCANCEL)) { // closing applies by itself
        return;
    }
    Apply();
    if (Handle() != nullptr && edit_ != nullptr) {
        EndEdit();
    }
}

std::optional<LRESULT> PropertyDialog::OnEditMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETDLGCODE:
        return DefSubclassProc(edit, message, wParam, lParam) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        return OnEditKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_CHAR: // the field would beep
        return wParam == VK_RETURN || wParam == VK_TAB || wParam == VK_ESCAPE ? std::optional<LRESULT>(0)
                                                                              : std::nullopt;
    case WM_KILLFOCUS: {
        const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
        OnEditLeft(reinterpret_cast<HWND>(wParam));
        return result;
    }
    default:
        return std::nullopt;
    }
}

// The list

bool PropertyDialog::WantsListKey(const MSG* key) const {
    return key != nullptr && key->message == WM_KEYDOWN &&
           (key->wParam == VK_RETURN || (key->wParam == VK_ESCAPE && IsRefused(SelectedRow(list_))));
}

bool PropertyDialog::OnListKey(UINT message, WPARAM key) {
    const int row = SelectedRow(list_);
    if (message == WM_CHAR) {
        if (key < FIRST_PRINTABLE || key == VK_ESCAPE || IsDown(VK_CONTROL) || row < 0) {
            return key < FIRST_PRINTABLE; // nothing that the list would search for
        }
        BeginEdit(row);
        if (edit_ != nullptr) {
            SendMessageA(edit_, WM_CHAR, key, 0); // in place of what is selected: the whole value
        }
        return true;
    }
    switch (key) {
    case VK_F2:
    case VK_RETURN:
        BeginEdit(row);
        return true;
    case VK_ESCAPE:
        PutBack(row);
        return true;
    default:
        return false;
    }
}

std::optional<LRESULT> PropertyDialog::OnListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETDLGCODE: {
        const LRESULT code = DefSubclassProc(list_, message, wParam, lParam);
        return WantsListKey(reinterpret_cast<const MSG*>(lParam)) ? code | DLGC_WANTMESSAGE : code;
    }
    case WM_KEYDOWN:
    case WM_CHAR:
        return OnListKey(message, wParam) ? std::optional<LRESULT>(0) : std::nullopt;
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
    case WM_NOTIFY: { // of its header, whose columns may change
        const LRESULT result = DefSubclassProc(list_, message, wParam, lParam);
        PlaceEdit();
        return result;
    }
    default:
        return std::nullopt;
    }
}

std::optional<LRESULT> PropertyDialog::OnPartMessage(HWND part, UINT message, WPARAM wParam, LPARAM lParam) {
    return part == list_ ? OnListMessage(message, wParam, lParam)
                         : OnEditMessage(part, message, wParam, lParam);
}

// A value that is still being edited is applied first. When it is refused the dialog stays, once.
void PropertyDialog::TryClose() {
    if (edit_ != nullptr) {
        const int row = Find(edited_);
        const bool refusedBefore =
            IsRefused(row) && properties_[static_cast<std::size_t>(row)].refused == WindowText(edit_);
        if (!refusedBefore && !Apply()) {
            if (Handle() != nullptr && edit_ != nullptr) {
                SetFocus(edit_);
            }
            return;
        }
    }
    Close();
}

bool PropertyDialog::OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL) {
            TryClose();
            return true;
        }
        break;
    case WM_NOTIFY: {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.hwndFrom != list_) {
            return false;
        }
        if (header.code == static_cast<UINT>(NM_CUSTOMDRAW)) {
            result = DrawCell(*reinterpret_cast<const NMLVCUSTOMDRAW*>(lParam));
            return true;
        }
        if (header.code == static_cast<UINT>(NM_DBLCLK)) {
            BeginEdit(reinterpret_cast<const NMITEMACTIVATE*>(lParam)->iItem);
            return true;
        }
        return false;
    }
    case WM_LBUTTONDOWN: // beside everything
        SetFocus(list_);
        return true;
    case CWM_GETCONTROLTYPE: // asked of the panel
        if (const HOSTINFO* root = a_FindRootHostinfo(Object()); root != nullptr) {
            result = SendMessageA(root->window, CWM_GETCONTROLTYPE, 0, 0);
        }
        return true;
    default:
        break;
    }
    return ObjectDialog::OnObjectMessage(message, wParam, lParam, result);
}
