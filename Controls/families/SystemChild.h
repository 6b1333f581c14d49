#pragma once

#include "Controls/framework/Control.h"
#include "base/Guard.h"

#include <optional>

// The system's windows that a control has inside, of which it sees each message first.

// A message of such a window.
struct ChildMessage {
    // What the system does with it, or with another one.
    LRESULT SystemDoes() const { return SystemDoes(message, wParam, lParam); }
    LRESULT SystemDoes(UINT other, WPARAM otherWParam, LPARAM otherLParam) const {
        return CallWindowProcA(system, window, other, otherWParam, otherLParam);
    }

    HWND window;
    WNDPROC system; // of its class
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// A press on a child that is the panel's goes to the control, as that itself would have received it. Whether
// it did.
bool PassPress(const CONTROLPROPERTIES& control, const ChildMessage& of);

// What a child does for a control that seems to be one window: presses that are the panel's, its right
// button, and the mouse that passes over it go to the panel, keys and the wheel while the panel is edited
// too. The control has the focus while the child has it, and the frame of an edited control lies over the
// child. The answer to a message that is done with; any other goes on.
std::optional<LRESULT> HandleAsPart(CONTROLPROPERTIES& control, const ChildMessage& of);

// The frame of an edited control, where it lies over the child.
void DrawSelectionOver(const CONTROLPROPERTIES& control, HWND child);
// Has the children of an edited control painted with it, so that its frame lies over them.
void RedrawEditedParts(const CONTROLPROPERTIES& control);

// The window procedure of children that a function handles, all of one class. Deliberately none of the chains
// that the common controls library offers: those ask the system for a property of the window at every
// message.
// They are children of the control, or (Depth 2) of one of its children.
template <auto Handle, int Depth = 1>
struct SystemChild;

template <class Properties, LRESULT (*Handle)(Properties&, const ChildMessage&), int Depth>
struct SystemChild<Handle, Depth> {
    static LRESULT CALLBACK Proc(HWND child, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        const HWND parent = GetParent(child);
        Properties* control = PropertiesOf<Properties>(Depth == 1 ? parent : GetParent(parent));
        if (control == nullptr) { // it goes, or is not there yet
            return CallWindowProcA(system, child, message, wParam, lParam);
        }
        const Held held(*control);
        return Guarded<LRESULT>(0, [&] {
            return Handle(*control, {child, system, message, wParam, lParam});
        });
    }
    static void Subclass(HWND child) {
        system = reinterpret_cast<WNDPROC>(SetWindowLongA(child, GWL_WNDPROC, reinterpret_cast<LONG>(&Proc)));
    }

    static inline WNDPROC system = nullptr; // the same for all of them
};
