#pragma once

#include "Panel/editing/Catalogue.h"

#include <windows.h>
#include <commctrl.h>

// Pictures of the edit mode, drawn when they are needed. Image lists belong to the caller.

constexpr int TILE_SIZE = 18; // pixels
HIMAGELIST MakeTiles();
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
    Count
};
// One image for each, in that order; greyed for buttons that cannot be pressed.
HIMAGELIST MakeIcons(bool greyed);
