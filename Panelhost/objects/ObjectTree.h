#pragma once

#include "Panelhost/Hostinfo.h"
#include "base/SharedLock.h"

#include <unordered_map>

// All objects that live in this process: by address and by window. Objects come and go on the user-interface
// thread; any thread may look one up.
class ObjectTree {
public:
    static ObjectTree& Get();

    void Enter(HOSTINFO* object);
    void Leave(HOSTINFO* object);
    HOSTINFO* FromWindow(HWND window);
    bool IsAlive(const HOSTINFO* object) { return LifeOf(object) != 0; }
    unsigned LifeOf(const HOSTINFO* object);
    int Count();

private:
    SharedLock lock_;
    std::unordered_map<HWND, HOSTINFO*> byWindow_;
    struct Entry {
        HWND window;
        unsigned life;
    };
    std::unordered_map<const HOSTINFO*, Entry> entries_;
    unsigned lives_ = 0; // so far
};
