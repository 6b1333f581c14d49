#include "Controls/families/RelativeMode.h"

#include "Controls/framework/KeywordHandlers.h"
#include "logic/text/Numbers.h"

#include <utility>

#include <cstdio>

void RelativeMode::Rebuild(const CONTROLPROPERTIES& control, float value) {
    if (relative != 0 && areLoaded_ && control.isLoadingFile) {
        return;
    }
    areLoaded_ = false;
    std::vector<float> fresh; // what is asked may rebuild them
    for (const REQUESTITEM& item : relative != 0 ? ItemsOf(control.requests) : std::vector<REQUESTITEM>()) {
        float held = 0;
        const bool answered =
            item.target != nullptr && a_SendToItem(item, COMMAND_GET, DATATYPE_FLOAT, &held) >= 0;
        fresh.push_back(answered ? held - value : 0);
    }
    offsets.swap(fresh);
}

std::string RelativeMode::Text() const {
    return logic::JoinFloats(offsets);
}

std::string RelativeMode::Copy() const {
    const std::string text = relative != 0 ? Text() : "";
    return text.empty() ? text : text + ",";
}

bool RelativeMode::Load(const CONTROLPROPERTIES& control, const std::string& text) {
    auto loaded = logic::ParseFloats(text);
    if (!loaded || !HasRoomForOffsets(control, loaded->size())) {
        return false;
    }
    offsets = std::move(*loaded);
    areLoaded_ = true;
    return true;
}

namespace {

// -1 when it cannot be reached.
int SendShifted(const REQUESTITEM& item, float shifted, int command, int datatype) {
    switch (datatype) {
    case DATATYPE_FLOAT:
        return a_SendToItem(item, command, datatype, &shifted);
    case DATATYPE_INTEGER: {
        int whole = logic::TruncateToInteger(shifted);
        return a_SendToItem(item, command, datatype, &whole);
    }
    case DATATYPE_TEXT: {
        char text[TEXT_SIZE];
        std::snprintf(text, sizeof text, "%s", logic::FormatFloat(shifted).c_str());
        return a_SendToItem(item, command, datatype, text);
    }
    default:
        return 0;
    }
}

} // namespace

int SendByMode(const RelativeMode& mode, CONTROLPROPERTIES& control, float current, int command, int datatype,
               long value, int* result) {
    void* data = reinterpret_cast<void*>(value);
    if (mode.relative == 0) {
        return a_SendRequest(control.requests, command, datatype, data, result);
    }
    const std::vector<REQUESTITEM> items = ItemsOf(control.requests);
    const std::vector<float> offsets = mode.offsets;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].target == nullptr) {
            continue;
        }
        const float shifted = current + (i < offsets.size() ? offsets[i] : 0.0F);
        const int answer = SendShifted(items[i], shifted, command, datatype);
        if (command == COMMAND_GET && answer != 0 && result != nullptr) {
            *result = REQUEST_DISAGREE;
        }
    }
    return 1;
}
