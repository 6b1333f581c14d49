#include "Panel/editing/Groups.h"

#include "Panel/editing/Placement.h"
#include "Panelhost/Hostinfo.h"

#include <algorithm>
#include <unordered_set>

namespace {

using Objects = std::vector<HOSTINFO*>;

// The group that all are in; 0 when they are in none or in several.
logic::GroupNumber CommonGroup(const Objects& objects) {
    const logic::GroupNumber group = objects.empty() ? logic::GroupNumber{0} : objects.front()->group;
    return std::all_of(objects.begin(), objects.end(),
                       [&](const HOSTINFO* object) { return object->group == group; })
               ? group
               : logic::GroupNumber{0};
}

std::set<logic::GroupNumber> GroupsOf(const Objects& objects) {
    std::set<logic::GroupNumber> groups;
    for (const HOSTINFO* object : objects) {
        groups.insert(object->group);
    }
    groups.erase(0);
    return groups;
}

Objects Without(const Objects& objects, const Objects& others) {
    const std::unordered_set<const HOSTINFO*> known(others.begin(), others.end());
    Objects rest;
    std::copy_if(objects.begin(), objects.end(), std::back_inserter(rest),
                 [&](const HOSTINFO* object) { return !known.contains(object); });
    return rest;
}

} // namespace

std::set<logic::GroupNumber> GroupsIn(HOSTINFO* root, const HOSTINFO* parent) {
    std::set<logic::GroupNumber> groups;
    for (const HOSTINFO* object : a_ListHostinfos(root)) {
        if (object->parent == parent && object->group != 0) {
            groups.insert(object->group);
        }
    }
    return groups;
}

bool AreGrouped(HOSTINFO* root, const Objects& objects) {
    const std::set<logic::GroupNumber> groups = GroupsOf(objects);
    std::set<logic::GroupNumber> met;
    const std::list<HOSTINFO*> all = groups.empty() ? std::list<HOSTINFO*>() : a_ListHostinfos(root);
    return std::any_of(all.begin(), all.end(), [&](const HOSTINFO* object) {
        return object->parent == objects.front()->parent && groups.contains(object->group) &&
               !met.insert(object->group).second;
    });
}

bool IsGroup(HOSTINFO* root, const Objects& objects) {
    const logic::GroupNumber group = CommonGroup(objects);
    const std::list<HOSTINFO*> all =
        group == 0 || objects.size() < 2 ? std::list<HOSTINFO*>() : a_ListHostinfos(root);
    return !all.empty() && std::count_if(all.begin(), all.end(), [&](const HOSTINFO* object) {
                               return object->parent == objects.front()->parent && object->group == group;
                           }) == static_cast<std::ptrdiff_t>(objects.size());
}

Objects WithGroups(HOSTINFO* root, Objects chosen, const Objects& before) {
    if (chosen.empty() || GroupsOf(chosen).empty()) {
        return chosen;
    }
    const HOSTINFO* parent = chosen.front()->parent;
    if (const logic::GroupNumber inside = CommonGroup(before);
        inside != 0 && before.front()->parent == parent && CommonGroup(chosen) == inside) {
        return chosen;
    }
    if (const Objects gone = Without(before, chosen); gone.size() == 1 && Without(chosen, before).empty()) {
        std::erase_if(chosen, [&](const HOSTINFO* object) {
            return object->group != 0 && object->group == gone.front()->group;
        });
        return chosen;
    }
    const std::set<logic::GroupNumber> groups = GroupsOf(chosen);
    for (HOSTINFO* object : Without(ReachableIn(root, parent), chosen)) {
        if (groups.contains(object->group)) {
            chosen.push_back(object);
        }
    }
    return chosen;
}
