#include "Panelhost/objects/Bindings.h"

#include "logic/text/PropertyLine.h"

void Bindings::Rebuild(const std::vector<HOSTINFO*>& objects) {
    for (HOSTINFO* object : objects) {
        a_BuildRequestList(object->functions, object->connections, object, object->requests);
    }
}

void Bindings::WaitFor(HOSTINFO* object, const std::string& name) {
    waiting_.Add(object, logic::FoldName(name));
}

void Bindings::Forget(HOSTINFO* object) {
    waiting_.Forget(object);
    bound_.Forget(object);
    ++version_;
}

std::vector<HOSTINFO*> Bindings::WaitingFor(const std::string& name) const {
    return waiting_.On(logic::FoldName(name));
}

const std::vector<Bindings::FurtherList>& Bindings::FurtherLists(const HOSTINFO* object) const {
    static const std::vector<FurtherList> none;
    const auto found = further_.find(object);
    return found == further_.end() ? none : found->second;
}
