#pragma once

#include "Panelhost/Requests.h"

#include <string>

struct REQUESTADDRESS {
    HOSTINFO* root;
    std::string text;    // expanded: OBJECT*keyword, or OBJECT
    bool isTold = false; // that it does not fit what is asked
};

// Hands a record to the handler of an item, which is a device's parameter. There is no other way to a device
// than this one: what is set while its panel is loaded is put aside here.
int SendToParameter(const REQUESTITEM& item, VALUERECORD& record);
