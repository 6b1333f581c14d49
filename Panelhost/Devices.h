#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/Hostinfo.h"

#include <list>
#include <string>
#include <utility>

struct DeviceKind;
namespace logic {
class FadeScale;
}

// What is known of the value of a device parameter. It says more than the answers of the handler
// (REQUESTHANDLER), which are the same in several states. A kind of device has those states that it can tell
// apart.
constexpr int PARAMETER_NONE = 0;        // there is no such parameter
constexpr int PARAMETER_UNKNOWN = 1;     // no value has come yet
constexpr int PARAMETER_PENDING = 2;     // a value that was set waits, or is not confirmed yet
constexpr int PARAMETER_LIVE = 3;        // the device holds it
constexpr int PARAMETER_UNCONFIRMED = 4; // a value that was set was never confirmed
constexpr int PARAMETER_STALE = 5;       // the device has been silent for a while
constexpr int PARAMETER_LOST = 6;        // the device cannot be reached
constexpr int PARAMETER_OFF = 7;         // the device is switched off here
constexpr int PARAMETER_REFUSED = 8;     // something else answers in place of the device
constexpr int PARAMETER_SENT = 9;        // sent to a device that answers nothing by nature
// What is found behind an address besides.
constexpr int ADDRESS_NO_KEYWORD = 10; // the object has no such keyword
constexpr int ADDRESS_NO_CONTROL = 11; // there is no object of that name

constexpr DWORD NO_AGE = 0xFFFFFFFF;

// What is known of a device as a whole. Only a live one is there for sure.
constexpr int DEVICE_UNKNOWN = 1; // has never answered
constexpr int DEVICE_LIVE = 2;
constexpr int DEVICE_STALE = 3;   // silent for some seconds
constexpr int DEVICE_LOST = 4;    // silent for longer; what waited for it was dropped
constexpr int DEVICE_OFF = 5;     // switched off here
constexpr int DEVICE_REFUSED = 6; // something else answers in its place
constexpr int DEVICE_OPEN = 7;    // answers nothing by nature

struct DEVICESTATUS {
    int state = DEVICE_UNKNOWN;
    DWORD since = NO_AGE;  // milliseconds in this state
    DWORD silent = NO_AGE; // milliseconds since something was heard of it, NO_AGE: nothing ever
};

// Posted to the window of a device, from any thread, by a transport that has something for it: OnDataInBuffer
// then gets both parameters, on the panel's thread. One that finds the device gone is lost with the window.
constexpr UINT DEVICE_NEWS = WM_USER + 1;

// A device: an object of kind 1 under the root with a message-only window. A kind of device
// derives from it, answers OnRequestList with the handler of a parameter, OnIsAlive, OnGetKeywords and
// OnGetDatatype, the text forms of OnGet and OnSet (read a parameter, and change it as if the device itself
// had), OnParameterState, and OnTimer once a tick of the root.
//
// All of it is for the panel's thread alone: handlers take no lock, and a request (a_SendRequest,
// a_SendToItem) on another thread is traced and not carried out. Other threads send value records to the
// window (CWM_MESSAGE), which carries them out on the panel's thread; the thread of a transport, which must
// not wait for the panel, posts DEVICE_NEWS.
class PANELHOST_API DEVICE : public HOSTINFO {
public:
    DEVICE();
    ~DEVICE() override;

    // Makes the window and enters the device under its root. False when the name is empty or taken.
    bool Register(HOSTINFO* root, const char* deviceName);

    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;

    // PARAMETER_..., and the milliseconds since its value last came, NO_AGE when that is not known. Here:
    // live or lost, as OnIsAlive says. Asking moves nothing.
    virtual int OnParameterState(const char* keyword, DWORD* age);
    // Here: live or lost, as OnIsAlive says.
    virtual DEVICESTATUS OnStatus();
    // The value that came last, as text: 1, or 0 when there is none. Unlike OnGet it makes nothing be read.
    // Here: as OnGet.
    virtual int OnLastValue(const char* keyword, std::string* value);

    // For snapshots (Snapshots.h). Whether one can hold that parameter: false for one that shows something,
    // starts something, or says what the device is. The scale receives how its number moves; not at all, when
    // it is left alone. Here: every parameter, and none moves.
    virtual bool OnIsRecallable(const char* keyword, logic::FadeScale* scale);
    // Whether the parameter holds what setting that text makes it hold, as exactly as the device can. Here:
    // whether OnGet answers that text.
    virtual bool OnHolds(const char* keyword, const std::string& text);
    // Values that can be sent to the device in a second; 0, as here: any number.
    virtual unsigned OnWriteRate();

    const DeviceKind* deviceKind = nullptr; // null when no device file has made it
    std::string lines;                      // that have made it, those of its profile included
    bool wasLive = false;                   // when those that are bound to it were last told
};

// The state of the device parameter at an address, PARAMETER_..., and its age where that is asked for.
PANELHOST_API int a_ParameterState(HOSTINFO* root, const char* address, DWORD* age = nullptr);

// The names and states of the devices under a root, in order of declaration.
PANELHOST_API std::list<std::pair<std::string, DEVICESTATUS>> a_ListDevices(HOSTINFO* root);
// How many of them are not live.
PANELHOST_API int a_CountNotLive(HOSTINFO* root);
// Why a device is not live: "nothing heard for 4 s", "switched off". Empty for a live one.
PANELHOST_API std::string a_WhyNotLive(const DEVICESTATUS& status);
// The same for what an object is bound to (its functions, those of all its lists), of the first that is not
// live: "FOH: nothing heard for 4 s", "FOH*ch01.fader: not confirmed", "FOH*ch99.fader: not there". Empty
// when all are live, and for an object without functions.
PANELHOST_API std::string a_WhyNotLive(const HOSTINFO* object);
// What ph_LoadDevices could not declare since the root was made or ph_ReloadDevices last took effect, and
// what that could not declare, or that the file could not be read at all, in words and in order: "FOH: the
// profile x33.profile cannot be read". Parameters are not among them.
PANELHOST_API std::list<std::string> a_DeviceFaults(HOSTINFO* root);

// Tells every control bound to the address that the device parameter came or went.
PANELHOST_API void a_AnnounceFunction(HOSTINFO* root, const char* address);
