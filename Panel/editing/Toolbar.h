#pragma once

#include <windows.h>
#include <commctrl.h>

class Editor;

// The commands of the edit mode below the menu. While the panel is operated only the button that begins to
// edit is there.
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
    // Answers what a tooltip asks; other notifications are left alone.
    static void Answer(NMHDR& header);
    // Shows what is possible now.
    void Update(const Editor& editor) const;

private:
    HWND bar_ = nullptr;
    HIMAGELIST icons_ = nullptr;
    HIMAGELIST greyed_ = nullptr;
};
