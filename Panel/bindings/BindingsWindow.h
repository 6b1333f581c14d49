#pragma once

#include "Panel/bindings/BindingTable.h"
#include "Panel/lists/ListWindow.h"

#include <functional>
#include <string>

// Lists everything that is bound on the panel, with its state and value: a look a second while it is shown,
// none while it is not.
class BindingsWindow : public ListWindow {
public:
    struct Actions {
        // Shows the user a control of the panel; answers what stands in the way, empty for nothing.
        std::function<std::string(HOSTINFO* control)> goTo;
        // The file to export to, empty for none.
        std::function<std::string(HWND owner)> askFile;
        std::function<void(const std::string& text)> warn;
    };
    explicit BindingsWindow(Actions actions) : actions_(std::move(actions)) {}

    bool Create(HWND frame, HFONT font);
    // Lists that panel; null for none.
    void SetRoot(HOSTINFO* root);
    // Shows the window with what is not live alone, or with everything.
    void Open(bool onlyNotLive);
    bool TranslateKey(MSG& message) override;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command) override;
    LRESULT OnListNotify(const NMHDR& header) override;
    int Top() const override;
    void Update() override {} // by its own clock
    int Count() const override { return table_.Count(); }
    std::string Cell(int row, int column) const override;

    void Look();
    // After an action that shows other rows. Rows that were selected stay so.
    template <class Action>
    void Change(Action action);
    void ShowCounts();
    void SortBy(int column);
    void GoTo();
    void Export();

    Actions actions_;
    BindingTable table_;
    HOSTINFO* root_ = nullptr;
    bool isOpen_ = false;
    HWND search_ = nullptr;
    HWND notLive_ = nullptr;
    HWND counts_ = nullptr;
    std::string countsText_;
    int sorted_ = -1; // by that column
    bool descending_ = false;
};
