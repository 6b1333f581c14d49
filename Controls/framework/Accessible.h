#pragma once

#include <windows.h>

class Accessible;
class CONTROLPROPERTIES;

// What screen readers and programs that test user interfaces are told of a control: name, role, value, state
// and what it is bound to. Values of controls that are operated can be set, buttons can be pressed. The
// object is made when it is first asked for; whoever keeps it longer than the control lives has one that
// answers nothing any more.
class AccessibleLink {
public:
    AccessibleLink() = default;
    ~AccessibleLink() { Disconnect(); }
    AccessibleLink(const AccessibleLink&) = delete;
    AccessibleLink& operator=(const AccessibleLink&) = delete;

    // WM_GETOBJECT for the client area: what the window procedure returns, 0 where the system knows nothing
    // of such objects.
    LRESULT Answer(CONTROLPROPERTIES& control, WPARAM wParam) noexcept;
    // Tells of a value or state that is new since it was last told.
    void Announce(CONTROLPROPERTIES& control) noexcept;
    void Disconnect() noexcept;

private:
    Accessible* object_ = nullptr;
};
