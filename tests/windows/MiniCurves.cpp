// What is particular to the views of equalisers and crossovers: bands and ways that are asked one by one, and
// points that are operated with mouse and keys.
#include "logic/controls/CurvePlot.h"
#include "logic/controls/Crossover.h"
#include "logic/controls/EqBand.h"
#include "logic/controls/FilterValues.h"
#include "logic/drawing/PanelColours.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/FormPanels.h"

#include <cmath>

TEST_SUITE_BEGIN("MiniCurves");

namespace {

constexpr int WIDTH = 400;
constexpr int HEIGHT = 200;
constexpr COLORREF LINE = logic::PANEL_BLUE;
constexpr logic::CurvePlot PLOT{0, 0, WIDTH, HEIGHT, 18};

constexpr const char* DEVICE = "DSP*device=simulated\n"
                               "DSP*band1=channeleq,,,0,PEQ,6 dB,1000 Hz,12 dB,1\n"
                               "DSP*band2=channeleq,,,0,Hipass,12 dB,100 Hz,0 dB,0.7\n"
                               "DSP*band3=channeleq,,,1,PEQ,6 dB,5000 Hz,-6 dB,2\n"
                               "DSP*low=xoverfilters,,,OFF,20 Hz,LINK24,1000 Hz\n"
                               "DSP*high=xoverfilters,,,LINK24,1000 Hz,OFF,20000 Hz\n"
                               "DSP*gain=float,-30,6,0,dB\nDSP*polarity=integer,0,1,0,\n"
                               "DSP*delay=delay,,,0,0 ms\n";

class CurvePanel : public TestPanel {
public:
    CurvePanel(const char* className, const std::string& lines) : TestPanel(Visible) {
        Declare(DEVICE);
        view = Create(className, "View");
        SetWindowPos(view, nullptr, 0, 0, WIDTH, HEIGHT, SWP_NOZORDER);
        REQUIRE(LoadLines(view, lines + "|interval=1000000"));
        ::Poll(view);
        UpdateWindow(view);
    }

    POINT PointAt(double hertz, double decibels) const {
        return {static_cast<LONG>(PLOT.X(hertz)), static_cast<LONG>(PLOT.Y(decibels))};
    }
    void Mouse(UINT message, POINT at, WPARAM keys = MK_LBUTTON) const {
        SendMessageA(view, message, keys, At(at.x, at.y));
    }
    void Drag(POINT from, POINT to) const {
        Mouse(WM_LBUTTONDOWN, from);
        Mouse(WM_MOUSEMOVE, to);
        Mouse(WM_LBUTTONUP, to, 0);
    }
    void Wheel(POINT at, int notches, WPARAM keys = 0) const {
        ClientToScreen(view, &at);
        SendMessageA(view, WM_MOUSEWHEEL, MAKEWPARAM(keys, notches * WHEEL_DELTA), At(at.x, at.y));
    }
    void Key(WPARAM key) const { SendMessageA(view, WM_KEYDOWN, key, 1); }
    std::string Band(int number) const { return Parameter(("DSP*band" + std::to_string(number)).c_str()); }
    bool IsToBePainted() const { return GetUpdateRect(view, nullptr, FALSE) != FALSE; }

    HWND view;
};

// The row in which a column has most of that colour.
int RowOf(const Picture& picture, int x, COLORREF colour) {
    int best = -1;
    int least = 90;
    for (int y = 0; y < HEIGHT; ++y) {
        const COLORREF pixel = picture.At(x, y);
        const int away = std::abs(GetRValue(pixel) - GetRValue(colour)) +
                         std::abs(GetGValue(pixel) - GetGValue(colour)) +
                         std::abs(GetBValue(pixel) - GetBValue(colour));
        if (away < least) {
            least = away;
            best = y;
        }
    }
    return best;
}

bool IsNear(int row, double decibels) {
    return std::abs(row - PLOT.Y(decibels)) <= 4; // where it is steep, a column has several rows of it
}

constexpr const char* THREE_BANDS = "datatype=channeleq|function=DSP*band1;DSP*band2;DSP*band3";

} // namespace

TEST_CASE("a curve is the sum of the bands that are there and not bypassed") {
    const CurvePanel panel("MINIEQ", THREE_BANDS);
    CHECK_FALSE(IsMarked(panel.view));
    CHECK(Text(panel.view) ==
          "0,PEQ,6 dB,1000 Hz,12 dB,1;0,Hipass,12 dB,100 Hz,0 dB,0.7;1,PEQ,6 dB,5000 Hz,-6 dB,2");
    const auto curveAt = [&](double hertz) {
        return RowOf(Picture(panel.view), static_cast<int>(PLOT.X(hertz)), LINE);
    };
    CHECK(IsNear(curveAt(5000), 0.53)); // what the first is there
    CHECK(IsNear(curveAt(60), -9.2));
    CHECK(IsNear(curveAt(1500), 7.4));
    ph_SetParameter(panel.Root(), "DSP*band1", "1,PEQ,6 dB,1000 Hz,12 dB,1");
    Poll(panel.view);
    CHECK(IsNear(curveAt(1500), 0));
    CHECK(panel.IsToBePainted());
    UpdateWindow(panel.view);
    Poll(panel.view);
    CHECK_FALSE(panel.IsToBePainted()); // nothing is new
}

TEST_CASE("what is missing is marked, and the rest drawn and operated") {
    std::string devices = "DSP*device=simulated\nGONE*device=simulated\n";
    std::string functions = "datatype=channeleq|function=";
    for (int i = 1; i <= 16; ++i) {
        const std::string name = (i % 6 == 0 ? "GONE*b" : "DSP*b") + std::to_string(i);
        devices += name + "=channeleq,,,0,PEQ,6 dB," + std::to_string(i * 500) + " Hz,1 dB,2\n";
        functions += (i == 1 ? "" : ";") + (i == 16 ? "DSP*nobody" : name);
    }
    const CurvePanel panel("MINIEQ", "caption=");
    panel.Declare(devices);
    REQUIRE(Load(panel.view, functions.substr(0, functions.find('|'))) == 1);
    REQUIRE(Load(panel.view, functions.substr(functions.find('|') + 1)) == 1);
    ph_SetParameter(panel.Root(), "GONE*online", "0");
    CHECK(IsMarked(panel.view));
    const auto marks = [&] {
        const Picture picture(panel.view);
        int count = 0;
        for (int x = 10; x < WIDTH; x += 18) { // each is 15 wide, and the stroke crosses its middle
            count += picture.At(x, HEIGHT - 24) == logic::PANEL_RED ? 1 : 0;
        }
        return count;
    };
    CHECK(marks() == 3);
    panel.Drag(panel.PointAt(3500, 1), panel.PointAt(3500, 4)); // the seventh
    CHECK(panel.Parameter("DSP*b7").find(",4") != std::string::npos);
    panel.Drag(panel.PointAt(3000, 0), panel.PointAt(3000, 4)); // nobody knows where the sixth is
    ph_SetParameter(panel.Root(), "GONE*online", "1");
    CHECK(panel.Parameter("GONE*b6") == "0,PEQ,6 dB,3000 Hz,1 dB,2");
    CHECK(IsMarked(panel.view));
    CHECK(marks() == 1);
    Load(panel.view, "samplerate=8000"); // which those from the eighth on cannot work at
    Poll(panel.view);
    CHECK(marks() == 9);
    CHECK(Text(panel.view, "value").size() > 400);
}

TEST_CASE("bands are dragged, turned and bypassed with the mouse") {
    const CurvePanel panel("MINIEQ", THREE_BANDS);
    const POINT first = panel.PointAt(1000, 12);
    panel.Drag({first.x + 3, first.y + 2}, {first.x + 3, first.y + 2}); // nothing moves
    CHECK(panel.Band(1) == "0,PEQ,6 dB,1000 Hz,12 dB,1");
    panel.Drag(first, {first.x, panel.PointAt(0, 6).y}); // straight down
    CHECK(panel.Band(1).find("0,PEQ,6 dB,1000 Hz,6") == 0);
    const POINT lower = panel.PointAt(1000, 6);
    panel.Drag(lower, {panel.PointAt(2000, 0).x, lower.y});
    const std::string moved = panel.Band(1);
    CHECK(std::abs(std::stof(moved.substr(11)) - 2000) < 40);
    CHECK(logic::StepFrequency(std::stof(moved.substr(11)), 0) ==
          doctest::Approx(std::stof(moved.substr(11))));
    panel.Drag(panel.PointAt(2000, 6), {5000, -5000}); // to the ends of what a band can be
    CHECK(panel.Band(1) == "0,PEQ,6 dB,20000 Hz,12 dB,1");
    panel.Drag(panel.PointAt(100, 0), panel.PointAt(200, 9)); // a pass has no gain
    CHECK(panel.Band(2).find(" Hz,0 dB,0.7") != std::string::npos);

    const POINT third = panel.PointAt(5000, -6);
    panel.Wheel(third, 1);
    CHECK(panel.Band(3) == "1,PEQ,6 dB,5000 Hz,-6 dB,2.1");
    panel.Wheel(third, -2, MK_SHIFT);
    CHECK(panel.Band(3) == "1,PEQ,6 dB,5000 Hz,-6 dB,2.08");
    panel.Wheel({200, 190}, 1); // over no point
    CHECK(panel.Band(3) == "1,PEQ,6 dB,5000 Hz,-6 dB,2.08");
    panel.Mouse(WM_LBUTTONDBLCLK, third);
    CHECK(panel.Band(3) == "0,PEQ,6 dB,5000 Hz,-6 dB,2.08");

    panel.Mouse(WM_LBUTTONDOWN, third, MK_LBUTTON | MK_CONTROL); // the panel's
    panel.Mouse(WM_MOUSEMOVE, {third.x, 0});
    Load(panel.view, "readonly=1");
    panel.Drag(third, {third.x, 0});
    panel.Wheel(third, 1);
    panel.Mouse(WM_LBUTTONDBLCLK, third);
    CHECK(panel.Band(3) == "0,PEQ,6 dB,5000 Hz,-6 dB,2.08");
    Load(panel.view, "readonly=0");
    SetWindowPos(panel.view, nullptr, 0, 0, 60, 30, SWP_NOMOVE | SWP_NOZORDER);
    for (int x = 0; x < 60; x += 4) { // there are no points
        panel.Drag({x, 15}, {x, 0});
    }
    CHECK(panel.Band(3) == "0,PEQ,6 dB,5000 Hz,-6 dB,2.08");
}

TEST_CASE("bands are reached and worked with the keys") {
    const CurvePanel panel("MINIEQ", THREE_BANDS);
    SetFocus(panel.view);
    panel.Key(VK_UP); // of no band yet
    CHECK(panel.Band(1) == "0,PEQ,6 dB,1000 Hz,12 dB,1");
    const auto wantsTab = [&] {
        const MSG tab{panel.view, WM_KEYDOWN, VK_TAB, 0, 0, {}};
        return (SendMessageA(panel.view, WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&tab)) &
                DLGC_WANTTAB) != 0;
    };
    for (int band = 1; band <= 3; ++band) {
        CHECK(wantsTab());
        panel.Key(VK_TAB);
        panel.Key(VK_DOWN);
        panel.Key(VK_RIGHT);
        panel.Key(VK_PRIOR);
        panel.Key(VK_SPACE);
    }
    CHECK_FALSE(wantsTab()); // it leaves
    CHECK(panel.Band(1) == "1,PEQ,6 dB,1016.52 Hz,11.5 dB,1.1");
    CHECK(panel.Band(2).find("1,Hipass,12 dB,10") == 0);
    CHECK(panel.Band(3).find("0,PEQ,6 dB,50") == 0);
    CHECK(panel.Band(3).find("-6.5 dB,2.1") != std::string::npos);
    Poll(panel.view);
    ph_SetMode(panel.Root(), 1);
    const std::string before = panel.Band(3);
    panel.Key(VK_UP); // the editor's
    CHECK(panel.Band(3) == before);
}

TEST_CASE("all bands can be set by one text, and none that does not answer") {
    const CurvePanel panel("MINIEQ", THREE_BANDS);
    CHECK(Load(panel.view, "value=1;;0,Lopass,12 dB,800 Hz") == 1);
    CHECK(panel.Band(1) == "1,PEQ,6 dB,1000 Hz,12 dB,1");
    CHECK(panel.Band(2) == "0,Hipass,12 dB,100 Hz,0 dB,0.7");
    CHECK(panel.Band(3) == "0,Lopass,12 dB,800 Hz,-6 dB,2");
    const std::string before = Text(panel.view);
    for (const char* refused : {"value=0;0;0;0", "value=0;loud", "value=7,7,7"}) {
        CHECK(Load(panel.view, refused) == 0);
    }
    CHECK(Text(panel.view) == before);
    ph_SetParameter(panel.Root(), "DSP*online", "0");
    Load(panel.view, "function=DSP*band1"); // of which nothing is known any more
    Load(panel.view, "value=0,PEQ,6 dB,20 Hz,1 dB,1");
    ph_SetParameter(panel.Root(), "DSP*online", "1");
    CHECK(panel.Band(1) == "1,PEQ,6 dB,1000 Hz,12 dB,1");
}

TEST_CASE("a band that holds what nobody knows is marked, and the next edit replaces it") {
    const CurvePanel panel("MINIEQ", "datatype=channeleq|function=DSP*band1;ODD*band");
    OddDevice<logic::EqBand> odd(panel);
    const struct {
        logic::EqBand held;
        bool isMarked;
    } rows[] = {
        {{0, 1, 500, 3, 1, 1}, false},          {{0, 77, 500, 3, 1, 1}, true},
        {{0, 0, std::nanf(""), 3, 1, 1}, true}, {{0, 0, 30000, 3, 1, 1}, true},
        {{0, 0, -500, 3, 1, 1}, true},          {{0, 0, 500, 3, 0, 1}, true},
        {{0, 0, 500, 1e30F, 1e-30F, 1}, false},
    };
    for (const auto& row : rows) {
        CAPTURE(row.held.type);
        CAPTURE(row.held.frequency);
        odd.held = row.held;
        CHECK(IsMarked(panel.view) == row.isMarked);
        const Picture picture(panel.view); // whatever there is
        CHECK((picture.At(10, HEIGHT - 24) == logic::PANEL_RED) == row.isMarked);
    }
}

TEST_CASE("a view goes, or is bound anew, while one of its bands is moved") {
    for (const bool isEnded : {true, false}) {
        CurvePanel panel("MINIEQ", "datatype=channeleq|connection=Target;Target");
        std::vector<std::string> sent;
        ValueTarget<logic::EqBand> target{panel, "Target", DATATYPE_CHANNEL_EQ, logic::EqBandText, sent};
        target.held = {0, 0, 1000.0F, 3.0F, 0.7F, 1};
        REQUIRE(LoadLines(panel.view, "connection=Target;Target"));
        Poll(panel.view);
        target.onSet = [&] {
            if (isEnded) {
                DestroyWindow(panel.view);
            } else {
                Load(panel.view, "connection=");
            }
        };
        panel.Mouse(WM_LBUTTONDOWN, panel.PointAt(1000, 3));
        panel.Mouse(WM_MOUSEMOVE, panel.PointAt(1000, 9));
        panel.Mouse(WM_MOUSEMOVE, panel.PointAt(1000, -9));
        panel.Mouse(WM_LBUTTONUP, panel.PointAt(1000, 9), 0);
        CHECK(sent.size() == 1);
        CHECK((IsWindow(panel.view) == FALSE) == isEnded);
    }
}

TEST_CASE("the ways of a crossover and their sum") {
    const CurvePanel panel("MINIXOVER", "function=DSP*low;DSP*high|function1=DSP*gain|function2=DSP*polarity|"
                                        "function3=DSP*delay");
    CHECK_FALSE(IsMarked(panel.view));
    CHECK(Text(panel.view).find("OFF,20 Hz,LINK24,1000 Hz,0 dB,normal,0,0 ms;LINK24,1000 Hz") == 0);
    // The dashes of the sum hide a line that they lie on.
    const auto lineAt = [&](double hertz, COLORREF colour) {
        const Picture picture(panel.view);
        int row = -1;
        for (int aside = 0; aside < 10 && row < 0; ++aside) {
            row = RowOf(picture, static_cast<int>(PLOT.X(hertz)) + aside, colour);
        }
        return row;
    };
    const auto sumNear = [&](double hertz, double decibels) {
        const Picture picture(panel.view);
        const int x = static_cast<int>(PLOT.X(hertz));
        for (int aside = -8; aside <= 8; ++aside) {
            for (int off = -1; off <= 1; ++off) {
                const COLORREF pixel = picture.At(x + aside, static_cast<int>(PLOT.Y(decibels)) + off);
                if (GetRValue(pixel) > 200 && GetGValue(pixel) > 200 && GetBValue(pixel) > 200) {
                    return true;
                }
            }
        }
        return false;
    };
    CHECK(IsNear(lineAt(1500, logic::PANEL_BLUE), -15.6));
    CHECK(IsNear(lineAt(666.7, logic::PANEL_GREEN), -15.6));
    CHECK(sumNear(1000, 0));
    ph_SetParameter(panel.Root(), "DSP*gain", "6");
    Poll(panel.view);
    CHECK(IsNear(lineAt(100, logic::PANEL_BLUE), 6));
    ph_SetParameter(panel.Root(), "DSP*gain", "0");
    ph_SetParameter(panel.Root(), "DSP*polarity", "1");
    Poll(panel.view);
    CHECK_FALSE(sumNear(1000, 0));                          // they cancel each other
    ph_SetParameter(panel.Root(), "DSP*delay", "0,0.5 ms"); // half a turn at 1 kHz
    Poll(panel.view);
    CHECK(sumNear(1000, 0));

    // Both corners are at one place: what was operated last is preferred, else the last one.
    const POINT corner = panel.PointAt(1000, -6.02);
    panel.Drag(corner, {panel.PointAt(2000, 0).x, corner.y - 40});
    CHECK(panel.Parameter("DSP*low") == "OFF,20 Hz,LINK24,1000 Hz");
    CHECK(std::abs(std::stof(panel.Parameter("DSP*high").substr(7)) - 2000) < 40);
    CHECK(Text(panel.view).find(";" + panel.Parameter("DSP*high")) != std::string::npos);
    panel.Mouse(WM_LBUTTONDBLCLK, corner);
    CHECK(panel.Parameter("DSP*low") == "OFF,20 Hz,OFF,1000 Hz");
    panel.Mouse(WM_LBUTTONDBLCLK, panel.PointAt(1000, 0)); // on again as it was
    CHECK(panel.Parameter("DSP*low") == "OFF,20 Hz,LINK24,1000 Hz");
    SetFocus(panel.view);
    panel.Key(VK_RIGHT);
    CHECK(panel.Parameter("DSP*low").find("LINK24,1016") != std::string::npos);
    CHECK(Load(panel.view, "value=OFF,20 Hz,BUTT12,500 Hz,-3 dB,normal,1,2 ms;,,BESS18") == 1);
    CHECK(panel.Parameter("DSP*low") == "OFF,20 Hz,BUTT12,500 Hz");
    CHECK(panel.Parameter("DSP*gain") == "-3");
    CHECK(panel.Parameter("DSP*polarity") == "0");
    CHECK(panel.Parameter("DSP*delay") == "1,2 ms");
    Load(panel.view, "function2=DSP*nobody;DSP*polarity"); // the first way is no longer all there
    CHECK(IsMarked(panel.view));
    CHECK(lineAt(100, logic::PANEL_BLUE) == -1);
}

TEST_SUITE_END();
