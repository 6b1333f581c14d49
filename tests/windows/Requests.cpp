// Bindings between controls and to devices, and the requests that go over them.

#include "Panelhost/Devices.h"
#include "Panelhost/Root.h"
#include "logic/controls/EqBand.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/Interception.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

TEST_SUITE_BEGIN("Requests");

namespace {

constexpr const char* AMPLIFIER = "AMP1*device=simulated\n"
                                  "AMP1*gain1=float,-80,18,-20,dB\n"
                                  "AMP1*gain2=float,-80,18,-20,dB\n"
                                  "AMP1*input=integer,1,4,3,\n"
                                  "AMP1*label=text,,,Left,\n";

HWND CreateKnob(const TestPanel& panel, const char* name, const char* properties = "0,100,0") {
    HWND knob = panel.Create("KNOB", name);
    Load(knob, std::string("properties=") + properties);
    return knob;
}

struct Outcome {
    int success;
    int result;
    bool operator==(const Outcome&) const = default;
};

Outcome Request(HWND control, int command, int datatype, void* data) {
    Outcome outcome{-7, -7};
    outcome.success = a_SendRequest(ObjectOf(control).requests, command, datatype, data, &outcome.result);
    return outcome;
}

} // namespace

TEST_CASE(
    "a get tells whether the targets hold the same, one new value, different ones or cannot be reached") {
    const TestPanel panel;
    panel.Declare(AMPLIFIER);
    HWND control = panel.Create("LED", "Control");
    const struct {
        const char* functions;
        float held;
        int success, result;
        float delivered;
    } rows[] = {
        {"", 5.0F, 1, 0, 5.0F},
        {"AMP1*gain1", -20.0F, 1, 0, -20.0F},
        {"AMP1*gain1", 5.0F, 1, 1, -20.0F},
        {"AMP1*gain1;amp1*gain2", -20.0F, 1, 0, -20.0F},
        {"AMP1*gain1;AMP1*input", 5.0F, 1, 2, 5.0F},
        {"AMP1*gain1;AMP1*input", -20.0F, 1, 2, -20.0F}, // one the same, one new
        {"AMP1*GAIN1", 5.0F, 0, 3, 5.0F},                // keywords are case-sensitive
        {"AMP1*gain1;AMP9*gain1", 5.0F, 0, 3, 5.0F},
        {"AMP1", 5.0F, 0, 3, 5.0F}, // a device has no default value
    };
    for (const auto& row : rows) {
        INFO(std::string(row.functions), " with ", row.held);
        Load(control, std::string("function=") + row.functions);
        float data = row.held;
        CHECK(Request(control, COMMAND_GET, DATATYPE_FLOAT, &data) == Outcome{row.success, row.result});
        CHECK(data == row.delivered);
    }
}

TEST_CASE("what is asked for a datatype that it has no form for is out of reach, and told of once") {
    const TestPanel panel;
    panel.Declare(std::string(AMPLIFIER) +
                  "AMP1*text=text,,,12 dB,\nAMP1*band=channeleq,,,0,PEQ,6 dB\n"
                  "AMP1*filters=xoverfilters,,,OFF,20 Hz\nAMP1*delay=delay,,,0,1 ms\n");
    CreateKnob(panel, "Knob", "0,100,40");
    Load(panel.Create("EQ", "Band"), "datatype=channeleq");
    Load(panel.Create("BEDIT", "Words"), "value=Hello");
    Load(panel.Create("BEDIT", "Number"), "value=12 dB");
    for (const char* name : {"INETWORK", "CLOCK", "IMIDI", "MINIEQ"}) {
        panel.Create(name, name);
    }
    const struct {
        std::vector<int> fits; // of those below
        std::vector<std::string> addresses;
    } rows[] = {
        {{DATATYPE_INTEGER, DATATYPE_FLOAT, DATATYPE_TEXT}, // properties begin with a number
         {"AMP1*gain1", "AMP1*input", "AMP1*text", "Knob", "Knob*properties", "Number"}},
        {{DATATYPE_TEXT}, {"AMP1*label", "Knob*bitmap", "Words", "MINIEQ"}},
        {{DATATYPE_CHANNEL_EQ, DATATYPE_TEXT}, {"AMP1*band", "Band", "Band*value"}},
        {{DATATYPE_CROSSOVER, DATATYPE_TEXT}, {"AMP1*filters"}},
        {{DATATYPE_DELAY, DATATYPE_TEXT}, {"AMP1*delay"}},
        {{}, {"INETWORK", "INETWORK*value", "CLOCK", "IMIDI"}},
    };
    HWND control = panel.Create("LED", "Control");
    for (const auto& row : rows) {
        for (const std::string& address : row.addresses) {
            for (const int datatype : {DATATYPE_INTEGER, DATATYPE_FLOAT, DATATYPE_TEXT, DATATYPE_DELAY,
                                       DATATYPE_CROSSOVER, DATATYPE_MASTER_EQ, DATATYPE_CHANNEL_EQ}) {
                CAPTURE(address);
                CAPTURE(datatype);
                const bool isFit = std::count(row.fits.begin(), row.fits.end(), datatype) != 0;
                const TraceCapture trace;
                Load(control, "function=" + address);
                alignas(4) char data[TEXT_SIZE] = "";
                for (const int held : {REQUEST_DELIVERED, REQUEST_UNCHANGED}) {
                    const int result = Request(control, COMMAND_GET, datatype, data).result;
                    CHECK((isFit ? result <= held : result == REQUEST_UNREACHABLE));
                }
                CHECK(trace.CountContaining(address + " has no value") == (isFit ? 0 : 1));
            }
        }
    }

    HWND eq = panel.Create("EQ", "Wrong");
    Load(eq, "function=AMP1*gain1");
    CHECK(IsMarked(eq));
    Load(eq, "properties=0,PEQ,6 dB,440 Hz,-3 dB,1");
    CHECK(panel.Parameter("AMP1*gain1") == "-20");
    Load(eq, "connection=Band"); // a master's band asked of a channel's
    Load(eq, "function=");
    CHECK(IsMarked(eq));
    Load(panel.Find("Band"), "datatype=mastereq");
    CHECK_FALSE(IsMarked(eq));
}

TEST_CASE("a set reaches every target and succeeds when all took it") {
    const TestPanel panel;
    panel.Declare(AMPLIFIER);
    HWND limited = CreateKnob(panel, "Limited", "0,10,0");
    HWND wide = CreateKnob(panel, "Wide", "-100,100,0");
    HWND control = panel.Create("LED", "Control");
    Load(control, "function=AMP1*gain1;AMP1*label");
    Load(control, "connection=Limited;Wide*value");
    float value = 12.5F;
    CHECK(Request(control, COMMAND_SET, DATATYPE_FLOAT, &value).success != 0);
    CHECK(value == 12.5F); // what one target limits, the next does not see
    CHECK(Value(limited) == 10.0F);

    // A number for the device, whose unit it is, and none for the knobs: it reaches them all.
    for (const auto& [sent, gain, held] :
         {std::array{"12.5", "12.5", "12.5"}, {"-7.25", "-7.25", "-7.25"}, {"-8 dB", "-8", "-7.25"}}) {
        char text[TEXT_SIZE] = "";
        std::strcpy(text, sent);
        CHECK(Request(control, COMMAND_SET, DATATYPE_TEXT, text).success != 0);
        CHECK(Text(wide) == held);
        CHECK(panel.Parameter("AMP1*gain1") == gain);
        CHECK(panel.Parameter("AMP1*label") == sent);
    }
    Load(control, "connection=Gone;Wide");
    int number = 4;
    CHECK(Request(control, COMMAND_SET, DATATYPE_INTEGER, &number) == Outcome{0, REQUEST_UNREACHABLE});
    CHECK(Value(wide) == 4.0F); // the others take it all the same
}

TEST_CASE("%n stands for the object that contains the control") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*Strip1=float,0,100,50,\nAMP_Strip1*device=simulated\n"
                  "AMP_Strip1*gain=float,0,100,60,\n");
    HWND strip = panel.Create("MIXER", "Strip1");
    HWND inside = CreateControl("KNOB", "Inside", strip, &ObjectOf(strip));
    HWND neighbour = CreateControl("KNOB", "Neighbour", strip, &ObjectOf(strip));
    HWND outside = CreateKnob(panel, "Neighbour");
    HWND onPanel = CreateKnob(panel, "On panel");
    Load(inside, "connection=%n*neighbour");
    Load(onPanel, "connection=%n*Neighbour");
    SetValue(inside, 30.0F);
    SetValue(onPanel, 40.0F);
    CHECK(Value(neighbour) == 30.0F);
    CHECK(Value(outside) == 40.0F);

    Load(inside, "connection=");
    for (const auto& [function, value] : {std::pair{"AMP_%n*gain", 60.0F}, {"AMP1*%n", 50.0F}}) {
        Load(inside, std::string("function=") + function);
        Poll(inside);
        CHECK(Value(inside) == value);
        CHECK(Text(inside, "function") == function); // it stays as it was written
    }
}

TEST_CASE("rings of knobs settle, and a long chain is followed to its end") {
    constexpr int CHAIN = 60;
    for (const int size : {1, 2, 3, CHAIN}) {
        CAPTURE(size);
        const TestPanel panel;
        const TraceCapture trace;
        std::vector<HWND> knobs;
        for (int i = 0; i < size; ++i) {
            knobs.push_back(CreateKnob(panel, ("K" + std::to_string(i)).c_str()));
            Load(knobs.back(), "connection=K" + std::to_string(size == CHAIN ? i + 1 : (i + 1) % size));
        }
        for (const float value : {30.0F, 0.0F, 99.5F}) {
            CHECK(SetValue(knobs[0], value) == 1);
            for (HWND knob : knobs) {
                CHECK(Value(knob) == value);
            }
        }
        CHECK(trace.All() == "");
    }
}

TEST_CASE("rings that never settle are cut short with a trace") {
    const struct {
        const char* connections[3];
        const char* offsets;
        const char* properties;
    } rows[] = {
        {{"B;C", "A;C", "A;B"}, "1,1", "-100000,100000,0"}, // endless, and doubled at every level
        {{"B;C", "A;C", "A;B"}, "1,2", "0,50,0"},           // ends at the limit, after countless ways to it
        {{"A", "", ""}, "1", "-100000,100000,0"},           // with itself
    };
    for (const auto& row : rows) {
        INFO(std::string(row.connections[0]), " ", std::string(row.properties));
        const TestPanel panel;
        HWND aside = CreateKnob(panel, "Aside");
        HWND knobs[] = {CreateKnob(panel, "A", row.properties), CreateKnob(panel, "B", row.properties),
                        CreateKnob(panel, "C", row.properties)};
        for (int i = 0; i < 3; ++i) {
            Load(knobs[i], "relative=1");
            Load(knobs[i], std::string("connection=") + row.connections[i]);
            Load(knobs[i], std::string("values=") + row.offsets);
        }
        const TraceCapture trace;
        SetValue(knobs[0], 5.0F);
        const int cuts = trace.CountContaining("does not settle");
        CHECK(cuts > 0);
        CHECK(cuts <= 2); // one for each target
        for (HWND knob : knobs) {
            CHECK(Value(knob) >= 0.0F);
            CHECK(Value(knob) < 300.0F);
        }
        Load(knobs[2], "relative=0");
        Load(knobs[2], "connection=Aside"); // and afterwards requests go as before
        SetValue(knobs[2], 42.0F);
        CHECK(Value(aside) == 42.0F);
        CHECK(trace.CountContaining("does not settle") == cuts);
    }
}

TEST_CASE("targets may be destroyed while a value is sent, and the sender too") {
    for (const char* relative : {"relative=0", "relative=1"}) {
        for (const char* name : {"Trigger", "Next", "Last", "Sender"}) {
            INFO(std::string(name), " ", std::string(relative));
            const TestPanel panel;
            HWND sender = CreateKnob(panel, "Sender");
            HWND targets[] = {CreateKnob(panel, "Trigger"), CreateKnob(panel, "Next"),
                              CreateKnob(panel, "Last")};
            Load(sender, relative);
            Load(sender, "connection=Trigger;Next;Last");
            HWND victim = panel.Find(name);
            const int objects = a_HostinfoCount();
            {
                const Interception hook(targets[0], CWM_MESSAGE, [victim] { DestroyWindow(victim); });
                SetValue(sender, 50.0F);
            }
            CHECK_FALSE(IsWindow(victim));
            CHECK(a_HostinfoCount() == objects - 1);
            for (HWND target : targets) { // the rest of the list is served
                CHECK((!IsWindow(target) || Value(target) > 0.0F));
            }
        }
    }
}

TEST_CASE("what a control is bound to is followed, and marked while it differs or is gone") {
    for (const char* className : {"KNOB", "FADER", "FADING", "LED", "BTRISTATEBUTTON", "BSTATIC", "BEDIT",
                                  "BRANGE", "SCALE", "MIXER"}) {
        INFO(std::string(className));
        const TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*a=float,-9,9,0,\nAMP1*b=float,-9,9,0,\n");
        HWND target = panel.Create("BRANGE", "Target");
        HWND control = panel.Create(className, "Control");
        Load(control, className == std::string_view("BTRISTATEBUTTON") ? "properties=1,0" : "properties=0,1",
             LOAD_FROM_FILE);
        Load(control, "datatype=f", LOAD_FROM_FILE);
        LoadLines(control, "mode=output|value=0|interval=3600000|function=AMP1*a;AMP1*b|connection=Target");
        const auto set = [&](const char* a, const char* b, float connected) {
            ph_SetParameter(panel.Root(), "AMP1*a", a);
            ph_SetParameter(panel.Root(), "AMP1*b", b);
            SetValue(target, connected);
            ph_Tick(panel.Root()); // long before the interval has passed
            return IsMarked(control);
        };
        CHECK_FALSE(set("0", "0", 0.0F));
        CHECK(set("1", "0", 0.0F));
        CHECK(Value(control) == 0.0F);
        CHECK_FALSE(set("1", "1", 1.0F));
        CHECK(Value(control) == 1.0F);
        ph_SetParameter(panel.Root(), "AMP1*online", "0");
        CHECK(IsMarked(control));
        ph_SetParameter(panel.Root(), "AMP1*online", "1");
        CHECK_FALSE(IsMarked(control));
        DestroyWindow(target);
        CHECK(IsMarked(control));
        Load(control, "connection=");
        CHECK_FALSE(IsMarked(control));
        Load(control, "function=");
        CHECK_FALSE(IsMarked(control));
        CHECK(panel.Parameter("AMP1*b") == "1"); // nobody has sent anything
    }
}

TEST_CASE("a device that is declared later is found, and answers nobody while it is off the network") {
    const TestPanel panel;
    HWND knob = CreateKnob(panel, "Knob", "-80,18,0");
    Load(knob, "function=AMP1*gain1", LOAD_FROM_FILE);
    a_SetChanged(panel.Root(), false);
    CHECK(IsMarked(knob));
    panel.Declare(AMPLIFIER);
    CHECK_FALSE(a_IsChanged(panel.Root())); // by nobody's doing
    Poll(knob);
    CHECK(Value(knob) == -20.0F);

    REQUIRE(ph_SetParameter(panel.Root(), "AMP1*online", "0") == 1);
    SetValue(knob, 3.0F);
    CHECK(panel.Parameter("AMP1*gain1") == "-20");
    REQUIRE(ph_SetParameter(panel.Root(), "AMP1*online", "1") == 1);
    Poll(knob);
    CHECK(Value(knob) == -20.0F); // held until it is back
    SetValue(knob, 3.0F);
    CHECK(panel.Parameter("AMP1*gain1") == "3");
}

// A device whose parameters do something whenever they are asked or set, and hold a band.
class ActingDevice : public DEVICE {
public:
    ActingDevice(
        const TestPanel& panel, const char* ownName, std::function<void()> action = [] {})
        : action_(std::move(action)) {
        Register(panel.Root(), ownName);
    }
    LRESULT OnRequestList(WPARAM, LPARAM item) override {
        auto& request = *reinterpret_cast<REQUESTITEM*>(item);
        request.context = this;
        request.handler = [](VALUERECORD* record, void* context) {
            auto& device = *static_cast<ActingDevice*>(context);
            device.action_();
            const bool isSet = record->command == COMMAND_SET;
            if (record->datatype != DATATYPE_CHANNEL_EQ && record->datatype != DATATYPE_MASTER_EQ) {
                return isSet ? 1 : a_AnswerInteger(record, 1);
            }
            auto& data = *static_cast<logic::EqBand*>(record->data);
            (isSet ? device.band : data) = isSet ? data : device.band;
            return 1;
        };
        return 1;
    }
    LRESULT OnDataInBuffer(WPARAM wParam, LPARAM lParam) override {
        news = {wParam, lParam};
        newsThread = GetCurrentThreadId();
        return 0;
    }
    logic::EqBand band{0, logic::Peak, 100.0F, 0.0F, 1.0F, 1};
    std::pair<WPARAM, LPARAM> news{};
    DWORD newsThread = 0;

private:
    std::function<void()> action_;
};

TEST_CASE("a device that goes while a value is sent is not asked any more") {
    const TestPanel panel;
    int answers = 0;
    auto second = std::make_unique<ActingDevice>(panel, "SECOND", [&] { ++answers; });
    const ActingDevice first(panel, "FIRST", [&] { second.reset(); });
    HWND control = panel.Create("LED", "Control");
    Load(control, "function=SECOND*x;FIRST*x;SECOND*x");
    float value = 3.0F;
    CHECK(Request(control, COMMAND_SET, DATATYPE_FLOAT, &value) == Outcome{0, REQUEST_UNREACHABLE});
    CHECK(answers == 1);
}

TEST_CASE("records are compared, and passed on as a whole") {
    const TestPanel panel;
    ActingDevice first(panel, "RAW1");
    ActingDevice second(panel, "RAW2");
    HWND control = panel.Create("LED", "Control");
    Load(control, "function=RAW1*band;RAW2*band");
    const logic::EqBand held{1, logic::LowPass, 500.0F, -1.0F, 2.0F, 2};
    const auto get = [&] {
        logic::EqBand band = held;
        const Outcome outcome = Request(control, COMMAND_GET, DATATYPE_CHANNEL_EQ, &band);
        return std::pair(outcome.result, band);
    };
    CHECK(get() == std::pair(REQUEST_DELIVERED, first.band));
    second.band.slope = 2;
    CHECK(get() == std::pair(REQUEST_DISAGREE, held));

    logic::EqBand sent = held;
    CHECK(Request(control, COMMAND_SET, DATATYPE_CHANNEL_EQ, &sent).success == 1);
    CHECK(first.band == held);
    CHECK(second.band == held);

    HWND eq = panel.Create("EQ", "Band 1"); // from one band to another, and to what that one is bound to
    HWND other = panel.Create("EQ", "Band 2");
    Load(other, "function=RAW1*band");
    Load(eq, "connection=Band 2");
    sent = {0, logic::HighShelf, 8000.0F, 3.0F, 0.5F, 2};
    CHECK(Send(eq, COMMAND_SET, DATATYPE_MASTER_EQ, &sent) == 1);
    CHECK(Text(other, "properties") == "0,Hishelv,12 dB,8000 Hz,3 dB,0.5");
    CHECK(first.band == sent);
    Load(other, "datatype=channeleq"); // one takes bands of the one kind only
    Load(eq, "properties=0,PEQ");
    CHECK(first.band == sent);
}

TEST_CASE("the state of a parameter is asked beside its handler") {
    const TestPanel panel;
    panel.Declare(AMPLIFIER);
    const ActingDevice silent(panel, "SILENT"); // and never alive
    const auto state = [&panel](const char* address) {
        DWORD age = 0;
        const int found = a_ParameterState(panel.Root(), address, &age);
        return std::pair(found, age != NO_AGE);
    };
    CHECK(state("AMP1*gain1") == std::pair(PARAMETER_LIVE, true));
    CHECK(state("SILENT*x") == std::pair(PARAMETER_LOST, false));
    for (const char* address : {"AMP1*none", "AMP1", "", "NONE*gain1"}) {
        CHECK(state(address) == std::pair(PARAMETER_NONE, false));
    }
    REQUIRE(ph_SetParameter(panel.Root(), "AMP1*online", "0") == 1);
    CHECK(state("amp1*gain1") == std::pair(PARAMETER_LOST, true));
    CHECK(state("AMP1*online") == std::pair(PARAMETER_LIVE, true));
    CHECK(a_ParameterState(nullptr, "AMP1*gain1") == PARAMETER_NONE);
    CHECK(ph_ParameterState(panel.Root(), "AMP1*gain1") == PH_STATE_LOST);
}

TEST_CASE("what is not live is counted, and why stands in words") {
    const TestPanel panel;
    panel.Declare(AMPLIFIER);
    HWND led = panel.Create("LED", "Led");
    const auto why = [&](const char* function) {
        Load(led, std::string("function=") + function);
        return a_WhyNotLive(&ObjectOf(led));
    };
    CHECK(why("AMP1*gain1") == "");
    CHECK(why("AMP1*none;AMP1*gain1") == "AMP1*none: not there");
    CHECK(a_CountNotLive(panel.Root()) == 0);
    REQUIRE(ph_SetParameter(panel.Root(), "AMP1*online", "0") == 1);
    CHECK(a_CountNotLive(panel.Root()) == 1);
    CHECK(why("AMP1*gain1") == "AMP1: nothing heard for 0 s");
    const auto devices = a_ListDevices(panel.Root());
    REQUIRE(devices.size() == 1);
    CHECK(devices.front().first == "AMP1");
    CHECK(devices.front().second.state == DEVICE_LOST);
    CHECK(a_WhyNotLive(DEVICESTATUS{DEVICE_STALE, 1500, 4000}) == "nothing heard for 4 s");
    CHECK(a_WhyNotLive(DEVICESTATUS{DEVICE_LOST, 0, 7'300'000}) == "nothing heard for 2 h");
    CHECK(a_WhyNotLive(DEVICESTATUS{DEVICE_UNKNOWN, 180'000, NO_AGE}) == "no answer yet for 3 min");
    CHECK(a_DeviceFaults(panel.Root()).empty());
    CHECK(ph_LoadDevices(panel.Root(), "none.devices") == -1);
    CHECK(a_DeviceFaults(panel.Root()) ==
          std::list<std::string>{"The device file none.devices cannot be read"});
}

TEST_CASE("requests are for the panel's thread, to which a transport's posts its news") {
    const TestPanel panel;
    panel.Declare(AMPLIFIER);
    const ActingDevice device(panel, "ACTING");
    HWND knob = CreateKnob(panel, "Knob");
    HWND control = panel.Create("LED", "Control");
    REQUESTLIST& requests = ObjectOf(control).requests;
    const TraceCapture trace;
    for (const char* line : {"function=AMP1*gain1", "connection=Knob"}) {
        Load(control, line);
        Outcome outcome{};
        std::thread([&] {
            float value = 5.0F;
            outcome.success = a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &value, &outcome.result);
            PostMessageA(device.window, DEVICE_NEWS, 7, 8);
        }).join();
        CHECK(outcome == Outcome{0, REQUEST_UNREACHABLE});
    }
    CHECK(panel.Parameter("AMP1*gain1") == "-20");
    CHECK(Value(knob) == 0.0F);
    CHECK(trace.CountContaining("on another thread") == 1);
    CHECK(device.newsThread == 0);
    PumpAll();
    CHECK(device.news == std::pair<WPARAM, LPARAM>(7, 8));
    CHECK(device.newsThread == GetCurrentThreadId());
}

TEST_CASE("further lists of a control follow what comes and goes") {
    const TestPanel panel;
    HWND xover = panel.Create("XOVER", "Low");
    Load(xover, "function1=AMP1*gain1;Knob");
    Load(xover, "function=AMP1*gain2");
    const auto setGain = [xover](const char* text) { Load(xover, std::string("value=,,,,") + text); };
    setGain("-1");
    panel.Declare(AMPLIFIER);
    HWND knob = CreateKnob(panel, "Knob", "-30,30,0");
    setGain("-2");
    CHECK(panel.Parameter("AMP1*gain1") == "-2");
    CHECK(panel.Parameter("AMP1*gain2") == "-20"); // it is no pair of filters
    CHECK(Value(knob) == -2.0F);
    DestroyWindow(knob);
    setGain("-3");
    knob = CreateKnob(panel, "Knob", "-30,30,0");
    Load(xover, "function=AMP1*gain1"); // building one list anew leaves the others bound
    setGain("-4");
    CHECK(Value(knob) == -4.0F);
    Load(xover, "function1=");
    setGain("-5");
    CHECK(Value(knob) == -4.0F);
}

TEST_CASE("what is bound to a control follows its value at the next tick, however long its interval is") {
    for (const char* className : {"KNOB", "FADER"}) {
        INFO(std::string(className));
        const TestPanel panel(TestPanel::Visible);
        HWND source = panel.Create(className, "Source");
        Load(source, "properties=-80,0,-40");
        HWND follower = panel.Create("KNOB", "Follower");
        Load(follower, "properties=-80,0,0");
        Load(follower, "interval=1000000");
        Load(follower, "connection=Source");
        const auto follows = [&] {
            ph_Tick(panel.Root());
            return Value(follower) == Value(source);
        };
        Poll(follower);
        CHECK(follows());
        SetValue(source, -7);
        CHECK(follows());
        Load(source, "value=-12");
        CHECK(follows());
        CHECK(Value(follower) == -12.0F);
        if (className == std::string_view("KNOB")) { // while it is dragged
            SendMessageA(source, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 20));
            for (const int x : {11, 17, 14}) {
                const float held = Value(source);
                SendMessageA(source, WM_MOUSEMOVE, MK_LBUTTON, At(x, 20));
                CHECK(Value(source) != held);
                CHECK(follows());
            }
            SendMessageA(source, WM_LBUTTONUP, 0, At(14, 20));
        }
        CHECK(Text(follower, "interval") == "1000000");
    }
}

TEST_SUITE_END();
