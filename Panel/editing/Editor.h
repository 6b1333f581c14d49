#pragma once

#include "Panel/editing/Catalogue.h"
#include "Panel/editing/EditGrid.h"
#include "Panel/editing/Gesture.h"
#include "Panel/editing/OverlayLines.h"
#include "Panel/editing/PanelEdits.h"
#include "Panel/editing/Selection.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

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

    // Commands of menu and toolbar (CMD_...).
    bool IsEnabled(int command) const;
    bool IsChecked(int command) const;
    void Execute(int command);
    // The command's name in a menu ("Undo Move"), or empty where it is always the same.
    std::string LabelOf(int command) const;

    // A new control with its upper left corner at that point of the panel, or in the middle of what can be
    // seen.
    void Create(const CatalogueEntry& entry, std::optional<POINT> corner);
    // Outline of a control that is about to be put at a point of the screen, and where its corner would be;
    // nothing when that is not over the panel.
    std::optional<POINT> ShowGhost(const CatalogueEntry& entry, POINT screen);
    void HideGhost() { lines_.Hide(); }

    bool IsDragging() const { return gesture_ != nullptr; }
    // What was changed, and whether the file holds it.
    PanelEdits& Edits() { return edits_; }
    const PanelEdits& Edits() const { return edits_; }
    std::string StatusText() const;

private:
    // Input.
    void Press(POINT point, bool control, bool isDouble);
    bool DoublePress(HOSTINFO* object, POINT point);
    void Hover(POINT point);
    void StartGesture(std::unique_ptr<Gesture> gesture);
    void FinishGesture(bool cancelled);
    bool OnKey(WPARAM key);
    void RightPress(POINT point);
    void Paint();

    // What is at a point of the panel.
    HOSTINFO* ChildAt(HWND parent, POINT point) const;
    HOSTINFO* ObjectAt(POINT point) const;
    logic::Handle HandleAt(POINT point, HOSTINFO*& object) const;

    // Commands.
    void Nudge(WPARAM key, bool byGrid);
    void CycleSelection(bool backwards);
    void SelectAll();
    void SelectNames(const std::vector<std::string>& names);
    void Align(int command);
    void Distribute(int command);
    void MoveTo(const std::string& label, const std::vector<logic::Rectangle>& places);
    void Reorder(bool toForeground);
    // Nothing, after telling the user, when it cannot be had.
    std::optional<std::string> SelectedText() const;
    bool Copy() const;
    void Duplicate();
    void Paste(const std::string& text, std::optional<POINT> corner, int steps, const char* label);
    void PasteFromClipboard(std::optional<POINT> corner);
    void OpenProperties();
    void OpenConnections();
    std::vector<HOSTINFO*> SelectedInOrder() const;
    HOSTINFO* FirstControl() const;

    HWND panel_;
    PanelEdits::Warning warn_;
    PanelEdits edits_;
    Selection selection_;
    EditGrid grid_;
    OverlayLines lines_;
    EditSurface surface_;
    std::unique_ptr<Gesture> gesture_;
    bool active_ = false;
    bool locked_ = false;

    // The press before, to know a double one by.
    HOSTINFO* pressed_ = nullptr;
    POINT pressPoint_{};
    LONG pressTime_ = 0;

    std::string pastedText_; // pasted last, and how often
    int pastes_ = 0;
};
