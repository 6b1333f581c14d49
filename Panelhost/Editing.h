#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/Hostinfo.h"

#include <string>
#include <string_view>
#include <vector>

// What a program that edits panels needs beyond operating them.

// What the user does to an object.
constexpr int EDIT_CHANGING = 1; // a property line is about to be applied to the object
constexpr int EDIT_CHANGED = 2;  // it was applied, or refused; the object is null when it is gone since
constexpr int EDIT_DELETE = 3;   // the user asked to delete the object; the listener does it
// The answer to EDIT_CHANGING is 1, or 0 when the line must not be applied. The others are not asked for one.
using EDITLISTENER = int (*)(int event, HOSTINFO* object, void* context);

// One listener a root; null removes it. Called on the user-interface thread.
PANELHOST_API void a_SetEditListener(HOSTINFO* root, EDITLISTENER listener, void* context);
// Whether what the user does to the object now can be undone: its panel is being edited, and somebody
// listens.
PANELHOST_API bool a_IsUndoable(const HOSTINFO* object);
// Applies a property line to an object on behalf of the user, as a dialog does: asks the listener, sends
// CWM_LOAD with load mode 0, and tells the listener. 1 when the line was applied, 0 when the listener or the
// object refused it. What comes from elsewhere (a terminal, another program) is sent with CWM_LOAD alone.
PANELHOST_API int a_ApplyEdit(HOSTINFO* object, const char* line);
// The same with all lines of a file (a_LoadFile), as one edit. Number of lines that the object took, 0 when
// the listener refused, -1 when the file cannot be read.
PANELHOST_API int a_ApplyEditFile(HOSTINFO* object, const char* fullPath);
// Deletes an object on behalf of the user: by the listener, or by destroying the window when there is none.
PANELHOST_API void a_DeleteObject(HOSTINFO* object);

// The lines that a panel file would hold for the objects, without those of their children; a text for each.
// Lines that could not be read and belong to the object are among them. 1, or 0 with the list empty when one
// of them could not write all of its lines. Nothing is written to a disk.
PANELHOST_API int a_ObjectTexts(const std::vector<HOSTINFO*>& objects, std::vector<std::string>* texts);
PANELHOST_API int a_ObjectText(HOSTINFO* object, std::string* text);
// A piece of a panel file: appends the lines of at most "count" objects to the text, from object number
// "first" on; 0 is the root, its controls follow in the order of saving. Number of objects whose lines were
// appended, 0 at the end, -1 with the text untouched when one of them could not write all of its lines.
PANELHOST_API int a_PanelText(HOSTINFO* root, int first, int count, std::string* text);
// The picture that a line names which could not be read: a file name, or empty.
PANELHOST_API std::string a_MissingPicture(const HOSTINFO* object);
// Draws a frame with that name in it, where there is one.
PANELHOST_API void a_DrawMissingPicture(const HOSTINFO* object, HDC dc, const RECT& frame);
// Applies the lines of a panel file, as ph_LoadPanel does. Number of controls created, -1 on failure; lines
// that cannot be applied are traced with the name given to the text and their number. They are kept with the
// object they belong to; those that belong to none are dropped. What the lines ask of devices is never sent.
PANELHOST_API int a_LoadText(HOSTINFO* root, std::string_view text, const char* nameInTraces);
// Hides a control while the panel is edited, or shows it again; leaving the edit mode shows it, too. It is
// saved as if it were shown. 1, or 0 when it cannot be: no control of an edited panel, or out of sight
// anyway.
PANELHOST_API int a_HideEdited(HOSTINFO* object, bool hidden);
// The group of a control of any class as text: 1 to 65535, empty for none; saved as the line "editgroup". Set
// returns 0 and changes nothing when the text is anything else.
PANELHOST_API std::string a_GetGroup(const HOSTINFO* object);
PANELHOST_API int a_SetGroup(HOSTINFO* object, const char* text);
// Moves an object in front of another one in the order of saving and of Tab, and above it on the screen; to
// the end, behind and below all others, when that one is null. Both must have the same parent.
PANELHOST_API void a_MoveBefore(HOSTINFO* object, HOSTINFO* other);
