// What the forms share: fields, lists, the tab order, colours and menus.

#include "Controls/families/FormPanel.h"

#include "Controls/drawing/DarkParts.h"
#include "Controls/families/Arrows.h"
#include "Controls/families/DarkForm.h"
#include "Controls/families/FormChildren.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/Dialogs.h"
#include "base/Gdi.h"

#include <algorithm>
#include <commctrl.h>
#include <iterator>
#include <shellapi.h>
#include <windowsx.h>

namespace {

constexpr COLORREF GROUND = RGB(212, 208, 200);
constexpr COLORREF ITEM_COLOUR = RGB(255, 255, 200);

// Lists

void DrawItem(const FORMPROPERTIES& form, const DRAWITEMSTRUCT& item) {
    const auto id = static_cast<int>(item.CtlID);
    const bool isListed = item.itemID != static_cast<UINT>(-1);
    const char* text = isListed ? reinterpret_cast<const char*>(item.itemData) : form.UnlistedText(id);
    if (form.IsDark()) {
        DrawDarkItem(form, item, text != nullptr ? text : "");
        return;
    }
    const bool isMarked = (item.itemState & (ODS_SELECTED | ODS_FOCUS)) != 0;
    const bool isEnabled = (item.itemState & ODS_DISABLED) == 0;
    const COLORREF ground = isMarked ? GetSysColor(COLOR_HIGHLIGHT) : isEnabled ? ITEM_COLOUR : GROUND;
    SetDCBrushColor(item.hDC, ground);
    FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetBkMode(item.hDC, isMarked || isEnabled ? OPAQUE : TRANSPARENT);
    SetBkColor(item.hDC, ground);
    SetTextColor(item.hDC, GetSysColor(isMarked    ? COLOR_HIGHLIGHTTEXT
                                       : isEnabled ? COLOR_WINDOWTEXT
                                                   : COLOR_GRAYTEXT));
    if (text != nullptr) {
        TextOutA(item.hDC, item.rcItem.left + 2, item.rcItem.top + 2, text, lstrlenA(text));
    }
    if (isListed && (item.itemState & ODS_COMBOBOXEDIT) == 0) {
        form.DrawPicture(id, static_cast<int>(item.itemID), item.hDC, item.rcItem);
    }
}

// Messages

// True when the command is one of a child.
bool Command(FORMPROPERTIES& form, int id, WORD code, LPARAM number) {
    const FormChild* row = id == 0 ? nullptr : form.RowOf(id);
    if (row == nullptr) {
        return false;
    }
    HWND child = form.Item(id);
    if (IsList(row->part) && code == CBN_SELCHANGE) {
        PostFromChild(form.window, id, LIST_CHOSEN, SendMessageA(child, CB_GETCURSEL, 0, 0));
    } else if (IsList(row->part) && code == LIST_CHOSEN) {
        form.ItemSelected(id, static_cast<int>(number));
    } else if (row->part == FormPart::Spin && code == ARROW_PRESSED) {
        form.StepField((row - 1)->id, static_cast<int>(number));
    } else if (row->part == FormPart::Toggle) {
        form.Toggled(id, SendMessageA(child, BM_GETCHECK, 0, 0) == BST_CHECKED);
    } else if (row->part == FormPart::Title && code == STN_CLICKED) {
        form.TitleClicked(id);
    }
    return true;
}

// True when the notification is one of a field or of its arrows.
bool Notified(FORMPROPERTIES& form, const NMHDR& header) {
    const auto id = static_cast<int>(header.idFrom);
    const FormChild* row = id == 0 ? nullptr : form.RowOf(id);
    if (row == nullptr) {
        return false;
    }
    if (row->part == FormPart::Spin && header.code == static_cast<UINT>(UDN_DELTAPOS)) {
        constexpr int MOST_STEPS = 10000;
        const int delta = reinterpret_cast<const NMUPDOWN&>(header).iDelta;
        if (form.mode == 0) {
            PostFromChild(form.window, id, ARROW_PRESSED, -std::clamp(delta, -MOST_STEPS, MOST_STEPS));
        }
        return true;
    }
    if (row->part == FormPart::Field) {
        form.FieldNotified(id, header.code);
        return true;
    }
    return false;
}

void ContextMenu(FORMPROPERTIES& form, HWND child, LPARAM lParam) {
    POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (lParam == -1) { // by a key
        RECT area{};
        GetWindowRect(child, &area);
        place = {area.left, area.bottom};
    }
    form.ShowMenu(child == form.window ? nullptr : child, place);
}

HBRUSH FieldColours(const FORMPROPERTIES& form, HDC dc, HWND field) {
    if (form.IsDark()) {
        const DarkState state{.isEnabled = field == nullptr || IsWindowEnabled(field) != FALSE,
                              .isDimmed = form.IsDimmed(form.RowOfChild(field))};
        SetTextColor(dc, state.TextColour());
        SetBkColor(dc, logic::PANEL_WELL);
        SetDCBrushColor(dc, logic::PANEL_WELL);
        return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    }
    SetBkColor(dc, FIELD_COLOUR);
    return a_GetObject(BRUSH_FIELD);
}

} // namespace

LRESULT CALLBACK FormProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    FORMPROPERTIES& form = *PropertiesOf<FORMPROPERTIES>(window);
    switch (message) {
    case WM_COMMAND:
        if (form.mode == 0 && Command(form, LOWORD(wParam), HIWORD(wParam), lParam)) {
            return 0;
        }
        break;
    case WM_NOTIFY:
        if (lParam != 0 && Notified(form, *reinterpret_cast<const NMHDR*>(lParam))) {
            return 1; // the arrows keep their position
        }
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        return reinterpret_cast<LRESULT>(
            FieldColours(form, reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(
            form.LabelColours(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    case WM_MEASUREITEM:
        if (lParam != 0) {
            reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = FORM_ITEM_HEIGHT;
            return TRUE;
        }
        break;
    case WM_DRAWITEM:
        if (lParam != 0) {
            DrawItem(form, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        }
        break;
    case WM_DROPFILES:
        a_DropFiles(&form, reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_KEYUP:
        if (wParam == VK_TAB && form.mode == 0) {
            form.EnterByTab(GetKeyState(VK_SHIFT) < 0);
            return 0;
        }
        break;
    case WM_CONTEXTMENU:
        if (form.mode == 0) {
            ContextMenu(form, reinterpret_cast<HWND>(wParam), lParam);
            return 0;
        }
        break;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

// Life

void FORMPROPERTIES::SetDefaults() {
    NeedArrows();
    interval = 1000;
    SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) | WS_CLIPCHILDREN);
    DragAcceptFiles(window, TRUE);
    font_.Load("ms sans serif,8");
    for (const FormChild& row : Layout()) {
        children_.push_back(CreateFormChild(row, window, font_.Get()));
        shown_.emplace_back(row.text);
    }
    const SIZE size = FixedSize();
    Resize(size.cx, size.cy);
}

void FORMPROPERTIES::Destroying() {
    if (isTrackingMenu_) {
        EndMenu();
    }
}

void FORMPROPERTIES::Poll() {
    for (const FormChild& row : Layout()) {
        if (IsList(row.part) && SendMessageA(Item(row.id), CB_GETDROPPEDSTATE, 0, 0) != 0) {
            return;
        }
    }
    PollBlock();
}

// Children

const FormChild* FORMPROPERTIES::RowOf(int id) const {
    const auto layout = Layout();
    const auto found =
        std::find_if(layout.begin(), layout.end(), [id](const FormChild& row) { return row.id == id; });
    return found == layout.end() ? nullptr : &*found;
}

int FORMPROPERTIES::RowOfChild(HWND child) const {
    const auto found = std::find(children_.begin(), children_.end(), child);
    return found == children_.end() ? -1 : static_cast<int>(found - children_.begin());
}

bool FORMPROPERTIES::HasArrows(int row) const {
    const auto next = static_cast<std::size_t>(row) + 1;
    return row >= 0 && next < Layout().size() && Layout()[next].part == FormPart::Spin;
}

std::string& FORMPROPERTIES::ShownText(int id) {
    return shown_[static_cast<std::size_t>(RowOf(id) - Layout().data())];
}

void FORMPROPERTIES::GiveFocusAway(int id) {
    if (id == 0 || GetFocus() != Item(id)) {
        return;
    }
    if (RowOf(id)->part == FormPart::Field) {
        ShowField(id, std::string(ShownText(id)));
    }
    SetFocus(window);
}

void FORMPROPERTIES::ShowChild(int row, bool isShown) {
    if (!isShown) {
        GiveFocusAway(Layout()[static_cast<std::size_t>(row)].id);
    }
    if (((GetWindowLongA(Child(row), GWL_STYLE) & WS_VISIBLE) != 0) != isShown) {
        ShowWindow(Child(row), isShown ? SW_SHOWNA : SW_HIDE);
    }
}

void FORMPROPERTIES::EnableItem(int id, bool isEnabled) {
    if (!isEnabled) {
        GiveFocusAway(id);
    }
    EnableWindow(Item(id), isEnabled);
}

void FORMPROPERTIES::SetLabel(int row, const std::string& text) const {
    SetWindowTextA(Child(row), text.c_str());
}

void FORMPROPERTIES::FillList(int id, std::span<const std::string_view> texts) const {
    HWND list = Item(id);
    SendMessageA(list, CB_RESETCONTENT, 0, 0);
    for (const std::string_view text : texts) { // each ends with a zero
        const LRESULT item = SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.data()));
        SendMessageA(list, CB_SETITEMDATA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(text.data()));
    }
}

void FORMPROPERTIES::Select(int listId, int item) const {
    const HWND list = Item(listId);
    const bool isListed = item >= 0 && item < SendMessageA(list, CB_GETCOUNT, 0, 0);
    if (!isListed || item != SendMessageA(list, CB_GETCURSEL, 0, 0)) {
        SendMessageA(list, CB_SETCURSEL, static_cast<WPARAM>(isListed ? item : CB_ERR), 0);
    }
}

void FORMPROPERTIES::Check(int id, bool isDown) const {
    SendMessageA(Item(id), BM_SETCHECK, isDown ? BST_CHECKED : BST_UNCHECKED, 0);
}

// Fields

std::string FORMPROPERTIES::FieldText(int id) const {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(Item(id), text, sizeof text);
    return text;
}

bool FORMPROPERTIES::IsTyped(int id) const {
    return FieldText(id) != shown_[static_cast<std::size_t>(RowOf(id) - Layout().data())];
}

void FORMPROPERTIES::ShowField(int id, const std::string& value) {
    const std::string text = hasNoValue ? NO_VALUE : value;
    if (std::string& shown = ShownText(id); shown != text || IsTyped(id)) {
        shown = text;
        SetWindowTextA(Item(id), text.c_str());
    }
}

void FORMPROPERTIES::FollowField(int id, const std::string& text) {
    if (GetFocus() != Item(id) || !IsTyped(id)) {
        ShowField(id, text);
    }
}

std::optional<std::string> FORMPROPERTIES::Typed(int id) const {
    return IsTyped(id) ? std::optional(FieldText(id)) : std::nullopt;
}

void FORMPROPERTIES::FieldNotified(int id, UINT code) {
    const std::optional<std::string> typed = Typed(id);
    if (code == FIELD_ENTER || code == FIELD_ESCAPE || code == FIELD_AGAIN || (code == FIELD_LEFT && typed)) {
        CommitField(id, typed ? &*typed : nullptr);
    }
}

void FORMPROPERTIES::CommitAgain(int fieldId) {
    NotifyForm(Item(fieldId), FIELD_AGAIN);
}

// Focus

bool FORMPROPERTIES::MoveFocus(HWND from, bool backwards, bool isAsked) {
    const int current = GetDlgCtrlID(from);
    int next = 0;
    for (const FormChild& row : Layout()) {
        const HWND child = Item(row.id);
        const bool isBehind = backwards ? row.id < current && (next == 0 || row.id > next)
                                        : row.id > current && (next == 0 || row.id < next);
        if ((row.style & WS_TABSTOP) != 0 && isBehind && IsWindowEnabled(child) &&
            (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) != 0) {
            next = row.id;
        }
    }
    if (next == 0 || isAsked) {
        return next != 0;
    }
    const HWND child = Item(next);
    SetFocus(child);
    if (GetFocus() == child && RowOf(next)->part == FormPart::Field) {
        SendMessageA(child, EM_SETSEL, 0, -1);
    }
    return true;
}

// The child that is meant may be disabled: then the next one that is not.
void FORMPROPERTIES::EnterByTab(bool backwards) {
    const HWND first = Item(FirstId(backwards));
    if (IsWindowEnabled(first)) {
        SetFocus(first);
    } else if (!MoveFocus(first, backwards, false)) {
        MoveFocus(first, !backwards, false);
    }
}

void FORMPROPERTIES::LeaveByTab(bool backwards) const {
    if (const HWND next = GetNextDlgTabItem(GetParent(window), window, backwards); next != nullptr) {
        SetFocus(next);
    }
}

void FORMPROPERTIES::FocusChanged() const {
    if (isFocused) {
        Redraw();
    }
}

// Drawing

COLORREF FORMPROPERTIES::GroundColour() const {
    return !IsDark() ? GROUND : IsGroundDimmed() ? logic::PANEL_GROUND : logic::PANEL_PLATE;
}

void FORMPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, GroundColour());
    FillRect(dc, &client, brush);
    if (IsDark()) {
        SetDCBrushColor(dc, DARK_OFF);
        FrameRect(dc, &client, brush);
    }
}

void FORMPROPERTIES::DimmedChanged() const {
    if (IsDark()) {
        RedrawParts();
    }
}

void FORMPROPERTIES::RedrawParts() const {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
}

void FORMPROPERTIES::Redraw() const {
    if (IsWindowVisible(window)) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    }
}

HBRUSH FORMPROPERTIES::LabelColours(HDC dc, HWND label) const {
    const int row = RowOfChild(label);
    const FormPart part = row < 0 ? FormPart::Label : Layout()[static_cast<std::size_t>(row)].part;
    if (IsDark() && part == FormPart::Field) { // that is disabled
        return FieldColours(*this, dc, label);
    }
    const bool isMarked = part == FormPart::Title && IsMarked(row);
    const COLORREF ground = isMarked ? focusColour : GroundColour();
    constexpr int HALF = 3 * 255 / 2;
    const bool isDarkGround = GetRValue(ground) + GetGValue(ground) + GetBValue(ground) < HALF;
    const DarkState state{.isEnabled = IsWindowEnabled(label) != FALSE, .isDimmed = IsDimmed(row)};
    SetTextColor(dc, IsDark() && !isMarked      ? state.TextColour()
                     : !state.isEnabled         ? GetSysColor(COLOR_GRAYTEXT)
                     : isMarked && isDarkGround ? RGB(255, 255, 255)
                                                : RGB(0, 0, 0));
    SetBkMode(dc, TRANSPARENT);
    SetBkColor(dc, ground);
    SetDCBrushColor(dc, ground);
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    if (!notEqual) {
        return brush;
    }
    // The sign lies behind the labels.
    RECT area{};
    GetClientRect(label, &area);
    FillRect(dc, &area, brush);
    POINT sign = NotEqualPlace();
    MapWindowPoints(window, label, &sign, 1);
    a_GetNotEqualSign()->Draw(dc, sign.x, sign.y);
    return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
}

// Menu

int FORMPROPERTIES::TrackMenu(int resource, bool canPaste, POINT place) {
    const HMENU menus = LoadMenuA(ModuleInstance(), MAKEINTRESOURCEA(resource));
    EnableMenuItem(menus, IDM_PASTE_VALUE,
                   static_cast<UINT>(MF_BYCOMMAND) | (canPaste ? MF_ENABLED : MF_GRAYED));
    isTrackingMenu_ = true;
    const int command = TrackPopupMenu(GetSubMenu(menus, 0), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x,
                                       place.y, 0, window, nullptr);
    DestroyMenu(menus);
    isTrackingMenu_ = false;
    return command;
}

// Keywords

int FORMPROPERTIES::FocusKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerInteger(&record, isFocused ? 1 : 0);
    }
    const auto text = TextToSet(&record);
    if (!text) {
        return 0;
    }
    const bool shallBe = text->empty() || text->front() != '0';
    if (shallBe != isFocused) {
        isFocused = shallBe;
        Redraw();
    }
    return 1;
}
