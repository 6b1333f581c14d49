// Units of filters and delays.

#include "Panelhost/Filters.h"

#include "logic/controls/Crossover.h"
#include "logic/controls/FilterValues.h"
#include "logic/text/Text.h"

float a_Q2BW(float q) {
    return logic::QToBandwidth(q);
}

float a_BW2Q(float octaves) {
    return logic::BandwidthToQ(octaves);
}

int a_GetDelayUnitIdx(const char* word) {
    return word == nullptr ? -1 : logic::IndexOfWord(logic::DELAY_UNITS, word).value_or(-1);
}
