// The menus of the panel program.

#include "base/Handles.h"

#include <doctest/doctest.h>

#include <windows.h>

#include <cctype>
#include <cstring>
#include <string>
#include <vector>

TEST_SUITE_BEGIN("PanelMenus");

TEST_CASE("no two entries of a menu have the same letter") {
    int menus = 0;
    const auto check = [&](auto again, HMENU menu) -> void {
        ++menus;
        std::string letters;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            char text[128] = "";
            GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            CAPTURE(std::string(text));
            if (const char* mark = std::strchr(text, '&')) {
                const auto letter = static_cast<char>(std::toupper(static_cast<unsigned char>(mark[1])));
                CHECK(letters.find(letter) == std::string::npos);
                letters += letter;
            }
            if (const HMENU sub = GetSubMenu(menu, i)) {
                again(again, sub);
            }
        }
    };
    std::vector<LPSTR> names;
    EnumResourceNamesA(
        nullptr, RT_MENU, [](HMODULE, LPCSTR, LPSTR name, LONG_PTR found) __attribute__((stdcall))->BOOL {
            reinterpret_cast<std::vector<LPSTR>*>(found)->push_back(name);
            return TRUE;
        },
        reinterpret_cast<LONG_PTR>(&names));
    for (const LPSTR name : names) {
        const Menu menu(LoadMenuA(nullptr, name));
        check(check, menu.get());
    }
    CHECK(menus > 20);
}

TEST_SUITE_END();
