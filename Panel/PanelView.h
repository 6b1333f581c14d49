#pragma once

#include "Panel/common/Window.h"

// The part of the frame that shows the panel: centred where there is room, scrolled where there is not.
class PanelView : public Window {
public:
    bool Create(HWND frame);
    // Shows that panel window with that size from its upper left corner; null for none.
    void SetPanel(HWND panel, SIZE size);
    void SetPanelSize(SIZE size);
    // To that place in the frame.
    void MoveTo(const RECT& place) const;
    SIZE PanelSize() const { return size_; }
    // Scrolls until the window, a child of the panel, can be seen.
    void MakeVisible(HWND child);
    // The smallest size up to the given limits that shows all of the panel, with room for scroll bars if need
    // be.
    static SIZE BestSize(SIZE panel, SIZE limits);

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Arrange();
    void SetBar(int bar, int length, int visible, LONG& position);
    void Scroll(int bar, int to);
    void OnScroll(int bar, int request);
    void OnWheel(int delta, bool sideways);

    HWND panel_ = nullptr;
    SIZE size_{};
    POINT position_{}; // of the panel that is at the view's upper left corner
    int wheel_ = 0;    // part of a notch not yet used
    bool arranging_ = false;
};
