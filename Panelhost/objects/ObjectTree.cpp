#include "Panelhost/objects/ObjectTree.h"

ObjectTree& ObjectTree::Get() {
    static ObjectTree tree;
    return tree;
}

void ObjectTree::Enter(HOSTINFO* object) {
    const SharedLock::Writing writing(lock_);
    windows_[object] = object->window;
    byWindow_[object->window] = object;
}

void ObjectTree::Leave(HOSTINFO* object) {
    const SharedLock::Writing writing(lock_);
    const auto entry = windows_.find(object);
    if (entry == windows_.end()) {
        return;
    }
    const auto window = byWindow_.find(entry->second);
    if (window != byWindow_.end() && window->second == object) {
        byWindow_.erase(window);
    }
    windows_.erase(entry);
}

HOSTINFO* ObjectTree::FromWindow(HWND window) {
    const SharedLock::Reading reading(lock_);
    const auto entry = byWindow_.find(window);
    return entry == byWindow_.end() ? nullptr : entry->second;
}

bool ObjectTree::IsAlive(const HOSTINFO* object) {
    const SharedLock::Reading reading(lock_);
    return windows_.find(object) != windows_.end();
}

int ObjectTree::Count() {
    const SharedLock::Reading reading(lock_);
    return static_cast<int>(windows_.size());
}
