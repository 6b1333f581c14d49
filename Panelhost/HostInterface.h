#pragma once

/* The interface for programs that own panels, in plain C: cdecl, undecorated, no C++ types.
 * A control is created with CreateWindowEx: class name of the control, own name as window text, the panel
 * window as parent, and the parent object as create parameter. All functions accept null objects and texts
 * and fail quietly. Call them on the thread of the panel window. */

#include <windows.h>

#ifdef __cplusplus
class HOSTINFO;
extern "C" {
#define PH_NOEXCEPT noexcept
#else
typedef struct HOSTINFO HOSTINFO;
#define PH_NOEXCEPT
#endif

#ifdef PANELHOST_BUILD
#define PH_API __declspec(dllexport)
#else
#define PH_API __declspec(dllimport)
#endif

/* Makes the root object of a panel window. From then on the window answers the private messages for the root
 * and paints the panel's background. Null when the window is none or already has a root. */
PH_API HOSTINFO* __cdecl ph_CreateRoot(HWND panel, const char* name) PH_NOEXCEPT;
/* Destroys the root's controls, its devices and the object. The panel window stays. */
PH_API void __cdecl ph_DestroyRoot(HOSTINFO* root) PH_NOEXCEPT;

/* Reads a device file. Number of devices declared, -1 when the file cannot be read. */
PH_API int __cdecl ph_LoadDevices(HOSTINFO* root, const char* file) PH_NOEXCEPT;
/* The devices of that file take the place of all that device files have declared under the root: those that
 * the file declares with the same lines (and profile) stay as they are, with their values and whatever is on
 * its way to them; those that it does not declare go; all others are made anew. What is bound to them is
 * bound to the new ones and asks them at once; nothing is set by that. A recall (ph_RecallSnapshot) of a
 * value whose device went or was made anew has failed. An empty file name: they all go. Number of devices
 * that the file declares; -1, with everything as it was, when the file cannot be read or a panel file is
 * being loaded. */
PH_API int __cdecl ph_ReloadDevices(HOSTINFO* root, const char* file) PH_NOEXCEPT;
/* Reads a panel file and creates its controls. Number of controls created, -1 when the file cannot be read or
 * its loading was cancelled.
 * Lines that cannot be applied are traced with their number (the first 20 of a kind, then their count), kept,
 * and otherwise skipped. No device is set
 * meanwhile; when the panel says onopen=send, the values of the file go to the devices afterwards, at once or
 * in ph_Tick. */
PH_API int __cdecl ph_LoadPanel(HOSTINFO* root, const char* file) PH_NOEXCEPT;
/* While a panel file, or text of one, is read into the root: the function is called some twenty times a
 * second with the number of headers of controls that have been read and of those that there are, and answers
 * 0 to cancel the loading. Everything is then as it was before, and the answer to the loading is -1; a root
 * that had controls (or lines that were kept) before goes on instead. The function may draw and look at the
 * keyboard; it must not dispatch messages, nor change the panel. Null for none. */
PH_API void __cdecl ph_SetLoadProgress(HOSTINFO* root,
                                       int(__cdecl* progress)(int read, int total, void* context),
                                       void* context) PH_NOEXCEPT;
/* Writes the panel file, with the lines that were kept. 1; 0 with the old file untouched, GetLastError
 * telling the system's reason, also while a panel file is being loaded. The changed flags are cleared on
 * success. */
PH_API int __cdecl ph_SavePanel(HOSTINFO* root, const char* file) PH_NOEXCEPT;

/* Lines of a panel file that could not be read are kept, saved where they stood, and go when their keyword is
 * set. What was the matter: */
#define PH_UNREAD_DAMAGED 1 /* too long, holds a NUL, or is a header that cannot be read */
#define PH_UNREAD_CLASS                                                                                      \
    2                      /* a control of a class that no library has registered, or that cannot be created \
                            */
#define PH_UNREAD_NAME 3   /* a control whose name is taken by one of another class */
#define PH_UNREAD_OBJECT 4 /* a line of an object that is not there */
#define PH_UNREAD_KEYWORD 5 /* a keyword that the class does not know */
#define PH_UNREAD_VALUE 6   /* a value that was refused */
#define PH_UNREAD_PICTURE 7 /* a picture that cannot be loaded */
typedef struct PH_UNREADLINE {
    const char* object; /* full name of the object that the line belongs to, empty for the panel itself */
    const char* line;   /* as the file had it */
    int number;         /* of the line in the file, from 1 */
    int reason;         /* PH_UNREAD_... */
} PH_UNREADLINE;
/* Hands every line that is kept at present to a function (null: to nobody), in the order of their numbers.
 * The texts are valid during that call, which must not change the panel. Number of lines, -1 on failure. */
PH_API int __cdecl ph_ListUnread(HOSTINFO* root,
                                 void(__cdecl* receive)(const PH_UNREADLINE* line, void* context),
                                 void* context) PH_NOEXCEPT;

/* The window of an object by its full name, without regard to case; null when there is none. */
PH_API HWND __cdecl ph_Find(HOSTINFO* root, const char* fullName) PH_NOEXCEPT;
/* One timer tick: moves the simulated devices and sends WM_TIMER to every control that has something to do at
 * this time or does not say when it has. Nothing while a panel file is being loaded. */
PH_API void __cdecl ph_Tick(HOSTINFO* root) PH_NOEXCEPT;
/* 0 the panel is operated, 1 it is edited. */
PH_API void __cdecl ph_SetMode(HOSTINFO* root, int mode) PH_NOEXCEPT;

/* A device parameter ("AMP1*gain1") as text. 1; 0 when there is none or it does not fit. */
PH_API int __cdecl ph_GetParameter(HOSTINFO* root, const char* address, char* text, int size) PH_NOEXCEPT;
/* Sets a device parameter: a simulated one as if the device itself had changed, one of a real device at the
 * device. 1 when taken, 0 otherwise. */
PH_API int __cdecl ph_SetParameter(HOSTINFO* root, const char* address, const char* text) PH_NOEXCEPT;
/* What is known of the value of a device parameter. Asking makes nothing be read. */
#define PH_STATE_NONE 0        /* there is no such parameter */
#define PH_STATE_UNKNOWN 1     /* no value has come yet */
#define PH_STATE_PENDING 2     /* a value that was set waits, or is not confirmed yet */
#define PH_STATE_LIVE 3        /* the device holds it; simulated ones are live */
#define PH_STATE_UNCONFIRMED 4 /* a value that was set was never confirmed */
#define PH_STATE_STALE 5       /* the device has been silent for some seconds */
#define PH_STATE_LOST 6        /* the device cannot be reached */
#define PH_STATE_OFF 7         /* the device is switched off here */
#define PH_STATE_REFUSED 8     /* something else answers in place of the device */
#define PH_STATE_SENT 9        /* sent to a device that answers nothing by nature */
/* Of bindings alone (ph_ListBindings), which can also name controls: */
#define PH_STATE_NO_KEYWORD 10 /* the object has no such keyword */
#define PH_STATE_NO_CONTROL 11 /* there is no object of that name */
PH_API int __cdecl ph_ParameterState(HOSTINFO* root, const char* address) PH_NOEXCEPT;

/* An address in a property of a control, and what is found there. */
typedef struct PH_BINDING {
    const char* object;  /* full name of the control */
    const char* keyword; /* of it that holds the address: "function", "connection", "click" ... */
    const char* address; /* OBJECT*keyword or OBJECT, as it is looked up: with names in place of "%n", and
                          * with numbers in a pattern, which stands for as many bindings */
    const char* target;  /* full name of the device or control that was found, empty when there is none */
    int isDevice;        /* whether that is a device */
    int state;         /* PH_STATE_...; a control that is there is PH_STATE_LIVE, and an address that depends
                        * on what is clicked PH_STATE_UNKNOWN */
    const char* value; /* what is known of its value, as text; empty when there is none */
    int age;           /* milliseconds since that came, -1 where it is not known: always of controls */
} PH_BINDING;
/* Hands everything that is bound to a function (null: to nobody), control by control in the order of saving.
 * The texts are valid during that call, which must not change the panel. Asking makes nothing be read from
 * devices. Number of bindings, -1 on failure. */
PH_API int __cdecl ph_ListBindings(HOSTINFO* root,
                                   void(__cdecl* receive)(const PH_BINDING* binding, void* context),
                                   void* context) PH_NOEXCEPT;
/* Snapshots: text files with what parameters of devices hold. Writes one with the parameters at those
 * addresses, joined by ";" (null: all that controls are bound to); what only shows or starts something, and
 * what is not known, is left out, as the trace says. Values of real devices that nobody has read yet are
 * waited for, some seconds at most. How many were written; -1, with any old file untouched, when it cannot be
 * written: GetLastError tells the system's reason. */
PH_API int __cdecl ph_TakeSnapshot(HOSTINFO* root, const char* file, const char* addresses) PH_NOEXCEPT;
/* Sets parameters to what a snapshot holds, in that time: floats and integers of more than 20 values move by
 * the law of their parameter, everything else is set at once. The way is made in ph_Tick. Nothing is sent to
 * a device that is not live. What somebody else sets meanwhile is left to them. How many were started; -1
 * when the file cannot be read, or a panel file is being loaded. */
PH_API int __cdecl ph_RecallSnapshot(HOSTINFO* root, const char* file, int milliseconds) PH_NOEXCEPT;
/* What is on its way stays where it is. How many values that were. */
PH_API int __cdecl ph_StopRecall(HOSTINFO* root) PH_NOEXCEPT;
#define PH_RECALL_UNDER_WAY 1
#define PH_RECALL_DONE 2      /* the device holds it, or answers nothing by nature */
#define PH_RECALL_FAILED 3    /* it could not be set */
#define PH_RECALL_STOPPED 4   /* on its way */
#define PH_RECALL_OVERTAKEN 5 /* somebody else has set it meanwhile */
typedef struct PH_RECALLEDVALUE {
    const char* address; /* of the device parameter */
    const char* text;    /* the value in the snapshot */
    int state;           /* PH_RECALL_... */
    const char* why;     /* it is not done, in words; else empty */
} PH_RECALLEDVALUE;
/* Hands every value of the last recall to a function (null: to nobody), those of earlier ones that were on
 * their way first. The texts are valid during that call. How many are under way; -1 on failure. */
PH_API int __cdecl ph_ListRecall(HOSTINFO* root,
                                 void(__cdecl* receive)(const PH_RECALLEDVALUE* value, void* context),
                                 void* context) PH_NOEXCEPT;

/* Gives a control another own name, with all that is inside it; whatever names them on the panel goes on
 * naming them: functions, connections, clicks, patterns, mails, and every other keyword that holds addresses.
 * While the panel is edited the user can undo it as one step. What could not follow is handed to a function
 * (null: to nobody) before anything changes, and unless "anyway" is not 0 nothing changes then; otherwise
 * those texts stay as they are. The texts are valid during that call, which must not change the panel. */
#define PH_RENAMED 1
#define PH_RENAME_NO_CONTROL 0 /* no control has that full name; or nothing can be done at present */
#define PH_RENAME_NO_NAME (-1) /* not a name: 1 to 63 characters, none of them * = ; " % */
#define PH_RENAME_TAKEN (-2)   /* another object has the name */
#define PH_RENAME_PART (-3)    /* what contains the control makes it, and always under its name */
#define PH_RENAME_LOSS (-4)    /* something could not follow, and "anyway" is 0 */
#define PH_LOSS_LENGTH 1       /* the new text is longer than the keyword takes */
#define PH_LOSS_MEANING 2 /* a pattern of which one name alone changes, or a text that would name another */
typedef struct PH_RENAMELOSS {
    const char* object;  /* full name of the control whose text cannot follow, as it is before */
    const char* keyword; /* of it */
    const char* text;    /* as it is */
    const char* wanted;  /* as it would have to be; of PH_LOSS_MEANING as near as there is */
    int reason;          /* PH_LOSS_... */
} PH_RENAMELOSS;
PH_API int __cdecl ph_RenameControl(HOSTINFO* root, const char* object, const char* newName, int anyway,
                                    void(__cdecl* receive)(const PH_RENAMELOSS* loss, void* context),
                                    void* context) PH_NOEXCEPT;

/* What is wrong with a panel, as far as can be seen before anybody uses it. */
#define PH_FINDING_LINE 1    /* a line of the panel file that could not be read */
#define PH_FINDING_BINDING 2 /* an address that nothing has: a parameter, a control, a keyword */
#define PH_FINDING_FILE 3    /* a file that is missing */
#define PH_FINDING_PLACE 4   /* a control that reaches beyond what contains it */
#define PH_FINDING_COVER 5   /* a control that covers another one */
#define PH_FINDING_LAYER 6   /* a layer that is not active, and no button brings it up */
#define PH_FINDING_DEVICE 7  /* a device that is not live, or could not be declared */
typedef struct PH_FINDING {
    int kind;           /* PH_FINDING_... */
    const char* object; /* full name of the control or device; empty for the panel */
    const char* text;   /* in words */
} PH_FINDING;
/* Hands every finding to a function (null: to nobody). Devices are judged as they are now: call ph_Tick for
 * some seconds first, so that they can answer. The texts are valid during that call. How many there are; -1
 * on failure. */
PH_API int __cdecl ph_CheckPanel(HOSTINFO* root,
                                 void(__cdecl* receive)(const PH_FINDING* finding, void* context),
                                 void* context) PH_NOEXCEPT;

/* For libraries of controls: panel files and the clipboard create windows of registered classes alone, for
 * every host. A library tells of a window class once it has registered it with the system, and takes that
 * back before it unregisters it or is unloaded; both may be called while a library is loaded and unloaded
 * (DllMain). The class must be one that a module other than the library can create (CS_GLOBALCLASS), and its
 * create parameter the parent object. Names are compared without regard to case and counted: a class counts
 * as registered until each call was taken back. 1, or 0 for a null, empty or too long name (64 characters)
 * and without memory; 0 from the second for a name that is not registered. */
PH_API int __cdecl ph_RegisterControlClass(const char* windowClass) PH_NOEXCEPT;
PH_API int __cdecl ph_UnregisterControlClass(const char* windowClass) PH_NOEXCEPT;

/* Groups of a palette. */
#define PH_GROUP_CONTINUOUS 0 /* continuous values */
#define PH_GROUP_DISCRETE 1   /* buttons and text */
#define PH_GROUP_PROCESSING 2 /* processing panels */
#define PH_GROUP_STRIPS 3     /* strips and views */
#define PH_GROUP_INTERFACES 4
#define PH_GROUPS 5

/* What an editor and the reference need to know of a registered class. */
struct PH_CONTROLCLASS {
    const char* windowClass;
    const char* systemClass; /* whose behaviour it extends; null for none */
    const char* purpose;     /* a sentence */
    int group;
    int position;        /* in the group: lower ones stand first */
    const char* name;    /* for people; a new control is called so, with a number */
    const char* letters; /* on its tile, two at most */
    int width;           /* of a new one, pixels */
    int height;
    int takesFocus; /* whether a new one is reached by the tab key */
};
#ifndef __cplusplus
typedef struct PH_CONTROLCLASS PH_CONTROLCLASS;
#endif
/* Describes a class that was registered; the texts are copied. Later descriptions are ignored. 1, or 0 for a
 * class that is not registered, an unknown group and without memory. */
PH_API int __cdecl ph_DescribeControlClass(const PH_CONTROLCLASS* controlClass) PH_NOEXCEPT;
/* Calls the function with each class that was described, in the order of groups and positions. Texts stay
 * valid until the class is unregistered. How many there are; 0 without memory. */
PH_API int __cdecl ph_ListControlClasses(void(__cdecl* each)(const PH_CONTROLCLASS* controlClass,
                                                             void* context),
                                         void* context) PH_NOEXCEPT;

/* Receives every trace line: kind 0 debug, 1 edit. The text is as its sender wrote it, a line end included
 * where there is one. Null removes the sink; after that call returns it is not called any more. The sink is
 * called on the thread that traces and must not wait for another one. */
PH_API void __cdecl ph_SetTraceSink(void(__cdecl* sink)(int kind, const char* text, void* context),
                                    void* context) PH_NOEXCEPT;

#ifdef __cplusplus
}
#endif
