#pragma once

#include "Panelhost/HostInterface.h"

#include <windows.h>

#include <span>

// As the groups of the host interface.
enum class CatalogueGroup { Continuous, Discrete, Processing, Strips, Interfaces };
constexpr int CATALOGUE_GROUPS = PH_GROUPS;

// A control that can be put on a panel.
struct CatalogueEntry {
    CatalogueGroup group;
    const char* className;
    const char* name;    // for people; a new control is called so, with a number
    const char* letters; // on its tile
    SIZE size;           // of a new one, pixels
    bool operable;       // takes the keyboard focus
};

// What the libraries of controls have described, from the first call on that finds any.
std::span<const CatalogueEntry> Catalogue();
const char* GroupName(CatalogueGroup group);
COLORREF GroupColour(CatalogueGroup group);
