#pragma once

#include "Controls/families/HeldBlock.h"

#include <vector>

// The parts of one way of a crossover, in the order of the functions that they are bound to: filters, gain,
// polarity, delay. Each has the list that is asked and told of it, the filters one of their own that is told.
// A device delivers the filters of the first, a connected control the whole way.
inline std::vector<BlockPart<logic::Crossover>> CrossoverParts(REQUESTLIST& filters, REQUESTLIST& filtersTold,
                                                               REQUESTLIST& gain, REQUESTLIST& polarity,
                                                               REQUESTLIST& delay) {
    using logic::Crossover;
    return {{&filters, &filtersTold, DATATYPE_CROSSOVER, [](Crossover& way) -> void* { return &way; },
             [](Crossover& to, const Crossover& from) { to.filters = from.filters; }},
            {&gain, &gain, DATATYPE_FLOAT, [](Crossover& way) -> void* { return &way.gain; },
             [](Crossover& to, const Crossover& from) { to.gain = from.gain; }},
            {&polarity, &polarity, DATATYPE_INTEGER, [](Crossover& way) -> void* { return &way.polarity; },
             [](Crossover& to, const Crossover& from) { to.polarity = from.polarity; }},
            {&delay, &delay, DATATYPE_DELAY, [](Crossover& way) -> void* { return &way.delay; },
             [](Crossover& to, const Crossover& from) { to.delay = from.delay; }}};
}
