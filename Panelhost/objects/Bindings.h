#pragma once

#include "Panelhost/Hostinfo.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// Which objects depend on which key (a name they wait for, a target they are bound to), looked up from both
// sides.
template <class Key>
class Dependence {
public:
    void Add(HOSTINFO* object, const Key& key) {
        if (auto& dependents = objects_[key]; !dependents.contains(object)) {
            keys_[object].push_back(
                key); // first, so that Forget finds it even if there is no memory for more
            dependents.insert(object);
        }
    }

    void Forget(HOSTINFO* object) {
        const auto entry = keys_.find(object);
        if (entry == keys_.end()) {
            return;
        }
        for (const Key& key : entry->second) {
            const auto dependents = objects_.find(key);
            if (dependents == objects_.end()) {
                continue;
            }
            dependents->second.erase(object);
            if (dependents->second.empty()) {
                objects_.erase(dependents);
            }
        }
        keys_.erase(entry);
    }

    std::vector<HOSTINFO*> On(const Key& key) const {
        const auto entry = objects_.find(key);
        return entry == objects_.end() ? std::vector<HOSTINFO*>{}
                                       : std::vector<HOSTINFO*>(entry->second.begin(), entry->second.end());
    }

private:
    std::unordered_map<Key, std::unordered_set<HOSTINFO*>> objects_;
    std::unordered_map<const HOSTINFO*, std::vector<Key>> keys_;
};

// Who waits for a name and who is bound to whom, below one root.
class Bindings {
public:
    // Builds the objects' request lists anew.
    static void Rebuild(const std::vector<HOSTINFO*>& objects);

    void WaitFor(HOSTINFO* object, const std::string& name);
    void Bind(HOSTINFO* object, const HOSTINFO* target) {
        bound_.Add(object, target);
        ++version_;
    }
    // Another one after every change of who is bound to whom.
    unsigned Version() const { return version_; }
    // An object's own request list is about to be built anew, or the object goes.
    void Forget(HOSTINFO* object);
    std::vector<HOSTINFO*> WaitingFor(const std::string& name) const;
    std::vector<HOSTINFO*> BoundTo(const HOSTINFO* target) const { return bound_.On(target); }

    // Further request lists of an object, followed like its own.
    struct FurtherList {
        const BINDINGLIST* functions;
        REQUESTLIST* requests;
    };
    void Follow(HOSTINFO* object, FurtherList list) { further_[object].push_back(list); }
    const std::vector<FurtherList>& FurtherLists(const HOSTINFO* object) const;
    void ForgetFurtherLists(const HOSTINFO* object) { further_.erase(object); }

private:
    Dependence<std::string> waiting_;   // on a folded name that nothing has at present
    Dependence<const HOSTINFO*> bound_; // on a target
    std::unordered_map<const HOSTINFO*, std::vector<FurtherList>> further_;
    unsigned version_ = 1;
};
