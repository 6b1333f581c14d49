#pragma once

#include "Panel/editing/BuildCommands.h"
#include "Panel/editing/Catalogue.h"
#include "Panel/editing/Gesture.h"
#include "Panel/editing/KeyCommands.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

class HOSTINFO;

// The commands of the edit mode (CMD_...): when they are possible, what they are called, and what they do to
// the selection. Nothing else may be going on while one is carried out.
class EditCommands {
public:
    EditCommands(const EditSurface& surface, PanelEdits::Warning warn);

    bool IsEnabled(int command) const;
    bool IsChecked(int command) const;
    // The command's name in a menu ("Undo Move"), or empty where it is always the same.
    std::string LabelOf(int command) const;
    // Only what is enabled.
    void Execute(int command);

    // A new control with its upper left corner at that point of the panel, or in the middle of what can be
    // seen.
    void Create(const CatalogueEntry& entry, std::optional<POINT> corner);
    // With the upper left corner at that point, or beside what it was copied from.
    void PasteFromClipboard(std::optional<POINT> corner);
    BuildCommands& Build() { return build_; }
    const BuildCommands& Build() const { return build_; }

private:
    void SelectAll();
    void SelectNames(const std::vector<std::string>& names);
    void Align(int command);
    void GiveSameSize(int command);
    void Distribute(int command);
    void MoveTo(const std::string& label, const std::vector<logic::Rectangle>& places);
    void Reorder(bool toForeground);
    // Nothing, after telling the user, when it cannot be had.
    std::optional<std::string> SelectedText() const;
    bool Copy() const;
    void Duplicate();
    void Paste(const std::string& text, std::optional<POINT> corner, int steps, const char* label,
               bool inFront = true);
    void OpenProperties();
    void OpenConnections();
    std::vector<HOSTINFO*> SelectedInOrder() const;
    HOSTINFO* FirstControl() const;
    HOSTINFO* FirstCovered(const HOSTINFO& control) const;

    HWND panel_;
    PanelEdits& edits_;
    Selection& selection_;
    EditGrid& grid_;
    PanelEdits::Warning warn_;
    BuildCommands build_;
    KeyCommands keys_;
    std::string pastedText_; // pasted last, and how often
    int pastes_ = 0;
};
