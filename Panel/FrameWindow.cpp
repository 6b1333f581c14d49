#include "Panel/FrameWindow.h"

#include "Panel/ControlLibrary.h"
#include "Panel/common/FileDialogs.h"
#include "Panel/common/CommandText.h"
#include "Panel/common/Paths.h"
#include "Panel/help/HelpPages.h"
#include "Panel/operating/PinDialogs.h"
#include "Panel/resource.h"
#include "Panel/common/Settings.h"
#include "Panel/theme/Theme.h"
#include "Panelhost/Hostinfo.h"

namespace {

constexpr UINT_PTR TICK_TIMER = 1;
constexpr UINT TICK = 20;                // milliseconds
constexpr ULONGLONG REFRESH_AFTER = 200; // milliseconds
constexpr ULONGLONG CHECK_PATIENCE = 5000;
constexpr POINT SCREENSHOT_PLACE{40, 40};
constexpr DWORD STYLE = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

StatusBar::Devices DevicesOf(const PanelWindow& panel) {
    StatusBar::Devices devices;
    for (const auto& [name, status] : panel.Devices()) {
        const std::string why = a_WhyNotLive(status);
        ++devices.count;
        devices.notLive += why.empty() ? 0 : 1;
        devices.states += (devices.count == 1 ? "" : "\r\n") + name + ": " + (why.empty() ? "live" : why);
    }
    return devices;
}

// One beside the panel, in which Delete and the like are keys of the text.
bool IsTextField(HWND window) {
    char className[16] = "";
    GetClassNameA(window, className, sizeof className);
    return a_FromWindow(window) == nullptr && a_FromWindow(GetParent(window)) == nullptr &&
           _stricmp(className, "Edit") == 0;
}

bool IsEditCommand(int command) {
    return (command >= CMD_EDIT_FIRST && command <= CMD_EDIT_LAST) || BuildCommands::Has(command) ||
           (command >= CMD_SAME_WIDTH && command <= CMD_SAME_SIZE) || KeyCommands::Has(command);
}

} // namespace

FrameWindow::FrameWindow(const CommandLine& commandLine, const Reporter& reporter,
                         const ControlLibrary& library, TraceLog& log)
    : commandLine_(commandLine),
      reporter_(reporter),
      library_(library),
      log_(log),
      font_(CreateSystemFont()),
      trace_(log),
      recovery_(commandLine),
      snapshots_(reporter),
      bindings_(
          {.goTo = [this](HOSTINFO* control) { return GoTo(control); },
           .askFile = [this](HWND owner) { return AskFileToExport(owner, WithExtension(file_, ".txt")); },
           .warn = [this](const std::string& text) { reporter_.Warn(Handle(), text); }}),
      check_([this](const std::string& object) { GoToFinding(object); }),
      devices_(reporter, DevicesActions()),
      settings_(SettingsFolder(commandLine)),
      recent_(settings_) {}

FrameWindow::~FrameWindow() {
    KillTimer(Handle(), TICK_TIMER);
    ShowWindow(Handle(), SW_HIDE);
    recovery_.End();
    snapshots_.SetPanel(nullptr);
    bindings_.SetRoot(nullptr);
    AttachEditor(false);
    panel_.reset(); // messages that come meanwhile find none
}

bool FrameWindow::Create(std::string& error) {
    RestoreTheme(commandLine_);
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    const bool placed = !commandLine_.screenshotFile.empty();
    const RECT place{placed ? SCREENSHOT_PLACE.x : CW_USEDEFAULT, placed ? SCREENSHOT_PLACE.y : CW_USEDEFAULT,
                     640, 480};
    if (Window::Create("PanelFrame", "Panel", STYLE, WS_EX_CONTROLPARENT, place, nullptr,
                       LoadMenuA(instance, MAKEINTRESOURCEA(IDM_FRAME)), nullptr) &&
        toolbar_.Create(Handle()) && palette_.Create(Handle(), font_.get()) &&
        objects_.Create(Handle(), font_.get(), [this](int by) { ResizeObjects(by); }) &&
        properties_.Create(Handle(), font_.get()) && view_.Create(Handle()) &&
        status_.Create(Handle(), font_.get()) && trace_.Create(Handle(), font_.get()) &&
        notice_.Create(Handle(), font_.get()) && unread_.Create(Handle(), font_.get()) &&
        snapshots_.Create(Handle(), font_.get()) && bindings_.Create(Handle(), font_.get()) &&
        replace_.Create(Handle(), font_.get()) && check_.Create(Handle(), font_.get()) &&
        layers_.Create(Handle(), font_.get()) && devices_.Create(Handle(), font_.get()) &&
        start_.Create(Handle(), font_.get(), recent_, StartActions())) {
        keys_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDA_FRAME));
        editKeys_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDA_EDIT));
        operateKeys_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDA_OPERATE));
        ShowParts();
        FollowSystemTheme();
        OverrideTheme(commandLine_.theme);
        RestorePlace();
        return true;
    }
    error = "cannot make the main window: " + ErrorText(GetLastError());
    return false;
}

void FrameWindow::Start(int showCommand) {
    ShowStart(commandLine_.panelFile.empty() && file_.empty() && !IsUnsaved() && !commandLine_.edit);
    RestoreSize();
    if (kept_.isMaximized && (showCommand == SW_SHOWNORMAL || showCommand == SW_SHOWDEFAULT)) {
        showCommand = SW_SHOWMAXIMIZED;
    }
    // A picture shows the window whatever the program that started this one asked for.
    ShowWindow(Handle(), IsHidden(commandLine_)                ? SW_SHOWNOACTIVATE
                         : commandLine_.screenshotFile.empty() ? showCommand
                                                               : SW_SHOWNORMAL);
    SetEditing(commandLine_.edit);
    UpdateWindow(Handle());
    if (commandLine_.exitAfter) {
        end_ = GetTickCount64() + *commandLine_.exitAfter;
    }
    SetTimer(Handle(), TICK_TIMER, TICK, nullptr);
}

std::list<PANELFINDING> FrameWindow::Check() {
    const ULONGLONG end = GetTickCount64() + CHECK_PATIENCE;
    do {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, TICK, QS_ALLINPUT);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageA(&message);
        }
        panel_->Tick();
    } while (!a_HasAnswers(panel_->Root()) && GetTickCount64() < end);
    return a_CheckPanel(panel_->Root());
}

// Keys.

bool FrameWindow::TranslateKey(MSG& message) {
    if (HelpKey::Is(message)) {
        ShowHelp(message.hwnd);
        return true;
    }
    if (trace_.TranslateKey(message) || unread_.TranslateKey(message) || snapshots_.TranslateKey(message) ||
        bindings_.TranslateKey(message) || replace_.TranslateKey(message) || check_.TranslateKey(message) ||
        layers_.TranslateKey(message) || devices_.TranslateKey(message)) {
        return true;
    }
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) {
        return false;
    }
    if (editing_ && objects_.TranslateKey(message)) {
        return true;
    }
    if (TranslateAcceleratorA(Handle(), IsOnlyOperated() ? operateKeys_ : keys_, &message)) {
        return true;
    }
    if (start_.TranslateKey(message)) {
        return true;
    }
    if (editing_ && properties_.KeepsKey(message)) {
        return false;
    }
    if (editing_ && !IsTextField(message.hwnd) && TranslateAcceleratorA(Handle(), editKeys_, &message)) {
        return true;
    }
    if (editing_) {
        return panel_ && panel_->Edit().Translate(message);
    }
    if (!panel_ || !PanelWindow::IsTab(message)) {
        return false;
    }
    if (const HWND focused = panel_->MoveFocus(GetKeyState(VK_SHIFT) < 0)) {
        view_.MakeVisible(focused);
    }
    return true;
}

// Messages.

LRESULT FrameWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_TIMER:
        if (wParam == TICK_TIMER) {
            OnTick();
        }
        return 0;
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
        return 0;
    case WM_INITMENUPOPUP:
        UpdateMenu();
        return 0;
    case WM_SYSCOMMAND:
        if ((wParam & 0xFFF0) == SC_KEYMENU && lParam == 0 && GetCapture()) {
            return 0; // Alt belongs to what is being dragged
        }
        break;
    case WM_MENUSELECT:
        status_.SetHint(CommandStatus((HIWORD(wParam) & MF_POPUP) != 0 ? 0 : LOWORD(wParam)));
        return 0;
    case WM_NOTIFY:
        if (const LRESULT answer = toolbar_.Answer(*reinterpret_cast<NMHDR*>(lParam))) {
            return answer;
        }
        if (const auto command = toolbar_.PointedAt(*reinterpret_cast<const NMHDR*>(lParam))) {
            status_.SetHint(CommandStatus(*command));
        }
        if (!IsOnlyOperated() && status_.IsMessageClick(*reinterpret_cast<const NMHDR*>(lParam))) {
            trace_.Show(true);
        } else if (!IsOnlyOperated() && status_.IsDeviceClick(*reinterpret_cast<const NMHDR*>(lParam))) {
            bindings_.Open(true);
        }
        return 0;
    case WM_SIZE:
        OnSize();
        return 0;
    case WM_SETTINGCHANGE:
        if (lParam != 0 && lstrcmpA(reinterpret_cast<const char*>(lParam), "ImmersiveColorSet") == 0) {
            FollowSystemTheme();
        }
        break;
    case WM_SYSCOLORCHANGE:
        FollowSystemTheme();
        break;
    case THEME_CHANGED:
        toolbar_.FollowTheme();
        return 0;
    case WM_DISPLAYCHANGE:
        fullScreen_.Follow(Handle());
        break;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE && panel_) {
            panel_->RememberFocus();
        }
        break; // which gives the focus to this window when it becomes active
    case WM_SETFOCUS:
        if (start_.IsShown()) {
            start_.TakeFocus();
        } else if (panel_) {
            panel_->RestoreFocus();
        }
        return 0;
    case SHOW_WARNINGS:
        ShowWarnings();
        return 0;
    case WM_QUERYENDSESSION:
        return MayDiscard();
    case WM_ENDSESSION:
        if (wParam != FALSE) {
            recovery_.End(); // the program may be ended without another message
        }
        return 0;
    case WM_CLOSE:
        if (MayDiscard()) {
            KeepPicture(true);
            KeepPlace();
            PostQuitMessage(0); // the window goes in good order once the message loop has ended
        }
        return 0;
    case WM_DESTROY: // by somebody else
        PostQuitMessage(0);
        return 0;
    default:
        break;
    }
    return Window::OnMessage(message, wParam, lParam);
}

void FrameWindow::OnCommand(int command) {
    if (ticking_ || !panel_) {
        // A control has opened a message box out of its timer: its panel must not go meanwhile.
        MessageBeep(MB_OK);
        return;
    }
    if (IsOnlyOperated() && command != CMD_EDIT_MODE && command != CMD_CLOSE_NOTICE && command != CMD_EXIT) {
        return;
    }
    properties_.Finish();
    status_.SetHint("");
    if (IsEditCommand(command)) {
        return OnEditCommand(command);
    }
    switch (command) {
    case CMD_NEW:
        return New();
    case CMD_OPEN:
        return Open();
    case CMD_START_PAGE:
        return GoToStart();
    case CMD_SAVE:
        Save();
        return;
    case CMD_SAVE_AS:
        SaveAs();
        return;
    case CMD_EXPORT_PICTURE:
    case CMD_EXPORT_LIST:
        return Export(command);
    case CMD_PIN:
        if (editing_) {
            AskNewPin(Handle(), panel_->Edit().Edits().Root());
            Refresh();
        }
        return;
    case CMD_DEVICES:
        return MayUseDevices() ? devices_.Open() : void();
    case CMD_SNAPSHOTS:
        return snapshots_.ShowNow();
    case CMD_CHECK:
        check_.SetFindings(a_CheckPanel(panel_->Root()));
        return check_.Show(true);
    case CMD_EXIT:
        SendMessageA(Handle(), WM_CLOSE, 0, 0);
        return;
    case CMD_VIEW_PROPERTIES:
        return ShowProperties(!properties_.IsShown());
    case CMD_GO_TO_PROPERTIES:
        return GoToProperties();
    case CMD_PANEL_PROPERTIES:
        return GoToPanelProperties();
    case CMD_ADD_CONTROL:
        return editing_ ? palette_.TakeFocus() : void();
    case CMD_VIEW_TRACE:
        return trace_.Show(!trace_.IsShown());
    case CMD_VIEW_UNREAD:
        unread_.SetLines(panel_->Unread());
        return unread_.Show(true);
    case CMD_VIEW_BINDINGS:
        return bindings_.IsShown() ? bindings_.Show(false) : bindings_.Open(false);
    case CMD_REPLACE_BINDINGS:
        return editing_ ? replace_.Open() : void();
    case CMD_VIEW_LAYERS:
        return layers_.Show(editing_ && !layers_.IsShown());
    case CMD_THEME_SYSTEM:
    case CMD_THEME_LIGHT:
    case CMD_THEME_DARK:
        return ChooseTheme(static_cast<ThemeChoice>(command - CMD_THEME_SYSTEM));
    case CMD_CLOSE_NOTICE:
        notice_.SetText("");
        OnSize();
        return panel_->RestoreFocus();
    case CMD_HELP:
        return ShowHelp(GetFocus());
    case CMD_HELP_CONTENTS:
        return OpenHelp(PAGE_CONTENTS);
    case CMD_HELP_KEYS:
        return OpenHelp(PAGE_KEYS);
    case CMD_ABOUT:
        return About();
    default:
        return;
    }
}

void FrameWindow::OnEditCommand(int command) {
    if (command == CMD_EDIT_MODE) {
        SetEditing(!editing_);
    } else {
        panel_->Edit().Execute(command);
    }
    Refresh();
    properties_.Update();
}

void FrameWindow::AttachEditor(bool editing) {
    Editor* editor = editing ? &panel_->Edit() : nullptr;
    palette_.SetEditor(editor);
    objects_.SetEditor(editor);
    properties_.SetEditor(editor);
    replace_.SetEditor(editor);
    layers_.SetEditing(editing ? &panel_->Edit().Layers() : nullptr);
}

void FrameWindow::UpdateMenu() const {
    const HMENU menu = GetMenu(Handle());
    CheckMenuRadioItem(menu, CMD_THEME_SYSTEM, CMD_THEME_DARK,
                       CMD_THEME_SYSTEM + static_cast<UINT>(ChosenTheme()), MF_BYCOMMAND);
    CheckMenuItem(menu, CMD_VIEW_PROPERTIES, properties_.IsShown() ? MF_CHECKED : MF_UNCHECKED);
    for (const UINT command : {CMD_GO_TO_PROPERTIES, CMD_PANEL_PROPERTIES, CMD_ADD_CONTROL}) {
        EnableMenuItem(menu, command, editing_ ? MF_ENABLED : MF_GRAYED);
    }
    CheckMenuItem(menu, CMD_VIEW_TRACE, trace_.IsShown() ? MF_CHECKED : MF_UNCHECKED);
    CheckMenuItem(menu, CMD_VIEW_BINDINGS, bindings_.IsShown() ? MF_CHECKED : MF_UNCHECKED);
    EnableMenuItem(menu, CMD_REPLACE_BINDINGS, editing_ ? MF_ENABLED : MF_GRAYED);
    CheckMenuItem(menu, CMD_VIEW_LAYERS, layers_.IsShown() ? MF_CHECKED : MF_UNCHECKED);
    EnableMenuItem(menu, CMD_VIEW_LAYERS, editing_ ? MF_ENABLED : MF_GRAYED);
    if (!panel_) {
        return;
    }
    EnableMenuItem(menu, CMD_DEVICES, MayUseDevices() ? MF_ENABLED : MF_GRAYED);
    EnableMenuItem(menu, CMD_PIN, editing_ ? MF_ENABLED : MF_GRAYED);
    EnableMenuItem(menu, CMD_VIEW_UNREAD, panel_->Unread().empty() ? MF_GRAYED : MF_ENABLED);
    const Editor& editor = panel_->Edit();
    for (int command = CMD_EDIT_FIRST; command <= CMD_KEYS_LAST; ++command) {
        if (!IsEditCommand(command)) {
            continue;
        }
        const auto item = static_cast<UINT>(command);
        if (const std::string label = editor.LabelOf(command); !label.empty()) {
            ModifyMenuA(menu, item, MF_BYCOMMAND | MF_STRING, item, label.c_str());
        }
        EnableMenuItem(menu, item, editor.IsEnabled(command) ? MF_ENABLED : MF_GRAYED);
        CheckMenuItem(menu, item, editor.IsChecked(command) ? MF_CHECKED : MF_UNCHECKED);
    }
}

void FrameWindow::OnTick() {
    if (!ticking_ && panel_) {
        ticking_ = true;
        panel_->Tick();
        ticking_ = false;
        panel_->Edit().Tick();
        if (!panel_->Edit().IsDragging()) {
            recovery_.Tick(panel_->Edit().Edits(), file_);
        }
    }
    start_.Tick();
    if (editing_ && panel_) {
        status_.SetText(panel_->StatusText()); // it follows the mouse
        properties_.Update();
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= nextRefresh_ && panel_) {
        nextRefresh_ = now + REFRESH_AFTER;
        Refresh();
    }
    if (end_ != 0 && now >= end_) {
        end_ = 0;
        Finish();
    }
}

// What is shown.

void FrameWindow::Refresh() {
    FollowDevices();
    const std::string panelTitle = panel_->Title();
    const std::string title = start_.IsShown() ? "Panel"
                                               : (panelTitle.empty() ? DocumentName() : panelTitle) +
                                                     (IsUnsaved() ? " *" : "") + " - Panel";
    if (title != title_) {
        title_ = title;
        SetWindowTextA(Handle(), title.c_str());
    }
    if (a_HostinfoCount() != objectCount_) {
        objectCount_ = a_HostinfoCount();
        status_.SetControlCount(panel_->ControlCount());
    }
    if (panel_->StatedSize() != statedSize_) {
        statedSize_ = panel_->StatedSize();
        view_.SetPanelSize(panel_->Size());
        FitToPanel();
    }
    status_.SetText(panel_->StatusText());
    status_.SetDevices(DevicesOf(*panel_));
    status_.SetMessageCount(log_.MessageCount());
    toolbar_.Update(panel_->Edit());
    objects_.Update();
    trace_.Update();
    snapshots_.Tick();
    layers_.Update();
    devices_.FollowStates();
}

// Ends an unattended run.
void FrameWindow::Finish() {
    PostQuitMessage(WriteFiles());
}
