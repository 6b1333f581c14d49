// How a test drives the double of tapi32.dll: devices, failures and ports to come, calls that have been made,
// and messages to the callback.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <tapi.h>
#include <utility>
#include <vector>

struct TelephonyDouble {
    // No port, and every call succeeds.
    void Reset(const std::vector<DWORD>& newVersions) {
        *this = TelephonyDouble();
        versions = newVersions;
    }
    // The calls since the last time.
    std::string TakeCalls() { return std::exchange(calls, {}); }

    std::vector<DWORD> versions; // of each device the one that it settles on; 0: on none
    // What these functions return; all except lineNegotiateAPIVersion do nothing then.
    std::map<std::string, LONG> failures;
    HANDLE port = nullptr; // that calls of lineGetIDA hand out, in a record
    DWORD neededSize = 38; // that they claim for it, 38 being the truth
    DWORD offset = 28;     // of the port in it, that they claim, 28 being the truth
    std::string calls;     // name and arguments, sizes and versions as they are written; "; " between them
    LINECALLBACK callback = nullptr; // of the application that was initialised as the last
    DWORD_PTR instance = 0;          // of the line opened as the last
};

// Exported by the double, not by the system's own library.
extern "C" TelephonyDouble* GetTelephonyDouble();
