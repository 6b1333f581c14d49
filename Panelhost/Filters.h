#pragma once

#include "Panelhost/Api.h"

// Units of equalisers, crossovers and delays.

// Bandwidth in octaves of a quality factor, and back. 0 for what is not a positive number.
PANELHOST_API float a_Q2BW(float q);
PANELHOST_API float a_BW2Q(float octaves);

// Index of a delay unit ("ms", "samples", "ft", "in", "m", "cm", "us", "s"), without regard to case; -1 when
// the word is none.
PANELHOST_API int a_GetDelayUnitIdx(const char* word);
