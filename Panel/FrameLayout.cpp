// Where the parts of the frame stand: bars, view, and the panes at its sides.

#include "Panel/FrameWindow.h"

#include <algorithm>

void FrameWindow::OnSize() {
    status_.Resize();
    toolbar_.Resize();
    RECT client;
    GetClientRect(Handle(), &client);
    notice_.Place(toolbar_.Height(), client.right);
    const int top = toolbar_.Height() + notice_.Height();
    const int height = std::max(0L, client.bottom - status_.Height() - top);
    const int left = LeftWidth();
    const int right = std::max<int>(left, client.right - RightWidth());
    if (editing_) {
        ArrangeLeft({0, top, left, top + height});
        SetWindowPos(properties_.Handle(), nullptr, right, top, RightWidth(), height,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    view_.MoveTo({left, top, right, top + height});
    start_.MoveTo({0, top, client.right, top + height});
}

void FrameWindow::ResizeObjects(int by) {
    RECT place;
    GetClientRect(objects_.Handle(), &place);
    objectsHeight_ = std::max(ObjectPane::LEAST_HEIGHT, static_cast<int>(place.bottom) + by);
    OnSize();
}

// The palette, and the objects below it.
void FrameWindow::ArrangeLeft(const RECT& column) {
    const int height = column.bottom - column.top;
    const int wanted = objectsHeight_ == 0 ? height / 2 : objectsHeight_;
    const int objects = std::min(height, std::max(ObjectPane::LEAST_HEIGHT, wanted));
    SetWindowPos(palette_.Handle(), nullptr, column.left, column.top, column.right - column.left,
                 height - objects, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(objects_.Handle(), nullptr, column.left, column.bottom - objects, column.right - column.left,
                 objects, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FrameWindow::FitToPanel() {
    FitFrame(Handle(), start_.IsShown() ? StartScreen::BEST_SIZE : view_.PanelSize(),
             {SidesWidth(), status_.Height() + toolbar_.Height() + notice_.Height()});
}

// The property pane.

void FrameWindow::ShowProperties(bool shown) {
    const int before = SidesWidth();
    const bool hadFocus = properties_.HasFocus();
    properties_.Show(shown);
    if (hadFocus && !shown) {
        panel_->RestoreFocus();
    }
    WidenFrame(Handle(), SidesWidth() - before);
    OnSize();
}

// Of which they are while nothing is selected.
void FrameWindow::GoToPanelProperties() {
    if (!editing_) {
        return;
    }
    panel_->Edit().Select({});
    properties_.Update();
    if (!properties_.HasFocus()) {
        GoToProperties();
    }
}

// And back to the panel from there.
void FrameWindow::GoToProperties() {
    if (!editing_) {
        return;
    }
    if (properties_.HasFocus()) {
        return panel_->RestoreFocus();
    }
    if (!properties_.IsShown()) {
        ShowProperties(true);
    }
    properties_.TakeFocus();
}
