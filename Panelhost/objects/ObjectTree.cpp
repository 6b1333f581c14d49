#include "Panelhost/objects/ObjectTree.h"

ObjectTree& ObjectTree::Get() {
    static ObjectTree tree;
    return tree;
}

void ObjectTree::Enter(HOSTINFO* object) {
    const SharedLock::Writing writing(lock_);
    lives_ += lives_ + 1 == 0 ? 2 : 1;
    entries_[object] = {object->window, lives_};
    byWindow_[object->window] = object;
}

void ObjectTree::Leave(HOSTINFO* object) {
    const SharedLock::Writing writing(lock_);
    const auto entry = entries_.find(object);
    if (entry == entries_.end()) {
        return;
    }
    const auto window = byWindow_.find(entry->second.window);
    if (window != byWindow_.end() && window->second == object) {
        byWindow_.erase(window);
    }
    entries_.erase(entry);
}

HOSTINFO* ObjectTree::FromWindow(HWND window) {
    const SharedLock::Reading reading(lock_);
    const auto entry = byWindow_.find(window);
    return entry == byWindow_.end() ? nullptr : entry->second;
}

unsigned ObjectTree::LifeOf(const HOSTINFO* object) {
    const SharedLock::Reading reading(lock_);
    const auto entry = entries_.find(object);
    return entry == entries_.end() ? 0 : entry->second.life;
}

int ObjectTree::Count() {
    const SharedLock::Reading reading(lock_);
    return static_cast<int>(entries_.size());
}
