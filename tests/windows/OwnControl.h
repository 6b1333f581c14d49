#pragma once

#include "tests/windows/ImportHook.h"

// A control class of the test program, as another library of controls could have it. Registered, with the
// system and with the host, while one of these lives; what its controls do when they are saved is said by the
// last one.
class OwnControl {
public:
    enum Saving { Saves, Refuses, HitsFullDisk };
    static constexpr const char* CLASS = "OWNCONTROL";

    // The control writes as many bytes by the handle itself, behind its first line.
    explicit OwnControl(Saving saving, DWORD bytes = 0);
    ~OwnControl();
    OwnControl(const OwnControl&) = delete;
    OwnControl& operator=(const OwnControl&) = delete;
};

// While it lives the module is refused memory for the first line that it makes. One at a time.
class NoMemory {
public:
    explicit NoMemory(HMODULE module);

    int Refusals() const;

private:
    ImportHook hook_;
};
