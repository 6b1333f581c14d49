// Bindings of an object, and the request list built from them.

#include "Panelhost/Requests.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/objects/RequestAddress.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <utility>

namespace {

bool IsOfRoot(const std::string& text, const HOSTINFO* object) {
    PanelRoot* root = PanelRoot::Above(object);
    return root != nullptr && root->Find(text) == nullptr &&
           a_FindKeyword(root->GetHostinfoTable(), text) > 0;
}

} // namespace

std::string ExpandAddress(const std::string& address, const HOSTINFO* object) {
    if (address.find("%n") == std::string::npos && !address.starts_with('*')) {
        return address;
    }
    std::string text = address;
    const HOSTINFO* container = object->parent;
    const std::string path = container == nullptr || container->kind == KIND_ROOT ? "" : container->name;
    for (auto place = text.find("%n"); place != std::string::npos;
         place = text.find("%n", place + path.size())) {
        text.replace(place, 2, path);
    }
    // Directly on the root there is no path, and what is no control there can be a keyword of the panel
    // itself.
    if (text.starts_with('*') && !IsOfRoot(text.substr(1), object)) {
        text.erase(0, 1);
    }
    return text;
}

ADDRESSED FindAddressed(PanelRoot& root, const std::string& address) {
    if (address.starts_with('*')) {
        return {&root, address.substr(1)};
    }
    if (HOSTINFO* found = root.Find(address); found != nullptr) {
        return {found};
    }
    const auto star = address.rfind('*');
    if (star == std::string::npos) {
        return {};
    }
    HOSTINFO* found = root.Find(address.substr(0, star));
    return found == nullptr ? ADDRESSED{} : ADDRESSED{found, address.substr(star + 1)};
}

namespace {

// Fills in how a device's parameter or a control's value is reached. Names are resolved here, once: the item
// holds no text that could go before it does.
bool Reach(HOSTINFO* found, const char* keyword, REQUESTITEM& item) {
    if (found->kind == KIND_DEVICE) {
        if (found->OnRequestList(reinterpret_cast<WPARAM>(keyword), reinterpret_cast<LPARAM>(&item)) == 0) {
            return false;
        }
        item.device = found;
        item.life = a_LifeOf(found);
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
    item.life = a_LifeOf(found);
    return true;
}

REQUESTITEM Resolve(const std::string& address, HOSTINFO* object, const char* keyword, bool follow) {
    REQUESTITEM item;
    PanelRoot* root = PanelRoot::Above(object);
    if (root == nullptr) {
        return item;
    }
    const std::string full = ExpandAddress(address, object);
    const auto [found, ownKeyword] = FindAddressed(*root, full);
    const char* wanted = keyword != nullptr ? keyword : ownKeyword ? ownKeyword->c_str() : nullptr;
    const bool reached = found != nullptr && Reach(found, wanted, item);
    item.address = std::make_shared<REQUESTADDRESS>(REQUESTADDRESS{
        root, object, reached && wanted != nullptr && found != root ? found->name + "*" + wanted : full});
    if (follow) {
        if (found == root) {
            return item; // which is there as long as the object is
        }
        if (reached) {
            root->bindings.Bind(object, found);
        } else {
            root->bindings.WaitFor(object, full);
            if (const auto star = full.rfind('*'); star != std::string::npos) {
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
        if (addresses.size() > logic::MAXIMUM_VALUE ||
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
                return logic::FoldAddress(ExpandAddress(address, object)) == wanted;
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
                       [object](const std::string& address) { return ExpandAddress(address, object); });
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
