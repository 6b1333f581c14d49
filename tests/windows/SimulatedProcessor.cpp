#include "Panelhost/Root.h"
#include "tests/windows/TestPanel.h"

#include <cmath>

namespace {

class Processor {
public:
    explicit Processor(const std::string& lines) { panel.Declare("DSP*device=simulated\n" + lines); }

    float Number(const std::string& parameter) const {
        return std::stof(panel.Parameter(("DSP*" + parameter).c_str()));
    }
    void Set(const std::string& parameter, const char* value) const {
        CHECK(ph_SetParameter(panel.Root(), ("DSP*" + parameter).c_str(), value) == 1);
    }
    // Whether the number comes to be about that one.
    bool Reaches(const std::string& parameter, double number) const {
        return Await([&] {
            ph_Tick(panel.Root());
            return std::fabs(Number(parameter) - number) < 0.01;
        });
    }

    TestPanel panel;
};

} // namespace

TEST_CASE("simulated dynamics listen to their source and reduce it") {
    const Processor test("DSP*in=float,-80,18,-30,dB\nDSP*gate1=dynamics,in\nDSP*comp=dynamics,in\n"
                         "DSP*out=float,-200,18,0,dB\nDSP*out=follow,in\nDSP*out=through,comp,gate1\n"
                         "DSP*comp.knee=float,0,24,0\nDSP*odd=dynamics,in,other\nDSP*odd=dynamics,\n");
    CHECK(a_LoadErrorCount(test.panel.Root()) == 2);
    CHECK(test.panel.Parameter("DSP*odd.on") == "(none)");
    CHECK(test.panel.Parameter("DSP*gate1") == "(none)");
    CHECK(test.Number("gate1.threshold") == -50);
    CHECK(test.Reaches("gate1.level", -30));
    CHECK(test.Reaches("out", -30));
    test.Set("in", "-4");
    CHECK(test.Reaches("comp.reduction", -12)); // 16 above the threshold, 4 : 1
    CHECK(test.Reaches("out", -16));
    test.Set("comp.gain", "5");
    CHECK(test.Reaches("out", -11));
    test.Set("comp.on", "0");
    CHECK(test.Reaches("comp.reduction", 0));
    CHECK(test.Reaches("out", -4));
    test.Set("in", "-60");
    CHECK(test.Reaches("gate1.reduction", -20));
    CHECK(test.Reaches("out", -80));
    // Half of the octaves are left by each of the two.
    test.panel.Declare("DSP*band=channeleq,,,0,Hipass,12 dB,632 Hz,0 dB,0.7\nDSP*out=through,band\n"
                       "DSP*filters=xoverfilters,,,OFF,80 Hz,BUTT24,632 Hz\nDSP*low=float,-200,18,0,dB\n"
                       "DSP*low=follow,in\nDSP*low=through,filters\n");
    ph_Tick(test.panel.Root());
    CHECK(test.Number("out") == doctest::Approx(-63).epsilon(0.01));
    CHECK(test.Number("low") == doctest::Approx(-63).epsilon(0.01));
    test.Set("band", "1");
    ph_Tick(test.panel.Root());
    CHECK(test.Number("out") == -60);
    // What is declared anew as something else stops nothing.
    test.panel.Declare("DSP*comp.on=text,,,yes\nDSP*gate1.ratio=text,,,x\n");
    CHECK(test.Reaches("comp.reduction", 0));
}

TEST_CASE("a simulated matrix adds up the inputs that are on, and can come after what is bound to it") {
    const Processor test("DSP*in1=float,-80,18,-20,dB\nDSP*in2=float,-80,18,-20,dB\n"
                         "DSP*out2=float,-60,18,0,dB\n");
    const HWND waiting = test.panel.Create("KNOB", "Waiting");
    Load(waiting, "properties=0,1,0");
    Load(waiting, "function=DSP*route2_1");
    test.panel.Declare("DSP*route%i_%o=matrix,3,2,in%i,out%o\nDSP*route1_2=integer,0,1,1\n");
    CHECK(a_LoadErrorCount(test.panel.Root()) == 0);
    ph_Tick(test.panel.Root());
    CHECK(test.Number("out1") == -80);
    CHECK(test.Number("out2") == -20);
    Load(waiting, "value=1"); // found once it was declared
    CHECK(test.Number("route2_1") == 1);
    test.Set("route1_1", "1");
    test.Set("route3_1", "1"); // from nowhere
    ph_Tick(test.panel.Root());
    CHECK(test.Number("out1") == doctest::Approx(-16.9897F));
    test.Set("route1_2", "0");
    ph_Tick(test.panel.Root());
    CHECK(test.Number("out2") == -60);
    test.panel.Declare("DSP*text=text,,,x\nDSP*a%i_%o=matrix,1,1,in1,text\nDSP*b=matrix,2,2,in%i,out%o\n");
    CHECK(a_LoadErrorCount(test.panel.Root()) == 2);
    CHECK(test.panel.Parameter("DSP*a1_1") == "(none)");
}

TEST_CASE("a simulated automatic mixer gives its gain to whoever talks") {
    const Processor test("DSP*mic1=float,-80,18,-20,dB\nDSP*mic2=float,-80,18,-20,dB\nDSP*mic4=text,,,x\n"
                         "DSP*auto%i=automixer,4,mic%i\nDSP*auto1.hold=float,0,10000,0\n"
                         "DSP*auto=automixer,2,mic%i\n");
    CHECK(a_LoadErrorCount(test.panel.Root()) == 1);
    CHECK(test.panel.Parameter("DSP*auto4.weight") == "0");
    CHECK(test.Reaches("auto1.gain", -3.01));
    CHECK(test.Reaches("auto2.gain", -3.01));
    CHECK(test.Number("auto3.gain") == -80); // it has no microphone, and the fourth has no level
    CHECK(test.Number("auto4.gain") == -80);
    test.Set("auto2.priority", "1");
    CHECK(test.Reaches("auto1.gain", -80));
    test.Set("auto2.mute", "1");
    CHECK(test.Reaches("auto1.gain", 0));
    test.Set("mic1", "-60");
    CHECK(test.Reaches("auto1.gain", -80));
    test.Set("auto1.freeze", "1");
    test.Set("mic1", "-20");
    test.Set("auto2.mute", "0");
    CHECK(test.Reaches("auto2.gain", 0));
    CHECK(test.Number("auto1.gain") == -80);
    // What is declared anew is as it is declared, and stops nothing.
    test.panel.Declare("DSP*auto1.gain=float,-80,0,-7\nDSP*auto1.hold=text,,,x\n"
                       "DSP*auto2.priority=integer,0,1,0\n");
    test.Set("auto1.freeze", "0");
    CHECK(test.Reaches("auto2.gain", -3.01));
    CHECK(test.Number("auto1.gain") == -7);
    test.panel.Declare("DSP*auto%i=automixer,1,mic%i\n");
    CHECK(test.Reaches("auto1.gain", 0));
}
