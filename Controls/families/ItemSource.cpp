#include "Controls/families/ItemSource.h"

#include <cstdio>

void ItemSource::Use(const std::string& text) {
    if (text != used_) {
        used_ = text;
        items_ = logic::Items::OfList(text);
        isChanged_ = true;
    }
}

void ItemSource::SetText(const std::string& text) {
    own_ = text;
    if (heard_.empty()) {
        Use(own_);
    }
}

bool ItemSource::SetFunctions(HOSTINFO& control, const std::string& text) {
    if (!functions_.Load(control, text)) {
        return false;
    }
    heard_.clear();
    Use(own_);
    return true;
}

int ItemSource::Poll() {
    if (functions_.Requests().empty()) {
        return REQUEST_UNCHANGED;
    }
    char text[TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s", heard_.c_str());
    const int result = CONTROLPROPERTIES::Ask(functions_.Requests(), DATATYPE_TEXT, text);
    if (result == REQUEST_DELIVERED) {
        heard_ = text;
        Use(heard_.empty() ? own_ : heard_);
    }
    return result;
}
