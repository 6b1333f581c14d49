#include "Panel/editing/ContextMenu.h"

#include "Controls/resources/resource.h"
#include "Panel/resource.h"
#include "Panelhost/Messages.h"
#include "base/Handles.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int APPLY = 1;

struct MenuCommand {
    UINT item;
    int command;
};
constexpr MenuCommand COMMANDS[] = {
    {IDM_MODIFY_PROPERTIES, CMD_PROPERTIES},
    {IDM_CONNECTIONS, CMD_CONNECTIONS},
    {IDM_COPY, CMD_COPY},
    {IDM_CUT, CMD_CUT},
    {IDM_PASTE, CMD_PASTE},
    {IDM_DELETE, CMD_DELETE},
    {IDM_TO_FOREGROUND, CMD_TO_FOREGROUND},
    {IDM_TO_BACKGROUND, CMD_TO_BACKGROUND},
};

int Track(HMENU menu, HWND panel, POINT place) {
    return TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_NONOTIFY, place.x, place.y, 0,
                          GetAncestor(panel, GA_ROOT), nullptr);
}

void Extend(HMENU menu, HWND control) {
    SendMessageA(control, CWM_EXTENDMENU, 0, reinterpret_cast<LPARAM>(menu));
}

void SendApply(HWND control) {
    if (IsWindow(control)) { // the menu was open for a while
        SendMessageA(control, CWM_MENUCOMMAND, 0, 1);
    }
}

bool IsSeparator(HMENU menu, int position) {
    return (GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_SEPARATOR) != 0;
}

} // namespace

int AskEditMenu(HWND panel, POINT place, HWND control, bool canPaste) {
    const Menu resource(
        LoadMenuA(GetModuleHandleA("OSMIRControlLib.dll"), MAKEINTRESOURCEA(IDR_CONTROL_MENU)));
    const HMENU menu = GetSubMenu(resource.get(), 0);
    if (!menu) {
        return 0;
    }
    for (const MenuCommand& entry : COMMANDS) {
        const bool enabled =
            entry.command == CMD_PASTE ? canPaste : control != nullptr || entry.command == CMD_PROPERTIES;
        EnableMenuItem(menu, entry.item, enabled ? MF_ENABLED : MF_GRAYED);
    }
    if (control) {
        Extend(menu, control);
    }
    for (const MenuCommand& entry : COMMANDS) { // the frame tells what its commands do
        MENUITEMINFOA item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_ID;
        item.wID = static_cast<UINT>(entry.command);
        SetMenuItemInfoA(menu, entry.item, FALSE, &item);
    }
    const int chosen = Track(menu, panel, place);
    if (chosen == APPLY) {
        SendApply(control);
    }
    const auto row = std::find_if(std::begin(COMMANDS), std::end(COMMANDS),
                                  [&](const MenuCommand& entry) { return entry.command == chosen; });
    return row == std::end(COMMANDS) ? 0 : chosen;
}

void OfferControlMenu(HWND panel, POINT place, HWND control) {
    const Menu menu(CreatePopupMenu());
    Extend(menu.get(), control);
    while (GetMenuItemCount(menu.get()) > 0 && IsSeparator(menu.get(), 0)) {
        DeleteMenu(menu.get(), 0, MF_BYPOSITION); // there is nothing before it
    }
    if (GetMenuItemCount(menu.get()) > 0 && Track(menu.get(), panel, place) == APPLY) {
        SendApply(control);
    }
}
