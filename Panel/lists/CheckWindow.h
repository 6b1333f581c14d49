#pragma once

#include "Panel/lists/ListWindow.h"
#include "Panelhost/PanelCheck.h"

#include <functional>
#include <string>
#include <vector>

// Lists what is wrong with the panel.
class CheckWindow : public ListWindow {
public:
    // Shows the user the control of a finding, by its full name.
    using GoTo = std::function<void(const std::string& control)>;
    explicit CheckWindow(GoTo goTo) : goTo_(std::move(goTo)) {}

    bool Create(HWND frame, HFONT font);
    void SetFindings(const std::list<PANELFINDING>& findings);
    bool TranslateKey(MSG& message) override;

private:
    void OnCommand(int command) override;
    LRESULT OnListNotify(const NMHDR& header) override;
    void Update() override;
    int Count() const override { return findings_.empty() ? 1 : static_cast<int>(findings_.size()); }
    std::string Cell(int row, int column) const override;
    void Go() const;

    GoTo goTo_;
    std::vector<PANELFINDING> findings_;
};
