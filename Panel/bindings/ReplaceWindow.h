#pragma once

#include "Panel/bindings/ReplacePlan.h"
#include "Panel/lists/ListWindow.h"

#include <string>

class Editor;

// Find and replace in the bindings of the panel that is being edited: what is typed is shown with all that it
// would change, and changes it in one step.
class ReplaceWindow : public ListWindow {
public:
    bool Create(HWND frame, HFONT font);
    // Of the panel that is edited; null for none, which closes the window.
    void SetEditor(Editor* editor);
    void Open();
    bool TranslateKey(MSG& message) override;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command) override;
    int Top() const override;
    void Update() override { Look(); }
    int Count() const override { return static_cast<int>(plan_.entries.size()); }
    std::string Cell(int row, int column) const override;

    void PlaceFields(int width);
    void Look();
    void Replace();
    bool IsOutdated();

    Editor* editor_ = nullptr;
    ReplacePlan plan_;
    std::string why_; // nothing can be replaced
    unsigned version_ = 0;
    std::vector<HOSTINFO*> selected_;
    HWND find_ = nullptr;
    HWND by_ = nullptr;
    HWND selectedAlone_ = nullptr;
    HWND replace_ = nullptr;
    HWND told_ = nullptr;
    HWND labels_[2]{};
};
