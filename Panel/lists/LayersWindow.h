#pragma once

#include "Panel/editing/LayerEditing.h"
#include "Panel/lists/ListWindow.h"

#include <vector>

// Lists the layers of the panel that is edited, shows and hides them there, names them, and puts the selected
// controls on them.
class LayersWindow : public ListWindow {
public:
    bool Create(HWND frame, HFONT font);
    // Null while no panel is edited: the window is hidden then.
    void SetEditing(const LayerEditing* layers);
    void Update() override;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command) override;
    int Count() const override { return static_cast<int>(rows_.size()); }
    std::string Cell(int row, int column) const override;
    // Those of the selected lines, as bits; that of all layers has none.
    std::uint64_t Chosen() const;
    // The line with the focus; null for none.
    const LayerRow* Focused() const;

    const LayerEditing* layers_ = nullptr;
    std::vector<LayerRow> rows_;
};
