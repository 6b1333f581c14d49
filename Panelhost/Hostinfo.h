#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/KeywordInfo.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Requests.h"
#include "Panelhost/ValueRecord.h"

#include <cstdint>
#include <list>
#include <string>

struct MEMORY;
class PanelRoot;

// What OnSystem is told.
constexpr WPARAM SYSTEM_EDITING = 1; // the panel is about to be edited
constexpr WPARAM SYSTEM_CLOSING = 2; // all its controls are about to go
constexpr WPARAM SYSTEM_STYLE = 3; // a_IsDark answers otherwise; all of the panel is painted anew afterwards
constexpr WPARAM SYSTEM_ART = 4;   // a_ArtScale answers otherwise; the panel is painted anew afterwards

// Kinds of object.
constexpr WORD KIND_ROOT = 0;
constexpr WORD KIND_DEVICE = 1;
constexpr WORD KIND_PANEL = 2; // a panel inside the root
constexpr WORD KIND_CONTROL = 3;

// Bits of HOSTINFO::flags.
constexpr WORD FLAG_CHANGED = 0x0001;   // a property was loaded by anything other than the file loader
constexpr WORD FLAG_FOCUS = 0x0008;     // the window has the keyboard focus
constexpr WORD FLAG_SELECTED = 0x0010;  // selected while the panel is edited
constexpr WORD FLAG_EDIT_ONLY = 0x0020; // its window is shown only while the panel is edited
// Until the edit mode ends, and never saved:
constexpr WORD FLAG_HIDDEN = 0x0040; // by a_HideEdited
constexpr WORD FLAG_LOCKED = 0x0080; // for who edits: the mouse does not reach it, and nothing moves it

constexpr DWORD NO_TICK = 0xFFFFFFFF; // HOSTINFO::DueIn

// Base of every property object: the root, devices, panels and controls. An object lives from the creation of
// its window to its destruction and belongs to the thread of that window.
class PANELHOST_API HOSTINFO {
public:
    // Operations, in slot order. The order is part of the binary interface. Those without a description
    // answer 0 and are for hosts and controls to agree on.
    virtual int HasHostinfoTable();                                   // 1 when there is a keyword table
    virtual const KEYWORDROW* GetHostinfoTable();                     // the keyword table, or null
    virtual LRESULT OnLoad(WPARAM loadMode, LPARAM line);             // CWM_LOAD
    virtual LRESULT OnSave(WPARAM saveCode, LPARAM file);             // CWM_SAVE
    virtual LRESULT OnSaveToListCtrl(WPARAM wParam, LPARAM listView); // CWM_SAVETOLISTCTRL
    virtual LRESULT OnTimer(WPARAM timer, LPARAM lParam);             // WM_TIMER; poll here
    virtual LRESULT OnMessage(WPARAM wParam, LPARAM record);          // CWM_MESSAGE
    // Something happens to the whole panel (SYSTEM_...): whoever is held by the user lets go, while
    // everything that it is bound to is still there.
    virtual LRESULT OnSystem(WPARAM event, LPARAM lParam);
    virtual LRESULT OnInitialize(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnDelete(WPARAM wParam, LPARAM lParam);
    virtual int OnGet(char* keyword, int* value); // the following read a named value: 1 when there is one
    virtual int OnGet(char* keyword, float* value);
    virtual int OnGet(char* keyword, char* value); // value: buffer of TEXT_SIZE bytes
    virtual int OnGet(const char* keyword, std::string& value, int* result);
    virtual int OnSet(char* keyword, MEMORY* value); // the following set a named value: 1 when it was taken
    virtual int OnSet(char* keyword, int* value);
    virtual int OnSet(char* keyword, float* value);
    virtual int OnSet(char* keyword, char* value);
    virtual int OnSet(const char* keyword, std::string& value, int* result);
    // Passes on at once what the next tick would pass on. Called before and after a panel file is loaded.
    virtual LRESULT OnUpdate(WPARAM wParam, LPARAM lParam);
    virtual int OnConnectSource(std::string& source, std::string& target);
    virtual int OnConnectSource(unsigned source, long target);
    virtual LRESULT OnConnectTarget(WPARAM wParam, LPARAM lParam);
    virtual int OnChangeAddress(std::string& object, std::string& from, std::string& to);
    virtual int OnChangeAddress(unsigned from, long to);
    virtual int OnDisconnectSource(std::string& source, std::string& target);
    virtual int OnDisconnectSource(unsigned source, long target);
    virtual HOSTINFO* OnGetHostinfo(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnGetTooltip(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnGetActiveLayer(WPARAM wParam, LPARAM layers); // uint64_t*: receives the active layers
    virtual LRESULT OnData(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnIsAlive(WPARAM wParam, LPARAM lParam);          // a device: 1 while it can be reached
    virtual LRESULT OnInterfaceworking(WPARAM wParam, LPARAM lParam); // a DEVICE* came (1) or went (0)
    virtual LRESULT OnGetKeywords(WPARAM wParam,
                                  LPARAM names); // std::list<std::string>*: receives the keywords
    virtual LRESULT OnGetKeywords2(WPARAM wParam, LPARAM lParam);
    // const char*: datatype of that value, 0 if there is none. Null or empty: that of the default value. What
    // can be read of it: a_HasForm.
    virtual LRESULT OnGetDatatype(WPARAM wParam, LPARAM keyword);
    virtual LRESULT OnGetUserfriendlyName(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnGetPropertydlg(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnGetContextMenu(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnSetContextMenu(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnCaller(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnGetKeywords_PWS(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnGetKeywords_DCS(WPARAM wParam, LPARAM lParam);
    // A device: fill in handler and context of the item (lParam, REQUESTITEM*) for the keyword (wParam, const
    // char*). 1 when the device has that parameter. Handler and context stay valid as long as the device.
    virtual LRESULT OnRequestList(WPARAM keyword, LPARAM item);
    virtual LRESULT OnDataInBuffer(WPARAM wParam, LPARAM lParam);
    virtual LRESULT OnIPAddressChanged(WPARAM wParam, LPARAM lParam);

    HWND window = nullptr;
    RECT rectangle{}; // in client coordinates of the parent's window, pixels
    WORD kind = KIND_CONTROL;
    WORD mode = 0;              // 0 operated, non-zero while the panel is edited
    HWND dialog = nullptr;      // open property or parameter dialog of this object
    int interval = 0;           // polling period in milliseconds
    HOSTINFO* parent = nullptr; // the object that owns this one
    BINDINGLIST functions;      // device parameters it is bound to
    BINDINGLIST connections;    // controls it is connected to
    REQUESTLIST requests;       // built from the two
    std::string name;           // full name: path, "*", own name; without a path on the root panel
    WORD flags = 0;
    WORD group = 0;           // with the siblings of that number it is edited as one; 0: alone
    std::uint64_t layers = 0; // bit n: layer u(n+1); 0: every layer

    HOSTINFO() = default;
    HOSTINFO(const HOSTINFO&) = delete;
    HOSTINFO& operator=(const HOSTINFO&) = delete;
    virtual ~HOSTINFO(); // after the operations, so that their slots start at 0
    // Milliseconds from the tick count "now" until the next tick that OnTimer has something to do at; 0: at
    // this one, NO_TICK: at none, as things are. The panel asks at each tick and leaves out those that have
    // nothing to do. An object that does not say gets every tick.
    virtual DWORD DueIn(DWORD now) const noexcept;
    // What more is known of the keywords: one for each row of the table, or null.
    virtual const KEYWORDINFO* GetKeywordInfo() const noexcept;
    // Whether the object makes a child of that own name by itself whenever it is made, so that this one
    // cannot have another name.
    virtual bool MakesChild(const char* ownName) const noexcept;

private:
    friend class PanelRoot;
    PanelRoot* root_ = nullptr; // while the object is in its tree
    std::list<HOSTINFO*>::iterator place_{};
    int children_ = 0;
    bool reachable_ = false; // from its entry in the tree to a_HostinfoDestroyed
};

// Ties a new object to its window and to the object that creates it (the window's create parameter; anything
// that is not a living object counts as none). The own name is the window text.
PANELHOST_API void a_InitializeHostinfo(HWND window, HOSTINFO* object, void* createParameter);
// Puts the object into the tree and gives it its full name: own name, or the class name where that is empty,
// with the next free number appended where a sibling has it already. Without a parent only the window look-up
// knows it.
PANELHOST_API void a_AddHostinfo(HOSTINFO* parent, HOSTINFO* object);
PANELHOST_API void a_RemoveHostinfo(HOSTINFO* parent, HOSTINFO* object);
// The object answers from now on: bindings that waited for its name are resolved.
PANELHOST_API void a_HostinfoCreated(HOSTINFO* root, HOSTINFO* object);
// The object goes: whoever is bound to it can no longer reach it.
PANELHOST_API void a_HostinfoDestroyed(HOSTINFO* root, HOSTINFO* object);
// Empties the lists and closes the object's dialog.
PANELHOST_API void a_CleanHostinfo(HOSTINFO* object);

// The root above an object (the object itself if it is one), or null.
PANELHOST_API HOSTINFO* a_FindRootHostinfo(HOSTINFO* object);
// The object of that full name under a root, without regard to case, or null. May be called from any thread.
PANELHOST_API HOSTINFO* a_FindHostinfo(HOSTINFO* root, const char* fullName);
// The window of the object of that name: looked for first among the children of the given object, then as a
// full name under its root. Null when there is none.
PANELHOST_API HWND a_FindHwnd(HOSTINFO* object, const char* name);
// The object of a window, or null. May be called from any thread.
PANELHOST_API HOSTINFO* a_FromWindow(HWND window);
// Whether the pointer is an object that lives now. May be called from any thread.
PANELHOST_API bool a_IsAlive(const HOSTINFO* object);
// The number of the life of the object there; 0 when none lives. One that is made at the place of another one
// has a life of its own. May be called from any thread.
PANELHOST_API unsigned a_LifeOf(const HOSTINFO* object);
// The objects under a root (without the root), in order of creation: parents stand before their children.
PANELHOST_API std::list<HOSTINFO*> a_ListHostinfos(HOSTINFO* root);
// Own name: what stands after the last "*" of the full name.
PANELHOST_API std::string a_OwnName(const HOSTINFO* object);
// Number of objects alive in this process.
PANELHOST_API int a_HostinfoCount();

// A keyword of the object was set by other means than a panel file: a line of it that could not be read, and
// was kept, goes. a_DispatchRecord tells so by itself; whoever applies a property line without it calls this.
// The object may have ended meanwhile.
PANELHOST_API void a_KeywordSet(HOSTINFO* object, const char* keyword);
// The first half of a_DispatchRecord: resolves the name and finds the row whose handler is to be called. Null
// when there is nothing to call; answer receives what the record is then answered with.
PANELHOST_API const KEYWORDROW* a_SelectRow(HOSTINFO* object, const KEYWORDROW* table, VALUERECORD* record,
                                            LRESULT* answer);
// Handles a value record over a keyword table: resolves the name, then calls the handler of the row. Inline,
// so that an exception of the handler stays in the library of the handler.
inline LRESULT a_DispatchRecord(HOSTINFO* object, const KEYWORDROW* table, VALUERECORD* record) {
    LRESULT answer = 0;
    const KEYWORDROW* row = a_SelectRow(object, table, record, &answer);
    if (row == nullptr) {
        return answer;
    }
    const int result = [&] {
        const RemoteSetting fromHere(false); // what the handler sets is not the other machine's doing
        return row->handler(record, object);
    }();
    if (record->command == COMMAND_SET && result != 0) {
        a_KeywordSet(object, row->keyword);
    }
    return result;
}

// Layers: text "u1,u5"; empty for every layer. Set returns 0 and changes nothing when the text is unreadable;
// otherwise it shows or hides the window according to the layers active on the root.
PANELHOST_API std::string a_GetLayers(const HOSTINFO* object);
PANELHOST_API int a_SetLayers(HOSTINFO* object, const char* text);

// Shows or hides the window as its layers, the mode and FLAG_EDIT_ONLY ask for.
PANELHOST_API void a_ApplyVisibility(HOSTINFO* object);

// For parents of controls: a superclassed control asks its parent for its colours (WM_CTLCOLOREDIT,
// WM_CTLCOLORLISTBOX, WM_CTLCOLORSTATIC). This asks the control itself, by the same message with OCM__BASE
// added. Null when the window is no control or leaves the colours to the system.
PANELHOST_API HBRUSH a_AskForColours(UINT message, WPARAM dc, LPARAM window);

// Destroys the windows inside the object's window, those of controls and others. For an object that makes its
// own children, when it goes.
PANELHOST_API void a_DestroyChildWindows(const HOSTINFO* object);

// Draws the focus frame (operated) or the selection frame with its handles (edited), if the object has
// either. While the panel is edited, a frame with the name of a picture that could not be loaded is below it.
PANELHOST_API void a_DrawSelection(const HOSTINFO* object, HDC dc);
