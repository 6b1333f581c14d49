#pragma once

#include "Panelhost/Api.h"

#include <string>
#include <string_view>

class HOSTINFO;
struct KEYWORDROW;

// Whether a text can be set as the value of a keyword, given by its row of the object's table; every load and
// every record is asked here. It must not be longer than TEXT_SIZE - 1 bytes, and not hold control characters
// (codes below 32, and 127), which would break the line that it is saved in. Only what the row of the default
// value sets may hold them, unless a row saves it. While a_IsRemote it must be one that another machine may
// set. The edit trace says why a text is refused.
PANELHOST_API bool a_IsPropertyValue(const HOSTINFO* object, const KEYWORDROW* table, int row,
                                     std::string_view text);
// Why a text is too long to be a value of that keyword, and of a list of functions or connections how many of
// its entries would fit; empty when it is not.
PANELHOST_API std::string a_LengthObjection(std::string_view keyword, std::string_view text);
