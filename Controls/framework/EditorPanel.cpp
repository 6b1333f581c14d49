// What the editor panels share: their children, the fields' keys, the tab order, colours and lists.

#include "Controls/framework/EditorPanel.h"

#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "Panelhost/Gdi.h"
#include "Panelhost/Guard.h"

#include <algorithm>
#include <commctrl.h>
#include <iterator>
#include <windowsx.h>

namespace {

constexpr UINT_PTR SUBCLASS_ID = 0xED17;
constexpr int CTRL_ENTER = '\n';
constexpr int SELECT_ALL = 1; // the character of Ctrl and A
constexpr COLORREF GROUND = RGB(212, 208, 200);
constexpr COLORREF ITEM_COLOUR = RGB(255, 255, 200);
constexpr int ITEM_HEIGHT = 17;
constexpr int CLOSED_LIST_HEIGHT = 24;

struct PartClass {
    const char* className;
    DWORD style;
    DWORD extendedStyle;
};

PartClass ClassOf(EditorPart part) {
    switch (part) {
    case EditorPart::Label:
        return {"STATIC", SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX, 0};
    case EditorPart::Title:
        return {"STATIC", SS_CENTER | SS_NOTIFY | SS_NOPREFIX, 0};
    case EditorPart::List:
        return {"COMBOBOX", CBS_DROPDOWNLIST | CBS_HASSTRINGS | WS_VSCROLL, 0};
    case EditorPart::TextList:
        return {"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, 0};
    case EditorPart::Field:
        return {"EDIT", ES_MULTILINE | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case EditorPart::Spin:
        return {UPDOWN_CLASSA, UDS_ALIGNRIGHT | UDS_AUTOBUDDY | UDS_ARROWKEYS | UDS_HOTTRACK, 0};
    default:
        return {"BUTTON", BS_AUTOCHECKBOX | BS_PUSHLIKE, 0};
    }
}

bool IsList(EditorPart part) {
    return part == EditorPart::List || part == EditorPart::TextList;
}

EDITORPROPERTIES* EditorOf(HWND child) {
    return PropertiesOf<EDITORPROPERTIES>(GetParent(child));
}

LRESULT Notify(HWND field, UINT code) {
    NMHDR header{field, static_cast<UINT_PTR>(GetDlgCtrlID(field)), code};
    return SendMessageA(GetParent(field), WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

// Children

// A press on a child that is the panel's, as the control itself would have received it.
bool PassPress(const EDITORPROPERTIES& editor, HWND child, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr WPARAM PROPERTY_CLICK = MK_RBUTTON | MK_SHIFT | MK_CONTROL;
    if (message < WM_MOUSEFIRST || message > WM_MBUTTONDBLCLK ||
        !(editor.mode != 0 || (message == WM_LBUTTONDOWN && IsPanelClick(editor, wParam)) ||
          (message == WM_RBUTTONDOWN && wParam == PROPERTY_CLICK))) {
        return false;
    }
    POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    MapWindowPoints(child, editor.window, &place, 1);
    // The control's own class knows no double clicks.
    const UINT passed = message == WM_LBUTTONDBLCLK   ? WM_LBUTTONDOWN
                        : message == WM_RBUTTONDBLCLK ? WM_RBUTTONDOWN
                                                      : message;
    SendMessageA(editor.window, passed, wParam, MAKELPARAM(place.x, place.y));
    return true;
}

bool IsTabPress(const MSG* key) {
    return key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_TAB;
}

// What a child wants of the keyboard. The Tab that leaves the panel is left to whoever moves the focus there.
LRESULT WantedKeys(EDITORPROPERTIES& editor, HWND child, LPARAM lParam, LRESULT usual, bool isField) {
    const auto* key = reinterpret_cast<const MSG*>(lParam);
    if (IsTabPress(key)) {
        const bool stays = editor.MoveFocus(child, GetKeyState(VK_SHIFT) < 0, true);
        return stays ? usual | DLGC_WANTTAB : usual & ~(DLGC_WANTTAB | DLGC_WANTALLKEYS);
    }
    const bool isAnswer = key != nullptr && isField && (key->wParam == VK_RETURN || key->wParam == VK_ESCAPE);
    return isAnswer ? usual | DLGC_WANTMESSAGE : usual;
}

// True when the key is done with.
bool KeyDown(EDITORPROPERTIES& editor, HWND child, WPARAM key, bool isField) {
    if (key == VK_TAB) {
        const bool backwards = GetKeyState(VK_SHIFT) < 0;
        if (GetKeyState(VK_CONTROL) >= 0 && !editor.MoveFocus(child, backwards, false)) {
            editor.LeaveByTab(backwards);
        }
        return true;
    }
    if (isField && (key == VK_RETURN || key == VK_ESCAPE)) {
        Notify(child, key == VK_RETURN ? FIELD_ENTER : FIELD_ESCAPE);
        return true;
    }
    return false;
}

// The first line of what is on the clipboard: a field has but one.
void PasteLine(HWND field) {
    if (!OpenClipboard(field)) {
        return;
    }
    std::string line;
    if (const HANDLE block = GetClipboardData(CF_TEXT); block != nullptr) {
        if (const auto* text = static_cast<const char*>(GlobalLock(block)); text != nullptr) {
            line.assign(text, strnlen(text, std::min<std::size_t>(GlobalSize(block), TEXT_SIZE - 1)));
            GlobalUnlock(block);
        }
    }
    CloseClipboard();
    line.resize(std::min(line.size(), line.find_first_of("\r\n")));
    SendMessageA(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(line.c_str()));
}

LRESULT HandleChild(EDITORPROPERTIES& editor, HWND child, UINT message, WPARAM wParam, LPARAM lParam,
                    bool isField) {
    const bool isKey = message >= WM_KEYFIRST && message <= WM_KEYLAST;
    if (PassPress(editor, child, message, wParam, lParam) || (isKey && editor.mode != 0)) {
        return 0;
    }
    switch (message) {
    case WM_GETDLGCODE:
        return WantedKeys(editor, child, lParam, DefSubclassProc(child, message, wParam, lParam), isField);
    case WM_KEYDOWN:
        if (KeyDown(editor, child, wParam, isField)) {
            return 0;
        }
        break;
    case WM_CHAR:
        if (isField && wParam == SELECT_ALL) {
            SendMessageA(child, EM_SETSEL, 0, -1);
            return 0;
        }
        if (wParam == VK_TAB ||
            (isField && (wParam == VK_RETURN || wParam == VK_ESCAPE || wParam == CTRL_ENTER))) {
            return 0;
        }
        break;
    case WM_PASTE:
        if (isField) {
            PasteLine(child);
            return 0;
        }
        break;
    case WM_SETFOCUS:
        editor.ChildFocused(GetDlgCtrlID(child));
        break;
    case WM_KILLFOCUS: {
        const LRESULT result = DefSubclassProc(child, message, wParam, lParam);
        if (isField && IsWindow(child)) {
            Notify(child, FIELD_LEFT);
        }
        return result;
    }
    default:
        break;
    }
    return DefSubclassProc(child, message, wParam, lParam);
}

LRESULT CALLBACK ChildProc(HWND child, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR isField) noexcept {
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(child, ChildProc, SUBCLASS_ID);
    }
    EDITORPROPERTIES* editor = EditorOf(child);
    if (editor == nullptr) { // it goes, or is not there yet
        return DefSubclassProc(child, message, wParam, lParam);
    }
    return Guarded<LRESULT>(
        0, [&] { return HandleChild(*editor, child, message, wParam, lParam, isField != 0); });
}

void SetClosedHeight(HWND list) {
    SendMessageA(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), ITEM_HEIGHT);
    RECT closed{}; // what the frame adds depends on the system
    GetWindowRect(list, &closed);
    SendMessageA(list, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                 ITEM_HEIGHT + CLOSED_LIST_HEIGHT - (closed.bottom - closed.top));
}

HWND CreateChild(const EditorChild& row, HWND parent, HFONT font) {
    const PartClass partClass = ClassOf(row.part);
    const DWORD shown = row.isHidden ? 0 : WS_VISIBLE;
    HWND child = CreateWindowExA(partClass.extendedStyle, partClass.className, row.text,
                                 WS_CHILD | shown | partClass.style | row.style, row.x, row.y, row.width,
                                 row.height, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(row.id)),
                                 ModuleInstance(), nullptr);
    SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    if (IsList(row.part)) {
        SetClosedHeight(child);
    } else if (row.part == EditorPart::Field) {
        SendMessageA(child, EM_SETLIMITTEXT, TEXT_SIZE - 1, 0);
    } else if (row.part == EditorPart::Spin) {
        // In the middle of its range, where both arrows report; it stays there.
        SendMessageA(child, UDM_SETRANGE, 0, MAKELPARAM(0, 100));
        SendMessageA(child, UDM_SETPOS, 0, MAKELPARAM(50, 0));
    }
    SetWindowSubclass(child, ChildProc, SUBCLASS_ID, row.part == EditorPart::Field ? 1 : 0);
    return child;
}

// Lists

void DrawItem(const EDITORPROPERTIES& editor, const DRAWITEMSTRUCT& item) {
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
    const auto id = static_cast<int>(item.CtlID);
    const bool isListed = item.itemID != static_cast<UINT>(-1);
    const char* text = isListed ? reinterpret_cast<const char*>(item.itemData) : editor.UnlistedText(id);
    if (text != nullptr) {
        TextOutA(item.hDC, item.rcItem.left + 2, item.rcItem.top + 2, text, lstrlenA(text));
    }
    if (isListed) {
        editor.DrawPicture(id, static_cast<int>(item.itemID), item.hDC, item.rcItem);
    }
}

// Messages

// True when the command is one of a child.
bool Command(EDITORPROPERTIES& editor, int id, WORD code) {
    const EditorChild* row = id == 0 ? nullptr : editor.RowOf(id);
    if (row == nullptr) {
        return false;
    }
    HWND child = editor.Item(id);
    if (IsList(row->part) && code == CBN_SELCHANGE) {
        editor.ItemSelected(id, static_cast<int>(SendMessageA(child, CB_GETCURSEL, 0, 0)));
    } else if (row->part == EditorPart::Toggle) {
        editor.Toggled(id, SendMessageA(child, BM_GETCHECK, 0, 0) == BST_CHECKED);
    } else if (row->part == EditorPart::Title && code == STN_CLICKED) {
        editor.TitleClicked(id);
    }
    return true;
}

// True when the notification is one of a field or of its arrows.
bool Notified(EDITORPROPERTIES& editor, const NMHDR& header) {
    const auto id = static_cast<int>(header.idFrom);
    const EditorChild* row = id == 0 ? nullptr : editor.RowOf(id);
    if (row == nullptr) {
        return false;
    }
    if (row->part == EditorPart::Spin && header.code == static_cast<UINT>(UDN_DELTAPOS)) {
        constexpr int MOST_STEPS = 10000;
        const int delta = reinterpret_cast<const NMUPDOWN&>(header).iDelta;
        if (editor.mode == 0) {
            editor.StepField(id, -std::clamp(delta, -MOST_STEPS, MOST_STEPS));
        }
        return true;
    }
    if (row->part == EditorPart::Field) {
        editor.FieldNotified(id, header.code);
        return true;
    }
    return false;
}

void ContextMenu(EDITORPROPERTIES& editor, HWND child, LPARAM lParam) {
    POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (lParam == -1) { // by a key
        RECT area;
        GetWindowRect(child, &area);
        place = {area.left, area.bottom};
    }
    editor.ShowMenu(child == editor.window ? nullptr : child, place);
}

HBRUSH FieldColours(HDC dc) {
    SetBkColor(dc, FIELD_COLOUR);
    return a_GetObject(BRUSH_FIELD);
}

} // namespace

LRESULT CALLBACK EditorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    EDITORPROPERTIES& editor = *PropertiesOf<EDITORPROPERTIES>(window);
    switch (message) {
    case WM_COMMAND:
        if (editor.mode == 0 && Command(editor, LOWORD(wParam), HIWORD(wParam))) {
            return 0;
        }
        break;
    case WM_NOTIFY:
        if (lParam != 0 && Notified(editor, *reinterpret_cast<const NMHDR*>(lParam))) {
            return 1; // the arrows keep their position
        }
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        return reinterpret_cast<LRESULT>(FieldColours(reinterpret_cast<HDC>(wParam)));
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(
            editor.LabelColours(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    case WM_MEASUREITEM:
        if (lParam != 0) {
            reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = ITEM_HEIGHT;
            return TRUE;
        }
        break;
    case WM_DRAWITEM:
        if (lParam != 0) {
            DrawItem(editor, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
            return TRUE;
        }
        break;
    case WM_KEYUP:
        if (wParam == VK_TAB && editor.mode == 0) {
            SetFocus(editor.Item(editor.FirstId(GetKeyState(VK_SHIFT) < 0)));
            return 0;
        }
        break;
    case WM_CONTEXTMENU:
        if (editor.mode == 0) {
            ContextMenu(editor, reinterpret_cast<HWND>(wParam), lParam);
            return 0;
        }
        break;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

// Life

void EDITORPROPERTIES::SetDefaults() {
    static const bool areArrowsThere = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_UPDOWN_CLASS};
        return InitCommonControlsEx(&classes) != 0;
    }();
    if (!areArrowsThere) {
        TRACE("InitCommonControlsEx failed\n");
    }
    interval = 1000;
    SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) | WS_CLIPCHILDREN);
    font_.Load("ms sans serif,8");
    for (const EditorChild& row : Layout()) {
        children_.push_back(CreateChild(row, window, font_.Get()));
        shown_.emplace_back(row.text);
    }
    const SIZE size = FixedSize();
    Resize(size.cx, size.cy);
}

void EDITORPROPERTIES::Destroying() {
    if (isTrackingMenu_) {
        EndMenu();
    }
}

void EDITORPROPERTIES::Poll() {
    for (const EditorChild& row : Layout()) {
        if (IsList(row.part) && SendMessageA(Item(row.id), CB_GETDROPPEDSTATE, 0, 0) != 0) {
            return;
        }
    }
    PollRecord();
}

// Children

const EditorChild* EDITORPROPERTIES::RowOf(int id) const {
    const auto layout = Layout();
    const auto found =
        std::find_if(layout.begin(), layout.end(), [id](const EditorChild& row) { return row.id == id; });
    return found == layout.end() ? nullptr : &*found;
}

std::string& EDITORPROPERTIES::ShownText(int id) {
    return shown_[static_cast<std::size_t>(RowOf(id) - Layout().data())];
}

void EDITORPROPERTIES::GiveFocusAway(int id) {
    if (id == 0 || GetFocus() != Item(id)) {
        return;
    }
    if (RowOf(id)->part == EditorPart::Field) {
        ShowField(id, std::string(ShownText(id)));
    }
    SetFocus(window);
}

void EDITORPROPERTIES::ShowChild(int row, bool isShown) {
    if (!isShown) {
        GiveFocusAway(Layout()[static_cast<std::size_t>(row)].id);
    }
    ShowWindow(Child(row), isShown ? SW_SHOWNA : SW_HIDE);
}

void EDITORPROPERTIES::EnableItem(int id, bool isEnabled) {
    if (!isEnabled) {
        GiveFocusAway(id);
    }
    EnableWindow(Item(id), isEnabled);
}

void EDITORPROPERTIES::SetLabel(int row, const std::string& text) const {
    SetWindowTextA(Child(row), text.c_str());
}

void EDITORPROPERTIES::FillList(int id, std::span<const std::string_view> texts) const {
    HWND list = Item(id);
    SendMessageA(list, CB_RESETCONTENT, 0, 0);
    for (const std::string_view text : texts) { // each ends with a zero
        const LRESULT item = SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.data()));
        SendMessageA(list, CB_SETITEMDATA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(text.data()));
    }
}

void EDITORPROPERTIES::Select(int listId, int item) const {
    SendMessageA(Item(listId), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
}

void EDITORPROPERTIES::Check(int id, bool isDown) const {
    SendMessageA(Item(id), BM_SETCHECK, isDown ? BST_CHECKED : BST_UNCHECKED, 0);
}

// Fields

std::string EDITORPROPERTIES::FieldText(int id) const {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(Item(id), text, sizeof text);
    return text;
}

bool EDITORPROPERTIES::IsTyped(int id) const {
    return FieldText(id) != shown_[static_cast<std::size_t>(RowOf(id) - Layout().data())];
}

void EDITORPROPERTIES::ShowField(int id, const std::string& text) {
    if (std::string& shown = ShownText(id); shown != text || IsTyped(id)) {
        shown = text;
        SetWindowTextA(Item(id), text.c_str());
    }
}

void EDITORPROPERTIES::FollowField(int id, const std::string& text) {
    if (GetFocus() != Item(id) || !IsTyped(id)) {
        ShowField(id, text);
    }
}

std::optional<std::string> EDITORPROPERTIES::Typed(int id) const {
    return IsTyped(id) ? std::optional(FieldText(id)) : std::nullopt;
}

void EDITORPROPERTIES::FieldNotified(int id, UINT code) {
    const std::optional<std::string> typed = Typed(id);
    if (code == FIELD_ENTER || code == FIELD_ESCAPE || code == FIELD_AGAIN || (code == FIELD_LEFT && typed)) {
        CommitField(id, typed ? &*typed : nullptr);
    }
}

void EDITORPROPERTIES::CommitAgain(int fieldId) {
    Notify(Item(fieldId), FIELD_AGAIN);
}

// Focus

bool EDITORPROPERTIES::MoveFocus(HWND from, bool backwards, bool isAsked) {
    const int current = GetDlgCtrlID(from);
    int next = 0;
    for (const EditorChild& row : Layout()) {
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
    if (GetFocus() == child && RowOf(next)->part == EditorPart::Field) {
        SendMessageA(child, EM_SETSEL, 0, -1);
    }
    return true;
}

void EDITORPROPERTIES::LeaveByTab(bool backwards) const {
    if (const HWND next = GetNextDlgTabItem(GetParent(window), window, backwards); next != nullptr) {
        SetFocus(next);
    }
}

void EDITORPROPERTIES::FocusChanged() const {
    if (isFocused) {
        Redraw();
    }
}

// Drawing

void EDITORPROPERTIES::Draw(HDC dc, const RECT& client) const {
    SetDCBrushColor(dc, GROUND);
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void EDITORPROPERTIES::Redraw() const {
    if (IsWindowVisible(window)) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    }
}

HBRUSH EDITORPROPERTIES::LabelColours(HDC dc, HWND label) const {
    const auto place = std::find(children_.begin(), children_.end(), label);
    const auto row = static_cast<int>(place - children_.begin());
    const bool isTitle =
        place != children_.end() && Layout()[static_cast<std::size_t>(row)].part == EditorPart::Title;
    const COLORREF ground = isTitle && IsMarked(row) ? focusColour : GROUND;
    constexpr int HALF = 3 * 255 / 2;
    const bool isDark = GetRValue(ground) + GetGValue(ground) + GetBValue(ground) < HALF;
    SetTextColor(dc, !IsWindowEnabled(label)      ? GetSysColor(COLOR_GRAYTEXT)
                     : isDark && ground != GROUND ? RGB(255, 255, 255)
                                                  : RGB(0, 0, 0));
    SetBkMode(dc, TRANSPARENT);
    SetBkColor(dc, ground);
    SetDCBrushColor(dc, ground);
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    if (!notEqual) {
        return brush;
    }
    // The sign lies behind the labels.
    RECT area;
    GetClientRect(label, &area);
    FillRect(dc, &area, brush);
    POINT sign = NotEqualPlace();
    MapWindowPoints(window, label, &sign, 1);
    a_GetNotEqualSign()->Draw(dc, sign.x, sign.y);
    return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
}

// Menu

int EDITORPROPERTIES::TrackMenu(int resource, bool canPaste, POINT place) {
    const HWND self = window;
    const HMENU menus = LoadMenuA(ModuleInstance(), MAKEINTRESOURCEA(resource));
    EnableMenuItem(menus, IDM_PASTE_VALUE,
                   static_cast<UINT>(MF_BYCOMMAND) | (canPaste ? MF_ENABLED : MF_GRAYED));
    isTrackingMenu_ = true;
    const int command = TrackPopupMenu(GetSubMenu(menus, 0), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x,
                                       place.y, 0, self, nullptr);
    DestroyMenu(menus);
    if (!StillHas(self, this)) {
        return 0;
    }
    isTrackingMenu_ = false;
    return command;
}

// Requests and keywords

bool AskForValue(const REQUESTLIST& requests, int datatype, void* value) {
    REQUESTLIST items = requests; // they may change meanwhile
    int result = REQUEST_UNCHANGED;
    a_SendRequest(items, COMMAND_GET, datatype, value, &result);
    while (result > REQUEST_DELIVERED && !items.empty()) {
        REQUESTLIST first;
        first.splice(first.begin(), items, items.begin());
        a_SendRequest(first, COMMAND_GET, datatype, value, &result);
    }
    return result <= REQUEST_DELIVERED;
}

int FocusKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& editor = *static_cast<EDITORPROPERTIES*>(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerInteger(record, editor.isFocused ? 1 : 0);
    }
    const auto text = TextToSet(record);
    if (!text) {
        return 0;
    }
    const bool isFocused = text->empty() || text->front() != '0';
    if (isFocused != editor.isFocused) {
        editor.isFocused = isFocused;
        editor.Redraw();
    }
    return 1;
}

int FocusColourKeyword(VALUERECORD* record, HOSTINFO* object) {
    return Notifying<ColourKeyword<&EDITORPROPERTIES::focusColour>, &EDITORPROPERTIES::FocusChanged>(record,
                                                                                                     object);
}
