#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

#include <string>
#include <vector>

class HOSTINFO;

// Opens the generic keyword/value dialog of an object at the cursor: every keyword that the object lists,
// each value edited in place. It closes with its object. Returns the dialog, or null.
PANELHOST_API HWND a_PropertyDlg(int mode, HOSTINFO* parent, HOSTINFO* object);
// The same with a window of the panel in place of the parent.
PANELHOST_API HWND a_PropertyDlg(int mode, HWND owner, HOSTINFO* object);

// Opens the dialog in which functions and connections of an object are chosen. It closes with its object. One
// is open per object: a second call brings the open one to the front. Returns the dialog, or null.
PANELHOST_API HWND a_ConnectionDlg(int mode, HWND owner, HOSTINFO* object);

// Addresses of what the object can be bound to: parameters of devices (functions), and the other controls on
// its panel, followed by their keywords (connections). Empty for no object.
PANELHOST_API std::vector<std::string> a_ListAddresses(HOSTINFO* object, bool functions, bool connections);

// The system's choosers of colours and fonts, modal, with the present value ("0x00bbggrr",
// "face,points,bold") chosen at first. The chosen one as property text, or empty.
PANELHOST_API std::string a_ChooseColour(HWND owner, const std::string& current);
PANELHOST_API std::string a_ChooseFont(HWND owner, const std::string& current);
// The same with a picture of the folder Controls whose name begins with the prefix.
PANELHOST_API std::string a_ChoosePicture(HWND owner, const std::string& prefix, const std::string& current);
// The same with a file: its name as a property holds it.
PANELHOST_API std::string a_ChooseFile(HWND owner, const std::string& current);

// Lets the user choose among the images of a folder (relative to the application folder) whose names begin
// with the prefix, shown as thumbnails. Modal. 1 and the name as a property holds it
// (".\Controls\FADER_blue.bmp") in the buffer of MAX_PATH bytes, or 0 when nothing was chosen.
PANELHOST_API int a_PopupBitmapView(HWND owner, const char* folder, const char* prefix, char* name);

// Makes Enter and Escape typed in an edit field reach its dialog, as WM_COMMAND of the field with the
// notification code EDIT_ENTER or EDIT_ESCAPE, in place of the default button, and the loss of the focus as
// EDIT_LEFT. The field may be destroyed while the dialog handles them, which it must not be at EN_KILLFOCUS.
// Undone by itself when the field is destroyed.
PANELHOST_API int a_SubclassEditControl(HWND edit);
constexpr WORD EDIT_ENTER = 13;
constexpr WORD EDIT_ESCAPE = 27;
constexpr WORD EDIT_LEFT = 28;

// The system's lists and arrows go on using themselves after CBN_SELCHANGE and UDN_DELTAPOS, and do not stand
// it when they go meanwhile. So their windows post these to themselves, as WM_COMMAND of the child with the
// index of the item, or with the number of steps, as lParam, and do then what was asked for.
constexpr WORD LIST_CHOSEN = 29;
constexpr WORD ARROW_PRESSED = 30;
inline void PostFromChild(HWND window, int id, WORD code, LPARAM number) {
    PostMessageA(window, WM_COMMAND, MAKEWPARAM(id, code), number);
}

// Brushes that all parameter dialogs share; they belong to the library. Null for any other number.
constexpr int BRUSH_FIELD = 1;  // edit fields, lists and buttons
constexpr int BRUSH_DIALOG = 2; // the ground
constexpr int BRUSH_HEADER = 3; // behind the section headers
constexpr COLORREF FIELD_COLOUR = 0xCEFFFF;
PANELHOST_API HBRUSH a_GetObject(int number);

// Loads the first dropped file as the object's "bitmap" property, relative to the application folder where it
// lies inside it, and frees the drop handle, that of a drop on an object without pictures as well. 1 when the
// object took it.
PANELHOST_API int a_DropBitmap(HOSTINFO* object, HDROP drop);
// Loads the one dropped file as the property of that keyword, named as the above, and frees the drop handle
// in any case. 1 when the object took it; more than one file is refused, and the edit trace says so.
PANELHOST_API int a_DropFile(HOSTINFO* object, const char* keyword, HDROP drop);
// Loads a dropped file of saved properties, one whose name ends with ".cfg", into the object as one edit of
// the user, and frees the drop handle, which is all that it does without an object. 1 when the object took a
// line of it; anything else - another file, more than one, one that cannot be read - is refused, and the edit
// trace says so.
PANELHOST_API int a_DropFiles(HOSTINFO* object, HDROP drop);
