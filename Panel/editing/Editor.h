#pragma once

#include "Panel/editing/Catalogue.h"
#include "Panel/editing/EditCommands.h"
#include "Panel/editing/EditGrid.h"
#include "Panel/editing/Gesture.h"
#include "Panel/editing/LayerEditing.h"
#include "Panel/editing/OverlayLines.h"
#include "Panel/editing/PanelEdits.h"
#include "Panel/editing/Selection.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class HOSTINFO;

// The edit mode of one panel: what mouse, keys and commands do there.
class Editor {
public:
    Editor(HWND panel, HOSTINFO* root, PanelEdits::Warning warn);
    ~Editor();

    bool IsActive() const { return active_; }
    void SetActive(bool active);
    // While controls handle a tick of the panel, none of them may go.
    void SetLocked(bool locked) { locked_ = locked; }

    // Serves a message of the panel window: true when the result is the editor's.
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    // Mouse and keys of the controls belong to the panel while it is edited: true when the message was
    // served.
    bool Translate(const MSG& message);

    // Commands of menu and toolbar (CMD_...), as of EditCommands, and the one that starts and ends the edit
    // mode.
    bool IsEnabled(int command) const;
    bool IsChecked(int command) const;
    void Execute(int command);
    std::string LabelOf(int command) const { return commands_.LabelOf(command); }
    void Create(const CatalogueEntry& entry, std::optional<POINT> corner);
    // Outline of a control that is about to be put at a point of the screen, and where its corner would be;
    // nothing when that is not over the panel.
    std::optional<POINT> ShowGhost(const CatalogueEntry& entry, POINT screen);
    void HideGhost() { lines_.Hide(); }

    // Shows the user where a control is: it is selected while the panel is edited, and framed for two seconds
    // while it is operated.
    void PointAt(HOSTINFO* control);
    // The time goes on.
    void Tick();
    // PanelEdits::Apply, unless something else is going on.
    int Apply(const std::string& label, const std::vector<PanelEdits::Line>& lines);

    bool IsDragging() const { return gesture_ != nullptr; }
    // Whether properties may be changed now.
    bool MayChange() const { return active_ && !locked_ && !gesture_; }
    HWND Panel() const { return panel_; }
    const std::vector<HOSTINFO*>& Selected() const { return selection_.Objects(); }
    // Siblings.
    void Select(std::vector<HOSTINFO*> objects);
    // The user chose them: whole groups are selected.
    void Choose(std::vector<HOSTINFO*> objects);
    // In the order of saving, in front of a sibling; null for the end.
    void MoveBefore(const std::vector<HOSTINFO*>& objects, HOSTINFO* other);
    void Hide(const std::vector<HOSTINFO*>& objects, bool hidden);
    void Lock(const std::vector<HOSTINFO*>& objects, bool locked);
    void TakeFocus() const { SetFocus(panel_); }
    // What was changed, and whether the file holds it.
    PanelEdits& Edits() { return edits_; }
    const PanelEdits& Edits() const { return edits_; }
    const LayerEditing& Layers() const { return layers_; }
    std::string StatusText() const;

private:
    static constexpr UINT_PTR SCROLL_TIMER = 0x5C01; // of the panel window, which has no other of that number

    // Input.
    void Press(POINT point, WPARAM keys, bool isDouble);
    bool DoublePress(HOSTINFO* object, POINT point);
    std::vector<HOSTINFO*> Taken(std::vector<HOSTINFO*> chosen, const std::vector<HOSTINFO*>& before) const;
    void Hover(POINT point);
    // At a tick while something is dragged: scrolls the view when the mouse is at its border or beyond it.
    void ScrollAtBorder();
    void StartGesture(std::unique_ptr<Gesture> gesture);
    void FinishGesture(bool cancelled);
    bool OnKey(WPARAM key);
    void RightPress(POINT point);
    void Paint();

    void StopPointing();

    // What is at a point of the panel.
    HOSTINFO* ObjectAt(POINT point) const;
    void LeaveUnlessAt(POINT point);
    logic::Handle HandleAt(POINT point, HOSTINFO*& object) const;
    logic::Handle PanelEdgeAt(POINT point) const;

    HWND panel_;
    PanelEdits edits_;
    Selection selection_;
    EditGrid grid_;
    OverlayLines lines_;
    EditSurface surface_;
    EditCommands commands_;
    LayerEditing layers_{surface_};
    std::unique_ptr<Gesture> gesture_;
    bool active_ = false;
    bool locked_ = false;
    ULONGLONG pointsUntil_ = 0;      // at a control; 0: at none
    std::optional<POINT> draggedTo_; // on the screen: where the mouse was last in a gesture

    // The press before, to know a double one by.
    HOSTINFO* pressed_ = nullptr;
    POINT pressPoint_{};
    LONG pressTime_ = 0;
};
