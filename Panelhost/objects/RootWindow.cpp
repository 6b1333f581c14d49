// The root and its window: what is shown of its controls, their order, their ticks and what was changed.

#include "Panelhost/Devices.h"
#include "Panelhost/Root.h"
#include "Panelhost/objects/PanelRoot.h"
#include "base/Guard.h"
#include "logic/controls/Layers.h"

#include <algorithm>

LRESULT PanelRoot::OnGetActiveLayer(WPARAM, LPARAM layersOut) {
    *reinterpret_cast<std::uint64_t*>(layersOut) = activeLayers;
    return 1;
}

void PanelRoot::MoveBefore(HOSTINFO* object, HOSTINFO* other) {
    // The object and all below it stay together and in order.
    const std::string path = object->name + "*";
    std::list<HOSTINFO*> moved;
    for (auto place = controls_.begin(); place != controls_.end();) {
        const auto next = std::next(place);
        if (*place == object || (*place)->name.compare(0, path.size(), path) == 0) {
            moved.splice(moved.end(), controls_, place);
        }
        place = next;
    }
    const bool hasOwner = object->parent != nullptr && object->parent != this;
    controls_.splice(other != nullptr ? other->place_ : (hasOwner ? EndOf(object->parent) : controls_.end()),
                     moved);
    HWND above = HWND_BOTTOM;
    if (other != nullptr) {
        above = GetWindow(other->window, GW_HWNDPREV);
        if (above == object->window) {
            return;
        }
        above = above == nullptr ? HWND_TOP : above;
    }
    SetWindowPos(object->window, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void PanelRoot::ArrangeDevices(const std::vector<DEVICE*>& order) {
    for (DEVICE* device : order) {
        devices_.splice(devices_.end(), devices_, device->place_);
    }
}

void PanelRoot::ApplyLayers(const HOSTINFO* object) const {
    ++layerChanges_;
    const bool editOnly = (object->flags & FLAG_EDIT_ONLY) != 0;
    if (mode != 0 && (object->flags & FLAG_HIDDEN) != 0) {
        return;
    }
    if (object->layers == 0 && !editOnly) {
        return; // its visibility is the host's
    }
    const bool isEdited = mode != 0;
    const bool shown =
        (isEdited || !editOnly) && logic::LayerShown(object->layers, isEdited ? editedLayers : activeLayers);
    const bool visible = (GetWindowLongA(object->window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (shown != visible) {
        ShowWindow(object->window, shown ? SW_SHOWNA : SW_HIDE);
    }
}

bool PanelRoot::Hide(HOSTINFO* object, bool hidden) {
    const bool isHidden = (object->flags & FLAG_HIDDEN) != 0;
    const bool isVisible = (GetWindowLongA(object->window, GWL_STYLE) & WS_VISIBLE) != 0;
    if (hidden == isHidden || (hidden && !isVisible)) {
        return hidden == isHidden;
    }
    object->flags = static_cast<WORD>(hidden ? object->flags | FLAG_HIDDEN : object->flags & ~FLAG_HIDDEN);
    ShowWindow(object->window, hidden ? SW_HIDE : SW_SHOWNA);
    return true;
}

void PanelRoot::ApplyLayersToAll() {
    ++layerChanges_;
    const std::vector<HOSTINFO*> controls(controls_.begin(), controls_.end());
    for (HOSTINFO* control : controls) {
        if (a_IsAlive(control)) {
            ApplyLayers(control);
        }
    }
}

void PanelRoot::TellControls(WPARAM event) {
    const std::vector<HOSTINFO*> controls(controls_.begin(), controls_.end());
    for (HOSTINFO* control : controls) {
        if (a_IsAlive(control) && Above(control) == this) {
            control->OnSystem(event, 0);
        }
    }
}

void PanelRoot::SetMode(WORD newMode) {
    const Held held(*this);
    if (newMode != 0 && mode == 0) {
        TellControls(SYSTEM_EDITING);
        if (ended_) {
            return;
        }
    }
    mode = newMode;
    const std::vector<HOSTINFO*> controls(controls_.begin(), controls_.end());
    for (HOSTINFO* control : controls) {
        control->mode = newMode;
    }
    for (HOSTINFO* control : controls) {
        if (newMode == 0 && a_IsAlive(control)) { // what is shown may end others
            control->flags = static_cast<WORD>(control->flags & ~FLAG_LOCKED);
            Hide(control, false);
        }
    }
    ApplyLayersToAll();
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void PanelRoot::Tick() {
    if (opening.IsUnderWay()) {
        return; // some of it is not there yet
    }
    const Held held(*this);
    // Objects may come and go while one of them handles the tick, so they are listed first.
    const std::vector<HOSTINFO*> devices(devices_.begin(), devices_.end());
    const std::vector<HOSTINFO*> controls(controls_.begin(), controls_.end());
    const unsigned removals = removals_;
    const auto isThere = [&](const HOSTINFO* object) {
        return removals == removals_ || (a_IsAlive(object) && Above(object) == this);
    };
    opening.Send(*this); // before a poll brings what it replaces
    DWORD now = GetTickCount();
    const auto tick = [&](const HOSTINFO* object) {
        if (isThere(object) && object->DueIn(now) == 0) {
            SendMessageA(object->window, WM_TIMER, 0, 0);
            now = GetTickCount();
        }
    };
    for (HOSTINFO* object : devices) {
        tick(object);
        if (auto* device = isThere(object) ? dynamic_cast<DEVICE*>(object) : nullptr; device != nullptr) {
            TellWhetherLive(*device);
        }
    }
    recall.Tick();
    for (const HOSTINFO* control : controls) {
        tick(control);
    }
}

// Those that are bound to a device show at once that it came or went, however seldom they ask.
void PanelRoot::TellWhetherLive(DEVICE& device) {
    const bool isLive = device.OnStatus().state == DEVICE_LIVE;
    if (isLive == device.wasLive) {
        return;
    }
    device.wasLive = isLive;
    for (HOSTINFO* object : bindings.BoundTo(&device)) {
        if (!a_IsAlive(&device)) {
            return;
        }
        if (a_IsAlive(object)) {
            object->OnInterfaceworking(isLive ? 1 : 0, reinterpret_cast<LPARAM>(&device));
        }
    }
}

bool a_IsDark(const HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    return panel != nullptr && panel->isDark;
}

int a_ArtScale(const HOSTINFO* object) {
    const PanelRoot* panel = PanelRoot::Above(object);
    return panel != nullptr && (object == panel || object->parent == panel) ? panel->artScale : 100;
}

std::uint64_t a_GetEditedLayers(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? 0 : panel->editedLayers;
}

void a_SetEditedLayers(HOSTINFO* root, std::uint64_t layers) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || panel->editedLayers == layers) {
        return;
    }
    const PanelRoot::Held held(*panel);
    panel->editedLayers = layers;
    Guarded([panel] { panel->ApplyLayersToAll(); });
}

bool a_IsChanged(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return false;
    }
    const auto changed = [](const HOSTINFO* object) { return (object->flags & FLAG_CHANGED) != 0; };
    return changed(panel) || std::any_of(panel->Controls().begin(), panel->Controls().end(), changed);
}

void a_SetChanged(HOSTINFO* root, bool changed) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr) {
        return;
    }
    panel->flags = static_cast<WORD>(changed ? panel->flags | FLAG_CHANGED : panel->flags & ~FLAG_CHANGED);
    if (!changed) {
        for (HOSTINFO* control : panel->Controls()) {
            control->flags = static_cast<WORD>(control->flags & ~FLAG_CHANGED);
        }
    }
}

int a_LoadErrorCount(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? 0 : panel->loadErrors;
}

const cPanelBackground* a_GetBackground(HOSTINFO* root) {
    const PanelRoot* panel = PanelRoot::From(root);
    return panel == nullptr ? nullptr : &panel->Behind();
}
