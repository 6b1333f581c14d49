#pragma once

#include "Panel/lists/ListWindow.h"
#include "Panel/lists/UnreadLines.h"

// Lists the lines of the panel file that could not be read.
class UnreadWindow : public ListWindow {
public:
    bool Create(HWND frame, HFONT font);
    void SetLines(std::vector<UnreadLine> lines);

private:
    void Update() override;
    int Count() const override { return static_cast<int>(lines_.size()); }
    std::string Cell(int row, int column) const override;

    std::vector<UnreadLine> lines_;
};
