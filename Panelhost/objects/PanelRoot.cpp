// The root object: its life, and the tree of names below it.

#include "Panelhost/objects/PanelRoot.h"

#include "Panelhost/Trace.h"
#include "Panelhost/objects/ObjectTree.h"
#include "Panelhost/objects/PanelProcedure.h"
#include "base/DrawingHeld.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <utility>

namespace {

std::vector<PanelRoot*>& Roots() {
    static std::vector<PanelRoot*> roots;
    return roots;
}

} // namespace

PanelRoot* PanelRoot::Create(HWND panel, const char* rootName) {
    if (!IsWindow(panel) || ObjectTree::Get().FromWindow(panel) != nullptr) {
        return nullptr;
    }
    auto* root = new PanelRoot;
    root->window = panel;
    root->thread_ = GetWindowThreadProcessId(panel, nullptr);
    root->kind = KIND_ROOT;
    root->name = logic::CleanName(rootName == nullptr ? "" : rootName);
    root->root_ = root;
    GetClientRect(panel, &root->rectangle);
    Roots().push_back(root);
    ObjectTree::Get().Enter(root);
    if (!Guarded(false, [&] { return PanelProcedure::Attach(panel, *root); })) {
        delete root;
        return nullptr;
    }
    return root;
}

PanelRoot* PanelRoot::From(HOSTINFO* object) {
    const auto& roots = Roots();
    const auto found = std::find(roots.begin(), roots.end(), object);
    return found == roots.end() ? nullptr : *found;
}

bool PanelRoot::AnyKept() {
    return std::any_of(Roots().begin(), Roots().end(),
                       [](const PanelRoot* root) { return !root->kept.IsEmpty(); });
}

PanelRoot* PanelRoot::Above(const HOSTINFO* object) {
    return object == nullptr ? nullptr : object->root_;
}

bool PanelRoot::IsOnItsThread(const HOSTINFO* object) {
    PanelRoot* root = Above(object);
    if (root == nullptr || root->thread_ == GetCurrentThreadId()) {
        return true;
    }
    if (!root->isToldOfThreads_.exchange(true)) {
        TRACE("A request to %s was made on another thread than the panel's\n", object->name.c_str());
    }
    return false;
}

PanelRoot::~PanelRoot() {
    End();
}

void PanelRoot::End() {
    if (std::exchange(ended_, true)) {
        return;
    }
    kept.Clear();
    recall.Clear();
    DestroyControls();
    while (!devices_.empty()) {
        HOSTINFO* device = devices_.front();
        delete device;
        if (!devices_.empty() && devices_.front() == device) {
            devices_.pop_front();
        }
    }
    if (window != nullptr) {
        PanelProcedure::Detach(window);
        window = nullptr;
    }
    ObjectTree::Get().Leave(this);
    auto& roots = Roots();
    roots.erase(std::remove(roots.begin(), roots.end(), this), roots.end());
    root_ = nullptr; // the base class has nothing to take out of this tree any more
}

void PanelRoot::Release() {
    if (--holds_ == 0) {
        delete this;
    }
}

void PanelRoot::Destroy() {
    if (!ended_) { // not once more by what goes with it
        End();
        Release();
    }
}

void PanelRoot::DestroyControls() {
    TellControls(SYSTEM_CLOSING);
    const DrawingHeld held(window);
    while (!controls_.empty()) {
        HOSTINFO* control = controls_.front();
        DestroyWindow(control->window);
        if (!controls_.empty() && controls_.front() == control) { // a window that this thread cannot destroy
            Remove(control);
        }
    }
}

std::string PanelRoot::FreeName(const std::string& path, const std::string& ownName) {
    const std::string folded = logic::FoldName(path + ownName);
    if (byName_.find(folded) == byName_.end()) {
        return path + ownName;
    }
    int& number =
        lastNumber_[folded]; // where the last search ended: a thousand equal names stay a linear effort
    while (byName_.find(folded + std::to_string(++number)) != byName_.end()) {
    }
    return path + ownName + std::to_string(number);
}

void PanelRoot::Add(HOSTINFO* object, HOSTINFO* owner, const std::string& ownName) {
    object->name = FreeName(owner == this ? "" : owner->name + "*", ownName);
    auto& list = object->kind == KIND_DEVICE ? devices_ : controls_;
    object->place_ = list.insert(object->kind == KIND_DEVICE ? list.end() : EndOf(owner), object);
    try {
        const SharedLock::Writing writing(lock_);
        byName_[logic::FoldName(object->name)] = object;
    } catch (const std::bad_alloc&) {
        list.erase(object->place_);
        throw;
    }
    object->root_ = this;
    object->reachable_ = true;
    object->mode = mode;
    ++owner->children_;
    NoteAddressChange();
    kept.Added(*object);
}

void PanelRoot::Remove(HOSTINFO* object) {
    if (object == this) {
        return;
    }
    Withdraw(object);
    bindings.Forget(object); // one that found no place here for want of memory can be bound all the same
    bindings.ForgetFurtherLists(object);
    if (object->root_ != this) {
        return;
    }
    if (object->kind == KIND_DEVICE) {
        Guarded([&] { recall.Leave(object); });
    } else {
        kept.Removed(*object, object->place_ == controls_.begin() ? *this : **std::prev(object->place_));
    }
    (object->kind == KIND_DEVICE ? devices_ : controls_).erase(object->place_);
    if (object->children_ > 0) { // its windows go right after it
        for (HOSTINFO* child : controls_) {
            if (child->parent == object) {
                child->parent = nullptr;
            }
        }
    }
    if (object->parent != nullptr) {
        --object->parent->children_;
    }
    object->root_ = nullptr;
    ++removals_;
}

HOSTINFO* PanelRoot::Find(const std::string& fullName) {
    const std::string folded = logic::FoldName(fullName);
    const SharedLock::Reading reading(lock_);
    const auto found = byName_.find(folded);
    return found == byName_.end() ? nullptr : found->second;
}

void PanelRoot::Announce(HOSTINFO* object) {
    Bindings::Rebuild(bindings.WaitingFor(object->name));
}

void PanelRoot::Withdraw(HOSTINFO* object) {
    if (!object->reachable_) {
        return;
    }
    object->reachable_ = false;
    {
        const SharedLock::Writing writing(lock_);
        const bool isErased = Guarded(false, [&] {
            byName_.erase(logic::FoldName(object->name));
            return true;
        });
        if (!isErased) { // without memory it has to be looked for
            std::erase_if(byName_, [object](const auto& entry) { return entry.second == object; });
        }
        lastNumber_.clear(); // the name is free again
    }
    Guarded([&] { Bindings::Rebuild(bindings.BoundTo(object)); }); // what cannot be rebuilt sends to nobody
}

void PanelRoot::Rename(HOSTINFO* object, const std::string& ownName) {
    const std::string from = object->name;
    const std::string to = from.substr(0, from.rfind('*') + 1) + ownName;
    std::vector<HOSTINFO*> renamed;
    std::vector<std::string> names;
    for (auto place = object->place_; place != EndOf(object); ++place) {
        renamed.push_back(*place);
        names.push_back(to + (*place)->name.substr(from.size()));
    }
    {
        const SharedLock::Writing writing(lock_);
        std::unordered_map<std::string, HOSTINFO*> byNewName = byName_; // so that nothing is done in part
        for (std::size_t i = 0; i < renamed.size(); ++i) {
            byNewName.erase(logic::FoldName(renamed[i]->name));
        }
        for (std::size_t i = 0; i < renamed.size(); ++i) {
            byNewName[logic::FoldName(names[i])] = renamed[i];
        }
        byName_.swap(byNewName);
        for (std::size_t i = 0; i < renamed.size(); ++i) {
            renamed[i]->name.swap(names[i]);
        }
        lastNumber_.clear();
    }
    if (const std::string path = logic::FoldName(from), folded = logic::FoldName(parameterDialog);
        folded == path || folded.starts_with(path + "*")) {
        parameterDialog = to + parameterDialog.substr(from.size());
    }
    kept.Renamed(from, to);
    for (HOSTINFO* one : renamed) {
        std::vector<HOSTINFO*> concerned = bindings.BoundTo(one);
        const std::vector<HOSTINFO*> waiting = bindings.WaitingFor(one->name);
        concerned.insert(concerned.end(), waiting.begin(), waiting.end());
        concerned.push_back(one); // "%n"
        Bindings::Rebuild(concerned);
    }
}

// Behind the last control inside that one, so that what belongs together stands together.
std::list<HOSTINFO*>::iterator PanelRoot::EndOf(const HOSTINFO* owner) {
    if (owner->kind == KIND_ROOT || owner->kind == KIND_DEVICE) {
        return controls_.end();
    }
    const std::string path = owner->name + "*";
    auto end = owner->place_;
    do {
        ++end;
    } while (end != controls_.end() && (*end)->name.compare(0, path.size(), path) == 0);
    return end;
}
