#pragma once

#include "Panel/common/Window.h"
#include "Panel/editing/Editor.h"
#include "Panel/lists/UnreadLines.h"
#include "Panelhost/Devices.h"
#include "logic/editing/RecoveryCopy.h"

#include <list>
#include <memory>
#include <string>
#include <utility>

class HOSTINFO;
class LoadProgress;

// What a panel is made from. An empty name stands for no file.
struct PanelSource {
    std::string panelFile;
    std::string deviceFile;
    const logic::RecoveryCopy* copy = nullptr; // in place of what the panel file holds
    std::string text{};                        // lines of a new panel, without a file
    bool follows = false;                      // nothing is sent to devices, whatever the panel file says
};

// The window of one panel with its root object, controls and devices.
class PanelWindow : public Window {
public:
    // A hidden panel window in the view with what the source holds. Null when the panel file cannot be used:
    // then the error says why; there is none when the progress tells that the loading was cancelled. The
    // warning is for what goes wrong while it is edited.
    static std::unique_ptr<PanelWindow> Open(HWND view, const PanelSource& source, LoadProgress& progress,
                                             const PanelEdits::Warning& warn, std::string& error);
    ~PanelWindow() override;

    HOSTINFO* Root() const { return root_; }
    // Those of its file, and of what was pasted, that could not be read and are kept.
    std::vector<UnreadLine> Unread() const { return UnreadLines(root_); }
    // Devices that are missing because of their file or its profiles, in words; empty for none.
    const std::string& DeviceFault() const { return deviceFault_; }
    // Its devices are those of that file from now on, as far as it can be read: DeviceFault says otherwise.
    void ReloadDevices(const std::string& file);
    // That its devices are from; empty for none.
    const std::string& DeviceFile() const { return deviceFile_; }
    bool HasDeviceFile() const { return !deviceFile_.empty(); }
    // The device file that the panel itself names; empty when it does not.
    std::string NamedDevices() const { return RootText("devices"); }
    // Whether it names another one than when devices were last loaded.
    bool HasOtherNamedDevices() const { return NamedDevices() != namedDevices_; }
    std::list<std::pair<std::string, DEVICESTATUS>> Devices() const { return a_ListDevices(root_); }
    // The device file is named like that in the file.
    bool Save(const std::string& file, const std::string& namedDevices, std::string& error);
    bool IsChanged() const;
    // Whether the user has edited it since it was saved.
    bool IsEdited() const { return editor_->Edits().UnsavedChanges() > 0; }
    bool HasLock() const;
    void Tick();
    // The edit mode of this panel.
    Editor& Edit() { return *editor_; }

    std::string Title() const;
    // As its file says ("width,height"), or empty.
    std::string StatedSize() const;
    // As stated, else what holds all controls.
    SIZE Size() const;
    int ControlCount() const;
    // Whether it has controls for outside channels (network, MIDI, telephone, wave), which two panels cannot
    // share.
    bool HasInterfaceControls() const;

    // Name and value of the control under the mouse, else of the one with the focus; empty when there is
    // none. While the panel is edited, what is selected.
    std::string StatusText();

    // The control that had the focus when the program was last left.
    void RememberFocus();
    void RestoreFocus();
    // Whether the message moves the focus: a press of the tab key that its window does not want.
    static bool IsTab(const MSG& message);
    // To the next or previous control; returns it, or null.
    HWND MoveFocus(bool backwards);

private:
    PanelWindow() = default;
    bool Load(const PanelSource& source, LoadProgress& progress, const PanelEdits::Warning& warn,
              std::string& error);
    void NoteDevices(int created, const std::string& file);
    bool HasFunctions() const;
    bool LoadControls(const PanelSource& source, std::string& error);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    std::string RootText(const char* keyword) const;
    // The control that a window of this panel belongs to, or null.
    HOSTINFO* ControlOf(HWND window) const;
    HWND WindowAt(POINT point) const;
    HWND HoveredWindow();

    HOSTINFO* root_ = nullptr;
    std::string panelFile_;
    std::string deviceFile_;
    std::string namedDevices_;
    std::string deviceFault_;
    std::unique_ptr<Editor> editor_; // there from Open on
    HWND hovered_ = nullptr;
    POINT cursor_{-1, -1}; // where it was when the hovered window was found
    HWND lastFocus_ = nullptr;
};
