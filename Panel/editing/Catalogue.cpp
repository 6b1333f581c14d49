#include "Panel/editing/Catalogue.h"

#include <vector>

std::span<const CatalogueEntry> Catalogue() {
    static std::vector<CatalogueEntry> entries;
    if (entries.empty()) { // the library of controls is there by the first call that matters
        ph_ListControlClasses(
            [](const PH_CONTROLCLASS* known, void*) {
                entries.push_back({static_cast<CatalogueGroup>(known->group),
                                   known->windowClass,
                                   known->name,
                                   known->letters,
                                   {known->width, known->height},
                                   known->takesFocus != 0});
            },
            nullptr);
    }
    return entries;
}

const char* GroupName(CatalogueGroup group) {
    constexpr const char* NAMES[CATALOGUE_GROUPS] = {"Continuous values", "Buttons and text",
                                                     "Processing panels", "Strips and views", "Interfaces"};
    return NAMES[static_cast<int>(group)];
}

COLORREF GroupColour(CatalogueGroup group) {
    constexpr COLORREF COLOURS[CATALOGUE_GROUPS] = {RGB(36, 113, 190), RGB(31, 138, 92), RGB(176, 96, 20),
                                                    RGB(122, 82, 168), RGB(90, 98, 110)};
    return COLOURS[static_cast<int>(group)];
}
