// The sending of requests to controls and devices.

#include "Panelhost/Devices.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/objects/RequestAddress.h"
#include "base/Guard.h"

#include <cstring>
#include <limits>
#include <utility>
#include <vector>

namespace {

// A control that is set sends to its own connections, and so on. Rings settle because an equal value is not
// sent on. What follows guards those that never become equal: how deep requests may be nested, and how many
// of them, beyond the first levels, one request may lead to (where each control has several connections,
// every level multiplies them).
constexpr int MAXIMUM_DEPTH = 64;
constexpr int FIRST_LEVELS = 3;
constexpr int MAXIMUM_DEEP_REQUESTS = 10000;

class Nesting {
public:
    Nesting() { deepRequests_ += ++depth_ > FIRST_LEVELS ? 1 : 0; }
    ~Nesting() {
        if (--depth_ == 0) {
            deepRequests_ = 0;
            cutShort_ = false;
        }
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

    // Whether a further request may be sent from here.
    static bool MayGrow() {
        if (depth_ >= MAXIMUM_DEPTH || deepRequests_ >= MAXIMUM_DEEP_REQUESTS) {
            if (!cutShort_) {
                TRACE("Requests cut short: a ring of connections does not settle\n");
            }
            cutShort_ = true;
        }
        return !cutShort_ || depth_ < FIRST_LEVELS;
    }

private:
    static inline int depth_ = 0;
    static inline int deepRequests_ = 0; // since the outermost request began
    static inline bool cutShort_ = false;
};

std::size_t ValueSize(int datatype, const void* data) {
    return static_cast<std::size_t>(a_ValueSize(datatype, data));
}

// Texts that are too long are cut.
void CopyValue(char* buffer, int datatype, const void* data, std::size_t size) {
    std::memcpy(buffer, data, size);
    if (datatype == DATATYPE_TEXT) {
        buffer[size - 1] = '\0';
    }
}

// A control that limits a value writes the limited one back; the next item must not see it.
int SendCopy(const REQUESTITEM& item, int datatype, void* data) {
    const std::size_t size = ValueSize(datatype, data);
    if (size == 0) {
        return a_SendToItem(item, COMMAND_SET, datatype, data);
    }
    char copy[TEXT_SIZE];
    CopyValue(copy, datatype, data, size);
    return a_SendToItem(item, COMMAND_SET, datatype, copy);
}

// Asks every item with the caller's current value in hand and compares what comes back.
int Get(const std::vector<REQUESTITEM>& items, int datatype, void* data) {
    char scratch[TEXT_SIZE];
    const std::size_t size = ValueSize(datatype, data);
    std::vector<char> delivered; // the first new value
    bool unreachable = false;
    bool disagree = false;
    bool anySame = false;
    for (const REQUESTITEM& item : items) {
        if (size > 0) {
            CopyValue(scratch, datatype, data, size);
        }
        void* buffer = size > 0 ? scratch : data;
        const int answer = a_SendToItem(item, COMMAND_GET, datatype, buffer);
        if (answer < 0 || (answer > 0 && !a_IsSoundValue(datatype, buffer))) {
            unreachable = true;
        } else if (answer == 0) {
            anySame = true;
        } else if (size == 0) {
            delivered.assign(1, '\0');
        } else {
            const std::size_t newSize = ValueSize(datatype, scratch);
            if (delivered.empty()) {
                delivered.assign(scratch, scratch + newSize);
            } else {
                disagree = disagree || delivered.size() != newSize ||
                           std::memcmp(delivered.data(), scratch, newSize) != 0;
            }
        }
    }
    if (unreachable) {
        return REQUEST_UNREACHABLE;
    }
    if (disagree || (anySame && !delivered.empty())) {
        return REQUEST_DISAGREE;
    }
    if (delivered.empty()) {
        return REQUEST_UNCHANGED;
    }
    if (size > 0) {
        std::memcpy(data, delivered.data(), delivered.size());
    }
    return REQUEST_DELIVERED;
}

// What is asked of devices while their panel is loaded is put aside. True when it was.
bool IsPutAside(const REQUESTITEM& item, int datatype, const void* data) {
    return Guarded(true, [&] {
        PanelRoot* root = item.device != nullptr    ? PanelRoot::Above(item.device)
                          : item.address != nullptr ? PanelRoot::From(item.address->root)
                                                    : nullptr;
        if (root == nullptr) {
            return false;
        }
        static const std::string none;
        const std::string& address = item.address != nullptr ? item.address->text : none;
        if (root->opening.IsUnderWay()) {
            root->opening.PutAside(address, datatype, data);
            return true;
        }
        root->opening.Supersede(address);
        root->recall.Overtake(item);
        return false;
    });
}

// Of a control that does not say, whatever is asked for.
int DatatypeOf(const REQUESTITEM& item, int asked) {
    HOSTINFO* target = item.target;
    const KEYWORDROW* row = target->HasHostinfoTable() != 0 ? target->GetHostinfoTable() : nullptr;
    if (row == nullptr) {
        return asked;
    }
    for (int index = 0; index < item.record.index && row->keyword != nullptr; ++index) {
        ++row;
    }
    return static_cast<int>(target->OnGetDatatype(0, reinterpret_cast<LPARAM>(row->keyword)));
}

int SendToTarget(const REQUESTITEM& item, VALUERECORD& record) {
    return static_cast<int>(
        SendMessageA(item.target->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record)));
}

// Both "the same" and "nothing of the kind" are answered by 0. Asked with something else in hand, only what
// has a value says so.
bool HasValue(const REQUESTITEM& item, const VALUERECORD& asked) {
    VALUERECORD record = asked;
    int integer = 0;
    float number = std::numeric_limits<float>::quiet_NaN();
    char text[TEXT_SIZE] = "";
    if (record.datatype == DATATYPE_INTEGER) {
        integer = *static_cast<const int*>(asked.data) ^ 1;
        record.data = &integer;
    } else if (record.datatype == DATATYPE_FLOAT) {
        record.data = &number;
    } else {
        text[0] = *static_cast<const char*>(asked.data) == '\0' ? ' ' : '\0';
        record.data = text;
    }
    return SendToTarget(item, record) != 0;
}

// Once for each time that the item was built.
void TellUnfit(const REQUESTITEM& item) {
    if (item.address != nullptr && !std::exchange(item.address->isTold, true)) {
        TRACE("%s has no value of the datatype that it is asked for\n", item.address->text.c_str());
    }
}

int AskTarget(const REQUESTITEM& item, VALUERECORD& record) {
    const int kept = DatatypeOf(item, record.datatype);
    bool isFit = a_HasForm(kept, record.datatype);
    const int answer = isFit ? SendToTarget(item, record) : -1;
    if (answer == 0 && isFit && kept == DATATYPE_TEXT && IsThere(item)) {
        isFit = HasValue(item, record);
    }
    if (!isFit) {
        TellUnfit(item);
    }
    return isFit ? answer : -1;
}

// Whether the device has a value for the item at present.
bool IsHeld(const REQUESTITEM& item) {
    auto* device = dynamic_cast<DEVICE*>(item.device);
    if (device == nullptr || item.address == nullptr || item.address->isTold) {
        return false;
    }
    DWORD age = NO_AGE;
    const std::string keyword = item.address->text.substr(item.address->text.rfind('*') + 1);
    const int state = device->OnParameterState(keyword.c_str(), &age);
    return state == PARAMETER_LIVE || state == PARAMETER_PENDING;
}

int AskDevice(const REQUESTITEM& item, VALUERECORD& record) {
    const int answer = SendToParameter(item, record);
    // A device that holds it and does not answer has nothing of the kind.
    if (answer < 0 && IsThere(item) && IsHeld(item)) {
        TellUnfit(item);
    }
    return answer;
}

} // namespace

int a_SendToItem(const REQUESTITEM& item, int command, int datatype, void* data) {
    const HOSTINFO* owner = item.device != nullptr ? item.device : item.target;
    if (owner != nullptr && (!IsThere(item) || !PanelRoot::IsOnItsThread(owner))) {
        return -1; // it may have gone since the list was copied
    }
    if (!Nesting::MayGrow()) {
        return -1;
    }
    const Nesting nesting;
    VALUERECORD record = item.record;
    record.command = command;
    record.datatype = datatype;
    record.data = data;
    const bool isAsked = command == COMMAND_GET && data != nullptr;
    if (item.target == nullptr || item.handler != nullptr) {
        return isAsked ? AskDevice(item, record) : SendToParameter(item, record);
    }
    return isAsked ? AskTarget(item, record) : SendToTarget(item, record);
}

int SendToParameter(const REQUESTITEM& item, VALUERECORD& record) {
    if (record.command == COMMAND_SET && IsPutAside(item, record.datatype, record.data)) {
        return item.handler != nullptr ? 1 : -1;
    }
    return item.handler != nullptr ? item.handler(&record, item.context) : -1;
}

void a_LetBoundAsk(const HOSTINFO* control) {
    Guarded([control] {
        const PanelRoot* root = PanelRoot::Above(control);
        if (root == nullptr) {
            return;
        }
        for (HOSTINFO* object : root->bindings.BoundTo(control)) {
            if (a_IsAlive(object)) {
                object->OnInterfaceworking(1, 0);
            }
        }
    });
}

int a_SendRequest(REQUESTLIST& requests, int command, int datatype, void* data, int* result) {
    if (data == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const std::vector<REQUESTITEM> items(requests.begin(),
                                             requests.end()); // the list may change meanwhile
        int outcome = REQUEST_UNCHANGED;
        int success = 1;
        if (command == COMMAND_GET) {
            outcome = items.empty() ? REQUEST_UNCHANGED : Get(items, datatype, data);
            success = outcome == REQUEST_UNREACHABLE ? 0 : 1;
        } else if (!a_IsSoundValue(datatype, data)) {
            success = 0;
        } else {
            for (const REQUESTITEM& item : items) {
                const int answer = SendCopy(item, datatype, data);
                success = answer >= 0 ? success : 0;
                outcome = answer < 0 ? REQUEST_UNREACHABLE : outcome;
            }
            if (!items.empty() && items.front().address != nullptr &&
                a_IsAlive(items.front().address->asker)) {
                a_LetBoundAsk(items.front().address->asker);
            }
        }
        if (result != nullptr) {
            *result = outcome;
        }
        return success;
    });
}
