#pragma once

#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"

#include <doctest/doctest.h>

#include <functional>
#include <mutex>
#include <shellapi.h>
#include <string>
#include <utility>
#include <vector>

constexpr const char* CONTROL_LIBRARY = "OSMIRControlLib.dll";

// A function that a loaded library exports; null when it does not.
template <class Function>
Function* Exported(const char* library, const char* name) {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}

// A folder for the files of one test, deleted with everything in it.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::string Path(const std::string& name) const { return path_ + "\\" + name; }
    // Writes a file and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const;
    std::vector<std::string> Names() const;

private:
    std::string path_;
};

std::string ReadBytes(const std::string& path);
bool WriteBytes(const std::string& path, const std::string& bytes);
// A 24-bit bitmap file of one colour (0xrrggbb).
std::string BitmapFile(int width, int height, unsigned colour);
std::string Repeated(int count, const std::string& text);
// The folder that the programs lie in, with a backslash at its end.
std::string ProgramFolder();

// The trace lines that arrive while it lives, from any thread.
class TraceCapture {
public:
    TraceCapture() { ph_SetTraceSink(Receive, this); }
    ~TraceCapture() { ph_SetTraceSink(nullptr, nullptr); }
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    // How many lines are exactly this one; how many contain the text.
    int Count(int kind, const std::string& line) const;
    int CountContaining(const std::string& text) const;
    std::string All() const;
    void Clear();

private:
    static void __cdecl Receive(int kind, const char* text, void* context);

    mutable std::mutex lock_;
    std::vector<std::pair<int, std::string>> lines_;
};

// A panel window with its root object.
class TestPanel {
public:
    enum Visibility { Hidden, Visible };

    explicit TestPanel(Visibility visibility = Hidden);
    ~TestPanel();
    TestPanel(const TestPanel&) = delete;
    TestPanel& operator=(const TestPanel&) = delete;

    HWND Window() const { return window_; }
    HOSTINFO* Root() const { return root_; }
    // A control of the panel at (10, 20), 100 wide and 40 high.
    HWND Create(const char* className, const char* name) const;
    HWND Find(const char* fullName) const { return ph_Find(root_, fullName); }
    // Declares devices by the lines of a device file, loads those of a panel file, answers those that it
    // saves.
    int Declare(const std::string& lines) const;
    int Open(const std::string& lines) const;
    std::string Saved() const;
    std::string Parameter(const char* address) const;
    // Closes the panel early; the window goes as well.
    void Close();

private:
    HWND window_;
    HOSTINFO* root_;
};

// A window class of the test program, which stays.
void RegisterTestClass(const char* name, WNDPROC procedure);
// The window procedure of controls as another library could have them, which do and hold nothing.
LRESULT CALLBACK OwnProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// A child window of that class at (10, 20), 100 wide and 40 high, with any create parameter.
HWND CreateControl(const char* className, const char* name, HWND parent, void* context);
std::vector<HWND> ChildrenOf(HWND window); // theirs included
HOSTINFO& ObjectOf(HWND control);
bool IsChanged(HWND control);

// CWM_LOAD.
LRESULT Load(HWND control, const std::string& line, WPARAM mode = LOAD_FROM_DIALOG);
// CWM_MESSAGE; without a keyword the default value.
LRESULT Send(HWND control, int command, int datatype, void* data, const char* keyword = nullptr,
             int index = 0);
std::string Text(HWND control, const char* keyword = nullptr);
float Value(HWND control);
LRESULT SetValue(HWND control, float value);
// Makes the control poll, however long its interval is.
void Poll(HWND control);

// Dispatches what waits for this thread.
void PumpAll();
// The same until the condition holds; whether it does in time (milliseconds).
bool Await(const std::function<bool()>& condition, DWORD patience = 10000);
// Takes the next posted message of that kind that waits for the window.
bool TakePosted(HWND window, UINT message, MSG& posted);
// Dispatches the commands that are posted to the window.
void DispatchCommands(HWND window);
// What is left of a mouse message's coordinates.
LPARAM At(int x, int y);

// The handle of a drop of files; each path ends with a zero.
HDROP MakeDrop(const std::string& paths);
// Drops files on a control; whether it has freed the handle.
bool Drop(HWND control, const std::string& paths, UINT message = WM_DROPFILES);

// What a control paints, pixel by pixel.
class Picture {
public:
    explicit Picture(HWND control);
    ~Picture();
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    COLORREF At(int x, int y) const { return GetPixel(dc_, x, y); }

private:
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ previous_;
};
