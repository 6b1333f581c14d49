// The light and the dark theme of the program, and its pictures.

#include "Panel/common/CommandLine.h"
#include "Panel/common/Settings.h"
#include "Panel/theme/Theme.h"
#include "base/Gdi.h"
#include "tests/windows/PanelProgram.h"
#include "tests/windows/Resources.h"

#include <cmath>
#include <string>

TEST_SUITE_BEGIN("PanelTheme");

namespace {

double Luminance(COLORREF colour) {
    const auto linear = [](int value) {
        const double light = value / 255.0;
        return light <= 0.03928 ? light / 12.92 : std::pow((light + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(colour)) + 0.7152 * linear(GetGValue(colour)) +
           0.0722 * linear(GetBValue(colour));
}

double Contrast(COLORREF one, COLORREF other) {
    const double lighter = std::max(Luminance(one), Luminance(other));
    const double darker = std::min(Luminance(one), Luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

// What the system says of the theme of programs; as before in the end.
class SystemTheme {
public:
    SystemTheme() {
        had_ = RegGetValueA(HKEY_CURRENT_USER, KEY, NAME, RRF_RT_REG_DWORD, nullptr, &was_, &size_) == 0;
    }
    ~SystemTheme() { had_ ? Set(was_) : static_cast<void>(RegDeleteKeyValueA(HKEY_CURRENT_USER, KEY, NAME)); }
    void Set(DWORD isLight) const {
        RegSetKeyValueA(HKEY_CURRENT_USER, KEY, NAME, REG_DWORD, &isLight, sizeof isLight);
    }

private:
    static constexpr const char* KEY = "Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    static constexpr const char* NAME = "AppsUseLightTheme";
    DWORD was_ = 1;
    DWORD size_ = sizeof was_;
    bool had_;
};

// The windows that have a ground in one of the system's pale colours, by their classes.
std::string PaleWindows(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == "PanelWindow") {
        return "";
    }
    const Bitmap bitmap(CreatePixels(1, 1));
    const MemoryDc dc(bitmap.get());
    SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.Get()), 0);
    std::string pale = Luminance(GetPixel(dc.Get(), 0, 0)) > 0.3 ? std::string(name) + " " : "";
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        pale += PaleWindows(child);
    }
    return pale;
}

} // namespace

TEST_CASE("texts of the dark theme can be read") {
    OverrideTheme("dark");
    const ThemeColours& colours = Colours();
    const std::pair<COLORREF, COLORREF> pairs[] = {
        {colours.text, colours.ground},          {colours.text, colours.field},
        {colours.text, colours.raised},          {colours.dimText, colours.ground},
        {colours.dimText, colours.field},        {colours.selectionText, colours.selection},
        {colours.selectionText, colours.raised}, {colours.refusedText, colours.refusedGround},
        {colours.refusedText, colours.ground},   {colours.noticeText, colours.noticeGround}};
    for (const auto& [text, ground] : pairs) {
        CAPTURE(text);
        CHECK(Contrast(text, ground) >= 4.5);
    }
    OverrideTheme("no theme");
    CHECK(IsDarkTheme());
    OverrideTheme("system");
}

TEST_CASE("the program follows the theme of the system while it is to") {
    const SystemTheme system;
    const PanelHere program("size=300,200\r\n");
    const auto tell = [&] {
        SendMessageA(program.Frame(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>("ImmersiveColorSet"));
    };
    for (const bool isDark : {true, false, true}) {
        system.Set(isDark ? 0 : 1);
        SendMessageA(program.Frame(), WM_SETTINGCHANGE, 0, 0);
        CHECK(IsDarkTheme() != isDark); // another setting
        tell();
        CHECK(IsDarkTheme() == isDark);
    }
    OverrideTheme("light");
    tell();
    CHECK_FALSE(IsDarkTheme());
    system.Set(1);
    OverrideTheme("system");
}

TEST_CASE("no window of the program stays pale in the dark theme, and nothing is left behind by changes") {
    PanelHere program("size=300,200\r\n");
    program.Command(CMD_EDIT_MODE);
    const HWND tree = program.Below(program.Part("PanelPalette"), WC_TREEVIEWA);
    const COLORREF before = TreeView_GetBkColor(tree);
    for (const int command : {CMD_SNAPSHOTS, CMD_VIEW_TRACE, CMD_VIEW_BINDINGS, CMD_CHECK, CMD_DEVICES}) {
        program.Command(command);
    }
    const auto isPale = [&] {
        std::string pale = PaleWindows(program.Frame());
        for (const char* name :
             {"PanelSnapshots", "PanelTrace", "PanelBindings", "PanelCheck", "PanelLayers", "PanelDevices"}) {
            pale += PaleWindows(FindWindowA(name, nullptr));
        }
        return pale;
    };
    OverrideTheme("light");
    CHECK(Contains(isPale(), "PanelPalette "));
    const std::string left = LeftBehind(10, [] {
        OverrideTheme("dark");
        OverrideTheme("light");
    });
    CHECK(left == "");
    OverrideTheme("dark");
    CHECK(isPale() == "");
    CHECK(TreeView_GetBkColor(tree) == Colours().field);
    OverrideTheme("system");
    CHECK(TreeView_GetBkColor(tree) == before);
}

TEST_CASE("the theme is kept with the other settings; that of earlier versions is taken over once") {
    constexpr const char* KEY = "Software\\OSMIR\\Panel";
    const auto setOld = [](const std::string& word) {
        RegSetKeyValueA(HKEY_CURRENT_USER, KEY, "Theme", REG_SZ, word.c_str(),
                        static_cast<DWORD>(word.size() + 1));
    };
    const TestFolder folder;
    CommandLine named;
    named.settingsFolder = folder.Path("settings");
    CommandLine unattended;
    unattended.unattended = true;
    const CommandLine usual;
    const std::string file = SettingsFolder(usual) + "\\Theme.txt";
    DeleteFileA(file.c_str());

    setOld("dark");
    const auto choiceOf = [](const CommandLine& commandLine) {
        RestoreTheme(commandLine);
        return ChosenTheme();
    };
    CHECK(choiceOf(named) == ThemeChoice::System);
    CHECK(choiceOf(unattended) == ThemeChoice::Dark);
    CHECK(GetFileAttributesA(file.c_str()) == INVALID_FILE_ATTRIBUTES);
    CHECK(choiceOf(usual) == ThemeChoice::Dark);
    CHECK(RegGetValueA(HKEY_CURRENT_USER, KEY, "Theme", RRF_RT_ANY, nullptr, nullptr, nullptr) ==
          ERROR_FILE_NOT_FOUND);
    setOld("light");
    CHECK(choiceOf(usual) == ThemeChoice::Dark);
    CHECK(choiceOf(unattended) == ThemeChoice::Dark);
    choiceOf(named);
    ChooseTheme(ThemeChoice::Light);
    CHECK(choiceOf(usual) == ThemeChoice::Dark);
    CHECK(choiceOf(named) == ThemeChoice::Light);
    ChooseTheme(ThemeChoice::System);
    RegDeleteKeyValueA(HKEY_CURRENT_USER, KEY, "Theme");
    DeleteFileA(file.c_str());
}

TEST_SUITE_END();
