// Bindings of an object, the request list built from them, and the sending of requests.

#include "Panelhost/Requests.h"

#include "Panelhost/Guard.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/ObjectTree.h"
#include "Panelhost/objects/PanelRoot.h"
#include "logic/PropertyLine.h"
#include "logic/Text.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
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
        VALUERECORD query{COMMAND_RESOLVE, 0, DATATYPE_TEXT, 0, const_cast<char*>(keyword), keyword, 0};
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
    const bool reached = found != nullptr && Reach(found, keyword != nullptr ? keyword : ownKeyword, item);
    if (follow) {
        if (reached) {
            root->Bind(object, found);
        } else {
            root->WaitFor(object, full);
            if (star != std::string::npos) {
                root->WaitFor(object, full.substr(0, star));
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
    const auto& further = root.FurtherLists(&object);
    return &requests == &object.requests ||
           std::any_of(further.begin(), further.end(),
                       [&](const PanelRoot::FurtherList& list) { return list.requests == &requests; });
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
        const auto comparable = [](const std::string& address) {
            const auto star = address.rfind('*');
            return star == std::string::npos
                       ? logic::FoldName(address)
                       : logic::FoldName(address.substr(0, star)) + address.substr(star);
        };
        const std::string wanted = comparable(function);
        const auto names = [&](const BINDINGLIST& list) {
            return std::any_of(list.begin(), list.end(), [&](const std::string& address) {
                return comparable(Expand(address, object)) == wanted;
            });
        };
        if (names(object->functions)) {
            return 1;
        }
        const PanelRoot* root = PanelRoot::Above(object);
        if (root == nullptr) {
            return 0;
        }
        const auto& further = root->FurtherLists(object);
        return std::any_of(further.begin(), further.end(),
                           [&](const PanelRoot::FurtherList& list) { return names(*list.functions); })
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
        root->Forget(object);
        for (const auto& [furtherFunctions, furtherRequests] : root->FurtherLists(object)) {
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
            root->Follow(object, {&functions, &requests});
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
    if (item.handler != nullptr) {
        return item.handler(&record, item.context);
    }
    if (item.target == nullptr) {
        return -1;
    }
    return static_cast<int>(
        SendMessageA(item.target->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record)));
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
                success = answer > 0 ? success : 0;
                outcome = answer < 0 ? REQUEST_UNREACHABLE : outcome;
            }
        }
        if (result != nullptr) {
            *result = outcome;
        }
        return success;
    });
}
