// What is particular to the meter.

#include "tests/windows/Buttons.h"
#include "tests/windows/PartedImage.h"

TEST_SUITE_BEGIN("Meter");

namespace {

constexpr COLORREF UNLIT = RGB(0x20, 0x30, 0x40);
constexpr COLORREF LIT = RGB(0xC0, 0x80, 0x40);
constexpr const char* DEVICES = "AMP1*device=simulated\n"
                                "AMP1*a=integer,-1000,1000,10,\n"
                                "AMP1*b=integer,-1000,1000,20,\n"
                                "AMP2*device=simulated\n"
                                "AMP2*c=integer,-1000,1000,90,\n";

int Level(HWND meter) {
    return std::stoi(Text(meter));
}

} // namespace

TEST_CASE("a meter's value is a whole number in every datatype") {
    const TestPanel panel;
    panel.Declare(DEVICES);
    HWND meter = panel.Create("METER", "Meter");
    Load(meter, "function=AMP1*a");
    float number = 30.9F;
    CHECK(Send(meter, COMMAND_SET, DATATYPE_FLOAT, &number) == 1);
    CHECK(panel.Parameter("AMP1*a") == "30");
    CHECK(Send(meter, COMMAND_SET, DATATYPE_FLOAT, &number) == 0); // the same number
    CHECK(Send(meter, COMMAND_GET, DATATYPE_FLOAT, &number) == 0); // 30.9 is 30
}

TEST_CASE("a meter combines what it is bound to") {
    const TestPanel panel;
    panel.Declare(DEVICES);
    HWND meter = panel.Create("METER", "Meter");
    Load(meter, "properties=-80,100");
    Load(meter, "value=5");
    Poll(meter);
    CHECK(Level(meter) == -80); // bound to nothing
    Load(meter, "function=AMP1*a;AMP9*missing;AMP1*b;AMP2*c");
    ph_SetParameter(panel.Root(), "AMP2*online", "0");
    CHECK(IsMarked(meter));
    CHECK(Level(meter) == 20);
    CHECK(Load(meter, "combine=avg") == 1);
    Poll(meter);
    CHECK(Level(meter) ==
          16); // the one that does not answer repeats 20, the one that is not there does not count
    CHECK(panel.Parameter("AMP1*a") == "10"); // a poll sends nothing
    ph_SetParameter(panel.Root(), "AMP2*online", "1");
    Load(meter, "function=AMP1*a;AMP1*b;AMP2*c");
    ph_SetParameter(panel.Root(), "AMP1*a", "14");
    CHECK(Await([&] { // each tick is one for it
        ph_Tick(panel.Root());
        return Level(meter) == 41;
    }));
    ph_SetParameter(panel.Root(), "AMP1*online", "0");
    CHECK(IsMarked(meter)); // though the last one answers
}

TEST_CASE("the image is lit up to the value, upwards or downwards") {
    const TestPanel panel;
    const TestFolder folder;
    HWND meter = panel.Create("METER", "Meter");
    CHECK(Load(meter, "bitmap=" + folder.Write("meter.bmp", PartedImage(21, 100, 0x203040, 0xC08040))) == 1);
    CHECK(SizeText(meter) == "10 x 100");
    struct Row {
        const char* properties;
        const char* value;
        int changesAt; // first row of the lower part
        COLORREF upper, lower;
    };
    const Row rows[] = {
        {"properties=0,100", "value=10", 90, UNLIT, LIT},
        {"properties=100,0", "value=10", 10, LIT, UNLIT},
        {"properties=7,7", "value=7", 0, UNLIT, UNLIT},
    };
    for (const Row& row : rows) {
        CAPTURE(row.properties);
        CAPTURE(row.value);
        Load(meter, row.properties);
        Load(meter, row.value);
        const Picture picture(meter);
        for (const int y : {0, row.changesAt - 1, row.changesAt, 99}) {
            if (y >= 0 && y < 100) {
                CAPTURE(y);
                CHECK(picture.At(9, y) == (y < row.changesAt ? row.upper : row.lower));
            }
        }
    }
}

TEST_CASE("without an image the bar is shaded across, upwards for what is not filled") {
    const TestPanel panel;
    HWND meter = panel.Create("METER", "Meter");
    SetWindowPos(meter, nullptr, 0, 0, 22, 100, SWP_NOMOVE | SWP_NOZORDER);
    Load(meter, "properties=0,100");
    Load(meter, "value=30");
    CHECK(Picture(meter).At(11, 29) == Picture(meter).At(11, 1));
    CHECK(Picture(meter).At(0, 29) == RGB(0, 0, 0));
    CHECK(Picture(meter).At(0, 30) == RGB(234, 144, 3)); // over the outline
    CHECK(Picture(meter).At(11, 99) == RGB(234, 184, 3));
    Load(meter, "properties=100,0");
    CHECK(Picture(meter).At(11, 29) == RGB(234, 184, 3));
    CHECK(Picture(meter).At(11, 99) == RGB(0, 0, 0));
}

TEST_CASE("a meter, like a text, is redrawn only when what it shows changes") {
    for (const char* className : {"METER", "REVMETER", "BSTATIC"}) {
        INFO(std::string(className));
        const TestPanel panel(TestPanel::Visible);
        panel.Declare("AMP1*device=simulated\nAMP1*a=float,-1000,1000,10,\n");
        HWND control = panel.Create(className, "Control"); // 40 high
        LoadLines(control, "properties=0,40|datatype=f|fmt=%.0f|function=AMP1*a", LOAD_FROM_FILE);
        for (const auto& [level, isShown] :
             {std::pair("20", true), {"20", false}, {"20.2", false}, {"25", true}}) {
            UpdateWindow(control);
            ph_SetParameter(panel.Root(), "AMP1*a", level);
            Poll(control);
            CHECK((GetUpdateRect(control, nullptr, FALSE) != 0) == isShown);
        }
    }
}

TEST_SUITE_END();
