#pragma once

#include "Controls/framework/Control.h"

class ClassResources;

// Registers the classes of all controls, in the order of the class table, and makes what they share.
void RegisterControls(HINSTANCE module);
// Takes back what RegisterControls made.
void ReleaseControls(HINSTANCE module);

// The window procedure of the system class that a superclassed control stands on, null for all others.
WNDPROC SystemProcedure(const ControlClass& controlClass);
// What the class made for all its windows.
const ClassResources& ResourcesOf(const ControlClass& controlClass);

// WM_CREATE. Returns 1.
LRESULT CreateControl(const ControlClass& controlClass, HWND window, const CREATESTRUCTA& creation);
