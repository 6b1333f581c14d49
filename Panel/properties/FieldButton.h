#pragma once

#include "Panel/common/Window.h"

#include <functional>

// The small button at the right of a field that is edited: a chooser, a list that drops down, or arrows. It
// never takes the focus from the field.
class FieldButton : public Window {
public:
    enum class Kind { None, Chooser, DropDown, Arrows };
    // With the steps of arrows: 1 for the upper one, -1 for the lower one; 0 of the others.
    using Pressed = std::function<void(int step)>;

    bool Create(HWND parent, Pressed pressed);
    void Show(Kind kind, const RECT& place);
    void Hide() { Show(Kind::None, {}); }
    Kind Shown() const { return kind_; }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint() const;
    void Press(int y);

    Kind kind_ = Kind::None;
    int held_ = 0; // step of the arrow that is held down
    Pressed pressed_;
};
