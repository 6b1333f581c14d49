#pragma once

#include <windows.h>

#include <string>

// The bar at the lower edge of the frame: what is under the mouse, the number of controls, and the number of
// messages where there are any.
class StatusBar {
public:
    StatusBar() = default;
    ~StatusBar();
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    bool Create(HWND frame, HFONT font);
    int Height() const;
    // Follows a new size of the frame.
    void Resize();

    void SetText(const std::string& text);
    // Draws what is new at once.
    void Update() const { UpdateWindow(bar_); }
    void SetControlCount(int count);
    void SetMessageCount(int count);
    // Whether the notification is a click on the number of messages.
    bool IsMessageClick(const NMHDR& header) const;

private:
    enum Part { PART_TEXT, PART_CONTROLS, PART_MESSAGES };

    void Arrange();
    int TextWidth(const std::string& text) const;

    HWND bar_ = nullptr;
    std::string text_;
    int controls_ = -1;
    int messages_ = -1;
};
