// The forms of pictures: larger ones, other caps of faders, and the grounds of panels.

#include "Panelhost/Bitmap.h"
#include "Panelhost/Root.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/TestPanel.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace {

SIZE SizeOf(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

bool IsSized(HWND window, int width, int height) {
    const SIZE size = SizeOf(window);
    CAPTURE(size.cx);
    CAPTURE(size.cy);
    const bool isSized = size.cx == width && size.cy == height;
    CHECK(isSized);
    return isSized;
}

// Width and height of a picture; 0 where there is none.
SIZE PictureSize(const std::string& name) {
    const OSMIRBitmap* bitmap = a_GetBitmap(name.c_str());
    const SIZE size = bitmap == nullptr ? SIZE{} : SIZE{bitmap->Width(), bitmap->Height()};
    if (bitmap != nullptr) {
        a_UnregisterBitmap(bitmap);
    }
    return size;
}

// Whether a fader at its maximum is held by a press that far below its upper end.
bool IsHeldAt(HWND fader, int y) {
    SendMessageA(fader, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, y));
    const bool isHeld = GetCapture() == fader;
    SendMessageA(fader, WM_LBUTTONUP, 0, MAKELPARAM(10, y));
    return isHeld;
}

} // namespace

TEST_SUITE_BEGIN("Art");

TEST_CASE("a panel of larger art shows pictures in their larger forms, where there are any") {
    const TestPanel panel;
    HWND knob = panel.Create("KNOB", "Knob");
    HWND led = panel.Create("LED", "Led");
    HWND strip = panel.Create("MIXER", "Strip");
    HWND mute = panel.Find("Strip*MUTE");
    REQUIRE(mute != nullptr);
    const SIZE muteSize = SizeOf(mute);
    Load(led, "bitmap=.\\Controls\\_MixerRedLed8x8.bmp"); // which has one form only
    for (const auto& [word, knobSize] :
         {std::pair("150", 71), {"200", 94}, {"100", 47}, {"150", 71}, {"", 47}}) {
        CAPTURE(word);
        CHECK(Load(panel.Window(), "artscale=" + std::string(word)) == 1);
        CHECK(IsSized(knob, knobSize, knobSize));
        CHECK(IsSized(panel.Create("KNOB", "New"), knobSize, knobSize));
        CHECK(Text(knob, "bitmap") == ".\\Controls\\Knob.bmp"); // by its name, whatever its form
        CHECK(IsSized(led, 8, 8));
        CHECK(IsSized(mute, muteSize.cx, muteSize.cy)); // the places in a strip are fixed
    }
    for (const char* word : {"0", "125", "150%", "large", "-150"}) {
        CAPTURE(word);
        CHECK(Load(panel.Window(), "artscale=" + std::string(word)) == 0);
    }
    CHECK(Text(panel.Window(), "artscale") == "100");
    CHECK(IsWindow(strip));
}

TEST_CASE("a fader has the cap that it names, as long as its picture's, in each size") {
    const TestPanel panel;
    HWND fader = panel.Create("FADER", "Fader");
    LoadLines(fader, "properties=-80,10,10|bitmap=.\\Controls\\FADER_slim_vertical_32x208.bmp");
    for (const int percent : {100, 150, 200}) {
        CHECK(Load(panel.Window(), "artscale=" + std::to_string(percent)) == 1);
        for (const auto& [word, length] : {std::pair("small", 14), {"large", 34}, {"medium", 22}}) {
            CAPTURE(percent);
            CAPTURE(word);
            CHECK(Load(fader, "cap=" + std::string(word)) == 1);
            CHECK(IsSized(fader, 32 * percent / 100, 208 * percent / 100));
            CHECK(IsHeldAt(fader, length * percent / 100 - 1));
            CHECK_FALSE(IsHeldAt(fader, length * percent / 100));
            CHECK((panel.Saved().find("*cap=") != std::string::npos) == (std::string(word) != "medium"));
        }
    }
    CHECK(Load(panel.Window(), "artscale=100") == 1);
    // Without a form of its own it is the cap that there is; without a picture, the plain one is as long.
    for (const auto& [bitmap, length] : {std::pair(".\\Controls\\Fader.bmp", 22), {"", 34}}) {
        LoadLines(fader, std::string("cap=large|bitmap=") + bitmap);
        CHECK(IsHeldAt(fader, length - 1));
        CHECK_FALSE(IsHeldAt(fader, length));
    }
    CHECK(Load(fader, "cap=huge") == 0);
}

TEST_CASE("every picture of a control has its larger forms, in proportion") {
    int pictures = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ProgramFolder() + "Controls")) {
        const std::string stem = entry.path().stem().string();
        const bool isFader = stem.starts_with("FADER_");
        const bool isFace = isFader || stem == "Knob" || stem.starts_with("KNOB_") ||
                            stem.starts_with("METER_") || stem.starts_with("BUTTON_") ||
                            stem.starts_with("SWITCHBUTTON_") || stem.starts_with("LED_") ||
                            stem.starts_with("ROCKER_") || stem.starts_with("CURTAIN_");
        if (!isFace || !entry.is_regular_file()) {
            continue;
        }
        ++pictures;
        CAPTURE(stem);
        const SIZE plain = PictureSize(".\\Controls\\" + stem + ".bmp");
        REQUIRE(plain.cx > 0);
        for (const char* cap : {"", "small\\", "large\\"}) {
            for (const int percent : {100, 150, 200}) {
                if ((*cap == '\0' && percent == 100) || (*cap != '\0' && !isFader)) {
                    continue;
                }
                const std::string size = percent == 100 ? "" : std::to_string(percent) + "\\";
                const SIZE found = PictureSize(".\\Controls\\" + (cap + size) + stem + ".png");
                CAPTURE(cap);
                CAPTURE(percent);
                CHECK(std::abs(found.cx * 100 - plain.cx * percent) <= 300); // a frame is of whole pixels
                CHECK(std::abs(found.cy * 100 - plain.cy * percent) <= 100);
            }
        }
    }
    CHECK(pictures > 50);
}

TEST_CASE("a panel has the ground that it names while it has no background") {
    const TestPanel panel(TestPanel::Visible);
    const auto shown = [&](const char* line) {
        CHECK(Load(panel.Window(), line) == 1);
        const HDC screen = GetDC(panel.Window());
        const HDC dc = CreateCompatibleDC(screen);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, 40, 40);
        const HGDIOBJ before = SelectObject(dc, bitmap);
        SendMessageA(panel.Window(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
        const COLORREF pixel = GetPixel(dc, 20, 20);
        SelectObject(dc, before);
        DeleteObject(bitmap);
        DeleteDC(dc);
        ReleaseDC(panel.Window(), screen);
        return pixel;
    };
    const auto brightness = [](COLORREF colour) {
        return GetRValue(colour) + GetGValue(colour) + GetBValue(colour);
    };
    const int night = brightness(shown("ground=night"));
    const int graphite = brightness(shown("ground=graphite"));
    const int brushed = brightness(shown("ground=brushed"));
    CHECK(night < graphite);
    CHECK(graphite < brushed);
    CHECK(brushed < 3 * 64);
    CHECK(shown("background=0x00ff8040") == 0xFF8040);
    CHECK(brightness(shown("background=")) == brushed);
    for (const char* word : {"Night", "dark", "..\\night", "Ground_night.png"}) {
        CAPTURE(word);
        CHECK(Load(panel.Window(), "ground=" + std::string(word)) == 0);
    }
    CHECK(Text(panel.Window(), "ground") == "brushed");
    CHECK(Load(panel.Window(), "ground=") == 1);
}

TEST_SUITE_END();
