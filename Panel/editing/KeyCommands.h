#pragma once

#include "Panel/editing/Gesture.h"

#include <windows.h>

class BuildCommands;

// What the keys of the edit mode do on the panel (CMD_KEYS_FIRST to CMD_KEYS_LAST): another selection, and
// moves and sizes by small steps.
class KeyCommands {
public:
    KeyCommands(const EditSurface& surface, const BuildCommands& build) : surface_(surface), build_(build) {}

    static bool Has(int command);
    // Of a key with what is held down; 0 for none.
    static int CommandOf(WPARAM key, bool shift, bool control);
    bool IsEnabled(int command) const;
    void Execute(int command) const;

private:
    // By that many pixels, but not out of what contains the selection.
    void Move(logic::Offset by, int command) const;
    void Size(logic::Offset by, int command) const;
    void SelectNeighbour(bool backwards) const;

    const EditSurface& surface_;
    const BuildCommands& build_;
};
