#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/Hostinfo.h"

#include <string>

// A device of the network: an object of kind 1 under the root with a message-only window, so that value
// records reach it from any thread. A transport derives from it, answers OnRequestList with the handler of a
// parameter, OnIsAlive, OnGetKeywords and OnGetDatatype, the text forms of OnGet and OnSet (read a parameter,
// and change it as if the device itself had), and OnTimer once a tick of the root.
class PANELHOST_API DEVICE : public HOSTINFO {
public:
    DEVICE();
    ~DEVICE() override;

    // Makes the window and enters the device under its root. False when the name is empty or taken.
    bool Register(HOSTINFO* root, const char* deviceName);

    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;
};

// Tells every control bound to the address that the device parameter came or went.
PANELHOST_API void a_AnnounceFunction(HOSTINFO* root, const char* address);
