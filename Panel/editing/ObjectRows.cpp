#include "Panel/editing/ObjectRows.h"

#include "Panelhost/Hostinfo.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

std::string SearchedText(const HOSTINFO* object) {
    char className[64] = "";
    GetClassNameA(object->window, className, sizeof className);
    return logic::FoldName(object->name + " " + className);
}

// Those that are listed because of the words, and what contains them.
std::unordered_set<const HOSTINFO*> Found(const std::list<HOSTINFO*>& objects, const std::string& wanted) {
    std::unordered_set<const HOSTINFO*> found;
    for (const HOSTINFO* object : objects) {
        if (SearchedText(object).find(wanted) == std::string::npos) {
            continue;
        }
        for (const HOSTINFO* one = object; one != nullptr && found.insert(one).second;) {
            one = one->parent;
        }
    }
    return found;
}

} // namespace

std::vector<ObjectRow> ObjectRows(HOSTINFO* root, const std::unordered_set<const HOSTINFO*>& open,
                                  const std::string& wanted) {
    const std::list<HOSTINFO*> objects = a_ListHostinfos(root);
    const std::string words = logic::FoldName(logic::TrimBlanks(wanted));
    const auto found = words.empty() ? std::unordered_set<const HOSTINFO*>() : Found(objects, words);
    std::unordered_set<const HOSTINFO*> holders;
    std::map<std::pair<const HOSTINFO*, WORD>, int> members;
    for (const HOSTINFO* object : objects) {
        holders.insert(object->parent);
        members[{object->parent, object->group}] += object->group != 0;
    }
    const auto isListed = [&](const HOSTINFO* object) { return words.empty() || found.contains(object); };
    const auto isOpen = [&](const HOSTINFO* object) {
        return object == root || !words.empty() || open.contains(object);
    };
    std::vector<ObjectRow> rows{{ObjectRow::Kind::Panel, root, 0, false, false}};
    std::vector<ObjectRow> devices;
    for (HOSTINFO* object : objects) {
        if (!isListed(object)) {
            continue;
        }
        if (object->kind != KIND_CONTROL) {
            devices.push_back({ObjectRow::Kind::Device, object, 1, false, false});
            continue;
        }
        int depth = 1;
        bool isShown = true;
        for (const HOSTINFO* above = object->parent; above != nullptr && above != root;
             above = above->parent) {
            isShown = isShown && isOpen(above);
            ++depth;
        }
        if (isShown) {
            const bool hasParts = holders.contains(object);
            const bool isGrouped = members[{object->parent, object->group}] > 1;
            rows.push_back({ObjectRow::Kind::Control, object, depth, hasParts, hasParts && isOpen(object),
                            isGrouped ? object->group : 0});
        }
    }
    if (!devices.empty()) {
        rows.push_back({ObjectRow::Kind::Heading, nullptr, 0, false, false});
        rows.insert(rows.end(), devices.begin(), devices.end());
    }
    return rows;
}

RowGap GapAt(const std::vector<ObjectRow>& rows, const std::vector<HOSTINFO*>& moved, int row) {
    if (moved.empty()) {
        return {};
    }
    const HOSTINFO* parent = moved.front()->parent;
    const auto isSibling = [&](const ObjectRow& one) {
        return one.kind == ObjectRow::Kind::Control && one.object->parent == parent;
    };
    const auto first = std::find_if(rows.begin(), rows.end(), isSibling);
    if (first == rows.end()) {
        return {};
    }
    auto end = first; // of all that is inside the same object
    while (end != rows.end() && end->kind == ObjectRow::Kind::Control && end->depth >= first->depth) {
        ++end;
    }
    const auto from = static_cast<int>(first - rows.begin());
    const auto to = static_cast<int>(end - rows.begin());
    for (int at = std::clamp(row, from, to); at < to; ++at) {
        const ObjectRow& one = rows[static_cast<std::size_t>(at)];
        if (isSibling(one) && std::find(moved.begin(), moved.end(), one.object) == moved.end()) {
            return {at, one.object};
        }
    }
    return {to, nullptr};
}
