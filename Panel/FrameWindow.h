#pragma once

#include "Panel/FrameSize.h"
#include "Panel/NoticeBar.h"
#include "Panel/OldFile.h"
#include "Panel/PanelView.h"
#include "Panel/PanelWindow.h"
#include "Panel/StatusBar.h"
#include "Panel/bindings/BindingsWindow.h"
#include "Panel/bindings/ReplaceWindow.h"
#include "Panel/common/CommandLine.h"
#include "Panel/common/Report.h"
#include "Panel/common/Window.h"
#include "Panel/devices/DevicesWindow.h"
#include "Panel/editing/ObjectPane.h"
#include "Panel/editing/Palette.h"
#include "Panel/editing/Toolbar.h"
#include "Panel/help/HelpKey.h"
#include "Panel/lists/CheckWindow.h"
#include "Panel/lists/SnapshotWindow.h"
#include "Panel/lists/LayersWindow.h"
#include "Panel/lists/TraceLog.h"
#include "Panel/lists/TraceWindow.h"
#include "Panel/lists/UnreadWindow.h"
#include "Panel/properties/PropertyPane.h"
#include "Panel/recovery/Recovery.h"
#include "Panel/start/RecentFiles.h"
#include "Panel/start/StartScreen.h"
#include "Panel/start/WindowPlace.h"
#include "base/Gdi.h"
#include "base/Handles.h"
#include "logic/security/PinLock.h"

#include <memory>
#include <string>
#include <vector>

class ControlLibrary;

// The main window: menu, toolbar, palette, the running panel, status bar. Owns the panel and its file name.
class FrameWindow : public Window {
public:
    FrameWindow(const CommandLine& commandLine, const Reporter& reporter, const ControlLibrary& library,
                TraceLog& log);
    ~FrameWindow() override;

    bool Create(std::string& error);
    // Replaces the panel by that of the file, or by an empty one without a file. On failure the running panel
    // stays; the error is empty when the user has cancelled the loading. At the start an empty panel takes
    // the place of a cancelled one.
    bool OpenPanel(const std::string& file, std::string& error);
    // Offers panels that were not saved when a program ended otherwise than it should; true when one was
    // opened.
    bool Recover();
    // What is wrong with the panel, once its devices had time to answer. Without a window.
    std::list<PANELFINDING> Check();
    // Shows the window and starts the time of the panel.
    void Start(int showCommand);
    // Serves accelerators and the tab key: true when the message was one of them.
    bool TranslateKey(MSG& message);

private:
    static constexpr UINT SHOW_WARNINGS = WM_APP; // posted to itself

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int command);
    void OnEditCommand(int command);
    void OnTick();
    void UpdateMenu() const;

    // What there is while the panel is operated (FrameOperating.cpp).
    void SetEditing(bool editing);
    // Whether there is nothing but the panel.
    bool IsOnlyOperated() const { return commandLine_.operate && !editing_; }
    bool MayEdit();
    void LimitPanel();
    void CloseWindowsBeside() const;
    void ShowParts();

    // FrameLayout.cpp.
    void OnSize();
    void ArrangeLeft(const RECT& column);
    void ResizeObjects(int by);
    void ShowProperties(bool shown);
    void GoToProperties();
    void GoToPanelProperties();
    void FitToPanel();
    // What is docked at the sides of the view.
    int LeftWidth() const { return editing_ ? Palette::WIDTH : 0; }
    int RightWidth() const { return editing_ && properties_.IsShown() ? properties_.Width() : 0; }
    int SidesWidth() const { return LeftWidth() + RightWidth(); }
    // What works on the panel that is edited, and nothing of it while none is.
    void AttachEditor(bool editing);

    bool OpenSource(const PanelSource& source, std::string& error);
    std::unique_ptr<PanelWindow> Load(const PanelSource& source, bool mayCancel, std::string& error);
    // Lets go of the running panel; null for no panel while another is opened.
    void Replace(std::unique_ptr<PanelWindow> panel, const std::string& file);
    void New();
    void Open();
    bool Save();
    bool SaveAs();
    bool SaveTo(const std::string& file);
    // FrameExport.cpp.
    void Export(int command);
    bool ExportPicture(const std::string& file) const;
    bool ExportList(const std::string& file) const;
    int WriteFiles() const;
    // FrameStart.cpp.
    StartScreen::Actions StartActions();
    void ShowStart(bool shown);
    void GoToStart();
    void OpenListed(const std::string& file);
    void RememberOpened() const;
    void KeepPicture(bool isLast) const;
    bool RestorePlace();
    void RestoreSize();
    void KeepPlace();
    // Whether the panel has changes to be saved. What is only operated is not to be changed in its file.
    bool IsUnsaved() const { return commandLine_.operate ? panel_->IsEdited() : panel_->IsChanged(); }
    bool MayDiscard();
    // Help (FrameHelp.cpp).
    std::string HelpPageFor(HWND window) const;
    void ShowHelp(HWND window);
    void OpenHelp(const std::string& page);
    void About();
    // FrameNotices.cpp.
    void WarnLater(const std::string& text);
    void ShowWarnings();
    void ShowNotice();
    // Shows the user a control; what stands in the way, in words.
    std::string GoTo(HOSTINFO* control);
    // The same of what the check found, by its full name; of a device what of it is bound and not live.
    void GoToFinding(const std::string& object);

    // Title, status and panel size follow what changed.
    void Refresh();
    std::string DocumentName() const;
    // FrameDevices.cpp. The file with the devices of a panel file that names it like that; empty for none.
    std::string DeviceFileFor(const std::string& file, const std::string& name) const;
    std::string DeviceNameFor(const std::string& file) const;
    bool MayUseDevices() const;
    DevicesWindow::Actions DevicesActions();
    bool UseDevices(const std::string& name, const std::string& file);
    void LoadDevices(const std::string& file);
    void FollowDevices();
    void Finish();

    const CommandLine& commandLine_;
    const Reporter& reporter_;
    const ControlLibrary& library_;
    TraceLog& log_;
    Font font_;
    HACCEL keys_ = nullptr;
    HACCEL editKeys_ = nullptr;
    HACCEL operateKeys_ = nullptr;
    Menu menu_; // while the window does without it
    FullScreen fullScreen_;
    logic::PinTries pinTries_;
    Toolbar toolbar_;
    Palette palette_;
    ObjectPane objects_;
    int objectsHeight_ = 0; // 0: half of the column
    PropertyPane properties_;
    PanelView view_;
    StatusBar status_;
    TraceWindow trace_;
    Recovery recovery_;
    std::vector<std::string> warnings_; // to be shown when nothing else is going on
    NoticeBar notice_;
    UnreadWindow unread_;
    SnapshotWindow snapshots_;
    BindingsWindow bindings_;
    ReplaceWindow replace_;
    CheckWindow check_;
    LayersWindow layers_;
    DevicesWindow devices_;
    const std::string settings_; // folder; empty for none
    RecentFiles recent_;
    StartScreen start_;
    WindowPlace kept_;
    std::unique_ptr<PanelWindow> panel_; // null only while one is replaced
    std::string file_;                   // of the panel; empty while it has none
    OldFile oldFile_;
    std::string title_;
    std::string statedSize_;
    int objectCount_ = -1; // in this process when the controls were counted
    HelpKey helpKey_{[this](HWND window) { ShowHelp(window); }}; // in dialogs
    bool helping_ = false;
    bool ticking_ = false;
    bool editing_ = false;
    ULONGLONG nextRefresh_ = 0;
    ULONGLONG end_ = 0; // when an unattended run ends
};
