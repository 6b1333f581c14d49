#pragma once

#include "Panel/editing/PanelEdits.h"
#include "Panelhost/BindingList.h"
#include "logic/text/AddressReplacement.h"

#include <string>
#include <vector>

// What a replacement would change on a panel.
struct ReplacePlan {
    struct Entry {
        HOSTINFO* object;
        const KEYWORDROW* keyword;
        std::string before; // addresses as they stand in the text
        std::string after;
        int state;    // of what is found under the new address, PARAMETER_... or ADDRESS_...; of a pattern
                      // that of the worst
        bool isTaken; // false: the text cannot hold it, and stays
    };
    std::vector<Entry> entries;          // one for each address
    std::vector<PanelEdits::Line> lines; // that bring it about
    int unresolved = 0;                  // addresses that would name nothing
};

// Of all controls, or of those among the objects, with what is inside these.
ReplacePlan PlanReplacement(HOSTINFO* root, const std::vector<HOSTINFO*>* among,
                            const logic::AddressReplacement& replacement);
