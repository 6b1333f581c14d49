// How a test drives the double of tapi32.dll: devices, failures and ports to come, calls that have been made,
// and messages to the callback.
#pragma once

#include <windows.h>

#include <string>
#include <tapi.h>
#include <vector>

class TelephonyDouble {
public:
    // No port, and every call succeeds. Of each device the version that it settles on; 0: on none.
    virtual void Reset(const std::vector<DWORD>& versions) = 0;

    // What that function returns from now on; all except lineNegotiateAPIVersion do nothing then. 0: it works
    // again.
    virtual void Fail(const char* function, LONG result) = 0;
    // What calls of lineGetIDA hand out from now on.
    virtual void SetPort(HANDLE port) = 0;
    // What they claim about their record instead of the truth.
    virtual void SetRecord(DWORD neededSize, DWORD offset) = 0;

    // The calls since the last time: name and arguments, sizes and versions in the way that they are written
    // down. "; " stands between them.
    virtual std::string TakeCalls() = 0;
    // Callback of the application that was initialised as the last, instance of the line opened as the last.
    virtual LINECALLBACK Callback() const = 0;
    virtual DWORD_PTR Instance() const = 0;

protected:
    ~TelephonyDouble() = default;
};

// Exported by the double, not by the system's own library.
extern "C" TelephonyDouble* GetTelephonyDouble();
