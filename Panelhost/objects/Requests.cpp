// Bindings of an object, the request list built from them, and the sending of requests.

#include "Panelhost/Requests.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/ObjectTree.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
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

// "%n" becomes the full name of the object that contains the control.
std::string Expand(const std::string& address, const HOSTINFO* object) {
    std::string text = address;
    const HOSTINFO* container = object->parent;
    const std::string path = container == nullptr || container->kind == KIND_ROOT ? "" : container->name;
    for (auto place = text.find("%n"); place != std::string::npos;
         place = text.find("%n", place + path.size())) {
        text.replace(place, 2, path);
    }
    if (!text.empty() && text.front() == '*') { // directly on the root there is no path
        text.erase(0, 1);
    }
    return text;
}

} // namespace

struct REQUESTADDRESS {
    HOSTINFO* root;
    std::string text;    // expanded: OBJECT*keyword, or OBJECT
    bool isTold = false; // that it does not fit what is asked
};

namespace {

// Fills in how a device's parameter or a control's value is reached. Names are resolved here, once: the item
// holds no text that could go before it does.
bool Reach(HOSTINFO* found, const char* keyword, REQUESTITEM& item) {
    if (found->kind == KIND_DEVICE) {
        if (found->OnRequestList(reinterpret_cast<WPARAM>(keyword), reinterpret_cast<LPARAM>(&item)) == 0) {
            return false;
        }
        item.device = found;
        return true;
    }
    if (keyword != nullptr && *keyword != '\0') {
        VALUERECORD query = VALUERECORD::Resolve(keyword);
        found->OnMessage(0, reinterpret_cast<LPARAM>(&query));
        if (query.index == 0 && std::strcmp(keyword, " ") != 0) {
            TRACE("Keyword %s of %s not found\n", keyword, found->name.c_str());
        }
        item.record.index = query.index;
    }
    item.target = found;
    return true;
}

REQUESTITEM Resolve(const std::string& address, HOSTINFO* object, const char* keyword, bool follow) {
    REQUESTITEM item;
    PanelRoot* root = PanelRoot::Above(object);
    if (root == nullptr) {
        return item;
    }
    const std::string full = Expand(address, object);
    const auto star = full.rfind('*');
    HOSTINFO* found = root->Find(full);
    const char* ownKeyword = nullptr;
    if (found == nullptr && star != std::string::npos) {
        found = root->Find(full.substr(0, star));
        ownKeyword = full.c_str() + star + 1;
    }
    const char* wanted = keyword != nullptr ? keyword : ownKeyword;
    const bool reached = found != nullptr && Reach(found, wanted, item);
    item.address = std::make_shared<REQUESTADDRESS>(
        REQUESTADDRESS{root, reached && wanted != nullptr ? found->name + "*" + wanted : full});
    if (follow) {
        if (reached) {
            root->bindings.Bind(object, found);
        } else {
            root->bindings.WaitFor(object, full);
            if (star != std::string::npos) {
                root->bindings.WaitFor(object, full.substr(0, star));
            }
        }
    }
    return item;
}

void BuildList(std::initializer_list<const BINDINGLIST*> bindings, HOSTINFO* object, REQUESTLIST& requests,
               const char* keyword, bool follow) {
    REQUESTLIST fresh;
    for (const BINDINGLIST* list : bindings) {
        for (const std::string& address : *list) {
            fresh.push_back(Resolve(address, object, keyword, follow));
        }
    }
    requests.swap(fresh);
}

bool IsFollowed(const PanelRoot& root, const HOSTINFO& object, const REQUESTLIST& requests) {
    const auto& further = root.bindings.FurtherLists(&object);
    return &requests == &object.requests ||
           std::any_of(further.begin(), further.end(),
                       [&](const Bindings::FurtherList& list) { return list.requests == &requests; });
}

int ReplaceBindings(const char* text, BINDINGLIST& list, HOSTINFO* object, const BINDINGLIST& functions,
                    const BINDINGLIST& connections, REQUESTLIST& requests) {
    if (object == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const std::string_view addresses = text == nullptr ? "" : text;
        if (addresses.size() > logic::maximumValue ||
            std::any_of(addresses.begin(), addresses.end(), logic::IsControl)) {
            return 0; // it would not come back from a panel file
        }
        BINDINGLIST fresh;
        for (std::string& address : logic::SplitList(addresses)) {
            fresh.push_back(std::move(address));
        }
        list.swap(fresh);
        a_BuildRequestList(functions, connections, object, requests);
        return 1;
    });
}

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
    if (answer == 0 && isFit && kept == DATATYPE_TEXT && a_IsAlive(item.target)) {
        isFit = HasValue(item, record);
    }
    if (!isFit) {
        TellUnfit(item);
    }
    return isFit ? answer : -1;
}

int AskDevice(const REQUESTITEM& item, VALUERECORD& record) {
    const int answer = item.handler(&record, item.context);
    // A device that is there and does not answer has nothing of the kind.
    if (answer < 0 && a_IsAlive(item.device) && item.device->OnIsAlive(0, 0) != 0) {
        TellUnfit(item);
    }
    return answer;
}

} // namespace

int a_FunctionChanged(const char* text, HOSTINFO* object, BINDINGLIST& functions, BINDINGLIST& connections,
                      REQUESTLIST& requests) {
    return ReplaceBindings(text, functions, object, functions, connections, requests);
}

int a_ConnectionChanged(const char* text, HOSTINFO* object, BINDINGLIST& functions, BINDINGLIST& connections,
                        REQUESTLIST& requests) {
    return ReplaceBindings(text, connections, object, functions, connections, requests);
}

int a_IsConnected(HOSTINFO* object, const char* function, void*) {
    if (object == nullptr || function == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        const std::string wanted = logic::FoldAddress(function);
        const auto names = [&](const BINDINGLIST& list) {
            return std::any_of(list.begin(), list.end(), [&](const std::string& address) {
                return logic::FoldAddress(Expand(address, object)) == wanted;
            });
        };
        if (names(object->functions)) {
            return 1;
        }
        const PanelRoot* root = PanelRoot::Above(object);
        if (root == nullptr) {
            return 0;
        }
        const auto& further = root->bindings.FurtherLists(object);
        return std::any_of(further.begin(), further.end(),
                           [&](const Bindings::FurtherList& list) { return names(*list.functions); })
                   ? 1
                   : 0;
    });
}

std::string a_BuildString(const BINDINGLIST& list) {
    return Guarded<std::string>({}, [&] { return logic::JoinList(list); });
}

std::string a_BuildString(const BINDINGLIST& list, const HOSTINFO* object) {
    return Guarded(std::string(), [&] {
        BINDINGLIST expanded;
        std::transform(list.begin(), list.end(), std::back_inserter(expanded),
                       [object](const std::string& address) { return Expand(address, object); });
        return a_BuildString(expanded);
    });
}

void a_BuildRequestList(const BINDINGLIST& functions, const BINDINGLIST& connections, HOSTINFO* object,
                        REQUESTLIST& requests, const char* keyword) {
    if (object == nullptr) {
        return;
    }
    Guarded([&] {
        PanelRoot* root = PanelRoot::Above(object);
        if (root == nullptr || !IsFollowed(*root, *object, requests)) {
            BuildList({&functions, &connections}, object, requests, keyword, false);
            return;
        }
        // What an object depends on is known for all its lists together.
        root->bindings.Forget(object);
        for (const auto& [furtherFunctions, furtherRequests] : root->bindings.FurtherLists(object)) {
            if (furtherRequests != &requests) {
                BuildList({furtherFunctions}, object, *furtherRequests, nullptr, true);
            }
        }
        if (&requests != &object->requests) {
            BuildList({&object->functions, &object->connections}, object, object->requests, nullptr, true);
        }
        BuildList({&functions, &connections}, object, requests, keyword, true);
    });
}

void a_FollowRequests(HOSTINFO* object, const BINDINGLIST& functions, REQUESTLIST& requests) {
    if (PanelRoot* root = PanelRoot::Above(object); root != nullptr) {
        Guarded([&] {
            root->bindings.Follow(object, {&functions, &requests});
            a_BuildRequestList(functions, {}, object, requests);
        });
    }
}

void a_EmptyRequestList(REQUESTLIST& requests) {
    requests.clear();
}

int a_SendToItem(const REQUESTITEM& item, int command, int datatype, void* data) {
    if (!Nesting::MayGrow()) {
        return -1;
    }
    const Nesting nesting;
    VALUERECORD record = item.record;
    record.command = command;
    record.datatype = datatype;
    record.data = data;
    const HOSTINFO* owner = item.device != nullptr ? item.device : item.target;
    if (owner != nullptr && !a_IsAlive(owner)) { // since the list of items was copied
        return -1;
    }
    if (command == COMMAND_SET && item.target == nullptr && IsPutAside(item, datatype, data)) {
        return item.handler != nullptr ? 1 : -1;
    }
    const bool isAsked = command == COMMAND_GET && data != nullptr;
    if (item.handler != nullptr) {
        return isAsked ? AskDevice(item, record) : item.handler(&record, item.context);
    }
    if (item.target == nullptr) {
        return -1;
    }
    return isAsked ? AskTarget(item, record) : SendToTarget(item, record);
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
        }
        if (result != nullptr) {
            *result = outcome;
        }
        return success;
    });
}
