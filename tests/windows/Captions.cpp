// Whether the texts of the demo panels and of all dialogs fit into their places.

#include "logic/controls/ClockText.h"
#include "Panelhost/Fonts.h"
#include "base/Gdi.h"
#include "tests/windows/Buttons.h"

#include <commctrl.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

// Of a text in one line, or broken into lines of that width.
SIZE Measure(HFONT font, const std::string& text, UINT format, int width = 0) {
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(screen, font);
    RECT area{0, 0, width, 0};
    DrawTextA(screen, text.c_str(), -1, &area, format | DT_CALCRECT);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return {area.right, area.bottom};
}

SIZE Measure(const std::string& font, const std::string& text) {
    const HFONT handle = a_GetFont(font.c_str());
    REQUIRE(handle != nullptr);
    const SIZE size = Measure(handle, text, DT_NOPREFIX);
    a_ReleaseFont(handle);
    return size;
}

std::string ClassOf(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

SIZE ClientSize(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

// The widest and the highest of what a clock shows in the course of a year.
SIZE LargestClockText(const std::string& font) {
    SIZE largest{};
    for (const auto language : {logic::ClockLanguage::English, logic::ClockLanguage::German}) {
        for (int month = 1; month <= 12; ++month) {
            for (int weekday = 0; weekday < 7; ++weekday) {
                const SIZE size =
                    Measure(font, logic::ClockText({2026, month, 28, weekday, 20, 58, 58}, language));
                largest = {std::max(largest.cx, size.cx), std::max(largest.cy, size.cy)};
            }
        }
    }
    return largest;
}

// What a control keeps free beside and above its caption, pressed or not: a mark, the rim, one pixel of way.
SIZE TextRoom(HWND control, const std::string& className) {
    SIZE room = ClientSize(control);
    if (className == "CONTACTBUTTON" || className == "BBUTTON" || className == "SWITCH") {
        room.cx -= 2;
        room.cy -= 2;
    }
    return room;
}

struct Template {
    std::string name;
    std::vector<char> bytes;
};

BOOL CALLBACK TakeTemplate(HMODULE module, LPCSTR, LPSTR name, LONG_PTR list) {
    const HRSRC found = FindResourceA(module, name, RT_DIALOG);
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(module, found)));
    reinterpret_cast<std::vector<Template>*>(list)->push_back(
        {IS_INTRESOURCE(name) ? std::to_string(reinterpret_cast<ULONG_PTR>(name)) : std::string(name),
         {bytes, bytes + SizeofResource(module, found)}});
    return TRUE;
}

INT_PTR CALLBACK DoNothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

// What the text of an item needs; a negative width for what has none that could be cut.
SIZE NeededBy(HWND item) {
    const std::string className = ClassOf(item);
    char text[512] = "";
    GetWindowTextA(item, text, sizeof text);
    const bool isButton = lstrcmpiA(className.c_str(), "BUTTON") == 0;
    if (text[0] == '\0' || (!isButton && lstrcmpiA(className.c_str(), "STATIC") != 0)) {
        return {-1, 0};
    }
    const auto font = reinterpret_cast<HFONT>(SendMessageA(item, WM_GETFONT, 0, 0));
    const LONG style = GetWindowLongA(item, GWL_STYLE);
    if (!isButton) {
        const bool isOneLine = (style & SS_TYPEMASK) == SS_LEFTNOWORDWRAP || (style & SS_CENTERIMAGE) != 0;
        const UINT wrap = isOneLine ? DT_SINGLELINE : DT_WORDBREAK;
        return Measure(font, text, wrap | ((style & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0),
                       static_cast<int>(ClientSize(item).cx));
    }
    SIZE size = Measure(font, text, DT_SINGLELINE);
    const LONG kind = style & BS_TYPEMASK;
    constexpr int MARK = 16;
    constexpr int RIM = 4;
    size.cx += kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON || kind == BS_GROUPBOX ? 2 * RIM : MARK;
    size.cy = kind == BS_GROUPBOX ? 0 : size.cy;
    return size;
}

} // namespace

TEST_SUITE_BEGIN("Captions");

TEST_CASE("no caption of a demo panel is cut, and no clock in either language") {
    int panels = 0;
    int measured = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ProgramFolder())) {
        const std::string file = entry.path().string();
        if (entry.path().extension() != ".panel") {
            continue;
        }
        ++panels;
        const TestPanel panel;
        REQUIRE(ph_LoadPanel(panel.Root(), file.c_str()) > 0);
        for (HWND control = GetWindow(panel.Window(), GW_CHILD); control != nullptr;
             control = GetWindow(control, GW_HWNDNEXT)) {
            const std::string className = ClassOf(control);
            const bool isClock = className == "CLOCK";
            const std::string caption = isClock || className == "EDIT2" ? "" : Text(control, "caption");
            const std::string font = Text(control, "font");
            if (font.empty() || (caption.empty() && !isClock)) {
                continue;
            }
            const SIZE needed = isClock ? LargestClockText(font) : Measure(font, caption);
            const SIZE room = TextRoom(control, className);
            const bool fits = needed.cx <= room.cx && needed.cy <= room.cy;
            const std::string what = file + " " + a_OwnName(&ObjectOf(control)) + ": " + caption + " needs " +
                                     std::to_string(needed.cx) + " x " + std::to_string(needed.cy) + " of " +
                                     std::to_string(room.cx) + " x " + std::to_string(room.cy);
            CHECK_MESSAGE(fits, what);
            ++measured;
        }
    }
    CHECK(panels >= 10);
    CHECK(measured > 100);
}

TEST_CASE("no text of a dialog is cut") {
    int dialogs = 0;
    for (const char* binary : {"Panel.exe", "Panelhost.dll", "OSMIRControlLib.dll"}) {
        const HMODULE module =
            LoadLibraryExA((ProgramFolder() + binary).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        REQUIRE(module != nullptr);
        std::vector<Template> templates;
        EnumResourceNamesA(module, reinterpret_cast<LPCSTR>(RT_DIALOG), TakeTemplate,
                           reinterpret_cast<LONG_PTR>(&templates));
        for (const Template& made : templates) {
            const HWND dialog = CreateDialogIndirectParamA(
                GetModuleHandleA(nullptr), reinterpret_cast<LPCDLGTEMPLATEA>(made.bytes.data()), nullptr,
                DoNothing, 0);
            const std::string place = std::string(binary) + " " + made.name;
            CHECK_MESSAGE(dialog != nullptr, place);
            ++dialogs;
            for (HWND item = GetWindow(dialog, GW_CHILD); item != nullptr;
                 item = GetWindow(item, GW_HWNDNEXT)) {
                const SIZE needed = NeededBy(item);
                const SIZE room = ClientSize(item);
                const bool fits = needed.cx <= room.cx && needed.cy <= room.cy;
                const std::string what = place + ": " + TextOf(item) + " needs " + std::to_string(needed.cx) +
                                         " x " + std::to_string(needed.cy) + " of " +
                                         std::to_string(room.cx) + " x " + std::to_string(room.cy);
                CHECK_MESSAGE(fits, what);
            }
            DestroyWindow(dialog);
        }
        FreeLibrary(module);
    }
    CHECK(dialogs > 20);
}

TEST_SUITE_END();
