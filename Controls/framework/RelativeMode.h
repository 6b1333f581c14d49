#pragma once

#include "Controls/framework/Control.h"

#include <string>
#include <vector>

// Relative mode: one control moves several connected controls, each with its own offset from the control's
// value. The offsets stand in the order of the request list, one for each item.
struct RelativeMode {
    int relative = 0; // non-zero: on
    std::vector<float> offsets;

    // Asks every connected control for its value and keeps the distance from the given one; 0 for an item
    // without a control. Offsets that were loaded before the connections they belong to are kept once, if
    // their number fits.
    void Rebuild(const CONTROLPROPERTIES& control, float value);
    // Replaces the offsets.
    void Load(std::vector<float> loaded, const CONTROLPROPERTIES& control);

private:
    bool loadedAhead_ = false;
};

// Sends a request as the mode says: absolute to the whole list, relative to each connected control with its
// offset added. value is the address of the value. 1 in relative mode, else what a_SendRequest returns.
int SendByMode(const RelativeMode& mode, CONTROLPROPERTIES& control, float current, int command, int datatype,
               long value, int* result);
