#include "Panelhost/Editing.h"

#include "Panelhost/Guard.h"
#include "Panelhost/files/LineFile.h"
#include "Panelhost/files/PanelLoading.h"
#include "Panelhost/files/PanelSaving.h"
#include "Panelhost/objects/PanelRoot.h"

void a_SetEditListener(HOSTINFO* root, EDITLISTENER listener, void* context) {
    if (PanelRoot* panel = PanelRoot::From(root); panel != nullptr) {
        panel->editListener = listener;
        panel->editContext = context;
    }
}

void a_NotifyEdit(int event, HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    if (panel != nullptr && panel->editListener != nullptr) {
        panel->editListener(event, object, panel->editContext);
    }
}

void a_DeleteObject(HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    if (panel != nullptr && panel->editListener != nullptr) {
        panel->editListener(EDIT_DELETE, object, panel->editContext);
    } else if (object != nullptr) {
        DestroyWindow(object->window);
    }
}

int a_GetObjectText(HOSTINFO* object, std::string* text) {
    if (object == nullptr || text == nullptr) {
        return 0;
    }
    return Guarded(0, [&] {
        auto written = PanelSaving::ObjectText(*object);
        if (!written) {
            return 0;
        }
        *text = std::move(*written);
        return 1;
    });
}

std::string a_ObjectText(HOSTINFO* object) {
    std::string text;
    a_GetObjectText(object, &text);
    return text;
}

int a_LoadText(HOSTINFO* root, std::string_view text, const char* nameInTraces) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return -1;
    }
    return Guarded(-1, [&] {
        LineText lines(text, nameInTraces);
        return PanelLoading(*panel, PanelLoading::OfNoObject::Dropped).LoadLines(lines);
    });
}

void a_MoveBefore(HOSTINFO* object, HOSTINFO* other) {
    PanelRoot* panel = PanelRoot::Above(object);
    if (panel == nullptr || object == other || object->kind != KIND_CONTROL ||
        (other != nullptr && (other->parent != object->parent || other->kind != KIND_CONTROL))) {
        return;
    }
    Guarded([&] { panel->MoveBefore(object, other); });
}
