// Panels of the style "dark".

#include "Panelhost/Root.h"
#include "base/Gdi.h"
#include "logic/drawing/PanelColours.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <string>
#include <vector>

TEST_SUITE_BEGIN("DarkStyle");

namespace {

// What a control and all the windows in it paint, as they lie over each other. Frames are left out.
class Shot {
public:
    explicit Shot(HWND control)
        : size_(SizeOfClient(control)), bitmap_(CreatePixels(size_.cx, size_.cy, &bits_)) {
        const MemoryDc dc(bitmap_.get());
        Paint(control, control, dc.Get());
        for (HWND child : ChildrenOf(control)) {
            if (IsVisibleIn(child, control)) {
                Paint(child, control, dc.Get());
            }
        }
        GdiFlush();
    }

    // 0xrrggbb.
    unsigned At(int x, int y) const { return bits_[y * size_.cx + x] & 0xFFFFFF; }
    RECT All() const { return {0, 0, size_.cx, size_.cy}; }
    // How many percent of the pixels fulfil a condition.
    template <class Condition>
    int Share(const RECT& area, Condition condition) const {
        int count = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                count += condition(At(x, y)) ? 1 : 0;
            }
        }
        return 100 * count / static_cast<int>((area.right - area.left) * (area.bottom - area.top));
    }

private:
    static SIZE SizeOfClient(HWND window) {
        RECT client{};
        GetClientRect(window, &client);
        return {client.right, client.bottom};
    }
    static bool IsVisibleIn(HWND child, HWND control) {
        for (; child != control; child = GetParent(child)) {
            if ((GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) == 0) {
                return false;
            }
        }
        return true;
    }
    // Each into pixels of its own: some of the system's reach into a device context beyond its origin.
    static void Paint(HWND window, HWND control, HDC target) {
        const SIZE size = SizeOfClient(window);
        const Bitmap bitmap(CreatePixels(size.cx, size.cy));
        const MemoryDc dc(bitmap.get());
        SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.Get()), 0);
        SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc.Get()), PRF_CLIENT);
        POINT origin{};
        MapWindowPoints(window, control, &origin, 1);
        BitBlt(target, origin.x, origin.y, size.cx, size.cy, dc.Get(), 0, 0, SRCCOPY);
    }

    SIZE size_;
    std::uint32_t* bits_ = nullptr;
    Bitmap bitmap_;
};

int Brightness(unsigned colour) {
    return static_cast<int>((3 * (colour >> 16) + 6 * (colour >> 8 & 0xFF) + (colour & 0xFF)) / 10);
}
bool IsBright(unsigned colour) {
    return Brightness(colour) > 110;
}
bool IsYellow(unsigned colour) {
    return (colour >> 16) > 160 && (colour >> 8 & 0xFF) > 140 && (colour & 0xFF) < 150;
}

RECT PlaceIn(HWND child, HWND control) {
    RECT area{};
    GetClientRect(child, &area);
    MapWindowPoints(child, control, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

// The editor panels with what bypasses them, which part of them that dims, and where their ground shows.
struct Form {
    const char* className;
    const char* bypassed;
    const char* active;
    int bypass;        // id of the button
    const char* title; // the class and text of a child that is dimmed
    POINT ground;
    bool isGroundDimmed;
};
constexpr Form FORMS[] = {
    {"EQ",
     "properties=1,PEQ,6 dB,1000 Hz,-3 dB,0.7",
     "properties=0,PEQ,6 dB,1000 Hz,-3 dB,0.7",
     105,
     "FREQ",
     {2, 80},
     true},
    {"XOVER",
     "value=OFF,20 Hz,OFF,20000 Hz,0 dB,normal,1,5 ms",
     "value=OFF,20 Hz,OFF,20000 Hz,0 dB,normal,0,5 ms",
     112,
     "DELAY",
     {2, 100},
     false},
};

// Makes a panel dark. Whether all that is visible of a control is then to be painted anew.
bool IsRepaintedDark(const TestPanel& panel, HWND control) {
    UpdateWindow(panel.Window());
    std::vector<HWND> parts = ChildrenOf(control);
    parts.push_back(control);
    for (HWND part : parts) {
        ValidateRect(part, nullptr);
    }
    Load(panel.Window(), "style=dark");
    return std::all_of(parts.begin(), parts.end(), [](HWND part) {
        return GetUpdateRect(part, nullptr, FALSE) != 0 || !IsWindowVisible(part);
    });
}

bool IsColoured(unsigned colour) {
    const auto [least, most] = std::minmax({colour >> 16, colour >> 8 & 0xFF, colour & 0xFF});
    return most - least > 48;
}

// Whether a caption is there and leaves the columns beside the rim free.
template <class IsText>
bool Fits(const Shot& shot, const RECT& place, IsText isText) {
    const auto hasText = [&](int left, int right) {
        return shot.Share({left, place.top + 1, right, place.bottom - 1},
                          [&](unsigned colour) { return isText(colour); }) > 0;
    };
    return hasText(place.left + 2, place.right - 2) && !hasText(place.left + 1, place.left + 2) &&
           !hasText(place.right - 2, place.right - 1);
}

} // namespace

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

TEST_CASE("editor panels are dark, show what is bypassed, and go back") {
    const TestPanel panel(TestPanel::Visible);
    for (const Form& row : FORMS) {
        INFO(std::string(row.className));
        const HWND form = panel.Create(row.className, "Form");
        const HWND button = GetDlgItem(form, row.bypass);
        const HWND title = FindWindowExA(form, nullptr, "STATIC", row.title);
        REQUIRE(title != nullptr);
        Load(form, row.active);
        const Shot before(form);
        CHECK(before.Share(before.All(), IsBright) > 60);

        CHECK(IsRepaintedDark(panel, form));
        const Shot dark(form);
        CHECK(dark.Share(dark.All(), IsBright) < 12); // only texts
        CHECK(dark.Share(PlaceIn(button, form), IsYellow) == 0);
        Load(form, row.bypassed);
        CHECK(SendMessageA(button, BM_GETCHECK, 0, 0) == BST_CHECKED);
        const Shot bypassed(form);
        CHECK(bypassed.Share(PlaceIn(button, form), IsYellow) > 60);
        const auto brightest = [&](const Shot& shot) {
            int most = 0;
            shot.Share(PlaceIn(title, form), [&](unsigned colour) {
                most = std::max(most, Brightness(colour));
                return false;
            });
            return most;
        };
        CHECK(brightest(bypassed) < brightest(dark) - 60);
        CHECK((bypassed.At(row.ground.x, row.ground.y) != dark.At(row.ground.x, row.ground.y)) ==
              row.isGroundDimmed);
        SetFocus(button); // the system's button would paint itself
        SendMessageA(button, BM_SETSTATE, TRUE, 0);
        CHECK(GetUpdateRect(button, nullptr, FALSE) != 0);
        CHECK(Shot(form).Share(PlaceIn(button, form), IsBright) > 60);
        SendMessageA(button, BM_SETSTATE, FALSE, 0);
        SetFocus(panel.Window());
        CHECK((GetWindowLongA(button, GWL_STYLE) & WS_VISIBLE) != 0);

        Load(form, row.active);
        Load(panel.Window(), "style=classic");
        const Shot after(form);
        CHECK(after.Share(after.All(), IsBright) == before.Share(before.All(), IsBright));
        DestroyWindow(form);
    }
}

TEST_CASE("strips and fields are dark, lit only where they are on, and saved as ever") {
    const TestPanel panel(TestPanel::Visible);
    for (const char* className : {"MIXER", "CROSSOVER", "AUTOMIXER", "SPEAKERCONTROL", "BCOMBOBOX",
                                  "SPINEDIT", "BEDIT", "BTRISTATEBUTTON"}) {
        INFO(std::string(className));
        const HWND control = panel.Create(className, "Control");
        if (className ==
            std::string("SPEAKERCONTROL")) { // it has any size, with smaller buttons in a smaller one
            SetWindowPos(control, nullptr, 0, 0, 160, 120, SWP_NOMOVE | SWP_NOZORDER);
        }
        const std::string saved = panel.Saved();
        const Shot before(control);
        const int brightBefore = before.Share(before.All(), IsBright);
        CHECK(IsRepaintedDark(panel, control));
        CHECK(panel.Saved() == "style=dark\r\n" + saved);
        const Shot dark(control);
        CHECK(brightBefore > 40);
        CHECK(dark.Share(dark.All(), IsBright) < 15);
        for (HWND part : ChildrenOf(control)) {
            char partClass[32] = "";
            GetClassNameA(part, partClass, sizeof partClass);
            const bool isSwitch = partClass == std::string("BTRISTATEBUTTON");
            if (!IsWindowVisible(part) || (!isSwitch && partClass != std::string("LED"))) {
                continue;
            }
            INFO(ObjectOf(part).name);
            const RECT place = PlaceIn(part, control);
            CHECK(dark.Share(place, IsColoured) == 0);
            Load(part, "value=1");
            const Shot lit(control);
            CHECK(lit.Share(place, IsColoured) > 40);
            if (isSwitch) {
                CHECK(Fits(dark, place, [](unsigned colour) { return Brightness(colour) > 200; }));
                CHECK(Fits(lit, place, [](unsigned colour) { return Brightness(colour) < 60; }));
                Load(part, "function=NOBODY*x"); // off line it can be read as well
                Poll(part);
                const Shot unknown(control);
                CHECK(unknown.At(place.left + 1, place.top + 1) == 0xFFB000);
                CHECK(Fits(unknown, place, [](unsigned colour) { return Brightness(colour) < 60; }));
            }
        }
        if (const HWND label = panel.Find("Control*Label"); label != nullptr) { // what somebody chose stays
            Load(label, "backgroundcolor=0x00204080");
            const RECT place = PlaceIn(label, control);
            CHECK(Shot(control).At(place.left + 1, place.top + 1) == 0x804020);
        }
        DestroyWindow(control);
        Load(panel.Window(), "style=classic");
    }
}

TEST_SUITE_END();
