// Units of filters and delays, and the clipboard format of their values.

#include "Panelhost/Clipboard.h"
#include "Panelhost/Filters.h"
#include "Panelhost/Guard.h"
#include "logic/Crossover.h"
#include "logic/FilterValues.h"
#include "logic/Text.h"

#include <string>

float a_Q2BW(float q) {
    return logic::QToBandwidth(q);
}

float a_BW2Q(float octaves) {
    return logic::BandwidthToQ(octaves);
}

int a_GetDelayUnitIdx(const char* word) {
    return word == nullptr ? -1 : logic::IndexOfWord(logic::delayUnits, word).value_or(-1);
}

UINT a_GetClipboardFormat(const char* kind) {
    return kind == nullptr ? 0 : Guarded(0U, [&] {
        return RegisterClipboardFormatA((std::string("OSMIR ") + kind).c_str());
    });
}
