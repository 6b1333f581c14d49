// The rows of the property dialog: what they show, and how they are drawn.

#include "Panelhost/dialogs/PropertyDialog.h"

#include "Panelhost/Dialogs.h"
#include "Panelhost/Operating.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/dialogs/ListView.h"
#include "base/Guard.h"

#include <algorithm>

namespace {

constexpr int KEYWORD_WIDTH = 20; // percent of the list's width
constexpr int NOTE_WIDTH = 32;
constexpr int SMALLEST_VALUE_WIDTH = 60; // pixels
constexpr int NOTE_MARGIN = 5;           // as list views have it
constexpr int ROW_PADDING = 6;           // room for the border of the edit field, pixels
constexpr COLORREF REFUSED_COLOUR = RGB(176, 0, 32);

} // namespace

std::string Property::Note() const {
    if (!refused) {
        return {};
    }
    const std::string objection = a_LengthObjection(keyword, *refused);
    return (objection.empty() ? "Refused" : "Refused: " + objection) + ", still " +
           (value.empty() ? "empty" : value);
}

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
    Watch(list_);
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

namespace {

HWND OpenPropertyDialog(HWND owner, HOSTINFO* object) {
    if (!a_IsAlive(object) || a_IsOnlyOperated(object)) {
        return nullptr;
    }
    return Guarded<HWND>(nullptr, [&] { return ObjectDialog::RaiseOrOpen<PropertyDialog>(object, owner); });
}

} // namespace

HWND a_PropertyDlg(int, HOSTINFO* parent, HOSTINFO* object) {
    const HOSTINFO* root = a_FindRootHostinfo(a_IsAlive(parent) ? parent : nullptr);
    return OpenPropertyDialog(root == nullptr ? nullptr : GetAncestor(root->window, GA_ROOT), object);
}

HWND a_PropertyDlg(int, HWND owner, HOSTINFO* object) {
    return OpenPropertyDialog(owner == nullptr ? nullptr : GetAncestor(owner, GA_ROOT), object);
}
