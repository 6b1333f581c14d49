#include "Panel/editing/PanelTarget.h"

#include "Panel/editing/Placement.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"

HOSTINFO* PanelTarget::Find(const std::string& name) const {
    return name.empty() ? root_ : a_FindHostinfo(root_, name.c_str());
}

bool PanelTarget::Exists(const std::string& name) {
    return Find(name) != nullptr;
}

std::string PanelTarget::Text(const std::string& name) {
    HOSTINFO* object = Find(name);
    if (!object) {
        return {};
    }
    // The root has a text even when it has nothing to say.
    return (object == root_ ? "\r\n" : "") + a_ObjectText(object);
}

void PanelTarget::Load(const std::string& text) {
    a_LoadText(root_, text, "Edit");
}

void PanelTarget::Destroy(const std::string& name) {
    if (HOSTINFO* object = Find(name); object && object != root_) {
        DestroyWindow(object->window);
    }
}

void PanelTarget::Place(const std::string& name, const logic::Rectangle& place) {
    if (HOSTINFO* object = Find(name); object && object != root_) {
        PlaceObjects({{object, place}});
    }
}

void PanelTarget::SetStyle(const std::string& name, std::uint32_t changed, std::uint32_t style) {
    if (HOSTINFO* object = Find(name); object && object != root_) {
        const auto now = static_cast<std::uint32_t>(GetWindowLongA(object->window, GWL_STYLE));
        SetWindowLongA(object->window, GWL_STYLE, static_cast<LONG>((now & ~changed) | (style & changed)));
        // What the window may paint on is found anew.
        SetWindowPos(object->window, nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        InvalidateRect(object->window, nullptr, TRUE);
    }
}

std::vector<std::string> PanelTarget::Order() {
    std::vector<std::string> names;
    for (const HOSTINFO* object : a_ListHostinfos(root_)) {
        if (object->kind == KIND_CONTROL) {
            names.push_back(object->name);
        }
    }
    return names;
}

void PanelTarget::MoveBefore(const std::string& name, const std::string& other) {
    a_MoveBefore(Find(name), other.empty() ? nullptr : Find(other));
}
