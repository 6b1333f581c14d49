#pragma once

#include "Panelhost/dialogs/Bindables.h"

#include <windows.h>

#include <commctrl.h>
#include <functional>
#include <string>
#include <unordered_set>

// A tree view of what an object can be bound to. Items are made when they are first expanded: a large panel
// has tens of thousands of keywords.
class BindableTree {
public:
    using IsBound = std::function<bool(const Bindable&)>;

    // What the test holds for stands in bold. The icons are in the order of BindableKind and outlive the
    // tree.
    void Attach(HWND view, HIMAGELIST icons, IsBound isBound);
    HWND View() const { return view_; }

    // Shows what is on the object's panel now. False when nothing changed.
    bool Refresh(HOSTINFO* object);
    // False when nothing was found. Otherwise the first thing to be bound is selected.
    bool Search(const std::string& text);
    // The bold items are others now.
    void MarkBound() const;

    // The selected one; null when there is none. Both are valid until the next Refresh.
    const Bindable* Selected() const;
    // Selects what lies at a place of the view and returns it.
    const Bindable* SelectAt(POINT place) const;
    // True when the user has selected something else.
    bool OnNotify(const NMTREEVIEWA& change);

private:
    void Fill(const std::string& selectedPath);
    HTREEITEM Insert(HTREEITEM owner, std::size_t index) const;
    void InsertHeld(HTREEITEM item, std::size_t index);
    void Expand(HTREEITEM item, std::size_t index);
    void RememberExpansion(const NMTREEVIEWA& change);
    const Bindable& At(HTREEITEM item) const { return bindables_[IndexOf(item)]; }
    std::size_t IndexOf(HTREEITEM item) const;
    HTREEITEM Next(WPARAM relation, HTREEITEM item) const;
    // The first item, top to bottom, for which the test holds; null when there is none.
    template <class Test>
    HTREEITEM Find(HTREEITEM first, const Test& test) const;
    std::string SelectedPath() const;

    HWND view_ = nullptr;
    IsBound isBound_;
    Bindables bindables_;
    std::string search_;
    std::unordered_set<std::string> open_; // paths of what the user has expanded
    std::size_t expanded_ = 0;             // items that the search has brought out
    bool searching_ = false;
    bool filling_ = false;
};
