#pragma once

#include <windows.h>

// Private messages between host, controls and dialogs. All unlisted ones in the range go to default
// processing.

// lParam VALUERECORD*: get, set or look up a named value. Result: that of HOSTINFO::OnMessage.
constexpr UINT CWM_MESSAGE = 0x8000;
// wParam a load mode, lParam one property line without line end. 1 when applied, 0 otherwise. From a file, a
// line whose keyword is unknown changes nothing; from elsewhere it sets the default value.
constexpr UINT CWM_LOAD = 0x8001;
// wParam a save code, lParam the open file HANDLE the lines are written to. 0; anything else when the lines
// could not be made or written, above 0 the system's reason: the panel is then not saved.
constexpr UINT CWM_SAVE = 0x8002;
// lParam a report list view with two columns: keywords and values are appended to it.
constexpr UINT CWM_SAVETOLISTCTRL = 0x8003;
// To a dialog, lParam HOSTINFO*: fill the fields from that object.
constexpr UINT CWM_ATTACHDIALOG = 0x8004;
// Returns the HOSTINFO* of a control.
constexpr UINT CWM_GETPROPERTIES = 0x8014;
// wParam FUNCTION_CHANGED, lParam const char* address: the device parameter at that address came or went.
constexpr UINT CWM_FUNCTIONCHANGED = 0x8015;
// lParam a buffer of 64 bytes that receives the window text.
constexpr UINT CWM_GETCAPTION = 0x8016;
// Returns the datatype of the control's main value.
constexpr UINT CWM_GETCONTROLTYPE = 0x8033;
// lParam HWND*: opens the parameter dialog if none is open and stores its handle.
constexpr UINT CWM_PARAMETERDLG = 0x8035;
// lParam HMENU: a control that can send its value on request appends a separator and "Apply" (command 1).
constexpr UINT CWM_EXTENDMENU = 0x8036;
// lParam non-zero when "Apply" was chosen.
constexpr UINT CWM_MENUCOMMAND = 0x8037;
// lParam HDROP, which the control frees.
constexpr UINT CWM_DROPFILES = 0x804A;
// Returns the width in pixels of the control's bitmap, or of its rectangle when it has none.
constexpr UINT CWM_GETPREFERREDWIDTH = 0x804C;

constexpr WPARAM FUNCTION_CHANGED = 5;

// Load modes of CWM_LOAD.
constexpr WPARAM LOAD_FROM_DIALOG = 0;
constexpr WPARAM LOAD_FROM_FILE = 1;

// Save codes of CWM_SAVE.
constexpr WPARAM SAVE_PROPERTIES = 0;
constexpr WPARAM SAVE_CONNECTIONS = 1;

// Size in bytes of every text buffer that carries a property line, keyword or value, terminator included.
constexpr int TEXT_SIZE = 4096;
