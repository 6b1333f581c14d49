#pragma once

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Requests.h"

#include <optional>
#include <string>

class PanelRoot;

struct REQUESTADDRESS {
    HOSTINFO* root;
    const HOSTINFO* asker; // whose list the item is in; it may be gone
    std::string text;      // expanded: OBJECT*keyword, or OBJECT
    bool isTold = false;   // that it does not fit what is asked
};

// An address as it is looked up: "%n" becomes the full name of the object that contains the control. It
// begins with "*" where it is a keyword of the panel itself.
std::string ExpandAddress(const std::string& address, const HOSTINFO* object);

// What an expanded address names. The whole of it can be an object; otherwise what stands behind the last "*"
// is a keyword.
struct ADDRESSED {
    HOSTINFO* object = nullptr;           // null when there is none
    std::optional<std::string> keyword{}; // of the object
};
ADDRESSED FindAddressed(PanelRoot& root, const std::string& address);

// Whether the object that the item was made for lives. Never for an item without one.
inline bool IsThere(const REQUESTITEM& item) {
    const unsigned life = a_LifeOf(item.device != nullptr ? item.device : item.target);
    return life != 0 && (item.life == 0 || item.life == life);
}

// Hands a record to the handler of an item, which is a device's parameter. There is no other way to a device
// than this one: what is set while its panel is loaded is put aside here.
int SendToParameter(const REQUESTITEM& item, VALUERECORD& record);
