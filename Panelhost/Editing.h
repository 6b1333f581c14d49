#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/Hostinfo.h"

#include <string>
#include <string_view>

// What a program that edits panels needs beyond operating them.

// What happens to an object while a panel is edited through its dialogs.
constexpr int EDIT_CHANGING = 1; // a property line is about to be applied to the object
constexpr int EDIT_CHANGED = 2;  // it was applied, or refused
constexpr int EDIT_DELETE = 3;   // the user asked to delete the object; the listener does it
using EDITLISTENER = void (*)(int event, HOSTINFO* object, void* context);

// One listener a root; null removes it. Called on the user-interface thread.
PANELHOST_API void a_SetEditListener(HOSTINFO* root, EDITLISTENER listener, void* context);
// Called by whoever applies a property line that does not come from a file.
PANELHOST_API void a_NotifyEdit(int event, HOSTINFO* object);
// Deletes an object on behalf of the user: by the listener, or by destroying the window when there is none.
PANELHOST_API void a_DeleteObject(HOSTINFO* object);

// The lines that a panel file would hold for the object, without those of its children. Lines that could not
// be read and belong to the object are among them. 1; 0 with the text untouched when they cannot be written.
PANELHOST_API int a_GetObjectText(HOSTINFO* object, std::string* text);
// The same; empty on failure.
PANELHOST_API std::string a_ObjectText(HOSTINFO* object);
// The picture that a line names which could not be read: a file name, or empty.
PANELHOST_API std::string a_MissingPicture(const HOSTINFO* object);
// Draws a frame with that name in it, where there is one.
PANELHOST_API void a_DrawMissingPicture(const HOSTINFO* object, HDC dc, const RECT& frame);
// Applies the lines of a panel file, as ph_LoadPanel does. Number of controls created, -1 on failure; lines
// that cannot be applied are traced with the name given to the text and their number. They are kept with the
// object they belong to; those that belong to none are dropped.
PANELHOST_API int a_LoadText(HOSTINFO* root, std::string_view text, const char* nameInTraces);
// Moves an object in front of another one in the order of saving and of Tab, and above it on the screen; to
// the end, behind and below all others, when that one is null. Both must have the same parent.
PANELHOST_API void a_MoveBefore(HOSTINFO* object, HOSTINFO* other);
