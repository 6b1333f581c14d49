#include "benchmarks/Windows.h"

#include "Panelhost/Messages.h"
#include "Panelhost/ValueRecord.h"

#include <commctrl.h>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace {

constexpr int COLUMNS = 20;
constexpr int PITCH = 50;
constexpr int ROWS_SHOWN = 14;

constexpr int PICTURE_SIDE = 1024; // larger than any control

// In the format of the controls' pictures.
HDC Picture() {
    static const HDC dc = [] {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = PICTURE_SIDE;
        info.bmiHeader.biHeight = -PICTURE_SIDE;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* pixels = nullptr;
        HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
        for (int i = 0; i < PICTURE_SIDE * PICTURE_SIDE; ++i) {
            static_cast<std::uint32_t*>(pixels)[i] = static_cast<std::uint32_t>(i) * 97;
        }
        HDC made = CreateCompatibleDC(nullptr);
        SelectObject(made, bitmap); // both live as long as the program
        return made;
    }();
    return dc;
}

LRESULT CALLBACK BlitProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        const HDC dc = BeginPaint(window, &paint);
        RECT client;
        GetClientRect(window, &client);
        BitBlt(dc, 0, 0, client.right, client.bottom, Picture(), 0, 0, SRCCOPY);
        EndPaint(window, &paint);
        return 0;
    }
    case WM_ERASEBKGND:
        return 1;
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK AnswerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CWM_MESSAGE) {
        auto* record = reinterpret_cast<VALUERECORD*>(lParam);
        *static_cast<float*>(record->data) = 1.0F;
        return 1;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void Register(const char* className, WNDPROC procedure) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.lpszClassName = className;
    RegisterClassA(&windowClass);
}

} // namespace

void RegisterYardsticks() {
    Register(BARE_CLASS, DefWindowProcA);
    Register(BLIT_CLASS, BlitProc);
    Register(ANSWER_CLASS, AnswerProc);
}

RECT PlaceOf(int number) {
    const int left = number % COLUMNS * PITCH;
    const int top = number / COLUMNS % ROWS_SHOWN * PITCH;
    return {left, top, left + SIDE, top + SIDE};
}

BenchPanel::BenchPanel(bool visible)
    : window_(CreateWindowExA(0, BARE_CLASS, "", WS_POPUP | WS_CLIPCHILDREN | (visible ? WS_VISIBLE : 0), 0,
                              0, COLUMNS * PITCH, ROWS_SHOWN * PITCH, nullptr, nullptr,
                              GetModuleHandleA(nullptr), nullptr)),
      root_(ph_CreateRoot(window_, "Bench")) {
    UpdateWindow(window_);
    Settle();
}

BenchPanel::~BenchPanel() {
    ph_DestroyRoot(root_);
    DestroyWindow(window_);
    Settle();
}

HWND BenchPanel::Add(const char* className, int number, SIZE size) const {
    const RECT place = PlaceOf(number);
    const std::string name = "Control" + std::to_string(number);
    return CreateWindowExA(0, className, name.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, place.left,
                           place.top, size.cx, size.cy, window_, nullptr, GetModuleHandleA(nullptr), root_);
}

std::vector<HWND> BenchPanel::AddMany(const char* className, int count) const {
    std::vector<HWND> windows;
    windows.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number) {
        windows.push_back(Add(className, number));
    }
    return windows;
}

namespace {

HWND Copy(HWND original, const char* className, HWND parent, DWORD style) {
    RECT place;
    GetWindowRect(original, &place);
    MapWindowPoints(nullptr, GetParent(original), reinterpret_cast<POINT*>(&place), 2);
    const auto extendedStyle = static_cast<DWORD>(GetWindowLongA(original, GWL_EXSTYLE));
    return CreateWindowExA(extendedStyle, className, "", style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr, nullptr,
                           nullptr);
}

bool IsList(HWND window) {
    char ownClass[64];
    GetClassNameA(window, ownClass, sizeof ownClass);
    return lstrcmpiA(ownClass, "BCOMBOBOX") == 0;
}

// A drop-down list brings a window for its lines, which the system makes and keeps outside. So the bare one
// of it is the system's, with the same lines.
void CopyList(HWND original, HWND parent) {
    const auto style = static_cast<DWORD>(GetWindowLongA(original, GWL_STYLE));
    const HWND list =
        Copy(original, WC_COMBOBOXA, parent, WS_CHILD | WS_VSCROLL | CBS_DROPDOWNLIST | (style & WS_VISIBLE));
    SendMessageA(list, WM_SETFONT, static_cast<WPARAM>(SendMessageA(original, WM_GETFONT, 0, 0)), FALSE);
    const LRESULT lines = SendMessageA(original, CB_GETCOUNT, 0, 0);
    for (LRESULT line = 0; line < lines; ++line) {
        char text[TEXT_SIZE] = "";
        SendMessageA(original, CB_GETLBTEXT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text));
        SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
}

void CopyChildren(HWND model, HWND parent, const char* innerClass) {
    for (HWND child = GetWindow(model, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const auto style = static_cast<DWORD>(GetWindowLongA(child, GWL_STYLE));
        if (innerClass == nullptr) {
            char ownClass[64];
            GetClassNameA(child, ownClass, sizeof ownClass);
            Copy(child, ownClass, parent, style);
        } else if (std::string_view(innerClass) == BARE_CLASS && IsList(child)) {
            CopyList(child, parent);
        } else {
            CopyChildren(child, Copy(child, innerClass, parent, WS_CHILD | (style & WS_VISIBLE)), innerClass);
        }
    }
}

} // namespace

HWND BenchPanel::AddCopy(HWND model, const char* className, const char* innerClass) const {
    const HWND outer = Copy(model, className, window_, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN);
    CopyChildren(model, outer, innerClass);
    return outer;
}

void DeclareDevices(const BenchPanel& panel, const std::string& lines) {
    char folder[MAX_PATH];
    char path[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    GetTempFileNameA(folder, "dev", 0, path);
    std::ofstream(path) << lines;
    ph_LoadDevices(panel.Root(), path);
    DeleteFileA(path);
}

void Settle() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageA(&message);
    }
}
