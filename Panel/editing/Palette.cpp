#include "Panel/editing/Palette.h"

#include "Panel/editing/Editor.h"
#include "Panel/editing/Icons.h"
#include "Panel/resource.h"
#include "Panel/theme/Theme.h"
#include "Panelhost/Hostinfo.h"

#include <windowsx.h>

#include <utility>

bool Palette::Create(HWND frame, HFONT font) {
    if (!Window::Create("PanelPalette", "Controls", WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, {},
                        frame, nullptr, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)))) {
        return false;
    }
    tree_ = CreateWindowExA(
        WS_EX_CLIENTEDGE, WC_TREEVIEWA, "",
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_SHOWSELALWAYS | TVS_FULLROWSELECT, 0, 0, 0,
        0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_PALETTE_TREE)),
        GetModuleHandleA(nullptr), nullptr);
    if (!tree_) {
        return false;
    }
    SetWindowFont(tree_, font, FALSE);
    FollowTheme();
    TreeView_SetItemHeight(tree_, TILE_SIZE + 4);
    Fill();
    return true;
}

void Palette::FollowTheme() {
    ImageList tiles(MakeTiles());
    TreeView_SetImageList(tree_, tiles.get(), TVSIL_NORMAL);
    tiles_ = std::move(tiles);
}

void Palette::Fill() {
    for (int i = 0; i < CATALOGUE_GROUPS; ++i) {
        const auto group = static_cast<CatalogueGroup>(i);
        TVINSERTSTRUCTA insert{};
        insert.hParent = TVI_ROOT;
        insert.hInsertAfter = TVI_LAST;
        insert.itemex.mask = TVIF_TEXT | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        insert.itemex.state = TVIS_EXPANDED | TVIS_BOLD;
        insert.itemex.stateMask = TVIS_EXPANDED | TVIS_BOLD;
        insert.itemex.pszText = const_cast<char*>(GroupName(group));
        insert.itemex.iImage = GroupTile(group);
        insert.itemex.iSelectedImage = GroupTile(group);
        const auto head = reinterpret_cast<HTREEITEM>(
            SendMessageA(tree_, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
        insert.hParent = head;
        insert.itemex.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        for (const CatalogueEntry& entry : Catalogue()) {
            if (entry.group == group) {
                insert.itemex.pszText = const_cast<char*>(entry.name);
                insert.itemex.lParam = reinterpret_cast<LPARAM>(&entry);
                insert.itemex.iImage = EntryTile(entry);
                insert.itemex.iSelectedImage = EntryTile(entry);
                SendMessageA(tree_, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert));
            }
        }
        TreeView_Expand(tree_, head, TVE_EXPAND);
    }
    TreeView_EnsureVisible(tree_, TreeView_GetRoot(tree_));
}

void Palette::SetEditor(Editor* editor) {
    EndDrag(false);
    editor_ = editor;
}

const CatalogueEntry* Palette::EntryOf(HTREEITEM item) const {
    TVITEMA found{};
    found.mask = TVIF_PARAM;
    found.hItem = item;
    if (!item || !SendMessageA(tree_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&found))) {
        return nullptr;
    }
    return reinterpret_cast<const CatalogueEntry*>(found.lParam);
}

LRESULT Palette::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        SetWindowPos(tree_, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
    case WM_MOUSEMOVE:
        if (dragged_ && editor_) {
            SetCursor(LoadCursorA(nullptr, ShowGhost() ? IDC_CROSS : IDC_NO));
        }
        return 0;
    case THEME_CHANGED:
        FollowTheme();
        return 0;
    case WM_LBUTTONUP:
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
            EndDrag(false);
        }
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}

LRESULT Palette::OnNotify(const NMHDR& header) {
    if (header.idFrom != IDC_PALETTE_TREE) {
        return 0;
    }
    switch (header.code) {
    case TVN_BEGINDRAGA:
    case TVN_BEGINDRAGW:
        StartDrag(EntryOf(reinterpret_cast<const NMTREEVIEWA&>(header).itemNew.hItem));
        return 0;
    case static_cast<UINT>(NM_DBLCLK):
    case static_cast<UINT>(NM_RETURN):
        if (EntryOf(TreeView_GetSelection(tree_))) {
            Choose();
            return 1; // no group is to open or close
        }
        return 0;
    default:
        return 0;
    }
}

const CatalogueEntry* Palette::Pointed() const {
    return EntryOf(TreeView_GetSelection(tree_));
}

void Palette::Choose() {
    const CatalogueEntry* entry = Pointed();
    if (entry && editor_) {
        editor_->Create(*entry, std::nullopt);
    }
}

void Palette::StartDrag(const CatalogueEntry* entry) {
    if (entry && editor_) {
        dragged_ = *entry;
        dragged_->size = preview_.Make(*entry, editor_->Edits().Root());
        SetCapture(Handle());
        SetFocus(Handle()); // so that Escape arrives here
    }
}

// Where the control would stand now.
std::optional<POINT> Palette::ShowGhost() {
    POINT point;
    GetCursorPos(&point);
    const auto corner = editor_->ShowGhost(*dragged_, point);
    corner ? preview_.Show(editor_->Edits().Root()->window, *corner) : preview_.Hide();
    return corner;
}

void Palette::EndDrag(bool drop) {
    if (!dragged_) {
        return;
    }
    const auto corner = editor_ && drop ? ShowGhost() : std::nullopt;
    const CatalogueEntry entry = *std::exchange(dragged_, std::nullopt);
    preview_.Drop();
    if (GetCapture() == Handle()) {
        ReleaseCapture();
    }
    if (editor_) {
        editor_->HideGhost();
    }
    if (drop && corner) {
        editor_->Create(entry, corner);
    } else {
        SetFocus(tree_);
    }
}
