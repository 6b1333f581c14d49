#pragma once

#include <string>
#include <vector>

// What the palette's knob comes as, as the lines of a panel file: the knob, its caption above it, and below
// it a field with its value, which follows the knob and sets it.
struct KnobGroup {
    std::string lines;
    int left, top; // of the knob in the group, pixels
};

// For a ground that is dark or not, and art of that size in percent; the lines give the knob its looks.
KnobGroup MakeKnobGroup(bool isDark, int artPercent, const std::vector<std::string>& art);
