#include "Panelhost/Editing.h"

#include "Panelhost/Messages.h"
#include "Panelhost/Operating.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/files/LineFile.h"
#include "Panelhost/files/PanelLoading.h"
#include "Panelhost/files/PanelSaving.h"
#include "Panelhost/files/TextCollector.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/editing/Groups.h"

#include <optional>
#include <utility>

namespace {

// What the listener of that panel answers; 1 when there is none.
int Tell(const PanelRoot* panel, int event, HOSTINFO* object) {
    return panel == nullptr || panel->editListener == nullptr
               ? 1
               : panel->editListener(event, object, panel->editContext);
}

// What is applied between the two events; 0 when it is not.
template <class Apply>
int Edit(HOSTINFO* object, Apply apply) {
    if (!a_IsAlive(object) || a_IsOnlyOperated(object)) {
        return 0;
    }
    PanelRoot* panel = PanelRoot::Above(object);
    if (Tell(panel, EDIT_CHANGING, object) == 0) {
        return 0;
    }
    // The object may have gone while the listener asked something.
    const int taken = a_IsAlive(object) ? apply() : 0;
    // So may the whole panel, by what was applied.
    Tell(PanelRoot::From(panel), EDIT_CHANGED, a_IsAlive(object) ? object : nullptr);
    return taken;
}

} // namespace

void a_SetEditListener(HOSTINFO* root, EDITLISTENER listener, void* context) {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->editListener = listener;
        panel->editContext = context;
    }
}

bool a_IsUndoable(const HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    return panel != nullptr && panel->editListener != nullptr && panel->mode != 0;
}

int a_ApplyEdit(HOSTINFO* object, const char* line) {
    return line == nullptr ? 0 : Edit(object, [object, line] {
        const LRESULT taken =
            SendMessageA(object->window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line));
        return taken != 0 ? 1 : 0;
    });
}

int a_ApplyEditFile(HOSTINFO* object, const char* fullPath) {
    return Edit(object, [object, fullPath] { return a_LoadFile(object, fullPath, LOAD_FROM_DIALOG); });
}

void a_DeleteObject(HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    if (panel != nullptr && panel->editListener != nullptr) {
        Tell(panel, EDIT_DELETE, object);
    } else if (object != nullptr) {
        DestroyWindow(object->window);
    }
}

namespace {

int TextsOf(const std::vector<HOSTINFO*>& objects, PanelSaving::Purpose purpose,
            std::vector<std::string>* texts) {
    texts->clear();
    const bool whole = Guarded(false, [&] {
        TextCollector collector;
        for (HOSTINFO* object : objects) {
            auto text =
                a_IsAlive(object) ? PanelSaving::ObjectText(*object, collector, purpose) : std::nullopt;
            if (!text) {
                return false;
            }
            texts->push_back(std::move(*text));
        }
        return true;
    });
    if (!whole) {
        texts->clear();
    }
    return whole ? 1 : 0;
}

} // namespace

int a_ObjectTexts(const std::vector<HOSTINFO*>& objects, std::vector<std::string>* texts) {
    return TextsOf(objects, PanelSaving::Purpose::SingleText, texts);
}

int a_ObjectText(HOSTINFO* object, std::string* text) {
    text->clear();
    return Guarded(0, [&] {
        std::vector<std::string> texts;
        if (a_ObjectTexts({object}, &texts) == 0) {
            return 0;
        }
        *text = std::move(texts.front());
        return 1;
    });
}

int a_PanelText(HOSTINFO* root, int first, int count, std::string* text) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || first < 0) {
        return -1;
    }
    return Guarded(-1, [&] {
        std::vector<HOSTINFO*> objects;
        if (first == 0 && count > 0) {
            objects.push_back(panel);
        }
        int number = 0;
        for (HOSTINFO* control : panel->Controls()) {
            if (++number >= first && number < first + count) {
                objects.push_back(control);
            }
        }
        std::vector<std::string> texts;
        if (TextsOf(objects, PanelSaving::Purpose::PanelFile, &texts) == 0) {
            return -1;
        }
        std::string lines;
        for (const std::string& one : texts) {
            lines += one;
        }
        *text += lines;
        return static_cast<int>(objects.size());
    });
}

int a_LoadText(HOSTINFO* root, std::string_view text, const char* nameInTraces) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        return PanelLoading(*panel, PanelLoading::OfNoObject::Dropped).LoadText(text, nameInTraces);
    });
}

int a_HideEdited(HOSTINFO* object, bool hidden) {
    const PanelRoot* panel = a_IsAlive(object) ? PanelRoot::Above(object) : nullptr;
    return panel != nullptr && panel->mode != 0 && object->kind == KIND_CONTROL &&
                   PanelRoot::Hide(object, hidden)
               ? 1
               : 0;
}

std::string a_GetGroup(const HOSTINFO* object) {
    return object == nullptr || object->group == 0 ? "" : std::to_string(object->group);
}

int a_SetGroup(HOSTINFO* object, const char* text) {
    const auto group = object == nullptr || text == nullptr ? std::nullopt : logic::ParseGroup(text);
    if (!group) {
        return 0;
    }
    object->group = *group;
    return 1;
}

void a_MoveBefore(HOSTINFO* object, HOSTINFO* other) {
    PanelRoot* panel = PanelRoot::Above(object);
    if (panel == nullptr || object == other || object->kind != KIND_CONTROL ||
        (other != nullptr && (other->parent != object->parent || other->kind != KIND_CONTROL))) {
        return;
    }
    Guarded([&] { panel->MoveBefore(object, other); });
}
