#include "Panel/editing/PanelTarget.h"

#include "Panel/editing/Placement.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Root.h"

#include <stdexcept>

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
    std::string text;
    if (a_GetObjectText(object, &text) == 0) {
        throw std::runtime_error("the text of " + name +
                                 " cannot be written"); // none would mean that it is gone
    }
    // The root has a text even when it has nothing to say.
    return (object == root_ ? "\r\n" : "") + text;
}

bool PanelTarget::Load(const std::string& text) {
    return a_LoadText(root_, text, "Edit") >= 0 && a_LoadErrorCount(root_) == 0;
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
