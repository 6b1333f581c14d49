// The generic property dialog: the keywords of an object with their values, each edited in place and applied
// as a property line. A value that the object refuses stays as it was typed, with a note beside it, until it
// is mended or put back.

#include "Panelhost/Dialogs.h"

#include "Panelhost/PropertyValues.h"
#include "Panelhost/dialogs/Dialog.h"
#include "Panelhost/dialogs/ListView.h"
#include "Panelhost/dialogs/resource.h"
#include "base/Gdi.h"
#include "base/Guard.h"

#include <algorithm>
#include <commctrl.h>
#include <optional>
#include <string>
#include <vector>

namespace {

enum Column { COLUMN_KEYWORD, COLUMN_VALUE, COLUMN_NOTE };

constexpr int KEYWORD_WIDTH = 20; // percent of the list's width
constexpr int NOTE_WIDTH = 32;
constexpr int SMALLEST_VALUE_WIDTH = 60; // pixels
constexpr int NOTE_MARGIN = 5;           // as list views have it
constexpr int ROW_PADDING = 6;           // room for the border of the edit field, pixels
constexpr UINT_PTR LIST_SUBCLASS = 1;
constexpr UINT_PTR EDIT_SUBCLASS = 2;
constexpr COLORREF REFUSED_COLOUR = RGB(176, 0, 32);
constexpr WPARAM FIRST_PRINTABLE = ' ';
constexpr WPARAM LONGEST_TYPED = 16 * TEXT_SIZE; // more than is taken: it is refused as a whole, not cut

struct Property {
    std::string keyword;
    std::string value;                  // as the object gave it last
    std::optional<std::string> refused; // what was typed and not taken

    const std::string& Shown() const { return refused ? *refused : value; }
    std::string Note() const {
        if (!refused) {
            return {};
        }
        const std::string objection = a_LengthObjection(keyword, *refused);
        return (objection.empty() ? "Refused" : "Refused: " + objection) + ", still " +
               (value.empty() ? "empty" : value);
    }
};

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

class PropertyDialog : public ObjectDialog {
public:
    explicit PropertyDialog(HOSTINFO* object) : ObjectDialog(IDD_PROPERTIES, object) {}
    using ObjectDialog::Open;
    static HWND RaiseOpen(const HOSTINFO* object) { return Raise(IDD_PROPERTIES, object); }

private:
    void OnCreate() override;
    bool OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnResized() override;
    void Refresh() override;

    void MakeRowsHigher();
    std::vector<Property> Read() const;
    void Replace(std::vector<Property> properties);
    void Show(int row) const;
    int Find(const std::string& keyword) const;
    RECT Cell(int row, int column) const;
    void DrawNote(HDC dc, int row) const;
    LRESULT DrawCell(const NMLVCUSTOMDRAW& draw) const;

    // The edit field over a value.
    void BeginEdit(int row);
    void PlaceEdit() const;
    // Sends what was typed. False when it was refused, or the dialog went meanwhile.
    bool Apply();
    void EndEdit();
    void ApplyAndMove(int step, bool edit);
    void PutBack(int row);
    bool IsRefused(int row) const;

    static LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                     DWORD_PTR reference) noexcept;
    static LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                     DWORD_PTR reference) noexcept;
    bool OnListKey(UINT message, WPARAM key);
    bool WantsListKey(const MSG* key) const;
    bool OnEditKey(WPARAM key);
    void OnEditLeft(HWND to);
    void TryClose();

    HWND list_ = nullptr;
    HWND scratch_ = nullptr; // the object writes its values here; what differs is taken over
    HWND edit_ = nullptr;
    std::string edited_;    // keyword
    bool applying_ = false; // what the object does meanwhile may move the focus
    std::vector<Property> properties_;
    ImageList rowHeight_;
};

void PropertyDialog::OnCreate() {
    list_ = Item(IDC_PROPERTY_LIST);
    SendMessageA(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    SetListColours(list_, FIELD_COLOUR);
    MakeRowsHigher();
    RECT client;
    GetClientRect(list_, &client);
    AddColumn(list_, COLUMN_KEYWORD, "Keyword", client.right * KEYWORD_WIDTH / 100);
    AddColumn(list_, COLUMN_VALUE, "Value", SMALLEST_VALUE_WIDTH);
    AddColumn(list_, COLUMN_NOTE, "Note", client.right * NOTE_WIDTH / 100);
    scratch_ = CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | LVS_REPORT, 0, 0, 0, 0, Handle(), nullptr,
                               nullptr, nullptr);
    AddColumn(scratch_, COLUMN_KEYWORD, "", 0);
    AddColumn(scratch_, COLUMN_VALUE, "", 0);
    SetWindowSubclass(list_, ListProc, LIST_SUBCLASS, reinterpret_cast<DWORD_PTR>(this));
    SetLayout({{IDC_PROPERTY_LIST, 0, 0, 100, 100}, {IDCANCEL, 100, 100, 100, 100}});
    ObjectDialog::OnCreate();
    OnResized();
    SelectRow(list_, 0);
    SetFocus(list_);
}

// A list view has no row height of its own; its rows are as high as their images.
void PropertyDialog::MakeRowsHigher() {
    const HDC dc = GetDC(list_);
    const HGDIOBJ previous = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(list_, WM_GETFONT, 0, 0)));
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc, &metrics);
    SelectObject(dc, previous);
    ReleaseDC(list_, dc);
    rowHeight_.reset(ImageList_Create(1, metrics.tmHeight + ROW_PADDING, ILC_COLOR, 0, 1));
    SetWindowLongPtrA(list_, GWL_STYLE, GetWindowLongPtrA(list_, GWL_STYLE) | LVS_SHAREIMAGELISTS);
    SendMessageA(list_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(rowHeight_.get()));
}

void PropertyDialog::OnResized() {
    RECT client;
    GetClientRect(list_, &client);
    const auto width = [this](int column) {
        return static_cast<LONG>(SendMessageA(list_, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    };
    const LONG rest = client.right - width(COLUMN_KEYWORD) - width(COLUMN_NOTE);
    SendMessageA(list_, LVM_SETCOLUMNWIDTH, COLUMN_VALUE, std::max<LONG>(rest, SMALLEST_VALUE_WIDTH));
    PlaceEdit();
}

// Values

std::vector<Property> PropertyDialog::Read() const {
    SendMessageA(scratch_, LVM_DELETEALLITEMS, 0, 0);
    SendMessageA(Object()->window, CWM_SAVETOLISTCTRL, 0, reinterpret_cast<LPARAM>(scratch_));
    std::vector<Property> properties;
    for (int row = 0; row < RowCount(scratch_); ++row) {
        properties.push_back(
            {CellText(scratch_, row, COLUMN_KEYWORD), CellText(scratch_, row, COLUMN_VALUE), {}});
    }
    return properties;
}

void PropertyDialog::Refresh() {
    const std::string title = Object()->name + " - Properties";
    if (WindowText(Handle()) != title) {
        SetWindowTextA(Handle(), title.c_str());
    }
    std::vector<Property> now = Read();
    const auto sameKeyword = [](const Property& a, const Property& b) { return a.keyword == b.keyword; };
    if (!std::equal(now.begin(), now.end(), properties_.begin(), properties_.end(), sameKeyword)) {
        Replace(std::move(now));
        return;
    }
    for (std::size_t row = 0; row < now.size(); ++row) {
        if (now[row].value != properties_[row].value) {
            properties_[row].value = now[row].value;
            Show(static_cast<int>(row));
        }
    }
}

// The object has other keywords than before.
void PropertyDialog::Replace(std::vector<Property> properties) {
    const int selected = SelectedRow(list_);
    const std::string keyword = selected < 0 ? "" : properties_[static_cast<std::size_t>(selected)].keyword;
    for (Property& property : properties) {
        if (const int old = Find(property.keyword); old >= 0) {
            property.refused = properties_[static_cast<std::size_t>(old)].refused;
        }
    }
    properties_ = std::move(properties);
    SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list_, LVM_DELETEALLITEMS, 0, 0);
    for (std::size_t row = 0; row < properties_.size(); ++row) {
        AddRow(list_, properties_[row].keyword);
        Show(static_cast<int>(row));
    }
    SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list_, nullptr, TRUE);
    SelectRow(list_, Find(keyword));
    if (edit_ != nullptr && Find(edited_) < 0) {
        EndEdit();
    }
    OnResized();
}

void PropertyDialog::Show(int row) const {
    const Property& property = properties_[static_cast<std::size_t>(row)];
    SetCell(list_, row, COLUMN_VALUE, property.Shown());
    SetCell(list_, row, COLUMN_NOTE, property.Note());
}

int PropertyDialog::Find(const std::string& keyword) const {
    const auto found = std::find_if(properties_.begin(), properties_.end(),
                                    [&](const Property& property) { return property.keyword == keyword; });
    return found == properties_.end() ? -1 : static_cast<int>(found - properties_.begin());
}

RECT PropertyDialog::Cell(int row, int column) const {
    RECT cell{};
    cell.left = LVIR_BOUNDS;
    cell.top = column;
    SendMessageA(list_, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
    return cell;
}

bool PropertyDialog::IsRefused(int row) const {
    return row >= 0 && properties_[static_cast<std::size_t>(row)].refused.has_value();
}

// Drawn here, because a list view gives the selected row, the one that is being edited, its own colours.
void PropertyDialog::DrawNote(HDC dc, int row) const {
    RECT cell = Cell(row, COLUMN_NOTE);
    FillRect(dc, &cell, a_GetObject(BRUSH_FIELD));
    InflateRect(&cell, -NOTE_MARGIN, 0);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, REFUSED_COLOUR);
    DrawTextA(dc, properties_[static_cast<std::size_t>(row)].Note().c_str(), -1, &cell,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

LRESULT PropertyDialog::DrawCell(const NMLVCUSTOMDRAW& draw) const {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
        const auto row = static_cast<std::size_t>(draw.nmcd.dwItemSpec);
        const bool refused = row < properties_.size() && properties_[row].refused;
        if (refused && draw.iSubItem == COLUMN_NOTE) {
            DrawNote(draw.nmcd.hdc, static_cast<int>(row));
            return CDRF_SKIPDEFAULT;
        }
        const bool red = refused && draw.iSubItem == COLUMN_VALUE;
        const_cast<NMLVCUSTOMDRAW&>(draw).clrText = red ? REFUSED_COLOUR : RGB(0, 0, 0);
        return CDRF_NEWFONT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

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
    SetWindowSubclass(edit_, EditProc, EDIT_SUBCLASS, reinterpret_cast<DWORD_PTR>(this));
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
        taken = Load(keyword + "=" + text);
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

LRESULT CALLBACK PropertyDialog::EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR reference) noexcept {
    auto* dialog = reinterpret_cast<PropertyDialog*>(reference);
    return Guarded(LRESULT{0}, [&] {
        const auto keep = dialog->shared_from_this();
        switch (message) {
        case WM_GETDLGCODE:
            return DefSubclassProc(edit, message, wParam, lParam) | DLGC_WANTALLKEYS;
        case WM_KEYDOWN:
            if (dialog->OnEditKey(wParam)) {
                return LRESULT{0};
            }
            break;
        case WM_CHAR:
            if (wParam == VK_RETURN || wParam == VK_TAB || wParam == VK_ESCAPE) {
                return LRESULT{0}; // the field would beep
            }
            break;
        case WM_KILLFOCUS: {
            const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
            dialog->OnEditLeft(reinterpret_cast<HWND>(wParam));
            return result;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(edit, EditProc, EDIT_SUBCLASS);
            break;
        default:
            break;
        }
        return DefSubclassProc(edit, message, wParam, lParam);
    });
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

LRESULT CALLBACK PropertyDialog::ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR reference) noexcept {
    auto* dialog = reinterpret_cast<PropertyDialog*>(reference);
    return Guarded(LRESULT{0}, [&] {
        const auto keep = dialog->shared_from_this();
        switch (message) {
        case WM_GETDLGCODE: {
            const LRESULT code = DefSubclassProc(list, message, wParam, lParam);
            const bool wanted = dialog->WantsListKey(reinterpret_cast<const MSG*>(lParam));
            return wanted ? code | DLGC_WANTMESSAGE : code;
        }
        case WM_KEYDOWN:
        case WM_CHAR:
            if (dialog->OnListKey(message, wParam)) {
                return LRESULT{0};
            }
            break;
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_MOUSEWHEEL: {
            const LRESULT result = DefSubclassProc(list, message, wParam, lParam);
            dialog->PlaceEdit();
            return result;
        }
        case WM_NOTIFY: { // of its header, whose columns may change
            const LRESULT result = DefSubclassProc(list, message, wParam, lParam);
            dialog->PlaceEdit();
            return result;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(list, ListProc, LIST_SUBCLASS);
            break;
        default:
            break;
        }
        return DefSubclassProc(list, message, wParam, lParam);
    });
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

HWND OpenPropertyDialog(HWND owner, HOSTINFO* object) {
    if (!a_IsAlive(object)) {
        return nullptr;
    }
    return Guarded<HWND>(nullptr, [&] {
        const HWND open = PropertyDialog::RaiseOpen(object);
        return open != nullptr ? open : std::make_shared<PropertyDialog>(object)->Open(owner);
    });
}

} // namespace

HWND a_PropertyDlg(int, HOSTINFO* parent, HOSTINFO* object) {
    const HOSTINFO* root = a_FindRootHostinfo(a_IsAlive(parent) ? parent : nullptr);
    return OpenPropertyDialog(root == nullptr ? nullptr : GetAncestor(root->window, GA_ROOT), object);
}

HWND a_PropertyDlg(int, HWND owner, HOSTINFO* object) {
    return OpenPropertyDialog(owner == nullptr ? nullptr : GetAncestor(owner, GA_ROOT), object);
}
