#include "Controls/families/ItemSource.h"

#include <cstdio>

ItemSource::From ItemSource::Source() const {
    return heard_ ? From::Functions : lines_ ? From::Lines : From::Text;
}

void ItemSource::Use(bool isNew) {
    const From source = Source();
    if (!isNew && source == used_) {
        return;
    }
    used_ = source;
    items_ = source == From::Lines ? logic::Items::OfLines(*lines_)
                                   : logic::Items::OfList(source == From::Text ? own_ : *heard_);
    isChanged_ = true;
}

void ItemSource::SetText(const std::string& text) {
    const bool isNew = text != own_ && Source() == From::Text;
    own_ = text;
    Use(isNew);
}

void ItemSource::SetLines(std::optional<std::string> lines) {
    lines_ = std::move(lines);
    Use(Source() == From::Lines);
}

bool ItemSource::SetFunctions(HOSTINFO& control, const std::string& text) {
    if (!functions_.Load(control, text)) {
        return false;
    }
    heard_.reset();
    Use(false);
    return true;
}

int ItemSource::Poll() {
    if (functions_.Requests().empty()) {
        return REQUEST_UNCHANGED;
    }
    char text[TEXT_SIZE];
    std::snprintf(text, sizeof text, "%s", heard_ ? heard_->c_str() : "");
    const int result = CONTROLPROPERTIES::Ask(functions_.Requests(), DATATYPE_TEXT, text);
    if (result <= REQUEST_DELIVERED) {
        const bool isNew = heard_ != text;
        heard_ = text;
        Use(isNew);
    }
    return result;
}
