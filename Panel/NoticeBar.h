#pragma once

#include "Panel/common/Window.h"

#include <string>

// A bar above the panel that tells something about it, with a button that shows more. Not there while there
// is nothing to tell.
class NoticeBar : public Window {
public:
    bool Create(HWND frame, HFONT font);
    // Empty for nothing; the command of the frame shows more. The frame arranges itself anew afterwards.
    void SetText(const std::string& text, int command = 0);
    // Whether there is the button that shows more.
    void OfferMore(bool offered) const { ShowWindow(show_, offered ? SW_SHOWNA : SW_HIDE); }
    // 0 while it tells nothing.
    int Height() const;
    void Place(int top, int width);

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint() const;
    HWND MakeButton(const char* text, int command) const;

    std::string text_;
    HFONT font_ = nullptr;
    HWND show_ = nullptr;
    HWND close_ = nullptr;
};
