#include "Panel/editing/ContextMenu.h"

#include "Controls/resources/resource.h"
#include "Panel/resource.h"
#include "Panelhost/Messages.h"
#include "base/Handles.h"

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
    const int chosen = Track(menu, panel, place);
    if (chosen == APPLY) {
        SendApply(control);
        return 0;
    }
    for (const MenuCommand& entry : COMMANDS) {
        if (static_cast<int>(entry.item) == chosen) {
            return entry.command;
        }
    }
    return 0;
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
