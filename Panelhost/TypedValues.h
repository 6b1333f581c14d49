#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/KeywordInfo.h"

#include <string>

// What people type as the value of a keyword.

struct TYPEDVALUE {
    std::string value;     // as property text
    std::string objection; // why it cannot be the value, in words that follow the text; empty when it can
};

// Numbers are read as people type them: with a point or a comma, with k and M, and with their unit behind
// them, "-20 dB", "1k2", "-7,5"; strictly, as a property line has them. Words and colours are taken in
// capitals or not, colours as "#rrggbb" too. What only the object itself knows is not looked at: it may
// refuse the value.
PANELHOST_API TYPEDVALUE a_ReadTyped(const char* keyword, const KEYWORDINFO& info, const std::string& typed,
                                     bool strictly = false);
