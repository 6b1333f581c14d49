#pragma once

#include "Panel/devices/DeviceText.h"
#include "Panel/devices/LineNumbers.h"
#include "Panel/lists/ListWindow.h"
#include "Panelhost/DeviceFiles.h"
#include "base/Gdi.h"

#include <functional>
#include <vector>

class HOSTINFO;
class Reporter;

// The device file of the panel: its text, what is wrong with it, and which file that is. What is saved here
// is what the panel's devices are made from at once.
class DevicesWindow : public ListWindow {
public:
    // The panel, as far as this window goes.
    struct Panel {
        HOSTINFO* root = nullptr;
        std::string file;     // the devices are from; empty for none
        std::string proposed; // for a first one
        std::string shown;    // the same for people, and why it is that file
        bool mayChoose = false;
        bool isNamed = false; // the panel says which file, and does not just have one beside it
    };
    struct Actions {
        std::function<Panel()> look;
        // Makes that file the panel's, and its devices from it anew. False when that cannot be now.
        std::function<bool(const std::string& file)> use;
        // The same with the file beside the panel, or none.
        std::function<bool()> useBeside;
    };

    DevicesWindow(const Reporter& reporter, Actions actions)
        : reporter_(reporter), actions_(std::move(actions)) {}

    bool Create(HWND frame, HFONT font);
    void Open();
    // Another panel is there, or another file is the panel's. A text that is not saved stays, unless the
    // panel is another one.
    void Follow(bool isOtherPanel);
    // Tells how many devices are live.
    void FollowStates() { Update(); }
    // Asks about a text that is not saved: false when what goes on is to be left.
    bool MayDiscard();
    bool TranslateKey(MSG& message) override;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command) override;
    LRESULT OnListNotify(const NMHDR& header) override;
    void Update() override;
    int Count() const override { return static_cast<int>(faults_.size()); }
    std::string Cell(int row, int column) const override;

    static LRESULT CALLBACK TextProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR object) noexcept;
    void Arrange() const;
    void ReadFile(const std::string& file);
    bool IsModified() const;
    bool Save();
    void Reload();
    void Choose();
    void UseBeside();
    void AddDevice();
    void GoToFault(int row);
    void NextFault();
    void Check();
    void Tell() const;

    const Reporter& reporter_;
    const Actions actions_;
    DeviceText document_;
    std::string fault_; // why the file cannot be edited
    std::vector<DEVICELINEFAULT> faults_;
    Font font_;
    HWND path_ = nullptr;
    HWND text_ = nullptr;
    HWND told_ = nullptr;
    LineNumbers numbers_;
};
