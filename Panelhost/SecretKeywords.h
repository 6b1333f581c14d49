#pragma once

#include "Panelhost/ValueRecord.h"

// A flag of a keyword's row: saved in files, set by lines, and told to nobody, neither by an answer nor in a
// list or a trace.
constexpr int KEYWORD_SECRET = 0x200000;

inline bool IsSecret(const KEYWORDROW& row) {
    return (row.flags & KEYWORD_SECRET) != 0;
}
