#pragma once

#include "Controls/framework/Control.h"

#include <array>
#include <commctrl.h>
#include <iterator>

// The functions of the system's mail library. All are found in any version of it.
constexpr const char* MAIL_FUNCTIONS[] = {
    "MAPILogon",       "MAPILogoff",   "MAPISendMail", "MAPISendDocuments",
    "MAPIReadMail",    "MAPISaveMail", "MAPIFindNext", "MAPIDeleteMail",
    "MAPIResolveName", "MAPIAddress",  "MAPIDetails",  "MAPIFreeBuffer",
};

// What one class keeps for all its windows from registration until the library is unloaded.
class ClassResources {
public:
    void Make(const ControlClass& controlClass, HINSTANCE module);
    void Release();

    HWND tooltip = nullptr;
    HBITMAP picture = nullptr;
    HBITMAP lamps[2] = {}; // lit and dark
    HIMAGELIST images = nullptr;
    HMODULE mailLibrary = nullptr;
    std::array<FARPROC, std::size(MAIL_FUNCTIONS)> mailFunctions{}; // null where there is no such function
    CRITICAL_SECTION* lock = nullptr;
};
