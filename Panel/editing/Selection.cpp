#include "Panel/editing/Selection.h"

#include "Panelhost/Hostinfo.h"

#include <algorithm>
#include <iterator>

namespace {

void Mark(HOSTINFO* object, bool selected) {
    const auto flags =
        static_cast<WORD>(selected ? object->flags | FLAG_SELECTED : object->flags & ~FLAG_SELECTED);
    if (flags != object->flags) {
        object->flags = flags;
        RedrawWindow(object->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
    }
}

} // namespace

HOSTINFO* Selection::Inside() const {
    if (inside_ && !a_IsAlive(inside_)) {
        inside_ = nullptr;
    }
    return inside_;
}

void Selection::Enter(HOSTINFO* object) {
    Clear();
    inside_ = object;
}

const std::vector<HOSTINFO*>& Selection::Objects() const {
    std::erase_if(objects_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    return objects_;
}

bool Selection::Contains(const HOSTINFO* object) const {
    const auto& objects = Objects();
    return std::find(objects.begin(), objects.end(), object) != objects.end();
}

void Selection::Set(std::vector<HOSTINFO*> objects) {
    for (HOSTINFO* object : Objects()) {
        if (std::find(objects.begin(), objects.end(), object) == objects.end()) {
            Mark(object, false);
        }
    }
    objects_ = std::move(objects);
    if (!objects_.empty()) {
        HOSTINFO* parent = objects_.front()->parent;
        inside_ = parent && parent->kind != KIND_ROOT ? parent : nullptr;
    }
    for (HOSTINFO* object : objects_) {
        Mark(object, true);
    }
}

void Selection::Add(HOSTINFO* object) {
    if (!Contains(object)) {
        std::vector<HOSTINFO*> objects;
        std::copy_if(objects_.begin(), objects_.end(), std::back_inserter(objects),
                     [&](const HOSTINFO* other) { return other->parent == object->parent; });
        objects.push_back(object);
        Set(std::move(objects));
    }
}

void Selection::Toggle(HOSTINFO* object) {
    if (!Contains(object)) {
        return Add(object);
    }
    std::vector<HOSTINFO*> objects = objects_;
    std::erase(objects, object);
    Set(std::move(objects));
}
