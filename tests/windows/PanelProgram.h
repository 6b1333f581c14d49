#pragma once

#include "Panel/ControlLibrary.h"
#include "Panel/FrameWindow.h"
#include "Panel/common/CommandLine.h"
#include "Panel/common/Report.h"
#include "Panel/lists/TraceLog.h"
#include "Panel/resource.h"
#include "tests/windows/HeldKeys.h"
#include "tests/windows/TestPanel.h"

#include <optional>
#include <string>

// Until the condition holds; false when it does not for long.
inline bool WaitFor(const std::function<bool()>& condition) {
    return Await(condition, 30000);
}

bool Contains(const std::string& text, const std::string& part);
// What the clipboard holds as text, and putting it there.
std::string OnClipboard();
void PutOnClipboard(const std::string& text);

// What the user of a panel program does, by messages to its windows.
class PanelUser {
public:
    HWND Frame() const { return frame_; }
    HWND Panel() const { return panel_; }
    HWND Below(HWND parent, const char* className) const;
    HWND Part(const char* className) const { return Below(frame_, className); }
    void Command(int command) const { SendMessageA(frame_, WM_COMMAND, static_cast<WPARAM>(command), 0); }
    std::string Saved() const;
    std::string Title() const;

    void Press(POINT point, WPARAM keys = 0) const { Mouse(WM_LBUTTONDOWN, MK_LBUTTON | keys, point); }
    void MoveTo(POINT point) const { Mouse(WM_MOUSEMOVE, MK_LBUTTON, point); }
    void Release(POINT point) const { Mouse(WM_LBUTTONUP, 0, point); }
    void Drag(POINT from, POINT to) const;
    void Click(POINT point, WPARAM keys = 0) const;
    void Key(WPARAM key) const { SendMessageA(panel_, WM_KEYDOWN, key, 0); }

    // How many steps there were.
    int UndoAll() const { return Repeat(CMD_UNDO); }
    int RedoAll() const { return Repeat(CMD_REDO); }

protected:
    PanelUser() = default;

    std::string file_;
    HWND frame_ = nullptr;
    HWND panel_ = nullptr;

private:
    void Mouse(UINT message, WPARAM keys, POINT point) const {
        SendMessageA(panel_, message, keys, At(point.x, point.y));
    }
    int Repeat(int command) const;
};

// A running Panel.exe. Killed in the end unless it was closed.
class PanelProgram : public PanelUser {
public:
    // With a panel file and a folder of its own.
    explicit PanelProgram(const std::string& contents);
    // Shows that file (none when the name is empty) and keeps its recovery copies in the folder. It may begin
    // with a question. What it keeps for its user lies in the folder "settings" of the other one, if there is
    // another.
    PanelProgram(const TestFolder& folder, const std::string& file, const TestFolder* keeper = nullptr);
    ~PanelProgram();
    PanelProgram(const PanelProgram&) = delete;
    PanelProgram& operator=(const PanelProgram&) = delete;

    // Waits for its window.
    void FindFrame();
    HWND Top(const char* className) const;
    // The text of the message box that it shows.
    std::string Question() const;
    void Answer(int button) const;
    // The exit code.
    int Close() const;
    void Kill() const;

private:
    void Start(const TestFolder& folder, const std::string& file, const TestFolder& keeper);

    std::optional<TestFolder> own_;
    TestFolder settings_;
    PROCESS_INFORMATION started_{};
};

// The same inside the test, where menus, cursors and drawings can be looked at. It serves no message by
// itself.
class PanelHere : public PanelUser {
public:
    struct MenuItem {
        std::string text;
        bool enabled;
        bool checked;
        bool operator==(const MenuItem&) const = default;
    };

    // With what the command line would say.
    explicit PanelHere(const std::string& contents, const CommandLine& commandLine = {});

    const TestFolder& Folder() const { return folder_; }
    // The folder of what it keeps for its user.
    std::string Settings() const { return settings_.Path("settings"); }
    HOSTINFO* Root() const { return a_FromWindow(panel_); }
    bool Open(const std::string& file);
    // After a command that opened a panel.
    void FindPanel() { panel_ = Part("PanelWindow"); }
    // The program's own message loop, for all that was posted.
    void Serve();
    // A key for the window with the focus, or for that one, with "Ctrl", "Shift", "Alt" or more held down.
    void Type(WPARAM key, const std::string& held = "", HWND window = nullptr);
    void Tick() const { SendMessageA(frame_, WM_TIMER, 1, 0); }
    // Whether it has ended itself since the last question.
    bool HasEnded() const;
    // As the menu bar shows it when it is opened.
    MenuItem Item(int command) const;
    std::string Status(int part = 0) const;
    std::string Trace();
    // Left, top, right and bottom of a window in the client area of the frame or of another window.
    std::string PlaceOf(HWND window, HWND inside = nullptr) const;

private:
    TestFolder folder_;
    TestFolder settings_;
    CommandLine commandLine_;
    Reporter reporter_{false};
    ControlLibrary library_;
    TraceLog log_;
    FrameWindow window_;
};
