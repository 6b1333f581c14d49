// The control library as a module: what loading registers, what unloading takes back.

#include "tests/windows/ControlClasses.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

TEST_SUITE_BEGIN("Module");

namespace {

using Callback = const char*(__stdcall*)(int, unsigned, unsigned);

Callback BuildStampOf(HMODULE library) {
    return reinterpret_cast<Callback>(reinterpret_cast<void*>(GetProcAddress(library, "fnCallback")));
}

int CountRegistered() {
    int count = 0;
    WNDCLASSA found;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        count += GetClassInfoA(GetModuleHandleA(nullptr), expected.name, &found) != 0 ? 1 : 0;
    }
    return count;
}

SIZE IconSize(HICON icon) {
    ICONINFO parts{};
    BITMAP colours{};
    GetIconInfo(icon, &parts);
    GetObjectA(parts.hbmColor, sizeof colours, &colours);
    DeleteObject(parts.hbmColor);
    DeleteObject(parts.hbmMask);
    return {colours.bmWidth, colours.bmHeight};
}

// No control may exist meanwhile. The library is there again afterwards.
class Unloaded {
public:
    Unloaded() { FreeLibrary(GetModuleHandleA(CONTROL_LIBRARY)); }
    ~Unloaded() { LoadLibraryA(CONTROL_LIBRARY); }
    Unloaded(const Unloaded&) = delete;
    Unloaded& operator=(const Unloaded&) = delete;
};

} // namespace

TEST_CASE("every class is registered as hosts expect it") {
    const TestPanel panel;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        INFO(std::string(expected.name));
        WNDCLASSA found{};
        REQUIRE(GetClassInfoA(GetModuleHandleA(nullptr), expected.name, &found)); // seen by every module
        WNDCLASSA system{};
        if (expected.systemClass != nullptr) {
            REQUIRE(GetClassInfoA(nullptr, expected.systemClass, &system));
            CHECK((found.lpfnWndProc != system.lpfnWndProc));
        }
        CHECK(found.style == (system.style | expected.style));
        CHECK(found.cbClsExtra == system.cbClsExtra);
        CHECK(found.cbWndExtra == system.cbWndExtra + expected.extraBytes);
        CHECK(found.lpszMenuName == nullptr);
        CHECK(found.hCursor ==
              (system.hCursor != nullptr ? system.hCursor : LoadCursorA(nullptr, IDC_ARROW)));
        CHECK(found.hbrBackground ==
              (expected.background == NULL_BACKGROUND ? GetStockObject(NULL_BRUSH)
               : expected.background == 0
                   ? system.hbrBackground
                   : reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(expected.background))));
        CHECK((found.hIcon != nullptr) == expected.hasIcon);
        if (found.hIcon != nullptr) {
            CHECK(IconSize(found.hIcon).cx == 16);
            CHECK(IconSize(found.hIcon).cy == 16);
        }
        if (expected.controlType != NOT_FIXED) {
            CHECK(SendMessageA(panel.Create(expected.name, ""), CWM_GETCONTROLTYPE, 0, 0) ==
                  expected.controlType);
        }
    }
}

TEST_CASE("the build stamp is given for code 13 alone") {
    const Callback callback = BuildStampOf(GetModuleHandleA(CONTROL_LIBRARY));
    REQUIRE((callback != nullptr));
    CHECK(callback(13, 0, 0xFFFFFFFF) == std::string("May 18 2022  15:44:35\tBuild: 10026"));
    for (const int code : {0, 12, 14, -13}) {
        CHECK(callback(code, 13, 13) == nullptr);
    }
}

TEST_CASE("superclassed controls still do what their system class does") {
    const TestPanel panel;
    for (const char* name : {"BEDIT", "BEDIT2"}) {
        INFO(std::string(name));
        HWND edit = panel.Create(name, "12345");
        SendMessageA(edit, EM_SETSEL, 1, 3);
        SendMessageA(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("ab"));
        SendMessageA(edit, WM_CHAR, 'c', 1);
        char text[16] = "";
        GetWindowTextA(edit, text, sizeof text);
        CHECK(text == std::string("1abc45"));
    }
    HWND combo = panel.Create("BCOMBOBOX", "Combo");
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("one"));
    CHECK(SendMessageA(combo, CB_GETCOUNT, 0, 0) == 1);
}

TEST_CASE("unloading leaves no class and gives everything back") {
    { const Unloaded warmUp; }
    const Resources before = CountResources();
    {
        const Unloaded unloaded;
        REQUIRE(GetModuleHandleA(CONTROL_LIBRARY) == nullptr);
        CHECK(CountRegistered() == 0);
        const TestPanel panel;
        CHECK(panel.Create("KNOB", "Knob") == nullptr);
        CHECK(ph_UnregisterControlClass("KNOB") == 0);    // the library has done so
        CHECK(CountResources().gdi < before.gdi);         // icons, bitmaps
        CHECK(CountResources().windows < before.windows); // tooltips
    }
    CHECK(CountRegistered() == 45);
    for (int round = 0; round < 5; ++round) {
        const Unloaded again;
    }
    Resources after = CountResources();
    after.handles = before.handles; // the compiler's runtime keeps two for each module it was in
    CHECK(after.IsAtMost(before));
}

TEST_CASE("a second copy of the library registers nothing and leaves the first one alone") {
    const TestFolder folder;
    const std::string copy = folder.Path("Second.dll");
    REQUIRE(CopyFileA((ProgramFolder() + CONTROL_LIBRARY).c_str(), copy.c_str(), TRUE));
    const int windows = CountResources().windows;
    HMODULE second = LoadLibraryA(copy.c_str());
    REQUIRE(second != nullptr);
    CHECK(BuildStampOf(second)(13, 0, 0) != nullptr);
    CHECK(CountResources().windows == windows);

    const TestPanel panel;
    HWND knob = panel.Create("KNOB", "Knob");
    CHECK(GetClassLongA(knob, GCL_HMODULE) == reinterpret_cast<LONG>(GetModuleHandleA(CONTROL_LIBRARY)));
    REQUIRE(FreeLibrary(second));
    CHECK(GetModuleHandleA("Second.dll") == nullptr);
    CHECK(CountRegistered() == 45);
    CHECK(SetValue(knob, 7.0F) == 1);
    CHECK(Value(knob) == 7.0F);
}

TEST_SUITE_END();
