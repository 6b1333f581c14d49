#include "Controls/framework/RelativeMode.h"

#include <utility>

void RelativeMode::Rebuild(const CONTROLPROPERTIES& control, float value) {
    const bool fits = offsets.size() == control.requests.size();
    if (relative != 0 && loadedAhead_ && (fits || control.requests.empty())) {
        loadedAhead_ = !fits;
        return;
    }
    loadedAhead_ = false;
    offsets.clear();
    if (relative == 0) {
        return;
    }
    for (const REQUESTITEM& item : control.requests) {
        float held = 0;
        const bool answered =
            item.target != nullptr && a_SendToItem(item, COMMAND_GET, DATATYPE_FLOAT, &held) >= 0;
        offsets.push_back(answered ? held - value : 0);
    }
}

void RelativeMode::Load(std::vector<float> loaded, const CONTROLPROPERTIES& control) {
    offsets = std::move(loaded);
    loadedAhead_ = offsets.size() != control.requests.size();
}

int SendByMode(const RelativeMode& mode, CONTROLPROPERTIES& control, float current, int command, int datatype,
               long value, int* result) {
    void* data = reinterpret_cast<void*>(value);
    if (mode.relative == 0) {
        return a_SendRequest(control.requests, command, datatype, data, result);
    }
    const std::vector<REQUESTITEM> items(control.requests.begin(),
                                         control.requests.end()); // it may change meanwhile
    const std::vector<float> offsets = mode.offsets;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].target == nullptr) {
            continue;
        }
        float shifted = current + (i < offsets.size() ? offsets[i] : 0.0F);
        const int answer = a_SendToItem(items[i], command, DATATYPE_FLOAT, &shifted);
        if (command == COMMAND_GET && answer != 0 && result != nullptr) {
            *result = answer < 0 ? REQUEST_UNREACHABLE : REQUEST_DISAGREE;
        }
    }
    return 1;
}
