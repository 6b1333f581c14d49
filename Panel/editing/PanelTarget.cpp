#include "Panel/editing/PanelTarget.h"

#include "Panel/editing/Placement.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Renaming.h"
#include "Panelhost/Root.h"

#include <stdexcept>

HOSTINFO* PanelTarget::Find(const std::string& name) const {
    return name.empty() ? root_ : a_FindHostinfo(root_, name.c_str());
}

bool PanelTarget::Exists(const std::string& name) {
    return Find(name) != nullptr;
}

std::vector<std::string> PanelTarget::Texts(const std::vector<std::string>& names) const {
    std::vector<HOSTINFO*> objects;
    for (const std::string& name : names) {
        if (HOSTINFO* object = Find(name)) {
            objects.push_back(object);
        }
    }
    std::vector<std::string> held;
    if (a_ObjectTexts(objects, &held) == 0) {
        throw TextLost(names.size() == 1 && !names.front().empty() ? names.front() : "the panel");
    }
    std::vector<std::string> texts(names.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (const HOSTINFO* object = Find(names[i])) {
            // The root has a text even when it has nothing to say.
            texts[i] = (object == root_ ? "\r\n" : "") + held[next++];
        }
    }
    return texts;
}

std::string PanelTarget::Text(const std::string& name) {
    return Texts({name}).front();
}

bool PanelTarget::Load(const std::string& text) {
    return a_LoadText(root_, text, "Edit") >= 0 && a_LoadErrorCount(root_) == 0;
}

void PanelTarget::Rename(const std::string& name, const std::string& newName) {
    a_GiveName(Find(name), newName.substr(newName.rfind('*') + 1).c_str());
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
