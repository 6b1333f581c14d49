// What the connection dialog shows of what is bound, and its changes.

#include "Panelhost/dialogs/ConnectionDialog.h"

#include "Panelhost/Dialogs.h"
#include "Panelhost/Operating.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/dialogs/ListView.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <commctrl.h>

namespace {

constexpr const char* NOT_REACHABLE = "  (not reachable)";

// Addresses are the same when they name the same object, in capitals or not, and the same keyword.
bool IsSameAddress(const std::string& a, const std::string& b) {
    if (a.size() != b.size()) {
        return false;
    }
    const std::size_t objectLength = std::min(a.rfind('*'), a.size());
    return a.compare(objectLength, std::string::npos, b, objectLength) == 0 &&
           logic::FoldName(a) == logic::FoldName(b);
}

} // namespace

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
        Watch(item);
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

ConnectionDialog::BoundList* ConnectionDialog::ListOf(HWND view) {
    const auto found = std::find_if(lists_.begin(), lists_.end(),
                                    [&](const BoundList& list) { return Item(list.id) == view; });
    return found == lists_.end() ? nullptr : &*found;
}

ConnectionDialog::BoundList* ConnectionDialog::ActiveList() {
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

HWND a_ConnectionDlg(int, HWND owner, HOSTINFO* object) {
    if (!a_IsAlive(object) || a_IsOnlyOperated(object)) {
        return nullptr;
    }
    return Guarded<HWND>(nullptr, [&] {
        const HWND frame = owner == nullptr ? nullptr : GetAncestor(owner, GA_ROOT);
        return ObjectDialog::RaiseOrOpen<ConnectionDialog>(object, frame);
    });
}
