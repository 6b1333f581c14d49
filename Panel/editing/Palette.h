#pragma once

#include "Panel/common/Window.h"
#include "Panel/editing/Catalogue.h"
#include "Panel/editing/Preview.h"
#include "base/Gdi.h"

#include <windows.h>
#include <commctrl.h>

#include <optional>

class Editor;

// The list of all controls at the left of an edited panel. A control is dragged from it to its place, or put
// into the middle by a double click.
class Palette : public Window {
public:
    static constexpr int WIDTH = 216;

    Palette() = default;
    bool Create(HWND frame, HFONT font);
    // Whose panel the controls go to; null for none.
    void SetEditor(Editor* editor);
    void Show(bool shown) { ShowWindow(Handle(), shown ? SW_SHOWNA : SW_HIDE); }
    void TakeFocus() const { SetFocus(tree_); }
    // What is chosen in the list; null while it is a group.
    const CatalogueEntry* Pointed() const;
    bool IsDragging() const { return dragged_.has_value(); }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnNotify(const NMHDR& header);
    void FollowTheme();
    void Fill();
    std::optional<POINT> ShowGhost();
    const CatalogueEntry* EntryOf(HTREEITEM item) const;
    void Choose();
    void StartDrag(const CatalogueEntry* entry);
    void EndDrag(bool drop);

    HWND tree_ = nullptr;
    ImageList tiles_;
    Preview preview_; // of what is dragged
    Editor* editor_ = nullptr;
    std::optional<CatalogueEntry> dragged_; // in the size that it will have
};
