#include "tests/windows/PanelProgram.h"

#include "Panel/MessageLoop.h"
#include "Panelhost/PropertyLines.h"
#include "tests/windows/FormPanels.h"

#include <commctrl.h>

namespace {

constexpr const char* BOX = "#32770";

CommandLine WithFolder(CommandLine commandLine, const std::string& folder) {
    commandLine.recoveryFolder = folder;
    commandLine.settingsFolder = folder + "\\settings";
    return commandLine;
}

} // namespace

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

std::string OnClipboard() {
    REQUIRE(OpenClipboard(nullptr));
    const HANDLE memory = GetClipboardData(CF_TEXT);
    const std::string text = memory == nullptr ? "" : static_cast<const char*>(GlobalLock(memory));
    GlobalUnlock(memory);
    CloseClipboard();
    return text;
}

void PutOnClipboard(const std::string& text) {
    PutOnClipboard(CF_TEXT, text.c_str(), text.size() + 1);
}

// What both do.

HWND PanelUser::Below(HWND parent, const char* className) const {
    HWND found = FindWindowExA(parent, nullptr, className, nullptr);
    for (HWND child = GetWindow(parent, GW_CHILD); found == nullptr && child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        found = Below(child, className);
    }
    return found;
}

std::string PanelUser::Saved() const {
    Command(CMD_SAVE);
    return ReadBytes(file_);
}

std::string PanelUser::Title() const {
    return TextOf(frame_);
}

void PanelUser::Drag(POINT from, POINT to) const {
    Press(from);
    MoveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    MoveTo(to);
    Release(to);
}

void PanelUser::Click(POINT point, WPARAM keys) const {
    Press(point, keys);
    Release(point);
}

// Until its button can be pressed no more.
int PanelUser::Repeat(int command) const {
    const HWND toolbar = Part(TOOLBARCLASSNAMEA);
    Command(CMD_GRID); // any edit command brings the buttons up to date
    Command(CMD_GRID);
    int steps = 0;
    while (SendMessageA(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0) {
        Command(command);
        ++steps;
    }
    return steps;
}

// In a process of its own.

PanelProgram::PanelProgram(const std::string& contents) : own_(std::in_place) {
    Start(*own_, own_->Write("test.panel", contents), settings_);
    FindFrame();
}

PanelProgram::PanelProgram(const TestFolder& folder, const std::string& file, const TestFolder* keeper) {
    Start(folder, file, keeper ? *keeper : settings_);
}

PanelProgram::~PanelProgram() {
    Kill();
    CloseHandle(started_.hThread);
    CloseHandle(started_.hProcess);
}

void PanelProgram::Start(const TestFolder& folder, const std::string& file, const TestFolder& keeper) {
    file_ = file;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    std::string command = "\"";
    command += ProgramFolder() + "Panel.exe\"" + (file.empty() ? "" : " \"" + file + "\"") +
               " --recovery \"" + folder.Path("") + ".\" --settings \"" + keeper.Path("settings") + "\"";
    REQUIRE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                           &started_));
}

void PanelProgram::FindFrame() {
    REQUIRE(WaitFor([&] { return (frame_ = Top("PanelFrame")) != nullptr; }));
    panel_ = Part("PanelWindow");
    REQUIRE(panel_ != nullptr);
    SetForegroundWindow(frame_);
}

HWND PanelProgram::Top(const char* className) const {
    HWND window = nullptr;
    DWORD process = 0;
    while ((window = FindWindowExA(nullptr, window, className, nullptr)) != nullptr) {
        GetWindowThreadProcessId(window, &process);
        if (process == started_.dwProcessId && IsWindowVisible(window)) {
            break;
        }
    }
    return window;
}

std::string PanelProgram::Question() const {
    HWND box = nullptr;
    REQUIRE(WaitFor([&] { return (box = Top(BOX)) != nullptr; }));
    return TextOf(GetDlgItem(box, 0xFFFF));
}

void PanelProgram::Answer(int button) const {
    const HWND box = Top(BOX);
    REQUIRE(box != nullptr);
    PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    CHECK(WaitFor([&] { return !IsWindow(box); }));
}

int PanelProgram::Close() const {
    PostMessageA(frame_, WM_CLOSE, 0, 0);
    DWORD code = 1;
    REQUIRE(WaitForSingleObject(started_.hProcess, 30000) == WAIT_OBJECT_0);
    GetExitCodeProcess(started_.hProcess, &code);
    return static_cast<int>(code);
}

void PanelProgram::Kill() const {
    TerminateProcess(started_.hProcess, 1);
    WaitForSingleObject(started_.hProcess, 5000);
}

// In this process.

PanelHere::PanelHere(const std::string& contents, const CommandLine& commandLine)
    : commandLine_(WithFolder(commandLine, folder_.Path("recovery"))),
      window_(commandLine_, reporter_, library_, log_) {
    std::string error;
    REQUIRE(library_.Load(error));
    REQUIRE(window_.Create(error));
    frame_ = window_.Handle();
    REQUIRE(Open(folder_.Write("test.panel", contents)));
    window_.Start(SW_SHOW);
    SetForegroundWindow(frame_);
}

bool PanelHere::Open(const std::string& file) {
    std::string error;
    file_ = file;
    const bool opened = window_.OpenPanel(file, error);
    FindPanel();
    return opened;
}

void PanelHere::Serve() {
    PostQuitMessage(0); // comes behind what was posted, and before input, painting and timers
    RunMessageLoop(window_);
}

void PanelHere::Type(WPARAM key, const std::string& held, HWND window) {
    const HeldKeys keys(held);
    PostMessageA(window != nullptr ? window : GetFocus(), WM_KEYDOWN, key, 0);
    Serve();
}

bool PanelHere::HasEnded() const {
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != 0;
}

PanelHere::MenuItem PanelHere::Item(int command) const {
    const HMENU menu = GetMenu(frame_);
    const auto id = static_cast<UINT>(command);
    SendMessageA(frame_, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    char text[128] = "";
    GetMenuStringA(menu, id, text, sizeof text, MF_BYCOMMAND);
    const UINT state = GetMenuState(menu, id, MF_BYCOMMAND);
    return {text, (state & (MF_GRAYED | MF_DISABLED)) == 0, (state & MF_CHECKED) != 0};
}

std::string PanelHere::Status(int part) const {
    char text[256] = "";
    SendMessageA(Part(STATUSCLASSNAMEA), SB_GETTEXTA, static_cast<WPARAM>(part),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

std::string PanelHere::Trace() {
    log_.Collect();
    std::string all;
    for (const TraceLine& line : log_.Lines()) {
        all += line.text + "\n";
    }
    return all;
}

std::string PanelHere::PlaceOf(HWND window, HWND inside) const {
    RECT place;
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, inside == nullptr ? frame_ : inside, reinterpret_cast<POINT*>(&place), 2);
    return a_GetRectString(place);
}
