#include "Panel/FrameWindow.h"

#include "Panel/ControlLibrary.h"
#include "Panel/FileDialogs.h"
#include "Panel/Paths.h"
#include "Panel/Screenshot.h"
#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"

#include <algorithm>

namespace {

constexpr UINT_PTR TICK_TIMER = 1;
constexpr UINT TICK = 20;                // milliseconds
constexpr ULONGLONG REFRESH_AFTER = 200; // milliseconds
constexpr POINT SCREENSHOT_PLACE{40, 40};
constexpr DWORD STYLE = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

} // namespace

FrameWindow::FrameWindow(const CommandLine& commandLine, const Reporter& reporter,
                         const ControlLibrary& library, TraceLog& log)
    : commandLine_(commandLine),
      reporter_(reporter),
      library_(library),
      log_(log),
      font_(CreateSystemFont()),
      trace_(log) {}

FrameWindow::~FrameWindow() {
    KillTimer(Handle(), TICK_TIMER);
    ShowWindow(Handle(), SW_HIDE);
    panel_.reset(); // messages that come meanwhile find none
}

bool FrameWindow::Create(std::string& error) {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    const bool placed = !commandLine_.screenshotFile.empty();
    const RECT place{placed ? SCREENSHOT_PLACE.x : CW_USEDEFAULT, placed ? SCREENSHOT_PLACE.y : CW_USEDEFAULT,
                     640, 480};
    if (Window::Create("PanelFrame", "Panel", STYLE, WS_EX_CONTROLPARENT, place, nullptr,
                       LoadMenuA(instance, MAKEINTRESOURCEA(IDM_FRAME)), nullptr) &&
        view_.Create(Handle()) && status_.Create(Handle(), font_.get()) &&
        trace_.Create(Handle(), font_.get())) {
        keys_ = LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDA_FRAME));
        return true;
    }
    error = "cannot make the main window: " + ErrorText(GetLastError());
    return false;
}

void FrameWindow::Start(int showCommand) {
    // A picture shows the window whatever the program that started this one asked for.
    ShowWindow(Handle(), commandLine_.screenshotFile.empty() ? showCommand : SW_SHOWNORMAL);
    UpdateWindow(Handle());
    if (commandLine_.exitAfter) {
        end_ = GetTickCount64() + *commandLine_.exitAfter;
    }
    SetTimer(Handle(), TICK_TIMER, TICK, nullptr);
}

// Keys.

bool FrameWindow::TranslateKey(MSG& message) {
    if (trace_.TranslateKey(message)) {
        return true;
    }
    if (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd)) {
        return false;
    }
    if (TranslateAcceleratorA(Handle(), keys_, &message)) {
        return true;
    }
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0) {
        return false;
    }
    const LRESULT wanted =
        SendMessageA(message.hwnd, WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&message));
    if (wanted & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) {
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
        CheckMenuItem(GetMenu(Handle()), CMD_VIEW_TRACE, trace_.IsShown() ? MF_CHECKED : MF_UNCHECKED);
        return 0;
    case WM_NOTIFY:
        if (status_.IsMessageClick(*reinterpret_cast<const NMHDR*>(lParam))) {
            trace_.Show(true);
        }
        return 0;
    case WM_SIZE:
        OnSize();
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE && panel_) {
            panel_->RememberFocus();
        }
        break; // which gives the focus to this window when it becomes active
    case WM_SETFOCUS:
        if (panel_) {
            panel_->RestoreFocus();
        }
        return 0;
    case WM_QUERYENDSESSION:
        return MayDiscard();
    case WM_CLOSE:
        if (MayDiscard()) {
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
    if (ticking_) {
        // A control has opened a message box out of its timer: its panel must not go meanwhile.
        MessageBeep(MB_OK);
        return;
    }
    switch (command) {
    case CMD_NEW:
        return New();
    case CMD_OPEN:
        return Open();
    case CMD_SAVE:
        Save();
        return;
    case CMD_SAVE_AS:
        SaveAs();
        return;
    case CMD_EXIT:
        SendMessageA(Handle(), WM_CLOSE, 0, 0);
        return;
    case CMD_VIEW_TRACE:
        return trace_.Show(!trace_.IsShown());
    case CMD_ABOUT:
        return About();
    default:
        return;
    }
}

void FrameWindow::OnTick() {
    if (!ticking_) {
        ticking_ = true;
        panel_->Tick();
        ticking_ = false;
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= nextRefresh_) {
        nextRefresh_ = now + REFRESH_AFTER;
        Refresh();
    }
    if (end_ != 0 && now >= end_) {
        end_ = 0;
        Finish();
    }
}

void FrameWindow::OnSize() {
    status_.Resize();
    RECT client;
    GetClientRect(Handle(), &client);
    const int height = std::max(0L, client.bottom - status_.Height());
    SetWindowPos(view_.Handle(), nullptr, 0, 0, client.right, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

// The panel and its file.

bool FrameWindow::OpenPanel(const std::string& file, std::string& error) {
    const std::string devices = DeviceFileFor(file);
    const int messages = log_.MessageCount();
    log_.SetMessageCount(0);
    auto opened = PanelWindow::Open(view_.Handle(), file, devices, error);
    if (!opened) {
        log_.SetMessageCount(messages);
        return false;
    }
    if (panel_ && panel_->HasInterfaceControls() && opened->HasInterfaceControls()) {
        // The new panel could be read, but found its ports taken by the running one: it starts again without
        // that.
        opened.reset();
        view_.SetPanel(nullptr, {});
        panel_.reset();
        log_.SetMessageCount(0);
        opened = PanelWindow::Open(view_.Handle(), file, devices, error);
        if (!opened) { // the file changed this very moment
            std::string ignored;
            opened = PanelWindow::Open(view_.Handle(), "", "", ignored);
        }
    }
    view_.SetPanel(opened->Handle(), opened->Size());
    panel_ = std::move(opened);
    file_ = file;
    objects_ = -1;
    statedSize_ = panel_->StatedSize();
    FitToPanel();
    Refresh();
    if (GetActiveWindow() == Handle()) {
        panel_->RestoreFocus();
    }
    return true;
}

std::string FrameWindow::DeviceFileFor(const std::string& file) const {
    if (!commandLine_.deviceFile.empty()) {
        return commandLine_.deviceFile; // the network stays the same whichever panel is opened
    }
    const std::string beside = file.empty() ? "" : WithExtension(file, ".devices");
    return FileExists(beside) ? beside : "";
}

void FrameWindow::New() {
    std::string error;
    if (MayDiscard() && !OpenPanel("", error)) {
        reporter_.Warn(Handle(), error);
    }
}

void FrameWindow::Open() {
    if (!MayDiscard()) {
        return;
    }
    const std::string file = AskFileToOpen(Handle());
    std::string error;
    if (!file.empty() && !OpenPanel(file, error)) {
        reporter_.Warn(Handle(), error);
    }
}

bool FrameWindow::Save() {
    return file_.empty() ? SaveAs() : SaveTo(file_);
}

bool FrameWindow::SaveAs() {
    const std::string file = AskFileToSave(Handle(), file_);
    return !file.empty() && SaveTo(file);
}

bool FrameWindow::SaveTo(const std::string& file) {
    std::string error;
    if (!panel_->Save(file, error)) {
        reporter_.Warn(Handle(), error);
        return false;
    }
    file_ = file;
    Refresh();
    return true;
}

bool FrameWindow::MayDiscard() {
    if (!panel_ || !panel_->IsChanged()) {
        return true;
    }
    switch (reporter_.Ask(Handle(), "Save the changes to " + DocumentName() + "?")) {
    case IDYES:
        return Save();
    case IDNO:
        return true;
    default:
        return false;
    }
}

void FrameWindow::About() {
    std::string text = "Panel " PANEL_VERSION_TEXT "\n\nOpens, operates and saves control panels.";
    const std::string stamp = library_.BuildStamp();
    if (!stamp.empty()) {
        text += "\n\nControl library: " + stamp;
    }
    MessageBoxA(Handle(), text.c_str(), "About Panel", MB_OK | MB_ICONINFORMATION);
}

// What is shown.

std::string FrameWindow::DocumentName() const {
    return file_.empty() ? "Untitled" : FileName(file_);
}

void FrameWindow::Refresh() {
    const std::string panelTitle = panel_->Title();
    const std::string title =
        (panelTitle.empty() ? DocumentName() : panelTitle) + (panel_->IsChanged() ? " *" : "") + " - Panel";
    if (title != title_) {
        title_ = title;
        SetWindowTextA(Handle(), title.c_str());
    }
    if (a_HostinfoCount() != objects_) {
        objects_ = a_HostinfoCount();
        status_.SetControlCount(panel_->ControlCount());
    }
    if (panel_->StatedSize() != statedSize_) {
        statedSize_ = panel_->StatedSize();
        view_.SetPanelSize(panel_->Size());
        FitToPanel();
    }
    status_.SetText(panel_->StatusText());
    status_.SetMessageCount(log_.MessageCount());
    trace_.Update();
}

// Sizes the frame so that it shows all of the panel, as far as the screen allows.
void FrameWindow::FitToPanel() {
    if (IsZoomed(Handle()) || IsIconic(Handle())) {
        return;
    }
    const RECT work = WorkArea(Handle());
    RECT border{};
    AdjustWindowRectEx(&border, STYLE, TRUE, WS_EX_CONTROLPARENT);
    border.bottom += status_.Height();
    const SIZE limits{work.right - work.left - (border.right - border.left),
                      work.bottom - work.top - (border.bottom - border.top)};
    const SIZE view = PanelView::BestSize(view_.PanelSize(), limits);
    SIZE frame{view.cx + border.right - border.left, view.cy + border.bottom - border.top};

    RECT place;
    GetWindowRect(Handle(), &place);
    const POINT corner{std::max(work.left, std::min(place.left, work.right - frame.cx)),
                       std::max(work.top, std::min(place.top, work.bottom - frame.cy))};
    SetWindowPos(Handle(), nullptr, corner.x, corner.y, frame.cx, frame.cy, SWP_NOZORDER | SWP_NOACTIVATE);

    // A narrow window needs more than one line for its menu.
    RECT client;
    GetClientRect(Handle(), &client);
    const LONG missing = view.cy + status_.Height() - client.bottom;
    if (missing > 0) {
        frame.cy = std::min(frame.cy + missing, work.bottom - work.top);
        SetWindowPos(Handle(), nullptr, 0, 0, frame.cx, frame.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

// Ends an unattended run.
void FrameWindow::Finish() {
    int exitCode = 0;
    if (!commandLine_.screenshotFile.empty() && !SaveScreenshot(Handle(), commandLine_.screenshotFile)) {
        reporter_.Fail("cannot write the picture " + commandLine_.screenshotFile);
        exitCode = 2;
    }
    PostQuitMessage(exitCode);
}
