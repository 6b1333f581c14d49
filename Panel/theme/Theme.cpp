#include "Panel/theme/Theme.h"

#include "Panel/common/CommandLine.h"
#include "Panel/common/Settings.h"
#include "Panel/theme/ThemedControls.h"
#include "base/Handles.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

constexpr const char* SETTING = "Theme.txt";
constexpr const char* WORDS[] = {"system", "light", "dark"}; // by ThemeChoice

// Where earlier versions kept it.
constexpr const char* OLD_KEY = "Software\\OSMIR\\Panel";
constexpr const char* OLD_VALUE = "Theme";

constexpr ThemeColours DARK{
    .ground = RGB(32, 36, 43),
    .field = RGB(24, 27, 33),
    .raised = RGB(48, 54, 64),
    .text = RGB(226, 230, 236),
    .dimText = RGB(142, 151, 164),
    .rule = RGB(51, 57, 67),
    .edge = RGB(74, 82, 95),
    .accent = RGB(74, 163, 255),
    .selection = RGB(35, 86, 143),
    .selectionText = RGB(255, 255, 255),
    .surround = RGB(17, 19, 23),
    .refusedText = RGB(255, 138, 150),
    .refusedGround = RGB(66, 30, 38),
    .noticeGround = RGB(66, 54, 22),
    .noticeEdge = RGB(126, 103, 44),
    .noticeText = RGB(255, 233, 176),
};

ThemeColours SystemColours() {
    return {.ground = GetSysColor(COLOR_BTNFACE),
            .field = GetSysColor(COLOR_WINDOW),
            .raised = GetSysColor(COLOR_BTNFACE),
            .text = GetSysColor(COLOR_WINDOWTEXT),
            .dimText = GetSysColor(COLOR_GRAYTEXT),
            .rule = GetSysColor(COLOR_BTNFACE),
            .edge = GetSysColor(COLOR_3DSHADOW),
            .accent = GetSysColor(COLOR_HIGHLIGHT),
            .selection = GetSysColor(COLOR_HIGHLIGHT),
            .selectionText = GetSysColor(COLOR_HIGHLIGHTTEXT),
            .surround = GetSysColor(COLOR_APPWORKSPACE),
            .refusedText = RGB(176, 0, 32),
            .refusedGround = RGB(255, 235, 238),
            .noticeGround = RGB(255, 244, 206),
            .noticeEdge = RGB(214, 178, 84),
            .noticeText = RGB(64, 48, 0)};
}

bool SystemIsDark() {
    HIGHCONTRASTA contrast{};
    contrast.cbSize = sizeof contrast;
    if (SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0) {
        return false; // its colours are the system's own
    }
    DWORD isLight = 1;
    DWORD size = sizeof isLight;
    RegGetValueA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                 "AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &isLight, &size);
    return isLight == 0;
}

std::optional<ThemeChoice> ChoiceOf(const std::string& word) {
    const auto found = std::find(std::begin(WORDS), std::end(WORDS), word);
    return found == std::end(WORDS) ? std::nullopt
                                    : std::optional(static_cast<ThemeChoice>(found - std::begin(WORDS)));
}

struct Theme {
    ThemeChoice choice;
    bool isDark;
    ThemeColours colours;

    explicit Theme(ThemeChoice chosen)
        : choice(chosen),
          isDark(chosen == ThemeChoice::System ? SystemIsDark() : chosen == ThemeChoice::Dark),
          colours(isDark ? DARK : SystemColours()) {}
};

Theme& Now() {
    static Theme theme(ThemeChoice::System);
    return theme;
}

// Where the choice is kept; empty for this run alone.
std::string& Keeper() {
    static std::string folder;
    return folder;
}

bool Keep(ThemeChoice choice) {
    return WriteSettings(Keeper(), SETTING, std::string(WORDS[static_cast<int>(choice)]) + "\r\n");
}

std::optional<ThemeChoice> KeptIn(const std::string& folder) {
    const std::string text = ReadSettings(folder, SETTING);
    return ChoiceOf(text.substr(0, text.find_first_of("\r\n")));
}

// Moves it to where it is kept now.
std::optional<ThemeChoice> TakeOld() {
    char word[16] = "";
    DWORD size = sizeof word;
    if (RegGetValueA(HKEY_CURRENT_USER, OLD_KEY, OLD_VALUE, RRF_RT_REG_SZ, nullptr, word, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    const auto choice = ChoiceOf(word);
    if (choice && Keep(*choice)) {
        RegDeleteKeyValueA(HKEY_CURRENT_USER, OLD_KEY, OLD_VALUE);
    }
    return choice;
}

BOOL CALLBACK ApplyToOwn(HWND window, LPARAM) noexcept {
    char className[32] = "";
    GetClassNameA(window, className, sizeof className);
    if (IsOwnWindow(className)) {
        ApplyTheme(window);
    }
    return TRUE;
}

void Change(ThemeChoice choice) {
    Now() = Theme(choice);
    EnumThreadWindows(GetCurrentThreadId(), ApplyToOwn, 0);
}

// The frame that the system draws. Systems that know no dark one leave it as it is.
void DarkenCaption(HWND window, bool isDark) {
    constexpr DWORD IMMERSIVE_DARK_MODE = 20;
    using Setter = HRESULT(WINAPI*)(HWND, DWORD, const void*, DWORD);
    static const Library library(LoadLibraryA("dwmapi.dll"));
    static const auto set = library ? reinterpret_cast<Setter>(reinterpret_cast<void*>(
                                          GetProcAddress(library.get(), "DwmSetWindowAttribute")))
                                    : nullptr;
    if (set) {
        const BOOL dark = isDark;
        set(window, IMMERSIVE_DARK_MODE, &dark, sizeof dark);
    }
}

} // namespace

const ThemeColours& Colours() {
    return Now().colours;
}

bool IsDarkTheme() {
    return Now().isDark;
}

ThemeChoice ChosenTheme() {
    return Now().choice;
}

void ChooseTheme(ThemeChoice choice) {
    Keep(choice);
    Change(choice);
}

void RestoreTheme(const CommandLine& commandLine) {
    Keeper() = SettingsFolder(commandLine);
    auto choice = KeptIn(SettingsSource(commandLine));
    if (!choice && commandLine.settingsFolder.empty()) {
        choice = TakeOld();
    }
    Change(choice.value_or(ThemeChoice::System));
}

void OverrideTheme(const std::string& word) {
    if (const auto choice = ChoiceOf(word)) {
        Change(*choice);
    }
}

void FollowSystemTheme() {
    Change(Now().choice);
}

void ApplyTheme(HWND window) {
    DarkenCaption(window, IsDarkTheme());
    ThemeWindows(window, IsDarkTheme());
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void FillThemed(HDC dc, const RECT& place, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}
