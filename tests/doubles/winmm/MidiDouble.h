// How a test drives the double of winmm.dll: devices and failures to come, calls that have been made, and
// messages from the input. What else the control library needs of winmm.dll is passed on to the real one.
#pragma once

#include <windows.h>

#include <map>
#include <mmsystem.h>
#include <string>
#include <vector>

class MidiDouble {
public:
    // These devices and no ports, and every call succeeds at once.
    virtual void Reset(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) = 0;

    // What these functions return without doing anything; MMSYSERR_NOERROR: they work.
    std::map<std::string, MMRESULT> failures;
    // How many milliseconds a call of these takes, unless the delays are ended before.
    std::map<std::string, DWORD> delays;
    virtual void EndDelays() = 0;

    // The calls since the last time, apart from those that ask: name and arguments, the handle as the device
    // that it stands for. "; " stands between them.
    virtual std::string TakeCalls() = 0;
    virtual int OpenPorts() const = 0;

    // Calls the callback of the input that was opened as the last, on this thread, whether or not it is still
    // open.
    virtual void CallInput(UINT message, DWORD_PTR parameter) = 0;

protected:
    ~MidiDouble() = default;
};

// Exported by the double, not by the real library.
extern "C" MidiDouble* GetMidiDouble();
