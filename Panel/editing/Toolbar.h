#pragma once

#include "base/Gdi.h"

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

class Editor;

// Commands below the menu: those that are of use at any time, and while the panel is edited those that edit
// it.
class Toolbar {
public:
    Toolbar() = default;
    ~Toolbar();
    Toolbar(const Toolbar&) = delete;
    Toolbar& operator=(const Toolbar&) = delete;

    bool Create(HWND frame);
    void Show(bool shown) const;
    // 0 while it is not shown.
    int Height() const;
    // Follows a new size of the frame.
    void Resize() const;
    // Draws its icons for the theme in use.
    void FollowTheme();
    // Answers what a tooltip asks, and how the buttons look; other notifications are left alone.
    LRESULT Answer(NMHDR& header);
    // The command below the mouse, 0 for none, when the notification tells that it is another one.
    std::optional<int> PointedAt(const NMHDR& header) const;
    // Shows what is possible now.
    void Update(const Editor& editor) const;

private:
    static LRESULT Draw(const NMTBCUSTOMDRAW& draw);

    HWND bar_ = nullptr;
    std::vector<std::string> texts_; // for tooltips
    ImageList icons_;
    ImageList greyed_;
};
