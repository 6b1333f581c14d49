#include "tests/windows/Buttons.h"

#include "logic/text/Text.h"

#include <commctrl.h>

namespace {

constexpr const char* RECORDER_CLASS = "TestRecorder";
constexpr DWORD PATIENCE = 30000; // milliseconds that a message box may take to come
constexpr int NOTE_ROW = 7;
constexpr int MESSAGE_TEXT = 0xFFFF; // control of a message box

LRESULT CALLBACK RecorderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    HOSTINFO* object = message == CWM_MESSAGE ? a_FromWindow(window) : nullptr;
    return object != nullptr ? object->OnMessage(wParam, lParam)
                             : DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

Recorder::Recorder(const TestPanel& panel, const char* ownName) {
    WNDCLASSA recorderClass{};
    recorderClass.lpfnWndProc = RecorderProc;
    recorderClass.hInstance = GetModuleHandleA(nullptr);
    recorderClass.lpszClassName = RECORDER_CLASS;
    RegisterClassA(&recorderClass); // refused from the second one on
    HWND own = CreateWindowExA(0, RECORDER_CLASS, ownName, WS_CHILD, 0, 0, 1, 1, panel.Window(), nullptr,
                               GetModuleHandleA(nullptr), nullptr);
    a_InitializeHostinfo(own, this, panel.Root());
    a_AddHostinfo(panel.Root(), this);
    a_HostinfoCreated(panel.Root(), this);
}

Recorder::~Recorder() {
    a_HostinfoDestroyed(a_FindRootHostinfo(this), this);
    a_RemoveHostinfo(parent, this);
    DestroyWindow(window);
}

LRESULT Recorder::OnMessage(WPARAM, LPARAM lParam) {
    auto& record = *reinterpret_cast<VALUERECORD*>(lParam);
    switch (record.command) {
    case COMMAND_RESOLVE:
        record.index = std::string(record.name) == "note" ? NOTE_ROW : 0;
        return 1;
    case COMMAND_GET:
        return reachable ? a_AnswerInteger(&record, value) : -1;
    default: {
        Set set{GetTickCount(), 0, ""};
        if (record.index == NOTE_ROW) {
            a_ReadText(&record, &set.text);
        } else {
            a_ReadInteger(&record, &set.value);
            value = set.value;
        }
        sets.push_back(set);
        if (onSet) {
            onSet();
        }
        return 1;
    }
    }
}

std::string Recorder::Take() {
    std::string numbers;
    for (const Set& set : sets) {
        numbers += (numbers.empty() ? "" : " ") + std::to_string(set.value);
    }
    sets.clear();
    return numbers;
}

Answer::Answer(const char* title, int command, std::function<void()> action)
    : thread_([this, title = std::string(title), command, action = std::move(action),
               asking = GetCurrentThreadId()] {
          HWND box = nullptr;
          const DWORD start = GetTickCount();
          while (!stop_ && GetTickCount() - start < PATIENCE) {
              box = FindWindowA("#32770", title.c_str());
              if (box != nullptr && IsWindowVisible(box)) {
                  char text[TEXT_SIZE] = "";
                  GetDlgItemTextA(box, MESSAGE_TEXT, text, sizeof text);
                  question_ = text;
                  action();
                  PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(command), 0);
                  PostThreadMessageA(asking, WM_NULL, 0, 0); // it waits on, even when its box is gone
                  return;
              }
              Sleep(5);
          }
      }) {}

std::string Answer::Question() {
    stop_ = true; // the box, if there was one, has been closed
    if (thread_.joinable()) {
        thread_.join();
    }
    return question_;
}

Answer::~Answer() {
    Question();
}

bool LoadLines(HWND control, const std::string& lines, WPARAM mode) {
    bool areTaken = true;
    for (const std::string_view line : logic::SplitFields(lines, '|')) {
        areTaken = Load(control, std::string(line), mode) == 1 && areTaken;
    }
    return areTaken;
}

std::string SizeText(HWND control) {
    RECT client;
    GetClientRect(control, &client);
    const RECT& known = ObjectOf(control).rectangle;
    CHECK((known.right - known.left == client.right && known.bottom - known.top == client.bottom));
    return std::to_string(client.right) + " x " + std::to_string(client.bottom);
}

std::string TextOf(HWND window) {
    char text[TEXT_SIZE] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

bool IsShown(HWND child) {
    return (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) != 0;
}

std::string TipOf(HWND control) {
    struct Search {
        char text[TEXT_SIZE] = "no tool";
        TOOLINFOA tool{};
    } search;
    search.tool.cbSize = TTTOOLINFOA_V2_SIZE;
    search.tool.hwnd = control;
    search.tool.uId = reinterpret_cast<UINT_PTR>(control);
    search.tool.lpszText = search.text;
    // All windows of a class share one, which has the tool of the control that was used last.
    const auto ask = [](HWND window, LPARAM searched) __attribute__((stdcall))->BOOL {
        auto& [text, tool] = *reinterpret_cast<Search*>(searched);
        char className[40] = "";
        GetClassNameA(window, className, sizeof className);
        if (lstrcmpiA(className, TOOLTIPS_CLASSA) != 0 ||
            SendMessageA(window, TTM_GETTOOLINFOA, 0, reinterpret_cast<LPARAM>(&tool)) == 0) {
            return TRUE;
        }
        SendMessageA(window, TTM_GETTEXTA, TEXT_SIZE, reinterpret_cast<LPARAM>(&tool));
        return FALSE;
    };
    EnumThreadWindows(GetCurrentThreadId(), ask, reinterpret_cast<LPARAM>(&search));
    return search.text;
}

void PressButton(HWND button, WPARAM keys) {
    SendMessageA(button, WM_LBUTTONDOWN, keys, At(5, 5));
}

void ReleaseButton(HWND button, WPARAM keys) {
    SendMessageA(button, WM_LBUTTONUP, keys, At(5, 5));
}

void Click(HWND button) {
    PressButton(button);
    ReleaseButton(button);
}

bool IsMarked(HWND control) {
    Poll(control);
    char line[TEXT_SIZE] = "";
    ObjectOf(control).OnGetTooltip(0, reinterpret_cast<LPARAM>(line));
    return std::string(line).find("   (") != std::string::npos; // why
}

void Pump(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < milliseconds) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageA(&message);
        }
        Sleep(1);
    }
}

void MoveCursor(const TestPanel& panel, int x, int y) {
    POINT place{x, y};
    ClientToScreen(panel.Window(), &place);
    SetCursorPos(place.x, place.y);
    Pump(30);
}
