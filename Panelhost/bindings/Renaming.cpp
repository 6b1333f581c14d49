// Other names for controls.

#include "Panelhost/Renaming.h"

#include "Panelhost/AddressTexts.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Messages.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/editing/Renaming.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

std::string NewFullName(const HOSTINFO* object, const std::string& ownName) {
    return object->name.substr(0, object->name.rfind('*') + 1) + ownName;
}

int MayRename(PanelRoot* panel, const HOSTINFO* object, const char* newName) {
    if (panel == nullptr || object->kind != KIND_CONTROL || a_IsLoading(panel)) {
        return PH_RENAME_NO_CONTROL;
    }
    const std::string name = newName == nullptr ? "" : newName;
    if (name.empty() || name != logic::CleanName(name)) {
        return PH_RENAME_NO_NAME;
    }
    const HOSTINFO* holder = panel->Find(NewFullName(object, name));
    if (holder != nullptr && holder != object) {
        return PH_RENAME_TAKEN;
    }
    if (name != a_OwnName(object) && object->parent != nullptr &&
        object->parent->MakesChild(a_OwnName(object).c_str())) {
        return PH_RENAME_PART;
    }
    return PH_RENAMED;
}

int NumberIn(HOSTINFO* object, const char* keyword) {
    char text[TEXT_SIZE] = "";
    const int row = a_FindKeyword(object->GetHostinfoTable(), keyword);
    if (row > 0) {
        VALUERECORD record = VALUERECORD::GetText(text, row);
        SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    }
    return std::atoi(text);
}

const KEYWORDINFO* InfoOf(const ADDRESSTEXT& text) {
    const KEYWORDINFO* infos = text.object->GetKeywordInfo();
    return infos == nullptr ? nullptr : &infos[text.row - text.object->GetHostinfoTable()];
}

std::size_t LongestOf(const KEYWORDINFO* info) {
    return info == nullptr || info->longest == 0 ? TEXT_SIZE - 1 : static_cast<std::size_t>(info->longest);
}

void Follow(const ADDRESSTEXT& text, const logic::Renaming& renaming, RENAMING& plan) {
    const KEYWORDINFO* info = InfoOf(text);
    logic::Renaming::Holder holder{text.object->name};
    if (text.form == logic::AddressForm::Pattern && info != nullptr) {
        holder.inputs = NumberIn(text.object, info->inputs);
        holder.outputs = *info->outputs == '\0' ? 0 : NumberIn(text.object, info->outputs);
    }
    std::vector<std::string> addresses;
    bool keepsMeaning = true;
    for (const logic::AddressPlace& place : text.addresses) {
        // The first address of a line is the line's own.
        holder.isInLine = text.form == logic::AddressForm::Line && !addresses.empty();
        auto followed = renaming.Follow(place.form, place.In(text.text), holder);
        keepsMeaning = keepsMeaning && followed.keepsMeaning;
        addresses.push_back(std::move(followed.address));
    }
    RENAMEDTEXT renamed{text.object, text.row, text.text, {}};
    const std::optional<std::string> after = a_WithAddresses(text, addresses);
    renamed.after = after.value_or(text.text);
    if (!after || !keepsMeaning) {
        plan.losses.push_back({std::move(renamed), PH_LOSS_MEANING});
    } else if (renamed.after.size() > LongestOf(info)) {
        plan.losses.push_back({std::move(renamed), PH_LOSS_LENGTH});
    } else if (renamed.after != renamed.before) {
        plan.texts.push_back(std::move(renamed));
    }
}

} // namespace

RENAMING a_PlanRenaming(HOSTINFO* object, const char* newName) {
    return Guarded(RENAMING(), [&] {
        RENAMING plan;
        PanelRoot* panel = a_IsAlive(object) ? PanelRoot::Above(object) : nullptr;
        plan.answer = MayRename(panel, object, newName);
        if (plan.answer != PH_RENAMED) {
            return plan;
        }
        plan.object = object;
        plan.from = object->name;
        plan.to = NewFullName(object, newName);
        const logic::Renaming renaming({{plan.from, plan.to}}, [panel](const std::string& name) {
            return panel->Find(name) != nullptr;
        });
        for (const ADDRESSTEXT& text : a_AddressTexts(panel)) {
            Follow(text, renaming, plan);
        }
        return plan;
    });
}

std::string a_RenameFault(const RENAMING& renaming) {
    switch (renaming.answer) {
    case PH_RENAMED:
        return "";
    case PH_RENAME_NO_NAME:
        return "A name has 1 to 63 characters, none of them * = ; \" %, and no blanks at its ends.";
    case PH_RENAME_TAKEN:
        return "Another object has this name.";
    case PH_RENAME_PART:
        return "What contains this control makes it under its name; it cannot have another one.";
    default:
        return "This object cannot have another name.";
    }
}

std::string a_RenameLosses(const RENAMING& renaming, std::size_t most) {
    return Guarded(std::string(), [&] {
        std::string lines;
        for (std::size_t i = 0; i < std::min(most, renaming.losses.size()); ++i) {
            const auto& [text, reason] = renaming.losses[i];
            lines += text.object->name + "*" + text.row->keyword + "=" + text.before +
                     (reason == PH_LOSS_LENGTH ? ": too long as " + text.after
                                               : std::string(": names something else then")) +
                     "\r\n";
        }
        if (renaming.losses.size() > most) {
            lines += "and " + std::to_string(renaming.losses.size() - most) + " more\r\n";
        }
        return lines;
    });
}

int a_Rename(const RENAMING& renaming) {
    PanelRoot* panel = a_IsAlive(renaming.object) ? PanelRoot::Above(renaming.object) : nullptr;
    if (renaming.answer != PH_RENAMED || panel == nullptr) {
        return 0;
    }
    if (panel->renameListener != nullptr) {
        return panel->renameListener(renaming, panel->renameContext);
    }
    if (a_GiveName(renaming.object, renaming.to.c_str() + renaming.to.rfind('*') + 1) == 0) {
        return 0;
    }
    a_SetRenamedTexts(renaming);
    return 1;
}

int __cdecl ph_RenameControl(HOSTINFO* root, const char* object, const char* newName, int anyway,
                             void(__cdecl* receive)(const PH_RENAMELOSS* loss, void* context),
                             void* context) noexcept {
    HOSTINFO* control = PanelRoot::From(root) == nullptr ? nullptr : a_FindHostinfo(root, object);
    const RENAMING renaming = a_PlanRenaming(control, newName);
    if (renaming.answer != PH_RENAMED) {
        return renaming.answer;
    }
    for (const auto& [text, reason] : renaming.losses) {
        const PH_RENAMELOSS loss{text.object->name.c_str(), text.row->keyword, text.before.c_str(),
                                 text.after.c_str(), reason};
        if (receive != nullptr) {
            receive(&loss, context);
        }
    }
    if (!renaming.losses.empty() && anyway == 0) {
        return PH_RENAME_LOSS;
    }
    return a_Rename(renaming) != 0 ? PH_RENAMED : PH_RENAME_NO_CONTROL;
}

void a_SetRenameListener(HOSTINFO* root, RENAMELISTENER listener, void* context) {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->renameListener = listener;
        panel->renameContext = context;
    }
}

int a_GiveName(HOSTINFO* object, const char* ownName) {
    return Guarded(0, [&] {
        PanelRoot* panel = a_IsAlive(object) ? PanelRoot::Above(object) : nullptr;
        if (MayRename(panel, object, ownName) != PH_RENAMED) {
            return 0;
        }
        panel->Rename(object, ownName);
        object->flags |= FLAG_CHANGED;
        return 1;
    });
}

void a_SetRenamedTexts(const RENAMING& renaming) {
    Guarded([&] {
        for (const RENAMEDTEXT& text : renaming.texts) {
            if (!a_IsAlive(text.object)) {
                continue;
            }
            const std::string line = text.object->name + "*" + text.row->keyword + "=" + text.after;
            if (SendMessageA(text.object->window, CWM_LOAD, LOAD_FROM_DIALOG,
                             reinterpret_cast<LPARAM>(line.c_str())) == 0) {
                EDITTRACE(text.object->parent, "Not renamed: %s", line.c_str());
            }
        }
    });
}
