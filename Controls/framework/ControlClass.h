#pragma once

#include "Controls/framework/SharedResources.h"

#include <windows.h>

#include <memory>
#include <span>

class CONTROLPROPERTIES;

enum class ClassBackground { None, Null, SystemColour2 };

struct ControlClass;

constexpr int NO_DIALOG = 0;
constexpr int LAID_OUT = -1;

// What a control adds to the common part.
struct ControlImplementation {
    using Share = std::unique_ptr<SharedResources> (*)(const ControlClass& controlClass, HINSTANCE module);

    CONTROLPROPERTIES* (*create)();
    WNDPROC procedure;
    const char* purpose = ""; // for the reference; empty when each class says its own
    // The parameter dialog: a template of the library, LAID_OUT for one that follows from the keywords, or
    // NO_DIALOG.
    int dialog = NO_DIALOG;
    Share share = nullptr; // what its windows share
    // Of a superclassed control: the style that its window gets in place of the one it is created with.
    DWORD (*windowStyle)(DWORD asked) = nullptr;
};

enum class PaletteGroup { Continuous, Discrete, Processing, Strips, Interfaces };

// What an editor's palette needs to know of a class.
struct PaletteEntry {
    PaletteGroup group;
    int position;        // in the group, from 1 on
    const char* name;    // for people; a new control is called so, with a number
    const char* letters; // on its tile
    SIZE size;           // of a new one, pixels
    bool takesFocus;
};

// A row of the class table.
struct ControlClass {
    const char* name;        // window class
    const char* displayName; // in traces
    const ControlImplementation* implementation;
    int controlType; // datatype of the main value
    LONG role = 0;   // ROLE_SYSTEM_..., what it is to whoever reads a panel out
    UINT style = 0;
    int extraBytes = 0;
    const char* icon = nullptr; // file
    ClassBackground background = ClassBackground::None;
    const char* systemClass = nullptr; // superclassed: unhandled messages go to that class's procedure
    const char* picture = nullptr;     // file that its windows share: a bitmap without transparency
    // The same picture with transparency. Only GDI+ reads it, which must not be started while a library is
    // being loaded, so the first window loads it and the last one releases it.
    const char* image = nullptr;
    const char* purpose = ""; // where it is not that of the implementation
    PaletteEntry palette;
    // The procedure of windows of this class that are parts of another control, without an object: those that
    // are created with this address as their create parameter.
    const WNDPROC* part = nullptr;

    const char* Purpose() const { return *purpose != '\0' ? purpose : implementation->purpose; }
};

// What opens the parameter dialog of a control; null where there is none.
using DialogOpener = HWND (*)(CONTROLPROPERTIES& control);

// Registers those classes, in their order, and makes what their windows share.
void RegisterControls(std::span<const ControlClass> classes, HINSTANCE module, DialogOpener openDialog);
// Takes back what RegisterControls made.
void ReleaseControls(HINSTANCE module);

// The window procedure of the system class that a superclassed control stands on, null for all others.
WNDPROC SystemProcedure(const ControlClass& controlClass);
// What the class made for all its windows; null for a class that shares nothing.
const SharedResources* ResourcesOf(const ControlClass& controlClass);
// The same as what it is known to be; null when it is none.
template <class Resources>
const Resources* SharedOf(const ControlClass& controlClass) {
    return dynamic_cast<const Resources*>(ResourcesOf(controlClass));
}
// The parameter dialog of a control, opened unless it is open already; null where there is none.
HWND OpenDialogOf(CONTROLPROPERTIES& control);

// WM_CREATE. Returns 1.
LRESULT CreateControl(const ControlClass& controlClass, HWND window, const CREATESTRUCTA& creation);
