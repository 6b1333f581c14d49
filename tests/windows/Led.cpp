// What is particular to the LED.

#include "tests/windows/Buttons.h"
#include "tests/windows/PartedImage.h"

TEST_SUITE_BEGIN("Led");

namespace {

constexpr COLORREF DARK = RGB(0x20, 0x30, 0x40);
constexpr COLORREF LIT = RGB(0xC0, 0x80, 0x40);

std::string Lamp(const TestFolder& folder) {
    return folder.Write("lamp.bmp", PartedImage(16, 8, 0x203040, 0xC08040));
}

} // namespace

TEST_CASE("a LED is lit from one threshold on and dark below the other") {
    TestPanel panel(TestPanel::Visible);
    const TestFolder folder;
    HWND led = panel.Create("LED", "Led");
    CHECK(Load(led, "bitmap=" + Lamp(folder)) == 1);
    const auto colourAt = [led](const char* value) {
        CHECK(Load(led, std::string("value=") + value) == 1);
        return Picture(led).At(7, 7);
    };
    CHECK(colourAt("1") == LIT);
    CHECK(colourAt("0") == DARK);
    CHECK(Load(led, "onthreshold=-6") == 1);
    CHECK(Picture(led).At(7, 7) == LIT); // 0 is above it
    CHECK(Load(led, "offthreshold=-12.5") == 1);
    CHECK(colourAt("-12.5") == LIT);
    CHECK(colourAt("-12.6") == DARK);
    CHECK(colourAt("-7") == DARK);
    UpdateWindow(led);
    Load(led, "value=-50");
    CHECK_FALSE(GetUpdateRect(led, nullptr, FALSE)); // as dark as before
    Load(led, "value=0");
    CHECK(GetUpdateRect(led, nullptr, FALSE));
}

TEST_CASE("with more than two frames the value picks one") {
    TestPanel panel;
    const TestFolder folder;
    HWND led = panel.Create("LED", "Led");
    Load(led, "bitmap=" + Lamp(folder));
    CHECK(SizeText(led) == "8 x 8");
    CHECK(Load(led, "frames=4") == 1);
    CHECK(SizeText(led) == "4 x 8");
    for (const auto& [value, colour] : {std::pair("value=1.9", DARK), {"value=2", LIT}, {"value=99", LIT}}) {
        Load(led, value);
        CHECK(Picture(led).At(2, 4) == colour);
    }
    Load(led, "bitmap=");
    CHECK(Load(led, "frames=64") == 1); // a plain lamp has brightness in place of frames
    SetWindowPos(led, nullptr, 0, 0, 40, 40, SWP_NOMOVE | SWP_NOZORDER);
    for (const auto& [value, colour] : {std::pair("value=0", RGB(20, 70, 28)),
                                        {"value=63", RGB(70, 240, 96)},
                                        {"value=21", RGB(36, 126, 50)}}) {
        Load(led, value);
        CHECK(Picture(led).At(20, 20) == colour);
    }
}

TEST_CASE("a LED that is too small for the sign is crossed out when its device is gone") {
    TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*on=integer,0,1,1,\n");
    const TestFolder folder;
    HWND led = panel.Create("LED", "Led");
    Load(led, "bitmap=" + Lamp(folder));
    Load(led, "function=AMP1*on");
    const auto corners = [led] {
        const Picture picture(led);
        return std::pair(picture.At(0, 0), picture.At(4, 0));
    };
    CHECK_FALSE(IsMarked(led));
    CHECK(corners() == std::pair(LIT, LIT));
    ph_SetParameter(panel.Root(), "AMP1*online", "0");
    CHECK(IsMarked(led));
    CHECK(corners() == std::pair(RGB(16, 16, 16), RGB(168, 168, 168)));
    SetWindowPos(led, nullptr, 0, 0, 40, 40, SWP_NOMOVE | SWP_NOZORDER); // room for the sign
    CHECK(Picture(led).At(2, 2) == LIT);
    CHECK(Picture(led).At(5, 5) == RGB(255, 176, 0));
    ph_SetParameter(panel.Root(), "AMP1*online", "1");
    CHECK_FALSE(IsMarked(led));
    CHECK(Picture(led).At(5, 5) == LIT);
}

TEST_SUITE_END();
