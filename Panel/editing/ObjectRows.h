#pragma once

#include <string>
#include <unordered_set>
#include <vector>

class HOSTINFO;

// A row of the list of objects.
struct ObjectRow {
    enum class Kind { Panel, Control, Heading, Device };

    Kind kind = Kind::Control;
    HOSTINFO* object = nullptr; // of a heading none
    int depth = 0;
    bool hasParts = false;
    bool isOpen = false;
    int group = 0; // with others; 0: none
    bool operator==(const ObjectRow&) const = default;
};

// The panel, its controls in their order with their parts below them, and its devices. Parts are listed of
// what is open; with words to search for, all that have them in their full names or class and all that
// contain such.
std::vector<ObjectRow> ObjectRows(HOSTINFO* root, const std::unordered_set<const HOSTINFO*>& open,
                                  const std::string& wanted);

// Where what is dragged would be put: among its siblings.
struct RowGap {
    int row = -1;               // above that row
    HOSTINFO* before = nullptr; // null: behind all siblings
    bool IsThere() const { return row >= 0; }
};
// The gap that is nearest to the upper edge of that row; none where nothing is moved.
RowGap GapAt(const std::vector<ObjectRow>& rows, const std::vector<HOSTINFO*>& moved, int row);
