#pragma once

#include <string>

// What the palette's knob comes as, as the lines of a panel file: the knob, its caption above it, and below
// it a field with its value, which follows the knob and sets it.
struct KnobGroup {
    std::string lines;
    int left, top; // of the knob in the group, pixels
};

// For a panel of that style, whose art has that size in percent.
KnobGroup MakeKnobGroup(bool isDark, int artPercent);
