// The dialog in which functions and connections of an object are chosen: left what its panel offers, right
// what is bound. Every change is sent at once as a property line.

#include "Panelhost/Dialogs.h"

#include "Panelhost/PropertyValues.h"
#include "Panelhost/dialogs/BindableTree.h"
#include "Panelhost/dialogs/BindingIcons.h"
#include "Panelhost/dialogs/Dialog.h"
#include "Panelhost/dialogs/ListView.h"
#include "Panelhost/dialogs/resource.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <array>
#include <commctrl.h>
#include <string>
#include <vector>
#include <windowsx.h>

namespace {

constexpr UINT_PTR KEY_SUBCLASS = 1;
constexpr const char* NOT_REACHABLE = "  (not reachable)";
constexpr COLORREF LOST_COLOUR = RGB(176, 0, 32);
constexpr WPARAM CONTROL_F = 6; // the character

struct Entry {
    std::string address;
    bool reachable;
};

// One of the two lists of what is bound.
struct BoundList {
    const char* keyword;
    const char* name; // in messages
    BINDINGLIST HOSTINFO::*bindings;
    int id;
    std::vector<Entry> shown{};
};

// Addresses are the same when they name the same object, in capitals or not, and the same keyword.
bool IsSameAddress(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) {
        return false;
    }
    const std::size_t objectLength = std::min(a.rfind('*'), a.size());
    return a.compare(objectLength, std::string::npos, b, objectLength) == 0 &&
           logic::FoldName(a) == logic::FoldName(b);
}

class ConnectionDialog : public ObjectDialog {
public:
    explicit ConnectionDialog(HOSTINFO* object) : ObjectDialog(IDD_CONNECTIONS, object) {}
    using ObjectDialog::Open;
    static HWND RaiseOpen(const HOSTINFO* object) { return Raise(IDD_CONNECTIONS, object); }

private:
    using Addresses = std::vector<std::string>;

    void OnCreate() override;
    bool OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnResized() override;
    void Refresh() override;
    bool IsHeader(int id) const override {
        return id == IDC_HEADER_AVAILABLE || id == IDC_HEADER_FUNCTIONS || id == IDC_HEADER_CONNECTIONS;
    }

    // What is bound.
    BoundList& ListFor(const Bindable& bindable) { return lists_[bindable.IsFunction() ? 0 : 1]; }
    BoundList* ListOf(HWND view);
    BoundList* ActiveList(); // the one with the selected entry; null when none is selected
    Addresses Bound(const BoundList& list) const;
    void ShowBound(BoundList& list);
    bool IsBound(const Bindable& bindable) const;
    int FindBound(const Addresses& addresses, const std::string& address) const;
    bool Takes(const BoundList& list) const;
    REQUESTITEM Resolve(const std::string& address) const;
    bool IsReachable(const std::string& address) const;

    // Changes.
    void Search();
    void Add();
    void Remove();
    void Move(int step);
    bool Apply(BoundList& list, const Addresses& addresses, const std::string& done);

    void Say(const std::string& text) const { SetWindowTextA(Item(IDC_STATUS), text.c_str()); }
    void UpdateButtons();
    void Enable(int id, bool enabled) const;
    void OnCommand(int id, int code);
    bool OnListNotify(const BoundList& list, const NMHDR& header, LRESULT& result);
    bool OnKey(HWND item, WPARAM key);
    bool OnDoubleClick(POINT place);
    static LRESULT CALLBACK ItemProc(HWND item, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                     DWORD_PTR reference) noexcept;

    ImageList icons_;
    BindableTree tree_;
    std::array<BoundList, 2> lists_{{{"function", "functions", &HOSTINFO::functions, IDC_FUNCTIONS},
                                     {"connection", "connections", &HOSTINFO::connections, IDC_CONNECTIONS}}};
};

void ConnectionDialog::OnCreate() {
    SetWindowTextA(Handle(), (Object()->name + " - Functions and Connections").c_str());
    icons_ = MakeBindingIcons();
    tree_.Attach(Item(IDC_AVAILABLE), icons_.get(),
                 [this](const Bindable& bindable) { return IsBound(bindable); });
    for (const BoundList& list : lists_) {
        const HWND view = Item(list.id);
        SetWindowLongPtrA(view, GWL_STYLE, GetWindowLongPtrA(view, GWL_STYLE) | LVS_SHAREIMAGELISTS);
        SendMessageA(view, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons_.get()));
        SendMessageA(view, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT);
        SetListColours(view, FIELD_COLOUR);
        AddColumn(view, 0, "", 0);
        EnableWindow(view, Takes(list));
    }
    a_SubclassEditControl(Item(IDC_SEARCH));
    for (HWND item = GetWindow(Handle(), GW_CHILD); item != nullptr; item = GetWindow(item, GW_HWNDNEXT)) {
        SetWindowSubclass(item, ItemProc, KEY_SUBCLASS, reinterpret_cast<DWORD_PTR>(this));
    }
    SetLayout({{IDC_HEADER_AVAILABLE, 0, 0, 50, 0},
               {IDC_SEARCH, 0, 0, 50, 0},
               {IDC_AVAILABLE, 0, 0, 50, 100},
               {IDC_ADD, 50, 40, 50, 40},
               {IDC_REMOVE, 50, 40, 50, 40},
               {IDC_UP, 50, 40, 50, 40},
               {IDC_DOWN, 50, 40, 50, 40},
               {IDC_HEADER_FUNCTIONS, 50, 0, 100, 0},
               {IDC_FUNCTIONS, 50, 0, 100, 50},
               {IDC_HEADER_CONNECTIONS, 50, 50, 100, 50},
               {IDC_CONNECTIONS, 50, 50, 100, 100},
               {IDC_STATUS, 0, 100, 100, 100},
               {IDCANCEL, 100, 100, 100, 100}});
    ObjectDialog::OnCreate();
    OnResized();
    SetFocus(Item(IDC_SEARCH));
}

void ConnectionDialog::OnResized() {
    for (const BoundList& list : lists_) {
        RECT client;
        GetClientRect(Item(list.id), &client);
        SendMessageA(Item(list.id), LVM_SETCOLUMNWIDTH, 0, client.right);
    }
}

void ConnectionDialog::Refresh() {
    const bool outdated = tree_.Refresh(Object());
    const auto differs = [this](const BoundList& list) {
        const Addresses addresses = Bound(list);
        return !std::equal(
            addresses.begin(), addresses.end(), list.shown.begin(), list.shown.end(),
            [](const std::string& address, const Entry& entry) { return address == entry.address; });
    };
    for (BoundList& list : lists_) {
        if (outdated || differs(list)) {
            ShowBound(list);
        }
    }
}

void ConnectionDialog::Search() {
    Say(tree_.Search(WindowText(Item(IDC_SEARCH))) ? "" : "Nothing found.");
    UpdateButtons();
}

// What is bound

BoundList* ConnectionDialog::ListOf(HWND view) {
    const auto found = std::find_if(lists_.begin(), lists_.end(),
                                    [&](const BoundList& list) { return Item(list.id) == view; });
    return found == lists_.end() ? nullptr : &*found;
}

BoundList* ConnectionDialog::ActiveList() {
    const auto found = std::find_if(lists_.begin(), lists_.end(), [this](const BoundList& list) {
        return SelectedRow(Item(list.id)) >= 0;
    });
    return found == lists_.end() ? nullptr : &*found;
}

ConnectionDialog::Addresses ConnectionDialog::Bound(const BoundList& list) const {
    const BINDINGLIST& bindings = Object()->*list.bindings;
    return {bindings.begin(), bindings.end()};
}

// An unknown keyword would set the object's default value.
bool ConnectionDialog::Takes(const BoundList& list) const {
    return a_FindKeyword(Object()->GetHostinfoTable(), list.keyword) >= 0;
}

REQUESTITEM ConnectionDialog::Resolve(const std::string& address) const {
    REQUESTLIST requests;
    a_BuildRequestList({address}, {}, Object(), requests);
    return requests.empty() ? REQUESTITEM{} : requests.front();
}

bool ConnectionDialog::IsReachable(const std::string& address) const {
    const REQUESTITEM item = Resolve(address);
    if (item.handler == nullptr) {
        return item.target != nullptr;
    }
    HOSTINFO* device = a_FindHostinfo(Object(), address.substr(0, address.rfind('*')).c_str());
    return device == nullptr || device->kind != KIND_DEVICE || device->OnIsAlive(0, 0) != 0;
}

bool ConnectionDialog::IsBound(const Bindable& bindable) const {
    const BINDINGLIST& bindings = Object()->*lists_[bindable.IsFunction() ? 0 : 1].bindings;
    return !bindable.address.empty() &&
           std::any_of(bindings.begin(), bindings.end(),
                       [&](const std::string& bound) { return IsSameAddress(bound, bindable.address); });
}

// Also when it is written in another way there: -1 when it is not among them.
int ConnectionDialog::FindBound(const Addresses& addresses, const std::string& address) const {
    const REQUESTITEM wanted = Resolve(address);
    const bool resolved = wanted.target != nullptr || wanted.handler != nullptr;
    const auto isSame = [&](const std::string& bound) {
        if (IsSameAddress(bound, address)) {
            return true;
        }
        const REQUESTITEM item = Resolve(bound);
        return resolved && item.target == wanted.target && item.handler == wanted.handler &&
               item.context == wanted.context && item.record.index == wanted.record.index;
    };
    const auto found = std::find_if(addresses.begin(), addresses.end(), isSame);
    return found == addresses.end() ? -1 : static_cast<int>(found - addresses.begin());
}

void ConnectionDialog::ShowBound(BoundList& list) {
    const HWND view = Item(list.id);
    const int selected = SelectedRow(view);
    list.shown.clear();
    for (std::string& address : Bound(list)) {
        const bool reachable = IsReachable(address);
        list.shown.push_back({std::move(address), reachable});
    }
    SendMessageA(view, WM_SETREDRAW, FALSE, 0);
    SendMessageA(view, LVM_DELETEALLITEMS, 0, 0);
    for (const Entry& entry : list.shown) {
        const BindableKind ofReachable =
            list.id == IDC_FUNCTIONS ? BindableKind::Parameter : BindableKind::Control;
        AddRow(view, entry.address + (entry.reachable ? "" : NOT_REACHABLE),
               static_cast<int>(entry.reachable ? ofReachable : BindableKind::LostDevice));
    }
    SendMessageA(view, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(view, nullptr, TRUE);
    SelectRow(view, selected < 0 ? -1 : std::min(selected, RowCount(view) - 1));
    OnResized(); // a scroll bar may have come or gone
    tree_.MarkBound();
    UpdateButtons();
}

// Changes

bool ConnectionDialog::Apply(BoundList& list, const Addresses& addresses, const std::string& done) {
    const std::string text = logic::JoinList(addresses);
    if (const std::string objection = a_LengthObjection(list.keyword, text); !objection.empty()) {
        Say(std::string("The list of ") + list.name + " is full: it " + objection + ".");
        return false;
    }
    const bool taken = Load(std::string(list.keyword) + "=" + text);
    if (Handle() == nullptr) {
        return false;
    }
    ShowBound(list);
    const bool applied = taken && Bound(list) == addresses;
    Say(applied ? done : Object()->name + " did not accept the change.");
    return applied;
}

void ConnectionDialog::Add() {
    const Bindable* selected = tree_.Selected();
    if (selected == nullptr || selected->address.empty()) {
        Say("Select a device parameter, a control or a keyword first.");
        return;
    }
    const std::string address = selected->address;
    BoundList& list = ListFor(*selected);
    if (!Takes(list)) {
        Say(Object()->name + " takes no " + list.name + ".");
        return;
    }
    if (Resolve(address).target == Object()) {
        Say(Object()->name + " cannot be connected to itself.");
        return;
    }
    Addresses addresses = Bound(list);
    if (const int row = FindBound(addresses, address); row >= 0) {
        SelectRow(Item(list.id), row);
        Say(address + " is among the " + list.name + " already.");
        return;
    }
    addresses.push_back(address);
    if (Apply(list, addresses, address + " was added to the " + list.name + ".")) {
        SelectRow(Item(list.id), RowCount(Item(list.id)) - 1);
    }
}

void ConnectionDialog::Remove() {
    BoundList* list = ActiveList();
    if (list == nullptr) {
        return;
    }
    const int row = SelectedRow(Item(list->id));
    Addresses addresses = Bound(*list);
    if (row >= static_cast<int>(addresses.size())) {
        return;
    }
    const std::string address = addresses[static_cast<std::size_t>(row)];
    addresses.erase(addresses.begin() + row);
    Apply(*list, addresses, address + " was removed from the " + list->name + ".");
}

void ConnectionDialog::Move(int step) {
    BoundList* list = ActiveList();
    if (list == nullptr) {
        return;
    }
    const int row = SelectedRow(Item(list->id));
    const int target = row + step;
    Addresses addresses = Bound(*list);
    const auto count = static_cast<int>(addresses.size());
    if (row >= count || target < 0 || target >= count) {
        return;
    }
    std::swap(addresses[static_cast<std::size_t>(row)], addresses[static_cast<std::size_t>(target)]);
    const std::string address = addresses[static_cast<std::size_t>(target)];
    if (Apply(*list, addresses, address + (step < 0 ? " was moved up." : " was moved down."))) {
        SelectRow(Item(list->id), target);
    }
}

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

LRESULT CALLBACK ConnectionDialog::ItemProc(HWND item, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                            DWORD_PTR reference) noexcept {
    auto* dialog = reinterpret_cast<ConnectionDialog*>(reference);
    return Guarded(LRESULT{0}, [&] {
        const auto keep = dialog->shared_from_this();
        const bool handled =
            (message == WM_KEYDOWN && dialog->OnKey(item, wParam)) ||
            (message == WM_CHAR &&
             (wParam == CONTROL_F || (wParam == VK_RETURN && item == dialog->tree_.View()))) ||
            (message == WM_LBUTTONDBLCLK && item == dialog->tree_.View() &&
             dialog->OnDoubleClick({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
        if (handled) {
            return LRESULT{0};
        }
        if (message == WM_NCDESTROY) {
            RemoveWindowSubclass(item, ItemProc, KEY_SUBCLASS);
        }
        return DefSubclassProc(item, message, wParam, lParam);
    });
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

} // namespace

HWND a_ConnectionDlg(int, HWND owner, HOSTINFO* object) {
    if (!a_IsAlive(object)) {
        return nullptr;
    }
    return Guarded<HWND>(nullptr, [&] {
        const HWND open = ConnectionDialog::RaiseOpen(object);
        const HWND frame = owner == nullptr ? nullptr : GetAncestor(owner, GA_ROOT);
        return open != nullptr ? open : std::make_shared<ConnectionDialog>(object)->Open(frame);
    });
}
