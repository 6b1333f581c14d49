#pragma once

#include "Panel/editing/Gesture.h"
#include "Panel/editing/PanelEdits.h"
#include "Panel/editing/Selection.h"

#include <cstdint>
#include <string>
#include <vector>

// A layer of a panel as its user sees it.
struct LayerRow {
    int number = 0; // 1 to 64; 0 stands for the controls on every layer
    std::string name;
    bool isShown = true; // while the panel is edited
    int count = 0;       // of controls, and which: "A, B"
    std::string controls;

    bool operator==(const LayerRow&) const = default;
};

// The layers of a panel that is edited: their names, which of them are shown meanwhile, and what is on them.
// Layers are bits, as logic::LayerBit gives them.
class LayerEditing {
public:
    explicit LayerEditing(const EditSurface& surface) : surface_(surface) {}

    // "Every layer", those that have a name or controls, and the first that is free.
    std::vector<LayerRow> Rows() const;
    // Shows or hides layers in the editor, all but the last; the file has none of it.
    void Toggle(std::uint64_t layers) const;
    void ShowOnly(std::uint64_t layers) const; // 0: all
    // Puts the selected controls on those layers alone (0: on every one), or on them, too, or takes them off.
    enum class Change { Put, Add, Remove };
    void ChangeSelected(Change change, std::uint64_t layers) const;
    // Selects the controls on a layer, or with 0 those on every layer.
    void SelectControls(int number) const;
    // False, after telling nobody, when it cannot be a name.
    bool Rename(int number, const std::string& name) const;

private:
    HOSTINFO* Root() const { return surface_.edits.Root(); }
    std::vector<HOSTINFO*> ControlsOn(int number) const;
    void DropHidden() const;

    const EditSurface& surface_;
};
