#include "tests/windows/PanelProgram.h"

#include <commctrl.h>
#include <cstring>

namespace {

struct Search {
    DWORD process;
    const char* className;
    HWND found;
};

BOOL CALLBACK MatchWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    char className[64] = "";
    GetWindowThreadProcessId(window, &process);
    GetClassNameA(window, className, sizeof className);
    if (process == search.process && std::strcmp(className, search.className) == 0 &&
        ((GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0 || IsWindowVisible(window))) {
        search.found = window;
        return FALSE;
    }
    return TRUE;
}

HWND MessageBoxOf(DWORD process) {
    Search search{process, "#32770", nullptr};
    EnumWindows(MatchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

PanelProgram::PanelProgram(const std::string& contents, const char* temporaryFolder) : own_(std::in_place) {
    const std::string file = own_->Write("test.panel", contents);
    char before[MAX_PATH] = "";
    GetEnvironmentVariableA("TMP", before, MAX_PATH);
    if (temporaryFolder != nullptr) {
        SetEnvironmentVariableA("TMP", temporaryFolder);
    }
    Start(*own_, file);
    SetEnvironmentVariableA("TMP", before);
    FindFrame();
}

PanelProgram::PanelProgram(const TestFolder& folder, const std::string& file) {
    Start(folder, file);
}

PanelProgram::~PanelProgram() {
    Kill();
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
}

void PanelProgram::Start(const TestFolder& folder, const std::string& file) {
    file_ = file;
    trace_ = folder.Path("trace.txt");
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    std::string command = "\"";
    command += ProgramFolder() + "Panel.exe\"" + (file.empty() ? "" : " \"" + file + "\"") +
               " --recovery \"" + folder.Path("") + ".\"" + (own_ ? " --trace \"" + trace_ + "\"" : "");
    REQUIRE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                           &process_));
}

void PanelProgram::FindFrame() {
    REQUIRE(WaitFor([&] { return (frame_ = Top("PanelFrame")) != nullptr; }));
    panel_ = Below(frame_, "PanelWindow");
    REQUIRE(panel_ != nullptr);
    SetForegroundWindow(frame_);
}

HWND PanelProgram::Top(const char* className) const {
    Search search{process_.dwProcessId, className, nullptr};
    EnumWindows(MatchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND PanelProgram::Below(HWND parent, const char* className) const {
    Search search{process_.dwProcessId, className, nullptr};
    EnumChildWindows(parent, MatchWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::string PanelProgram::Saved() const {
    Command(CMD_SAVE);
    return ReadBytes(file_);
}

std::string PanelProgram::Title() const {
    char title[128] = "";
    GetWindowTextA(frame_, title, sizeof title);
    return title;
}

std::string PanelProgram::Question() const {
    HWND box = nullptr;
    REQUIRE(WaitFor([&] { return (box = MessageBoxOf(process_.dwProcessId)) != nullptr; }));
    char text[1024] = "";
    GetDlgItemTextA(box, 0xFFFF, text, sizeof text);
    return text;
}

void PanelProgram::Answer(int button) const {
    const HWND box = MessageBoxOf(process_.dwProcessId);
    REQUIRE(box != nullptr);
    PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    CHECK(WaitFor([&] { return !IsWindow(box); }));
}

void PanelProgram::Press(POINT point, WPARAM keys) const {
    SendMessageA(panel_, WM_LBUTTONDOWN, MK_LBUTTON | keys, MAKELPARAM(point.x, point.y));
}

void PanelProgram::MoveTo(POINT point) const {
    SendMessageA(panel_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

void PanelProgram::Release(POINT point) const {
    SendMessageA(panel_, WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
}

void PanelProgram::Drag(POINT from, POINT to) const {
    Press(from);
    MoveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    MoveTo(to);
    Release(to);
}

void PanelProgram::Click(POINT point, WPARAM keys) const {
    Press(point, keys);
    Release(point);
}

int PanelProgram::Close() const {
    PostMessageA(frame_, WM_CLOSE, 0, 0);
    DWORD code = 1;
    REQUIRE(WaitForSingleObject(process_.hProcess, 30000) == WAIT_OBJECT_0);
    GetExitCodeProcess(process_.hProcess, &code);
    return static_cast<int>(code);
}

void PanelProgram::Kill() const {
    TerminateProcess(process_.hProcess, 1);
    WaitForSingleObject(process_.hProcess, 5000);
}

// Until its button can be pressed no more; a menu cannot be looked into from another program.
int PanelProgram::Repeat(int command) const {
    const HWND toolbar = Below(frame_, TOOLBARCLASSNAMEA);
    Command(CMD_GRID); // any edit command brings the buttons up to date
    Command(CMD_GRID);
    int steps = 0;
    while (SendMessageA(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0) {
        Command(command);
        ++steps;
    }
    return steps;
}
