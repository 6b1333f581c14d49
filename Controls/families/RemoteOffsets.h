#pragma once

#include "Controls/framework/Control.h"
#include "logic/controls/FaderLogic.h"

#include <vector>

// Relative mode of the fader: every connection has its own offset from the fader's value, and gets another
// one when somebody else moves it. The owner is the fader that holds this.
struct RemoteOffsets {
    int relative = 0;                         // non-zero: on
    std::vector<logic::OffsetRecord> records; // one for each item of the request list, in its order

    // Starts anew: with the distances of the connections' values from the given one when the mode is on, else
    // with nothing.
    void Rebuild(const CONTROLPROPERTIES& owner, float value);
    // Sends a set or get to each connection, with the value that its offset gives. What a get finds moved
    // since it was last seen gets a new offset; what merely stopped at a limit of its own keeps its offset.
    void Send(const CONTROLPROPERTIES& owner, float value, int command);
    // Remembers where the connections are now.
    void See(const CONTROLPROPERTIES& owner);

    // Gets or sets one number of each record as text. Loading adds records and does not replace them, and
    // takes only every `step`-th number. A text with anything else in it, or with more than can be saved, is
    // refused. While the mode is off there are none, and those that are loaded are ignored.
    int Keyword(VALUERECORD* record, CONTROLPROPERTIES& owner, float logic::OffsetRecord::*number,
                std::size_t step);
};
