// Panels of the style "dark".

#include "Panelhost/Root.h"
#include "tests/windows/TestPanel.h"

TEST_SUITE_BEGIN("DarkStyle");

TEST_CASE("a panel is classic or dark, and nothing else") {
    const TestPanel panel;
    const HOSTINFO& knob = ObjectOf(panel.Create("KNOB", "Knob"));
    const auto isStyle = [&](bool isDark) {
        return Text(panel.Window(), "style") == (isDark ? "dark" : "classic") && a_IsDark(&knob) == isDark &&
               a_IsDark(panel.Root()) == isDark && panel.Saved().starts_with("style=dark\r\n") == isDark;
    };
    CHECK(isStyle(false));
    for (const char* word : {"Dark", "dark ", "light", "1"}) {
        CAPTURE(word);
        CHECK(Load(panel.Window(), "style=" + std::string(word)) == 0);
        CHECK(isStyle(false));
    }
    for (const auto& [word, isDark] :
         {std::pair("dark", true), {"classic", false}, {"dark", true}, {"", false}}) {
        CAPTURE(word);
        CHECK(Load(panel.Window(), "style=" + std::string(word)) == 1);
        CHECK(a_IsChanged(panel.Root())); // until it is saved
        CHECK(isStyle(isDark));
    }
    CHECK_FALSE(a_IsDark(nullptr));
}

TEST_SUITE_END();
