#pragma once

#include "Controls/framework/Control.h"
#include "logic/FaderLogic.h"

#include <vector>

// Relative mode of the fader: every connection has its own offset from the fader's value, and gets another
// one when somebody else moves it.
struct RemoteOffsets {
    int relative = 0;                         // non-zero: on
    std::vector<logic::OffsetRecord> records; // one for each item of the request list, in its order

    // Asks every connection for its value and starts with the distances from the given one. Empties the list
    // when the mode is off.
    void Rebuild(const REQUESTLIST& requests, float value);
    // Sends a set or get to each connection, with the value that its offset gives. What a get finds moved
    // since it was last seen gets a new offset; what merely stopped at a limit of its own keeps its offset.
    void Send(const REQUESTLIST& requests, float value, int command);
    // Remembers where the connections are now.
    void See(const REQUESTLIST& requests);

    // Gets or sets one number of each record as text. Loading adds records and does not replace them, and
    // takes only every `step`-th number. In absolute mode the text is empty, and one that is loaded is
    // ignored.
    int Keyword(VALUERECORD* record, float logic::OffsetRecord::*number, std::size_t step);
};
