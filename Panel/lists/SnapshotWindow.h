#pragma once

#include "Panel/lists/ListWindow.h"
#include "Panelhost/Snapshots.h"

#include <string>
#include <vector>

class HOSTINFO;
class Reporter;

// The snapshots beside the panel: what one holds and what the devices hold now, taking and recalling them.
class SnapshotWindow : public ListWindow {
public:
    explicit SnapshotWindow(const Reporter& reporter) : reporter_(reporter) {}

    bool Create(HWND frame, HFONT font);
    // The panel whose snapshots these are; null for none.
    void SetPanel(HOSTINFO* root);
    void ShowNow();
    // Follows the devices and a recall; costs nothing while the window is hidden.
    void Tick();
    bool TranslateKey(MSG& message) override;

private:
    struct Row {
        SNAPSHOTVALUE value;
        std::string now;
        std::string state;
        bool isShown = true;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command) override;
    void Update() override;
    int Count() const override { return static_cast<int>(shown_.size()); }
    std::string Cell(int row, int column) const override;

    HWND Add(const char* className, const char* text, DWORD style, int id) const;
    HWND Item(int id) const { return GetDlgItem(Handle(), id); }
    std::string TextOf(int id) const;
    void Arrange() const;
    void ListNames(const std::string& selected);
    void Choose();
    void Compare();
    void Take();
    void Recall(bool isSelectionOnly);
    void Tell(const std::string& text) const;

    const Reporter& reporter_;
    HOSTINFO* root_ = nullptr;
    HFONT font_ = nullptr;
    std::string name_; // of the snapshot that is shown; empty for none
    std::vector<Row> rows_;
    std::vector<std::size_t> shown_; // of the rows
    std::string recalled_;           // the snapshot of the last recall
    bool wasUnderWay_ = false;
    ULONGLONG next_ = 0; // when it is compared again
};
