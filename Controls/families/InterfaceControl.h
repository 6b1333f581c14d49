#pragma once

#include "Controls/framework/Control.h"

// Base of the interface controls, which bridge values of the panel to channels outside. They have no face: in
// an operated panel their window is hidden, in an edited one it shows the picture of the class.
class INTERFACEPROPERTIES : public CONTROLPROPERTIES {
public:
    // Takes the size of the class's picture. A control's own version calls this one.
    void SetDefaults() override;
    // Hides the window in an operated panel. A control's own version calls this one.
    void Created() override;
    void Draw(HDC dc, const RECT& client) const override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;

    virtual SIZE SizeWithoutPicture() const { return {100, 100}; } // pixels
    virtual int DefaultInterval() const { return 1000; }           // milliseconds
    // Whether the window belongs to an operated panel, and is not meant to be seen there.
    bool StaysHidden() const;
    virtual void ServeCalls() {} // on WorkerCalls::MESSAGE, for a control with worker threads that call
};

// Window procedure of the interface controls.
LRESULT CALLBACK InterfaceProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
