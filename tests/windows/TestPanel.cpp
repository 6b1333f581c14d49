#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <shlobj.h>

namespace {

constexpr const char* PANEL_CLASS = "TestPanel";

void RegisterPanelClass() {
    WNDCLASSA panelClass{};
    panelClass.lpfnWndProc = DefWindowProcA;
    panelClass.hInstance = GetModuleHandleA(nullptr);
    panelClass.lpszClassName = PANEL_CLASS;
    RegisterClassA(&panelClass); // refused from the second panel on
}

} // namespace

TestFolder::TestFolder() {
    static int number = 0;
    char folder[MAX_PATH];
    GetTempPathA(sizeof folder, folder);
    path_ = folder + ("osmir-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number));
    CreateDirectoryA(path_.c_str(), nullptr);
}

TestFolder::~TestFolder() {
    for (const std::string& name : Names()) {
        const std::string path = Path(name);
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if (!DeleteFileA(path.c_str())) {
            RemoveDirectoryA(path.c_str());
        }
    }
    RemoveDirectoryA(path_.c_str());
}

std::string TestFolder::Write(const std::string& name, const std::string& bytes) const {
    WriteBytes(Path(name), bytes);
    return Path(name);
}

std::vector<std::string> TestFolder::Names() const {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA(Path("*").c_str(), &entry);
    for (BOOL found = search != INVALID_HANDLE_VALUE; found; found = FindNextFileA(search, &entry)) {
        if (entry.cFileName[0] != '.') {
            names.emplace_back(entry.cFileName);
        }
    }
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    return !file.fail();
}

std::string BitmapFile(int width, int height, unsigned colour) {
    const int row = (width * 3 + 3) / 4 * 4;
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    const auto start = static_cast<std::uint32_t>(14 + sizeof info);
    const std::uint32_t fields[] = {start + static_cast<std::uint32_t>(row * height), 0, start};
    std::string bytes = "BM";
    bytes.append(reinterpret_cast<const char*>(fields), sizeof fields);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    const std::string pixel = {static_cast<char>(colour), static_cast<char>(colour >> 8),
                               static_cast<char>(colour >> 16)};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bytes += pixel;
        }
        bytes.append(static_cast<std::size_t>(row - width * 3), '\0');
    }
    return bytes;
}

std::string ProgramFolder() {
    char path[MAX_PATH];
    const std::string program(path, GetModuleFileNameA(nullptr, path, sizeof path));
    return program.substr(0, program.rfind('\\') + 1);
}

void TraceCapture::Receive(int kind, const char* text, void* context) {
    auto& capture = *static_cast<TraceCapture*>(context);
    const std::lock_guard guard(capture.lock_);
    capture.lines_.emplace_back(kind, text);
}

int TraceCapture::Count(int kind, const std::string& line) const {
    const std::lock_guard guard(lock_);
    return static_cast<int>(std::count(lines_.begin(), lines_.end(), std::pair(kind, line)));
}

int TraceCapture::CountContaining(const std::string& text) const {
    const std::lock_guard guard(lock_);
    return static_cast<int>(std::count_if(lines_.begin(), lines_.end(), [&](const auto& line) {
        return line.second.find(text) != std::string::npos;
    }));
}

std::string TraceCapture::All() const {
    const std::lock_guard guard(lock_);
    std::string all;
    for (const auto& [kind, line] : lines_) {
        all += std::to_string(kind) + " " + line + "\n";
    }
    return all;
}

void TraceCapture::Clear() {
    const std::lock_guard guard(lock_);
    lines_.clear();
}

TestPanel::TestPanel(Visibility visibility) {
    RegisterPanelClass();
    const DWORD style = WS_POPUP | (visibility == Visible ? WS_VISIBLE : 0);
    window_ = CreateWindowExA(0, PANEL_CLASS, "Test", style, 50, 60, 640, 480, nullptr, nullptr,
                              GetModuleHandleA(nullptr), nullptr);
    root_ = ph_CreateRoot(window_, "Test");
}

TestPanel::~TestPanel() {
    Close();
}

void TestPanel::Close() {
    ph_DestroyRoot(std::exchange(root_, nullptr));
    DestroyWindow(std::exchange(window_, nullptr));
}

HWND TestPanel::Create(const char* className, const char* name) const {
    return CreateControl(className, name, window_, root_);
}

int TestPanel::Declare(const std::string& lines) const {
    const TestFolder folder;
    return ph_LoadDevices(root_, folder.Write("test.devices", lines).c_str());
}

int TestPanel::Open(const std::string& lines) const {
    const TestFolder folder;
    return ph_LoadPanel(root_, folder.Write("test.panel", lines).c_str());
}

std::string TestPanel::Saved() const {
    const TestFolder folder;
    const std::string path = folder.Path("saved.panel");
    return ph_SavePanel(root_, path.c_str()) == 1 ? ReadBytes(path) : "(not saved)";
}

std::string TestPanel::Parameter(const char* address) const {
    char text[TEXT_SIZE];
    return ph_GetParameter(root_, address, text, sizeof text) == 1 ? text : "(none)";
}

HWND CreateControl(const char* className, const char* name, HWND parent, void* context) {
    return CreateWindowExA(0, className, name, WS_CHILD | (IsWindowVisible(parent) ? WS_VISIBLE : 0), 10, 20,
                           100, 40, parent, nullptr, GetModuleHandleA(nullptr), context);
}

HOSTINFO& ObjectOf(HWND control) {
    return *reinterpret_cast<HOSTINFO*>(SendMessageA(control, CWM_GETPROPERTIES, 0, 0));
}

bool IsChanged(HWND control) {
    return (ObjectOf(control).flags & FLAG_CHANGED) != 0;
}

LRESULT Load(HWND control, const std::string& line, WPARAM mode) {
    return SendMessageA(control, CWM_LOAD, mode, reinterpret_cast<LPARAM>(line.c_str()));
}

LRESULT Send(HWND control, int command, int datatype, void* data, const char* keyword, int index) {
    VALUERECORD record{command, index, datatype, 0, data, keyword, 0};
    return SendMessageA(control, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
}

std::string Text(HWND control, const char* keyword) {
    char text[TEXT_SIZE] = "";
    Send(control, COMMAND_GET, DATATYPE_TEXT, text, keyword);
    return text;
}

float Value(HWND control) {
    float value = std::numeric_limits<float>::quiet_NaN(); // equal to no answer
    Send(control, COMMAND_GET, DATATYPE_FLOAT, &value);
    return value;
}

LRESULT SetValue(HWND control, float value) {
    return Send(control, COMMAND_SET, DATATYPE_FLOAT, &value);
}

void Poll(HWND control) {
    HOSTINFO& object = ObjectOf(control);
    const int interval = std::exchange(object.interval, 0);
    for (const DWORD start = GetTickCount(); GetTickCount() == start;) { // more than the interval has to pass
        Sleep(1);
    }
    SendMessageA(control, WM_TIMER, 0, 0);
    if (a_FromWindow(control) == &object) { // what it asked may have ended it
        object.interval = interval;
    }
}

bool Await(const std::function<bool()>& condition, DWORD patience) {
    for (const DWORD start = GetTickCount(); !condition();) {
        if (GetTickCount() - start > patience) {
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 1, QS_ALLINPUT);
        DispatchAll();
    }
    return true;
}

void DispatchAll() {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        DispatchMessageA(&message);
    }
}

bool TakePosted(HWND window, UINT message, MSG& posted) {
    return PeekMessageA(&posted, window, message, message, PM_REMOVE | PM_QS_POSTMESSAGE) != 0;
}

void DispatchCommands(HWND window) {
    for (MSG posted; TakePosted(window, WM_COMMAND, posted);) {
        DispatchMessageA(&posted);
    }
}

LPARAM At(int x, int y) {
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

HDROP MakeDrop(const std::string& paths) {
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + paths.size() + 1);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    std::copy(paths.begin(), paths.end(), reinterpret_cast<char*>(drop + 1));
    GlobalUnlock(memory);
    return static_cast<HDROP>(memory);
}

bool Drop(HWND control, const std::string& paths, UINT message) {
    const HDROP drop = MakeDrop(paths);
    SendMessageA(control, message, message == WM_DROPFILES ? reinterpret_cast<WPARAM>(drop) : 0,
                 message == WM_DROPFILES ? 0 : reinterpret_cast<LPARAM>(drop));
    return GlobalFlags(drop) == GMEM_INVALID_HANDLE;
}

Picture::Picture(HWND control) : dc_(CreateCompatibleDC(nullptr)) {
    RECT client;
    GetClientRect(control, &client);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = client.right;
    info.bmiHeader.biHeight = -client.bottom;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
    previous_ = SelectObject(dc_, bitmap_);
    SendMessageA(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc_), PRF_CLIENT);
}

Picture::~Picture() {
    SelectObject(dc_, previous_);
    DeleteDC(dc_);
    DeleteObject(bitmap_);
}
