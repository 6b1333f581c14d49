#include "Panel/editing/BuildCommands.h"

#include "Panel/editing/ChannelDialog.h"
#include "Panel/editing/Groups.h"
#include "Panel/editing/PanelEdits.h"
#include "Panel/editing/Placement.h"
#include "Panel/editing/RenameDialog.h"
#include "Panel/editing/RowDialog.h"
#include "Panel/editing/Selection.h"
#include "Panel/resource.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "logic/editing/ReadingOrder.h"

#include <algorithm>

namespace {

std::vector<HOSTINFO*> InReadingOrder(const std::vector<HOSTINFO*>& siblings) {
    std::vector<HOSTINFO*> sorted;
    for (const std::size_t place : logic::ReadingOrder(PlacesOf(PlacementsOf(siblings)))) {
        sorted.push_back(siblings[place]);
    }
    return sorted;
}

} // namespace

BuildCommands::BuildCommands(const EditSurface& surface, PanelEdits::Warning warn)
    : surface_(surface), edits_(surface.edits), selection_(surface.selection), warn_(std::move(warn)) {}

bool BuildCommands::Has(int command) {
    return (command >= CMD_BUILD_FIRST && command <= CMD_BUILD_LAST) || command == CMD_GROUP ||
           command == CMD_UNGROUP;
}

bool BuildCommands::IsEnabled(int command) const {
    const std::size_t count = selection_.Objects().size();
    switch (command) {
    case CMD_SORT_BY_POSITION:
    case CMD_SHOW_ALL:
        return true;
    case CMD_RENAME:
        return count == 1;
    case CMD_DUPLICATE_ROW: // copies are put on the panel itself
        return count >= 1 && !selection_.Inside();
    case CMD_GROUP:
        return count >= 2 && !IsGroup(edits_.Root(), selection_.Objects());
    case CMD_UNGROUP:
        return AreGrouped(edits_.Root(), selection_.Objects());
    case CMD_ENTER:
        return count == 1 && HasParts(selection_.Objects().front());
    case CMD_LEAVE:
        return selection_.Inside() != nullptr;
    default:
        return count >= 1;
    }
}

bool BuildCommands::IsChecked(int command) const {
    const auto all = [&](WORD flag) {
        const auto& objects = selection_.Objects();
        return !objects.empty() && std::all_of(objects.begin(), objects.end(), [&](const HOSTINFO* object) {
            return (object->flags & flag) != 0;
        });
    };
    return (command == CMD_HIDE && all(FLAG_HIDDEN)) || (command == CMD_LOCK && all(FLAG_LOCKED));
}

void BuildCommands::Execute(int command) {
    switch (command) {
    case CMD_RENAME:
        return AskForName(surface_.panel, selection_.Objects().front());
    case CMD_SORT_BY_POSITION:
        return SortByPosition();
    case CMD_HIDE:
        return Hide(std::vector<HOSTINFO*>(selection_.Objects()), !IsChecked(command));
    case CMD_LOCK:
        return Lock(selection_.Objects(), !IsChecked(command));
    case CMD_SHOW_ALL:
        return ShowAll();
    case CMD_ENTER:
        return Enter(selection_.Objects().front());
    case CMD_LEAVE:
        return Leave();
    case CMD_BIND_CHANNEL:
        return BindChannels(surface_.panel, edits_, InReadingOrder(selection_.Objects()));
    case CMD_DUPLICATE_ROW:
        return DuplicateInRow();
    case CMD_GROUP:
        return Group(true);
    case CMD_UNGROUP:
        return Group(false);
    default:
        return;
    }
}

// Order.

void BuildCommands::MoveBefore(const std::string& label, const std::vector<HOSTINFO*>& objects,
                               HOSTINFO* other) {
    edits_.Do(label, objects, [&] {
        for (HOSTINFO* object : objects) {
            a_MoveBefore(object, other);
        }
        return objects;
    });
    RedrawWindow(surface_.panel, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void BuildCommands::SortByPosition() {
    const HOSTINFO* parent = selection_.Parent(edits_.Root());
    std::vector<HOSTINFO*> siblings;
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (object->kind == KIND_CONTROL && object->parent == parent) {
            siblings.push_back(object);
        }
    }
    const std::vector<HOSTINFO*> sorted = InReadingOrder(siblings);
    if (sorted != siblings) {
        MoveBefore("Sort by Position", sorted, nullptr);
    }
}

// What is out of sight and out of reach.

bool BuildCommands::HasLocked() const {
    const auto& objects = selection_.Objects();
    return std::any_of(objects.begin(), objects.end(),
                       [](const HOSTINFO* object) { return (object->flags & FLAG_LOCKED) != 0; });
}

void BuildCommands::Hide(const std::vector<HOSTINFO*>& objects, bool hidden) {
    for (HOSTINFO* object : objects) {
        a_HideEdited(object, hidden);
    }
}

void BuildCommands::Lock(const std::vector<HOSTINFO*>& objects, bool locked) {
    for (HOSTINFO* object : objects) {
        object->flags =
            static_cast<WORD>(locked ? object->flags | FLAG_LOCKED : object->flags & ~FLAG_LOCKED);
    }
}

void BuildCommands::ShowAll() {
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (a_IsAlive(object) && object->kind == KIND_CONTROL) {
            a_HideEdited(object, false);
            Lock({object}, false);
        }
    }
}

// Groups.

void BuildCommands::Group(bool together) {
    const std::vector<HOSTINFO*> objects = selection_.Objects();
    const logic::GroupNumber number =
        together ? logic::FreeGroup(GroupsIn(edits_.Root(), objects.front()->parent)) : logic::GroupNumber{0};
    if (together && number == 0) {
        return warn_("There are as many groups as there can be.");
    }
    edits_.Do(together ? "Group" : "Ungroup", objects, [&] {
        for (HOSTINFO* object : objects) {
            a_SetGroup(object, number == 0 ? "" : std::to_string(number).c_str());
            a_KeywordSet(object, std::string(logic::GROUP_KEYWORD).c_str());
        }
        return std::vector<HOSTINFO*>{};
    });
}

// Inside of controls.

bool BuildCommands::HasParts(const HOSTINFO* object) const {
    const std::list<HOSTINFO*> objects = a_ListHostinfos(edits_.Root());
    return std::any_of(objects.begin(), objects.end(),
                       [&](const HOSTINFO* other) { return other->parent == object; });
}

void BuildCommands::Enter(HOSTINFO* object) {
    selection_.Enter(object && object->kind == KIND_CONTROL ? object : nullptr);
    InvalidateRect(surface_.panel, nullptr, TRUE);
}

void BuildCommands::Leave() {
    HOSTINFO* left = selection_.Inside();
    Enter(left->parent);
    selection_.Set({left});
}

// Copies.

// They lie in front of and behind the others as what they are copies of.
void BuildCommands::DuplicateInRow() {
    std::vector<HOSTINFO*> originals;
    HOSTINFO* next = nullptr; // behind the last of them
    std::string text;
    std::vector<HOSTINFO*> whole;
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (selection_.Contains(object)) {
            originals.push_back(object);
            next = nullptr;
        } else if (object->kind == KIND_CONTROL && object->parent == edits_.Root() && !next) {
            next = object;
        }
        for (const HOSTINFO* above = object; above; above = above->parent) {
            if (selection_.Contains(above)) {
                whole.push_back(object);
                break;
            }
        }
    }
    const logic::Rectangle bounds = logic::Bounds(PlacesOf(PlacementsOf(originals)));
    CopiedRow row{1, bounds.right - bounds.left + EditGrid::SPACING, 0, true};
    std::vector<std::string> texts;
    if (!AskForRow(surface_.panel, row) || edits_.Root()->mode == 0) {
        return;
    }
    const auto isGone = [](const HOSTINFO* object) { return !a_IsAlive(object); };
    if (std::any_of(whole.begin(), whole.end(), isGone) || a_ObjectTexts(whole, &texts) == 0) {
        return warn_("The selection cannot be copied: its properties cannot be read.");
    }
    for (const std::string& one : texts) {
        text += one;
    }
    const RowOfCopies copies = MakeRow(edits_.Root(), originals, text, row);
    edits_.Do("Duplicate in a Row", {}, [&] {
        a_LoadText(edits_.Root(), copies.text, "Row");
        std::vector<HOSTINFO*> made;
        for (const std::string& name : copies.names) {
            if (HOSTINFO* object = edits_.Target().Find(name)) {
                if (next && a_IsAlive(next)) {
                    a_MoveBefore(object, next);
                }
                made.push_back(object);
            }
        }
        selection_.Set(made);
        return made;
    });
}
