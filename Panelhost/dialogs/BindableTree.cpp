#include "Panelhost/dialogs/BindableTree.h"

#include "Panelhost/Dialogs.h"

namespace {

constexpr std::size_t EXPANDED_AT_MOST = 300; // items that a search opens by itself

} // namespace

void BindableTree::Attach(HWND view, HIMAGELIST icons, IsBound isBound) {
    view_ = view;
    isBound_ = std::move(isBound);
    SendMessageA(view_, TVM_SETBKCOLOR, 0, FIELD_COLOUR);
    SendMessageA(view_, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(icons));
}

std::size_t BindableTree::IndexOf(HTREEITEM item) const {
    TVITEMA entry{};
    entry.mask = TVIF_PARAM;
    entry.hItem = item;
    SendMessageA(view_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&entry));
    return static_cast<std::size_t>(entry.lParam);
}

HTREEITEM BindableTree::Next(WPARAM relation, HTREEITEM item) const {
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(view_, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

template <class Test>
HTREEITEM BindableTree::Find(HTREEITEM first, const Test& test) const {
    for (HTREEITEM item = first; item != nullptr; item = Next(TVGN_NEXT, item)) {
        if (test(item)) {
            return item;
        }
        if (const HTREEITEM below = Find(Next(TVGN_CHILD, item), test); below != nullptr) {
            return below;
        }
    }
    return nullptr;
}

const Bindable* BindableTree::Selected() const {
    const HTREEITEM item = Next(TVGN_CARET, nullptr);
    return item == nullptr ? nullptr : &At(item);
}

std::string BindableTree::SelectedPath() const {
    const Bindable* selected = Selected();
    return selected == nullptr ? "" : selected->path;
}

HTREEITEM BindableTree::Insert(HTREEITEM owner, std::size_t index) const {
    const Bindable& bindable = bindables_[index];
    TVINSERTSTRUCTA insertion{};
    insertion.hParent = owner;
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask =
        TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_CHILDREN | TVIF_STATE;
    insertion.item.stateMask = TVIS_BOLD;
    insertion.item.state = isBound_(bindable) ? TVIS_BOLD : 0;
    insertion.item.pszText = const_cast<char*>(bindable.label.c_str());
    insertion.item.iImage = static_cast<int>(bindable.kind);
    insertion.item.iSelectedImage = insertion.item.iImage;
    insertion.item.lParam = static_cast<LPARAM>(index);
    insertion.item.cChildren = bindable.holdsShown ? 1 : 0;
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(view_, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insertion)));
}

void BindableTree::InsertHeld(HTREEITEM item, std::size_t index) {
    if (Next(TVGN_CHILD, item) != nullptr) {
        return;
    }
    for (const std::size_t child : bindables_[index].children) {
        if (bindables_[child].shown) {
            Expand(Insert(item, child), child);
        }
    }
}

// Expands what the user had expanded or, in a search, what leads to something found.
void BindableTree::Expand(HTREEITEM item, std::size_t index) {
    const Bindable& bindable = bindables_[index];
    const bool wanted =
        bindable.kind == BindableKind::Group ||
        (searching_ ? !bindable.matches && expanded_ < EXPANDED_AT_MOST : open_.count(bindable.path) > 0);
    if (wanted) {
        expanded_ += bindable.children.size();
        InsertHeld(item, index);
        SendMessageA(view_, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
    }
}

// Selects what was selected before or, in a search, the first thing that can be bound.
void BindableTree::Fill(const std::string& selectedPath) {
    filling_ = true;
    expanded_ = 0;
    SendMessageA(view_, WM_SETREDRAW, FALSE, 0);
    SendMessageA(view_, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    for (const std::size_t group : {Bindables::DEVICES, Bindables::CONTROLS}) {
        Expand(Insert(TVI_ROOT, group), group);
    }
    const HTREEITEM top = Next(TVGN_ROOT, nullptr);
    HTREEITEM selected = Find(top, [&](HTREEITEM item) {
        return !selectedPath.empty() && At(item).path == selectedPath && At(item).matches;
    });
    if (selected == nullptr && searching_) {
        selected = Find(top, [&](HTREEITEM item) { return At(item).matches && !At(item).address.empty(); });
    }
    SendMessageA(view_, TVM_SELECTITEM, TVGN_CARET,
                 reinterpret_cast<LPARAM>(selected != nullptr ? selected : top));
    SendMessageA(view_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(view_, nullptr, TRUE);
    filling_ = false;
}

bool BindableTree::Refresh(HOSTINFO* object) {
    if (!bindables_.IsOutdated(object)) {
        return false;
    }
    const std::string selected = SelectedPath();
    bindables_.Read(object);
    bindables_.Search(search_);
    Fill(selected);
    return true;
}

bool BindableTree::Search(const std::string& text) {
    const std::string selected = SelectedPath();
    search_ = text;
    searching_ = text.find_first_not_of(' ') != std::string::npos;
    bindables_.Search(text);
    Fill(selected);
    return bindables_[Bindables::DEVICES].holdsShown || bindables_[Bindables::CONTROLS].holdsShown;
}

void BindableTree::RememberExpansion(const NMTREEVIEWA& change) {
    if (searching_) {
        return;
    }
    const std::string& path = At(change.itemNew.hItem).path;
    if (change.action == TVE_EXPAND) {
        open_.insert(path);
    } else {
        open_.erase(path);
    }
}

void BindableTree::MarkBound() const {
    Find(Next(TVGN_ROOT, nullptr), [this](HTREEITEM handle) {
        TVITEMA item{};
        item.mask = TVIF_STATE;
        item.hItem = handle;
        item.stateMask = TVIS_BOLD;
        SendMessageA(view_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        const UINT wanted = isBound_(At(handle)) ? TVIS_BOLD : 0;
        if ((item.state & TVIS_BOLD) != wanted) {
            item.state = wanted;
            SendMessageA(view_, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        }
        return false;
    });
}

const Bindable* BindableTree::SelectAt(POINT place) const {
    TVHITTESTINFO hit{};
    hit.pt = place;
    SendMessageA(view_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if (hit.hItem == nullptr || (hit.flags & TVHT_ONITEM) == 0) {
        return nullptr;
    }
    SendMessageA(view_, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(hit.hItem));
    return &At(hit.hItem);
}

bool BindableTree::OnNotify(const NMTREEVIEWA& change) {
    if (filling_) {
        return false;
    }
    switch (change.hdr.code) { // in either character set, as the view wishes
    case TVN_ITEMEXPANDINGA:
    case TVN_ITEMEXPANDINGW:
        if (change.action == TVE_EXPAND) {
            InsertHeld(change.itemNew.hItem, IndexOf(change.itemNew.hItem));
        }
        return false;
    case TVN_ITEMEXPANDEDA:
    case TVN_ITEMEXPANDEDW:
        RememberExpansion(change);
        return false;
    default:
        return change.hdr.code == TVN_SELCHANGEDA || change.hdr.code == TVN_SELCHANGEDW;
    }
}
