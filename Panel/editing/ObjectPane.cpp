#include "Panel/editing/ObjectPane.h"

#include "Panel/editing/Editor.h"
#include "Panel/common/DeviceLamp.h"
#include "Panel/editing/Icons.h"
#include "Panel/editing/RenameDialog.h"
#include "Panel/resource.h"
#include "Panel/theme/Theme.h"
#include "Panelhost/Hostinfo.h"
#include "base/Gdi.h"
#include "logic/drawing/PanelColours.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int GRIP = 5; // pixels, the edge that is dragged
constexpr int SEARCH_HEIGHT = 20;
constexpr int SEARCH_LABEL = 46;
constexpr int HINT_HEIGHT = 30;
constexpr int MARK_WIDTH = 42;
constexpr UINT TAKE_SELECTION = WM_APP; // posted to itself
constexpr UINT RENAME = WM_APP + 1;     // the same

} // namespace

ObjectPane::~ObjectPane() {
    if (signs_) {
        ImageList_Destroy(signs_);
    }
}

bool ObjectPane::Create(HWND frame, HFONT font, std::function<void(int)> resize) {
    resize_ = std::move(resize);
    if (!Window::Create("PanelObjects", "Objects", WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, {}, frame,
                        nullptr, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)))) {
        return false;
    }
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    const auto make = [&](DWORD exStyle, const char* className, const char* text, DWORD style, int id) {
        const HWND window =
            CreateWindowExA(exStyle, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, Handle(),
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
        SetWindowFont(window, font, FALSE);
        return window;
    };
    make(0, "STATIC", "Search", SS_CENTERIMAGE, IDC_OBJECT_LABEL);
    search_ = make(WS_EX_CLIENTEDGE, "EDIT", "", WS_TABSTOP | ES_AUTOHSCROLL, IDC_OBJECT_SEARCH);
    list_ = make(WS_EX_CLIENTEDGE, WC_LISTVIEWA, "Objects",
                 WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_EDITLABELS |
                     LVS_NOSORTHEADER | LVS_SHAREIMAGELISTS,
                 IDC_OBJECT_LIST);
    hint_ = make(0, "STATIC", "The upper ones are in front, come first by Tab, and are saved first.",
                 SS_NOPREFIX, IDC_OBJECT_HINT);
    if (!list_ || !search_ || !hint_) {
        return false;
    }
    FollowTheme();
    signs_ = MakeSigns();
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT);
    ListView_SetImageList(list_, signs_, LVSIL_STATE);
    ListView_SetCallbackMask(list_, LVIS_STATEIMAGEMASK);
    const std::pair<const char*, int> columns[] = {
        {"Object", 100}, {"Seen", MARK_WIDTH}, {"Lock", MARK_WIDTH}};
    for (int i = 0; i < static_cast<int>(std::size(columns)); ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = i == NAME ? LVCFMT_LEFT : LVCFMT_CENTER;
        column.pszText = const_cast<char*>(columns[i].first);
        column.cx = columns[i].second;
        SendMessageA(list_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    return true;
}

void ObjectPane::FollowTheme() {
    ImageList tiles(MakeTiles());
    for (const bool areLive : {false, true}) {
        lamps_[areLive] = ImageList_AddIcon(tiles.get(), MakeDeviceLamp(areLive).get());
    }
    ListView_SetImageList(list_, tiles.get(), LVSIL_SMALL);
    tiles_ = std::move(tiles);
}

void ObjectPane::Arrange() const {
    RECT client;
    GetClientRect(Handle(), &client);
    MoveWindow(GetDlgItem(Handle(), IDC_OBJECT_LABEL), 4, GRIP, SEARCH_LABEL - 6, SEARCH_HEIGHT, TRUE);
    MoveWindow(search_, SEARCH_LABEL, GRIP, std::max(0L, client.right - SEARCH_LABEL), SEARCH_HEIGHT, TRUE);
    const int top = GRIP + SEARCH_HEIGHT + 2;
    MoveWindow(list_, 0, top, client.right, std::max(0L, client.bottom - top - HINT_HEIGHT), TRUE);
    MoveWindow(hint_, 4, client.bottom - HINT_HEIGHT + 2, client.right - 8, HINT_HEIGHT - 2, TRUE);
    RECT inside;
    GetClientRect(list_, &inside);
    const LONG bar =
        (GetWindowLongA(list_, GWL_STYLE) & WS_VSCROLL) != 0 ? 0 : GetSystemMetrics(SM_CXVSCROLL);
    ListView_SetColumnWidth(list_, NAME, std::max(60L, inside.right - bar - 2 * MARK_WIDTH));
    // The pixels that the system keeps of a window that was moved can be those of before its first painting.
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// What is shown.

void ObjectPane::SetEditor(Editor* editor) {
    EndDrag(false);
    if (std::exchange(naming_, false)) {
        SendMessageA(list_, LVM_CANCELEDITLABEL, 0, 0);
    }
    named_ = nullptr;
    editor_ = editor;
    open_.clear();
    shown_.clear();
    SetWindowTextA(search_, "");
    ShowRows();
}

void ObjectPane::Update() {
    if (!editor_ || naming_ || !dragged_.empty()) {
        return;
    }
    std::erase_if(open_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    for (HOSTINFO* selected : editor_->Selected()) { // what is selected is listed
        for (const HOSTINFO* above = selected->parent; above && above != editor_->Edits().Root();
             above = above->parent) {
            open_.insert(above);
        }
    }
    ShowRows();
    ShowSelection();
}

// Selection.

void ObjectPane::ShowSelection() {
    const std::vector<HOSTINFO*>& selected = editor_->Selected();
    if (taking_ || selected == shown_) {
        return;
    }
    shown_ = selected;
    following_ = true;
    ListView_SetItemState(list_, -1, 0, LVIS_SELECTED);
    int last = -1;
    for (const HOSTINFO* object : selected) {
        if (const int row = RowOf(object); row >= 0) {
            ListView_SetItemState(list_, row, LVIS_SELECTED, LVIS_SELECTED);
            last = row;
        }
    }
    if (last >= 0) {
        ListView_SetItemState(list_, last, LVIS_FOCUSED, LVIS_FOCUSED);
        ListView_EnsureVisible(list_, last, FALSE);
    }
    following_ = false;
}

// The row with the focus says inside what is selected.
void ObjectPane::TakeSelection() {
    taking_ = false;
    if (!editor_) {
        return;
    }
    std::vector<HOSTINFO*> chosen;
    for (int row = -1; (row = ListView_GetNextItem(list_, row, LVNI_SELECTED)) >= 0;) {
        if (HOSTINFO* object = ObjectOf(row)) {
            chosen.push_back(object);
        }
    }
    const HOSTINFO* focused = ObjectOf(ListView_GetNextItem(list_, -1, LVNI_FOCUSED));
    const HOSTINFO* parent = chosen.empty() ? nullptr : chosen.front()->parent;
    if (focused && std::find(chosen.begin(), chosen.end(), focused) != chosen.end()) {
        parent = focused->parent;
    }
    std::erase_if(chosen, [&](const HOSTINFO* object) { return object->parent != parent; });
    editor_->Choose(chosen);
    shown_.clear();
    shown_.push_back(nullptr); // so that the list shows what became of it
    ShowSelection();
    if (const int row = RowOf(focused); row >= 0) { // the keys go on from there
        following_ = true;
        ListView_SetItemState(list_, row, LVIS_FOCUSED, LVIS_FOCUSED);
        ListView_EnsureVisible(list_, row, FALSE);
        following_ = false;
    }
}

void ObjectPane::ToggleOpen(int row) {
    if (const HOSTINFO* object = ObjectOf(row)) {
        if (open_.erase(object) == 0) {
            open_.insert(object);
        }
        if (editor_ && !open_.contains(object)) { // no part may stay selected out of sight
            const auto& selected = editor_->Selected();
            if (!selected.empty() && selected.front()->parent == object) {
                editor_->Select({const_cast<HOSTINFO*>(object)});
            }
        }
        ShowRows();
        ShowSelection();
    }
}

void ObjectPane::OnClick(POINT point) {
    LVHITTESTINFO hit{};
    hit.pt = point;
    ListView_SubItemHitTest(list_, &hit);
    HOSTINFO* object = ObjectOf(hit.iItem);
    if (!object || !editor_) {
        return;
    }
    if (hit.iSubItem == SEEN) {
        editor_->Hide({object}, (object->flags & FLAG_HIDDEN) == 0);
    } else if (hit.iSubItem == LOCK) {
        editor_->Lock({object}, (object->flags & FLAG_LOCKED) == 0);
    } else if ((hit.flags & LVHT_ONITEMSTATEICON) == LVHT_ONITEMSTATEICON ||
               (hit.flags & LVHT_ONITEM) == LVHT_ONITEMSTATEICON) {
        ToggleOpen(hit.iItem);
    }
    InvalidateRect(list_, nullptr, FALSE);
}

void ObjectPane::OpenChosen() {
    if (editor_ && ObjectOf(ListView_GetNextItem(list_, -1, LVNI_FOCUSED))) {
        editor_->Execute(CMD_PROPERTIES);
    }
}

// Names.

void ObjectPane::EditName(int row) {
    if (ObjectOf(row)) {
        ListView_EnsureVisible(list_, row, FALSE);
        SendMessageA(list_, LVM_EDITLABELA, static_cast<WPARAM>(row), 0);
    }
}

void ObjectPane::Rename() {
    HOSTINFO* object = std::exchange(named_, nullptr);
    if (!a_IsAlive(object) || !editor_ || !editor_->MayChange()) {
        return;
    }
    const std::string fault = RenameAsking(Handle(), object, newName_);
    if (!fault.empty()) {
        MessageBoxA(Handle(), fault.c_str(), "Rename", MB_OK | MB_ICONWARNING);
    }
    Update();
}

// Dragging.

void ObjectPane::Drag(POINT screen) {
    POINT point = screen;
    ScreenToClient(list_, &point);
    RECT client;
    GetClientRect(list_, &client);
    const int top = ListView_GetTopIndex(list_);
    RECT first{};
    if (!ListView_GetItemRect(list_, top, &first, LVIR_BOUNDS)) {
        return;
    }
    const LONG height = std::max(1L, first.bottom - first.top);
    if (point.y < first.top) {
        ListView_Scroll(list_, 0, -height);
    } else if (point.y > client.bottom) {
        ListView_Scroll(list_, 0, height);
    }
    const int row = top + static_cast<int>((point.y - first.top + height / 2) / height);
    std::erase_if(dragged_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    const RowGap gap = point.x < 0 || point.x > client.right ? RowGap{} : GapAt(rows_, dragged_, row);
    SetCursor(LoadCursorA(nullptr, gap.IsThere() ? IDC_SIZENS : IDC_NO));
    if (gap.row != gap_.row) {
        InvalidateRect(list_, nullptr, TRUE);
    }
    gap_ = gap;
}

void ObjectPane::EndDrag(bool drop) {
    std::vector<HOSTINFO*> moved = std::exchange(dragged_, {});
    if (moved.empty()) {
        return;
    }
    const RowGap gap = std::exchange(gap_, {});
    if (GetCapture() == Handle()) {
        ReleaseCapture();
    }
    InvalidateRect(list_, nullptr, TRUE);
    std::erase_if(moved, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    if (drop && gap.IsThere() && editor_ && !moved.empty() &&
        (gap.before == nullptr || a_IsAlive(gap.before))) {
        editor_->MoveBefore(moved, gap.before);
    }
    Update();
}

// Messages.

bool ObjectPane::TranslateKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || (message.hwnd != list_ && message.hwnd != search_)) {
        return false;
    }
    const bool inList = message.hwnd == list_;
    const int row = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
    switch (message.wParam) {
    case VK_ESCAPE:
        if (!inList && GetWindowTextLengthA(search_) > 0) {
            SetWindowTextA(search_, "");
        } else if (editor_) {
            editor_->TakeFocus();
        }
        return true;
    case VK_TAB:
        SetFocus(inList ? search_ : list_);
        return true;
    case VK_F2:
        inList ? EditName(row) : void();
        return true;
    case VK_DOWN:
        if (!inList) {
            SetFocus(list_);
        }
        return !inList;
    case VK_RETURN:
        inList ? OpenChosen() : static_cast<void>(SetFocus(list_));
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        if (inList && ObjectOf(row) && rows_[static_cast<std::size_t>(row)].hasParts &&
            rows_[static_cast<std::size_t>(row)].isOpen == (message.wParam == VK_LEFT)) {
            ToggleOpen(row);
        }
        return inList;
    default:
        return false;
    }
}

LRESULT ObjectPane::OnCustomDraw(const NMLVCUSTOMDRAW& draw) const {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYPOSTPAINT;
    case CDDS_POSTPAINT: {
        DrawGroups(draw.nmcd.hdc);
        RECT place{};
        if (!gap_.IsThere()) {
            return CDRF_DODEFAULT;
        }
        const int last = static_cast<int>(rows_.size()) - 1;
        const bool isBelow = gap_.row > last;
        ListView_GetItemRect(list_, isBelow ? last : gap_.row, &place, LVIR_BOUNDS);
        const int y = isBelow ? place.bottom : place.top;
        const RECT line{place.left, y - 1, place.right, y + 1};
        const Brush brush(CreateSolidBrush(logic::PANEL_ACCENT));
        FillRect(draw.nmcd.hdc, &line, brush.get());
        return CDRF_DODEFAULT;
    }
    default:
        return CDRF_DODEFAULT;
    }
}

LRESULT ObjectPane::OnNotify(NMHDR& header) {
    if (header.hwndFrom != list_) {
        return 0;
    }
    switch (header.code) {
    case LVN_GETDISPINFOA:
        FillItem(reinterpret_cast<NMLVDISPINFOA&>(header).item);
        return 0;
    case static_cast<UINT>(NM_CUSTOMDRAW):
        return OnCustomDraw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
    case LVN_ITEMCHANGED:
    case LVN_ODSTATECHANGED:
        if (!following_ && !std::exchange(taking_, true)) { // several may change at once
            PostMessageA(Handle(), TAKE_SELECTION, 0, 0);
        }
        return 0;
    case static_cast<UINT>(NM_CLICK):
        OnClick(reinterpret_cast<const NMITEMACTIVATE&>(header).ptAction);
        return 0;
    case static_cast<UINT>(NM_DBLCLK):
        OpenChosen();
        return 0;
    case LVN_BEGINDRAG:
        if (editor_ && editor_->MayChange()) {
            TakeSelection();
            dragged_ = editor_->Selected();
            if (!dragged_.empty()) {
                SetCapture(Handle());
            }
        }
        return 0;
    case LVN_BEGINLABELEDITA:
        naming_ = ObjectOf(reinterpret_cast<const NMLVDISPINFOA&>(header).item.iItem) != nullptr && editor_ &&
                  editor_->MayChange();
        return naming_ ? FALSE : TRUE;
    case LVN_ENDLABELEDITA: {
        naming_ = false;
        const LVITEMA& item = reinterpret_cast<const NMLVDISPINFOA&>(header).item;
        if (item.pszText) { // the list is done with it before the name is given
            named_ = ObjectOf(item.iItem);
            newName_ = item.pszText;
            PostMessageA(Handle(), RENAME, 0, 0);
        }
        return FALSE;
    }
    default:
        return 0;
    }
}

LRESULT ObjectPane::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case THEME_CHANGED:
        FollowTheme();
        return 0;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDC_OBJECT_SEARCH && HIWORD(wParam) == EN_CHANGE) {
            ShowRows();
            editor_ ? ShowSelection() : void();
        }
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    case TAKE_SELECTION:
        if (taking_) {
            TakeSelection();
        }
        return 0;
    case RENAME:
        Rename();
        return 0;
    case WM_SETCURSOR: {
        POINT point;
        GetCursorPos(&point);
        ScreenToClient(Handle(), &point);
        if (reinterpret_cast<HWND>(wParam) == Handle() && point.y < GRIP) {
            SetCursor(LoadCursorA(nullptr, IDC_SIZENS));
            return TRUE;
        }
        break;
    }
    case WM_LBUTTONDOWN:
        if (GET_Y_LPARAM(lParam) < GRIP) {
            grip_ = GET_Y_LPARAM(lParam);
            SetCapture(Handle());
        }
        return 0;
    case WM_MOUSEMOVE:
        if (!dragged_.empty()) {
            POINT point;
            GetCursorPos(&point);
            Drag(point);
        } else if (grip_ >= 0 && GET_Y_LPARAM(lParam) != grip_) {
            resize_(grip_ - GET_Y_LPARAM(lParam));
        }
        return 0;
    case WM_LBUTTONUP:
        if (std::exchange(grip_, -1) >= 0) {
            ReleaseCapture();
        }
        EndDrag(true);
        return 0;
    case WM_RBUTTONDOWN:
    case WM_CANCELMODE:
        EndDrag(false);
        return 0;
    case WM_KEYDOWN:
        if (wParam == VK_ESCAPE) {
            EndDrag(false);
        }
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != Handle()) {
            grip_ = -1;
            EndDrag(false);
        }
        return 0;
    default:
        break;
    }
    return Window::OnMessage(message, wParam, lParam);
}
