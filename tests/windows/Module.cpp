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
        CHECK(found.cbWndExtra == system.cbWndExtra + expected.extraBytes);
        CHECK(found.hbrBackground ==
              (expected.background == NULL_BACKGROUND ? GetStockObject(NULL_BRUSH)
               : expected.background == 0
                   ? system.hbrBackground
                   : reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(expected.background))));
        CHECK((found.hIcon != nullptr) == expected.hasIcon);
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

TEST_SUITE_END();
