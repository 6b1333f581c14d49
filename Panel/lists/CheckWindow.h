#pragma once

#include "Panel/lists/ListWindow.h"
#include "Panelhost/PanelCheck.h"

#include <vector>

// Lists what is wrong with the panel.
class CheckWindow : public ListWindow {
public:
    bool Create(HWND frame, HFONT font);
    void SetFindings(const std::list<PANELFINDING>& findings);

private:
    void Update() override;
    int Count() const override { return findings_.empty() ? 1 : static_cast<int>(findings_.size()); }
    std::string Cell(int row, int column) const override;

    std::vector<PANELFINDING> findings_;
};
