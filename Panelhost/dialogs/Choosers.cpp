// The system's choosers, with values as property text.

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Fonts.h"
#include "Panelhost/dialogs/ApplicationFiles.h"
#include "base/Guard.h"
#include "logic/text/Numbers.h"

#include <commdlg.h>
#include <cstdio>

namespace {

std::string ChooseColour(HWND owner, const std::string& current) {
    static COLORREF custom[16] = {};
    CHOOSECOLORA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = owner;
    chooser.rgbResult = logic::ParseWholeHex(current).value_or(0) & 0xFFFFFF;
    chooser.lpCustColors = custom;
    chooser.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (!ChooseColorA(&chooser)) {
        return {};
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(chooser.rgbResult));
    return text;
}

std::string ChooseFontText(HWND owner, const std::string& current) {
    LOGFONTA font{};
    const HFONT held = a_GetFont(current.c_str());
    if (held != nullptr) {
        GetObjectA(held, sizeof font, &font);
        a_ReleaseFont(held);
    }
    CHOOSEFONTA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = owner;
    chooser.lpLogFont = &font;
    chooser.Flags =
        CF_SCREENFONTS | CF_FORCEFONTEXIST | CF_NOSCRIPTSEL | (held != nullptr ? CF_INITTOLOGFONTSTRUCT : 0);
    if (!ChooseFontA(&chooser)) {
        return {};
    }
    constexpr int TENTHS = 10; // of a point, the chooser's unit
    const bool bold = font.lfWeight >= FW_BOLD;
    return std::string(font.lfFaceName) + "," + std::to_string((chooser.iPointSize + TENTHS / 2) / TENTHS) +
           (bold ? ",bold" : "");
}

std::string ChooseFileName(HWND owner, const std::string& current) {
    char file[MAX_PATH] = "";
    if (a_MakeFullPathName(current.c_str(), file) == 0 ||
        GetFileAttributesA(file) == INVALID_FILE_ATTRIBUTES ||
        (GetFileAttributesA(file) & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        *file = '\0'; // the chooser would not come up
    }
    OPENFILENAMEA chooser{};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = owner;
    chooser.lpstrFilter = "All files (*.*)\0*.*\0";
    chooser.lpstrFile = file;
    chooser.nMaxFile = sizeof file;
    chooser.Flags = OFN_NOCHANGEDIR | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
    return GetOpenFileNameA(&chooser) ? PropertyFileName(file) : "";
}

} // namespace

std::string a_ChooseColour(HWND owner, const std::string& current) {
    return Guarded(std::string(), [&] { return ChooseColour(owner, current); });
}

std::string a_ChooseFont(HWND owner, const std::string& current) {
    return Guarded(std::string(), [&] { return ChooseFontText(owner, current); });
}

std::string a_ChooseFile(HWND owner, const std::string& current) {
    return Guarded(std::string(), [&] { return ChooseFileName(owner, current); });
}
