#pragma once

#include "Panel/resource.h"
#include "tests/windows/TestPanel.h"

#include <optional>
#include <string>

// Until the condition holds; false when it does not for long.
template <class Condition>
bool WaitFor(Condition condition) {
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > 30000) {
            return false;
        }
        Sleep(20);
    }
    return true;
}

bool Contains(const std::string& text, const std::string& part);

// A running Panel.exe, operated from outside. Killed in the end unless it was closed.
class PanelProgram {
public:
    // With a panel file and a folder of its own. Another folder for temporary files, when one is given.
    explicit PanelProgram(const std::string& contents, const char* temporaryFolder = nullptr);
    // Shows that file (none when the name is empty) and keeps its recovery copies in the folder. It may begin
    // with a question.
    PanelProgram(const TestFolder& folder, const std::string& file);
    ~PanelProgram();
    PanelProgram(const PanelProgram&) = delete;
    PanelProgram& operator=(const PanelProgram&) = delete;

    // Waits for its window.
    void FindFrame();
    HWND Frame() const { return frame_; }
    HWND Panel() const { return panel_; }
    HWND Top(const char* className) const;
    HWND Below(HWND parent, const char* className) const;
    void Command(int command) const { SendMessageA(frame_, WM_COMMAND, static_cast<WPARAM>(command), 0); }
    std::string Saved() const;
    // The folder of its own.
    const TestFolder& Folder() const { return *own_; }
    std::string Trace() const { return ReadBytes(trace_); }
    std::string Title() const;
    // The text of the message box that it shows.
    std::string Question() const;
    void Answer(int button) const;

    void Press(POINT point, WPARAM keys = 0) const;
    void MoveTo(POINT point) const;
    void Release(POINT point) const;
    void Drag(POINT from, POINT to) const;
    void Click(POINT point, WPARAM keys = 0) const;
    void Key(WPARAM key) const { SendMessageA(panel_, WM_KEYDOWN, key, 0); }

    // How many steps there were.
    int UndoAll() const { return Repeat(CMD_UNDO); }
    int RedoAll() const { return Repeat(CMD_REDO); }
    // The exit code.
    int Close() const;
    void Kill() const;

private:
    void Start(const TestFolder& folder, const std::string& file);
    int Repeat(int command) const;

    std::optional<TestFolder> own_;
    std::string file_;
    std::string trace_;
    PROCESS_INFORMATION process_{};
    HWND frame_ = nullptr;
    HWND panel_ = nullptr;
};
