#pragma once

#include "Panel/editing/Gesture.h"

#include <string>
#include <vector>

class HOSTINFO;

// The commands by which a panel is built out of many controls: names, order, groups, what is out of
// sight or reach, what is inside of controls.
class BuildCommands {
public:
    BuildCommands(const EditSurface& surface, PanelEdits::Warning warn);

    static bool Has(int command);
    bool IsEnabled(int command) const;
    bool IsChecked(int command) const;
    void Execute(int command);

    // The selection goes inside a control; null or the root for the panel itself.
    void Enter(HOSTINFO* object);
    // Siblings, in front of another one in the order of saving; null for the end.
    void MoveBefore(const std::string& label, const std::vector<HOSTINFO*>& objects, HOSTINFO* other);
    // Until the edit mode ends.
    static void Hide(const std::vector<HOSTINFO*>& objects, bool hidden);
    static void Lock(const std::vector<HOSTINFO*>& objects, bool locked);
    // Whether something selected may not be moved.
    bool HasLocked() const;

private:
    void SortByPosition();
    // Puts the selected controls into a group of their own, or each into none.
    void Group(bool together);
    void ShowAll();
    void Leave();
    void DuplicateInRow();
    bool HasParts(const HOSTINFO* object) const;

    const EditSurface& surface_;
    PanelEdits& edits_;
    Selection& selection_;
    PanelEdits::Warning warn_;
};
