// No text is cut off: on the demo panels, with every button in both states, and in the dialogs.

#include "tests/windows/ControlClasses.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <optional>
#include <set>

TEST_SUITE_BEGIN("Captions");

namespace {

std::string ClassOf(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

std::string TextIn(HWND window) {
    char text[4096] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

// What a window draws by itself, with the room that each text has there.
class DrawnTexts {
public:
    DrawnTexts() { current_ = this; }
    ~DrawnTexts() { current_ = nullptr; }
    DrawnTexts(const DrawnTexts&) = delete;
    DrawnTexts& operator=(const DrawnTexts&) = delete;

    void Paint(HWND window) {
        painted_ = window;
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_NOCHILDREN);
        painted_ = nullptr;
    }
    int Count() const { return count_; }
    const std::set<std::string>& Cut() const { return cut_; }
    void Note(HWND window, const std::string& text, SIZE needed, SIZE room) {
        ++count_;
        if (needed.cx > room.cx || needed.cy > room.cy) {
            char name[128] = "";
            const HOSTINFO* object = a_FromWindow(window);
            lstrcpynA(name, object != nullptr ? object->name.c_str() : ClassOf(window).c_str(), sizeof name);
            cut_.insert(std::string(name) + ": \"" + text + "\" needs " + std::to_string(needed.cx) + " x " +
                        std::to_string(needed.cy) + " of " + std::to_string(room.cx) + " x " +
                        std::to_string(room.cy));
        }
    }

private:
    // Text in a box.
    static int WINAPI DrawInBox(HDC dc, const char* text, int length, RECT* box, UINT format) {
        auto* const original = current_->drawText_.Original<decltype(DrawTextA)>();
        if ((format & DT_CALCRECT) == 0 && current_->painted_ != nullptr) {
            RECT needed = *box;
            original(dc, text, length, &needed, (format & ~(DT_END_ELLIPSIS | DT_NOCLIP)) | DT_CALCRECT);
            current_->Note(current_->painted_, length < 0 ? text : std::string(text, text + length),
                           {needed.right - needed.left, needed.bottom - needed.top},
                           {box->right - box->left, box->bottom - box->top});
        }
        return original(dc, text, length, box, format);
    }
    // Text at a place: it must stay within the window. Pictures of another size are drawn on to measure
    // texts.
    static void NoteAt(HDC dc, int x, const char* text, int length) {
        RECT client{};
        const HWND window = current_->painted_;
        if (window == nullptr || length <= 0) {
            return;
        }
        GetClientRect(window, &client);
        BITMAP picture{};
        GetObjectA(GetCurrentObject(dc, OBJ_BITMAP), sizeof picture, &picture);
        if (WindowFromDC(dc) == nullptr && picture.bmWidth != client.right) {
            return;
        }
        SIZE extent{};
        GetTextExtentPoint32A(dc, text, length, &extent);
        const UINT alignment = GetTextAlign(dc) & (TA_CENTER | TA_RIGHT);
        const int left = alignment == TA_CENTER  ? x - extent.cx / 2
                         : alignment == TA_RIGHT ? x - extent.cx
                                                 : x;
        LOGFONTA font{};
        GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
        if (font.lfEscapement == 0 && (left < 0 || left + extent.cx > client.right)) {
            current_->Note(window, std::string(text, text + length), {extent.cx, extent.cy},
                           {std::min<LONG>(client.right - left, left + extent.cx), client.bottom});
        } else {
            ++current_->count_;
        }
    }
    static BOOL WINAPI DrawAt(HDC dc, int x, int y, const char* text, int length) {
        NoteAt(dc, x, text, length);
        return current_->textOut_.Original<decltype(TextOutA)>()(dc, x, y, text, length);
    }

    // The same, cut off at the edges of a box.
    static BOOL WINAPI DrawClipped(HDC dc, int x, int y, UINT options, const RECT* box, const char* text,
                                   UINT length, const INT* spacing) {
        LOGFONTA font{};
        GetObjectA(GetCurrentObject(dc, OBJ_FONT), sizeof font, &font);
        if (current_->painted_ != nullptr && (options & ETO_CLIPPED) != 0 && font.lfEscapement == 0) {
            SIZE extent{};
            GetTextExtentPoint32A(dc, text, static_cast<int>(length), &extent);
            current_->Note(current_->painted_, std::string(text, text + length), {extent.cx, 0},
                           {box->right - box->left, 0});
        }
        return current_->extTextOut_.Original<decltype(ExtTextOutA)>()(dc, x, y, options, box, text, length,
                                                                       spacing);
    }

    static inline DrawnTexts* current_ = nullptr;
    HWND painted_ = nullptr;
    std::set<std::string> cut_;
    int count_ = 0;
    ImportHook drawText_{CONTROL_LIBRARY, "DrawTextA", DrawInBox};
    ImportHook textOut_{CONTROL_LIBRARY, "TextOutA", DrawAt};
    ImportHook extTextOut_{CONTROL_LIBRARY, "ExtTextOutA", DrawClipped};
};

SIZE Extent(HWND window, const std::string& text, UINT format, int width) {
    const HDC dc = GetDC(window);
    const auto font = reinterpret_cast<HFONT>(SendMessageA(window, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(dc, font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    RECT box{0, 0, width, 0};
    DrawTextA(dc, text.c_str(), -1, &box, format | DT_CALCRECT);
    SelectObject(dc, before);
    ReleaseDC(window, dc);
    return {box.right, box.bottom};
}

// The text of a window that the system draws, with the room that it has; nothing for one without any.
std::optional<std::pair<SIZE, SIZE>> SystemText(HWND window) {
    const std::string text = TextIn(window);
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    RECT client{};
    GetClientRect(window, &client);
    SIZE room{client.right, client.bottom};
    UINT format = DT_SINGLELINE;
    const std::string ofClass = ClassOf(window);
    if (text.empty() || (style & WS_VISIBLE) == 0) {
        return std::nullopt;
    }
    if (lstrcmpiA(ofClass.c_str(), "Static") == 0) {
        const DWORD kind = style & SS_TYPEMASK;
        if (kind == SS_ICON || kind == SS_BITMAP || kind >= SS_ETCHEDHORZ || (style & SS_ELLIPSISMASK) != 0) {
            return std::nullopt;
        }
        const bool isWrapped = kind <= SS_RIGHT && (style & SS_CENTERIMAGE) == 0;
        format = (isWrapped ? DT_WORDBREAK : DT_SINGLELINE) | ((style & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0U);
    } else if (lstrcmpiA(ofClass.c_str(), "Button") == 0) {
        switch (style & BS_TYPEMASK) {
        case BS_GROUPBOX:
            room = {client.right - 16, client.bottom};
            break;
        case BS_PUSHBUTTON:
        case BS_DEFPUSHBUTTON:
        case BS_OWNERDRAW:
            room.cx -= 4;
            break;
        default:
            room.cx -= GetSystemMetrics(SM_CXMENUCHECK) + 4;
            format = (style & BS_MULTILINE) != 0 ? DT_WORDBREAK : DT_SINGLELINE;
        }
    } else if (ofClass.find("COMBOBOX") != std::string::npos || ofClass == "ComboBox") {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        if (GetComboBoxInfo(window, &info) == FALSE) {
            return std::nullopt;
        }
        room.cx = info.rcItem.right - info.rcItem.left;
    } else {
        return std::nullopt;
    }
    return std::pair{Extent(window, text, format, room.cx), room};
}

std::string All(const std::set<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines) {
        all += line + "\n";
    }
    return all;
}

// Strips of the classic style have texts that are given, with less room than they need.
bool IsClassicStrip(HWND window) {
    for (HWND outer = window; outer != nullptr; outer = GetAncestor(outer, GA_PARENT)) {
        const std::string ofClass = ClassOf(outer);
        if (ofClass == "MIXER" || ofClass == "AUTOMIXER" || ofClass == "CROSSOVER") {
            return true;
        }
    }
    return false;
}

void NoteAll(DrawnTexts& texts, const TestPanel& panel, bool isDark) {
    for (const HWND control : ChildrenOf(panel.Window())) {
        if (!isDark && IsClassicStrip(control)) {
            continue;
        }
        texts.Paint(control);
        if (const auto text = SystemText(control)) {
            texts.Note(control, TextIn(control), text->first, text->second);
        }
    }
}

} // namespace

TEST_CASE("every text of the demo panels has room, on and off") {
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA("*.panel", &found);
    int panels = 0;
    int dark = 0;
    do {
        const std::string file = found.cFileName;
        INFO(file);
        const TestPanel panel(TestPanel::Visible);
        DrawnTexts texts;
        SetWindowPos(panel.Window(), nullptr, 0, 0, 1300, 900, SWP_NOMOVE | SWP_NOZORDER);
        const std::string devices = file.substr(0, file.size() - 6) + ".devices";
        ph_LoadDevices(panel.Root(), devices.c_str());
        REQUIRE(ph_LoadPanel(panel.Root(), file.c_str()) > 0);
        ++panels;
        const bool isDark = ReadBytes(file).find("style=dark") != std::string::npos;
        dark += isDark ? 1 : 0;
        for (const bool isOn : {false, true}) {
            for (const HWND control : ChildrenOf(panel.Window())) {
                if (ClassOf(control).find("BUTTON") != std::string::npos) {
                    SetValue(control, isOn ? 1.0F : 0.0F);
                } else if (a_FromWindow(control) != nullptr) {
                    Poll(control);
                }
            }
            NoteAll(texts, panel, isDark);
        }
        CHECK(texts.Count() > 10);
        CHECK(All(texts.Cut()) == "");
    } while (FindNextFileA(search, &found) != FALSE);
    FindClose(search);
    CHECK(panels >= 9);
    CHECK(dark >= 8);
}

namespace {

SYSTEMTIME today{};

void WINAPI TellToday(SYSTEMTIME* time) {
    *time = today;
}

} // namespace

// A clock whose text is wider grows over what stands beside it.
TEST_CASE("the clocks of the demo panels have room for every day of the year, also in German") {
    int clocks = 0;
    for (const char* file : {"Buttons.panel", "Interfaces.panel", "Mixer.panel"}) {
        INFO(std::string(file));
        const TestPanel panel;
        REQUIRE(ph_LoadPanel(panel.Root(), file) > 0);
        const ImportHook date(CONTROL_LIBRARY, "GetLocalTime", TellToday);
        for (const HWND control : ChildrenOf(panel.Window())) {
            if (ClassOf(control) != "CLOCK") {
                continue;
            }
            ++clocks;
            RECT place{};
            GetClientRect(control, &place);
            for (WORD month = 1; month <= 12; ++month) {
                for (WORD day = 22; day <= 28; ++day) { // each day of the week once
                    SYSTEMTIME asked{2026, month, 0, day, 20, 8, 8, 0};
                    FILETIME inBetween{}; // finds the day of the week
                    SystemTimeToFileTime(&asked, &inBetween);
                    FileTimeToSystemTime(&inBetween, &today);
                    Load(control, "font=" + Text(control, "font")); // has it measured
                    RECT now{};
                    GetClientRect(control, &now);
                    INFO(TextIn(control));
                    CHECK(now.right == place.right);
                    CHECK(now.bottom == place.bottom);
                }
            }
        }
    }
    CHECK(clocks == 3);
}

namespace {

INT_PTR CALLBACK Nothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

void NoteDialog(DrawnTexts& texts, HWND dialog) {
    for (const HWND item : ChildrenOf(dialog)) {
        if (const auto text = SystemText(item)) {
            texts.Note(item, TextIn(item), text->first, text->second);
        }
    }
}

BOOL CALLBACK NoteTemplate(HMODULE module, LPCSTR, LPSTR name, LONG_PTR texts) {
    const HWND dialog = CreateDialogParamA(module, name, nullptr, Nothing, 0);
    CHECK(dialog != nullptr);
    NoteDialog(*reinterpret_cast<DrawnTexts*>(texts), dialog);
    DestroyWindow(dialog);
    return TRUE;
}

} // namespace

TEST_CASE("every text of the dialogs has room") {
    DrawnTexts texts;
    for (const char* module : {static_cast<const char*>(nullptr), "Panelhost.dll", CONTROL_LIBRARY}) {
        EnumResourceNamesA(GetModuleHandleA(module), RT_DIALOG, NoteTemplate,
                           reinterpret_cast<LONG_PTR>(&texts));
    }
    CHECK(texts.Count() > 80);
    const TestPanel panel;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        const HWND control = panel.Create(expected.name, "Control");
        HWND dialog = nullptr;
        SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
        if (dialog != nullptr) {
            NoteDialog(texts, dialog);
            DestroyWindow(dialog);
        }
        DestroyWindow(control);
    }
    CHECK(All(texts.Cut()) == "");
}

TEST_SUITE_END();
