#include "Panel/help/HelpPages.h"

#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"
#include "base/FileNames.h"

#include <shellapi.h>

#include <algorithm>
#include <cctype>
#include <iterator>

namespace {

// A window by its class, a dialog by the number in its resource.
struct PageRow {
    const char* className;
    DWORD dialog;
    const char* page;
};
constexpr const char* DIALOG_CLASS = "#32770";
constexpr PageRow PAGES[] = {
    {"PanelBindings", 0, "bindings.html"},
    {"PanelCheck", 0, "panel-check.html"},
    {"PanelDevices", 0, "device-files.html#editing-in-the-program"},
    {"PanelLayers", 0, "panel-files.html#layers"},
    {"PanelObjects", 0, "building-panels.html#the-list-of-objects"},
    {"PanelProperties", 0, "properties-of-controls.html"},
    {"PanelReplace", 0, "bindings.html#find-and-replace"},
    {"PanelSnapshots", 0, "snapshots.html"},
    {"PanelTrace", 0, "panel-app.html#when-something-is-wrong"},
    {"PanelUnread", 0, "panel-app.html#when-something-is-wrong"},
    {DIALOG_CLASS, HELPID_ADD_DEVICE, "device-files.html#editing-in-the-program"},
    {DIALOG_CLASS, HELPID_CHANNEL, "building-panels.html#channels"},
    {DIALOG_CLASS, HELPID_LOCK, "operating.html#lock"},
    {DIALOG_CLASS, HELPID_RENAME, "building-panels.html#names"},
    {DIALOG_CLASS, HELPID_ROW, "building-panels.html#copies-in-a-row"},
};

// As a browser takes it.
std::wstring AddressOf(const std::wstring& file) {
    std::wstring address = L"file:///";
    for (const wchar_t letter : file) {
        switch (letter) {
        case L'\\':
            address += L'/';
            break;
        case L' ':
            address += L"%20";
            break;
        case L'#':
            address += L"%23";
            break;
        case L'%':
            address += L"%25";
            break;
        default:
            address += letter;
            break;
        }
    }
    return address;
}

std::string ClassOf(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

} // namespace

std::string HelpPageOfWindow(HWND window) {
    for (; window; window = GetParent(window)) {
        const std::string name = ClassOf(window);
        const DWORD dialog = name == DIALOG_CLASS ? GetWindowContextHelpId(window) : 0;
        const auto row = std::find_if(std::begin(PAGES), std::end(PAGES), [&](const PageRow& one) {
            return name == one.className && dialog == one.dialog;
        });
        if (row != std::end(PAGES)) {
            return row->page;
        }
    }
    return {};
}

std::string HelpPageOfClass(const char* className) {
    std::string name = className;
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return "property-reference.html#" + name;
}

std::string OpenHelpPage(const std::string& page) {
    const std::size_t place = page.find('#');
    const std::wstring file =
        WideFileName(ModuleFolder(nullptr)) + L"Documentation\\" + WideFileName(page.substr(0, place));
    if (GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES) {
        return "the documentation is not beside the program: " + NarrowText(file);
    }
    const std::string none = "no program shows web pages here. The page is " + NarrowText(file);
    // Asked to open a file, the system forgets the place on it: the program itself is given both.
    wchar_t program[MAX_PATH] = L"";
    if (reinterpret_cast<INT_PTR>(FindExecutableW(file.c_str(), nullptr, program)) <= 32) {
        return none;
    }
    const std::wstring address =
        AddressOf(file) + (place == std::string::npos ? L"" : WideFileName(page.substr(place)));
    SHELLEXECUTEINFOW open{};
    open.cbSize = sizeof open;
    open.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    open.lpFile = program;
    open.lpParameters = address.c_str();
    open.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&open) ? "" : none;
}
