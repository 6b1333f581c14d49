#pragma once

#include <string>
#include <vector>

class HOSTINFO;

struct CopiedRow {
    int count = 1; // of copies
    int stepX = 0; // pixels from each to the next
    int stepY = 0;
    bool counts = true; // numbers in names, captions and bindings count up
};

struct RowOfCopies {
    std::string text;               // to be loaded
    std::vector<std::string> names; // of the copies, directly on the panel
};

// Copies of controls of the panel, given with their text. What they are bound to among each other they are
// bound to in each copy as well.
RowOfCopies MakeRow(HOSTINFO* root, const std::vector<HOSTINFO*>& originals, const std::string& text,
                    const CopiedRow& row);
