#pragma once

#include "Panel/editing/Catalogue.h"

#include <windows.h>
#include <commctrl.h>

// Pictures of controls and commands, for the theme in use. Image lists and bitmaps belong to the caller.

constexpr int TILE_SIZE = 18; // pixels
// Of the groups and of the controls. Those without a picture of their own have their letters.
HIMAGELIST MakeTiles();
bool HasPicture(const CatalogueEntry& entry);
constexpr int PICTURE_SIZE = 32; // pixels
// In the size of a new control, its picture, large where there is room, on a ground of that colour.
HBITMAP MakePicture(const CatalogueEntry& entry, COLORREF ground);
// Images of a row of a list: nothing inside, closed, open.
HIMAGELIST MakeSigns();
int GroupTile(CatalogueGroup group);
int EntryTile(const CatalogueEntry& entry);

constexpr int ICON_SIZE = 16; // pixels
enum class Icon {
    Edit,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    Duplicate,
    AlignLeft,
    AlignTop,
    AlignRight,
    AlignBottom,
    CentreAcross,
    CentreDown,
    DistributeAcross,
    DistributeDown,
    Foreground,
    Background,
    Grid,
    Open,
    Save,
    Snapshots,
    Bindings,
    Trace,
    Check,
    Properties,
    Count
};
// One image for each, in that order; greyed for buttons that cannot be pressed.
HIMAGELIST MakeIcons(bool greyed);
