#pragma once

#include "Panel/common/DeviceLamp.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

// The bar at the lower edge of the frame: what is under the mouse, a lamp that tells whether all devices are
// live where there are any, the number of controls, and the number of messages where there are any.
class StatusBar {
public:
    // Of the devices of a panel.
    struct Devices {
        int count = 0;
        int notLive = 0;
        std::string states; // a line for each

        bool operator==(const Devices&) const = default;
    };

    StatusBar() = default;
    ~StatusBar();
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    bool Create(HWND frame, HFONT font);
    void Show(bool shown) const;
    // 0 while it is not shown.
    int Height() const;
    // Follows a new size of the frame.
    void Resize();

    void SetText(const std::string& text);
    // What a command does that is pointed at, in place of the text; empty for none.
    void SetHint(const std::string& hint);
    // Draws what is new at once.
    void Update() const { UpdateWindow(bar_); }
    void SetDevices(const Devices& devices);
    void SetControlCount(int count);
    void SetMessageCount(int count);
    // Whether the notification is a click on the number of messages.
    bool IsMessageClick(const NMHDR& header) const { return IsClick(header, messagesPart_); }
    // The same on the lamp of the devices.
    bool IsDeviceClick(const NMHDR& header) const { return IsClick(header, devicesPart_); }

private:
    struct Part {
        enum Kind { Text, Devices, Controls, Messages } kind;
        std::string text;
    };

    bool IsClick(const NMHDR& header, std::optional<std::size_t> part) const;
    std::vector<Part> Parts() const;
    void ShowText() const;
    void Arrange();
    int WidthOf(const Part& part) const;
    void PlaceTip(const RECT& place);

    HWND bar_ = nullptr;
    HWND tip_ = nullptr; // of the lamp
    OwnedIcon lamps_[2]; // by whether all are live
    std::string text_;
    std::string hint_;
    Devices devices_;
    int controls_ = -1;
    int messages_ = -1;
    std::optional<std::size_t> messagesPart_;
    std::optional<std::size_t> devicesPart_;
};
