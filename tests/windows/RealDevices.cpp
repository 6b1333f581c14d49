// Panels over real devices: against the test mixer, and against programs that others wrote.
#include "tests/windows/LivePanel.h" // has winsock2.h, which refuses to stand behind windows.h

#include "Panelhost/Devices.h"
#include "Panelhost/Root.h"
#include "base/Handles.h"
#include "tests/windows/Resources.h"

#include <cmath>
#include <cstdlib>
#include <psapi.h>

namespace {

// Of the long runs, for which the environment asks.
int Rounds(int usual) {
    const char* asked = std::getenv("OSMIR_PARTNER_ROUNDS");
    return asked == nullptr ? usual : std::atoi(asked);
}

SIZE_T MemoryInUse() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

} // namespace

TEST_CASE("device lines that cannot be understood declare nothing, and why is said") {
    const char* profile = "profile=osc,1\nhello=none\nport=9\n";
    struct Row {
        const char* line;
        const char* fault; // behind the name; null: it is declared
    };
    for (const Row& row : std::initializer_list<Row>{
             {"osc,127.0.0.1:9,p", nullptr},
             {"osc, localhost , p", nullptr},
             {"osc,127.0.0.1", "the address is none"},
             {"osc,desk.example:9,p", "the address is none"},
             {"osc,127.0.0.1:0,p", "the address is none"},
             {"osc,127.0.0.256:9,p", "the address is none"},
             {"osc,127.0.0.1:9,..\\p", "the profile or its ranges are none"},
             {"osc,127.0.0.1:9,p,c", "the profile or its ranges are none"},
             {"osc,127.0.0.1:9,p,c=1-2", "the profile p.profile cannot be read: The profile has no range c"},
             {"osc,127.0.0.1:9,none", "the profile none.profile cannot be read"},
             {"osc", "the address is none"},
             {"tin can", "there is no kind of device \"tin can\""}}) {
        INFO(std::string(row.line));
        const LivePanel panel(std::string("FOH*device=") + row.line + "\nFOH*x=float,0,1,0\n", profile, "p");
        CHECK(panel.devices == (row.fault == nullptr ? 1 : 0));
        CHECK(a_DeviceFaults(panel.Root()) ==
              (row.fault == nullptr ? std::list<std::string>()
                                    : std::list<std::string>{std::string("FOH: ") + row.fault}));
        CHECK(a_LoadErrorCount(panel.Root()) == (row.fault == nullptr ? 1 : 2)); // it has no lines of its own
    }
    std::string many;
    for (int i = 1; i <= 17; ++i) {
        many += "D" + std::to_string(i) + "*device=osc,127.0.0.1:9,p\n";
    }
    LivePanel panel(many, profile, "p");
    CHECK(panel.devices == 16);
    CHECK(a_DeviceFaults(panel.Root()) == std::list<std::string>{"D17: there are too many devices"});
    CHECK(panel.Until([&] { return panel.Parameter("D16*state") == "open"; }));

    const TestPanel early; // a control that was there first
    HWND led = early.Create("LED", "Led");
    Load(led, "function=D*unconfirmed;D*online");
    const TestFolder folder;
    folder.Write("p.profile", profile);
    CHECK(ph_LoadDevices(early.Root(), folder.Write("Late.devices", "D*device=osc,localhost,p\n").c_str()) ==
          1);
    for (const REQUESTITEM& item : ObjectOf(led).requests) {
        CHECK((item.handler != nullptr));
    }
}

TEST_CASE("the list of what is bound tells what is known of a mixer, and asks it for nothing") {
    if (HasNoPartners()) {
        return;
    }
    const Mixer mixer;
    LivePanel panel(Foh());
    Load(panel.Window(), "layer=u1");
    for (const auto& [name, function, layer] : {std::tuple("Shown", "function=FOH*ch01.fader", "layer=u1"),
                                                {"Hidden", "function=FOH*ch07.fader", "layer=u2"}}) {
        const HWND fader = panel.Create("FADER", name);
        Load(fader, layer);
        Load(fader, function);
    }
    struct Known {
        int state, age;
        std::string value;
    };
    const auto list = [&] {
        std::vector<Known> known;
        ph_ListBindings(
            panel.Root(),
            [](const PH_BINDING* binding, void* context) {
                static_cast<std::vector<Known>*>(context)->push_back(
                    {binding->state, binding->age, binding->value});
            },
            &known);
        REQUIRE(known.size() == 2);
        return known;
    };
    REQUIRE(panel.Until([&] { return list()[0].state == PH_STATE_LIVE; }));
    CHECK(list()[0].value == panel.Parameter("FOH*ch01.fader"));
    CHECK(list()[0].age >= 0);
    for (int i = 0; i < 100; ++i) {
        panel.Tick();
        REQUIRE(list()[1].state == PH_STATE_UNKNOWN);
    }
    CHECK(list()[1].age == -1);
    CHECK(list()[1].value.empty());
    panel.Parameter("FOH*ch07.fader"); // which does ask
    CHECK(panel.Until([&] { return list()[1].state == PH_STATE_LIVE; }));
    CHECK(panel.Set("FOH*online", "0"));
    CHECK(panel.Until([&] { return list()[0].state == PH_STATE_OFF; }));
    CHECK_FALSE(list()[0].value.empty()); // the last one
}

TEST_CASE("a mixer is operated, and operates the panel") {
    if (HasNoPartners()) {
        return;
    }
    const Mixer mixer;
    LivePanel panel(Foh());
    REQUIRE(panel.devices == 1);
    HWND fader = panel.Create("FADER", "Fader");
    Load(fader, "properties=-90,10,0");
    Load(fader, "function=FOH*ch01.fader");
    CHECK(panel.State("FOH*ch01.fader") == PH_STATE_UNKNOWN);
    HWND relative = panel.Create("FADER", "Relative");
    Load(relative, "properties=-90,10,0");
    Load(relative, "relative=1");
    Load(relative, "function=FOH*ch05.fader");
    SetValue(relative, 5); // nobody knows from where
    REQUIRE(panel.Until([&] { return a_CountNotLive(panel.Root()) == 0; }));
    CHECK(panel.Parameter("FOH*state") == "live");
    CHECK(panel.Parameter("FOH*online") == "1");
    CHECK(panel.Parameter("FOH*model").find("X32") != std::string::npos);
    REQUIRE(panel.ShowsWhat(mixer));
    CHECK(a_WhyNotLive(&ObjectOf(fader)) == "");
    CHECK(panel.Until([&] { return panel.State("FOH*ch05.fader") == PH_STATE_LIVE; }));
    CHECK(mixer.Ask("writes /ch/05/mix/fader").starts_with("0 "));

    // A fader that is dragged: it does not move back, and not too much is sent.
    const ULONGLONG start = GetTickCount64();
    for (int i = 1; i <= 150; ++i) {
        const float value = -static_cast<float>(i) / 10;
        SetValue(fader, value);
        panel.Tick();
        Poll(fader);
        REQUIRE(std::fabs(Value(fader) - value) < 0.05F); // the mixer rounds to its steps
    }
    CHECK(panel.ShowsWhat(mixer));
    CHECK(std::fabs(mixer.Value("/ch/01/mix/fader") - 0.4375) < 0.001); // -15 dB
    const int writes = std::atoi(mixer.Ask("writes /ch/01/mix/fader").c_str());
    CHECK(writes > 10);
    CHECK(writes <= static_cast<int>((GetTickCount64() - start) / 25) + 2); // forty a second

    // Another client, meters, blocks and switches.
    mixer.Ask("set /ch/01/mix/fader 0.5");
    CHECK(panel.Until([&] {
        Poll(fader);
        return Value(fader) == -10;
    }));
    HWND band = panel.Create("EQ", "Band");
    Load(band, "function=FOH*ch02.eq3");
    CHECK(panel.Until([&] { return panel.State("FOH*ch02.eq3") == PH_STATE_LIVE; }));
    REQUIRE(panel.Set("FOH*ch02.eq3", "0,Loshelv,12 dB,1000 Hz,6 dB,2"));
    CHECK(panel.Until([&] { return mixer.Value("/ch/02/eq/3/type") == 1; }));
    CHECK(panel.Until([&] { return std::fabs(mixer.Value("/ch/02/eq/3/g") - 0.7) < 0.01; }));
    CHECK(panel.Until([&] { return panel.State("FOH*ch02.eq3") == PH_STATE_LIVE; }));
    CHECK(panel.Parameter("FOH*ch02.eq3").find("Loshelv") != std::string::npos);
    CHECK_FALSE(panel.Set("FOH*ch02.eq3", "0,Allpass")); // it has none
    HWND meter = panel.Create("METER", "Meter");
    Load(meter, "function=FOH*ch01.level");
    CHECK(panel.Until([&] { return panel.State("FOH*ch01.level") == PH_STATE_LIVE; }));
    CHECK(panel.Set("FOH*ch03.mute", "1")); // never read: the first press
    CHECK(panel.Until([&] { return mixer.Ask("get /ch/03/mix/on").find('0') != std::string::npos; }));
    CHECK(panel.Set("FOH*ch03.name", "Kick"));
    CHECK(panel.Until([&] { return mixer.Ask("get /ch/03/config/name").find("Kick") != std::string::npos; }));
    for (const char* address : {"FOH*state", "FOH*ch01.level", "FOH*none", "FOH*ch09.fader"}) {
        CHECK_FALSE(panel.Set(address, "1"));
    }
    CHECK_FALSE(panel.Set("FOH*ch01.fader", "loud"));

    // What nobody shows is not read.
    HWND led = panel.Create("LED", "Led");
    Load(led, "function=FOH*ch04.fader");
    Load(led, "layer=u2");
    const auto showLayers = [&panel](std::string layers) {
        return Send(panel.Window(), COMMAND_SET, DATATYPE_TEXT, layers.data(), "layer") != 0;
    };
    CHECK(panel.Until([&] { return panel.State("FOH*ch04.fader") == PH_STATE_LIVE; }));
    CHECK(showLayers("u1"));
    CHECK(panel.Until([&] { return panel.State("FOH*ch04.fader") == PH_STATE_UNKNOWN; }));
    CHECK(showLayers("u2"));
    CHECK(panel.Until([&] { return panel.State("FOH*ch04.fader") == PH_STATE_LIVE; }));
    CHECK(showLayers(""));

    CHECK(panel.Set("FOH*online", "0"));
    CHECK(panel.Until([&] { return panel.State("FOH*ch01.fader") == PH_STATE_OFF; }));
    CHECK_FALSE(panel.Set("FOH*ch01.fader", "0"));
    CHECK(a_WhyNotLive(&ObjectOf(fader)) == "FOH: switched off");
    CHECK(panel.Set("FOH*online", "1"));
    CHECK(panel.Until([&] { return panel.State("FOH*ch01.fader") == PH_STATE_LIVE; }));
    mixer.Ask("model Light desk");
    mixer.Ask("restart 3");
    CHECK(panel.Until([&] { return panel.State("FOH*ch01.fader") == PH_STATE_REFUSED; }));
    CHECK(panel.Parameter("FOH*state") == "refused");
    CHECK(mixer.Ask("violations").substr(0, 1) == "0");
}

TEST_CASE("a mixer that goes and comes back is marked, read anew, and leaves nothing behind") {
    if (HasNoPartners()) {
        return;
    }
    const Mixer mixer;
    TraceCapture trace;
    LivePanel panel(Foh(""));
    std::string functions;
    for (int channel = 1; channel <= 32; ++channel) {
        for (int send = 1; send <= 16; ++send) {
            char name[64];
            std::snprintf(name, sizeof name, "FOH*ch%02d.send%02d;FOH*ch%02d.sendmute%02d;", channel, send,
                          channel, send);
            functions += name;
            std::snprintf(name, sizeof name, "FOH*ch%02d.eq%d.frequency;", channel, send % 4 + 1);
            functions += send <= 4 ? name : "";
        }
        HWND led = panel.Create("LED", ("Led" + std::to_string(channel)).c_str());
        REQUIRE(Load(led, "function=" + functions) == 1);
        functions.clear();
    }
    HWND fader = panel.Create("FADER", "Fader");
    Load(fader, "properties=-90,10,0");
    Load(fader, "function=FOH*ch01.fader");
    REQUIRE(panel.Shows("FOH*ch32.send16", "0"));
    Resources before{};
    SIZE_T memory = 0;
    DWORD longestStale = 0, longestBack = 0;
    const int rounds = Rounds(2);
    for (int round = 0; round <= rounds; ++round) {
        if (round == 1) {
            before = CountResources(); // what is filled in the first round stays
            memory = MemoryInUse();
        }
        SetValue(fader, -20.0F);
        REQUIRE(mixer.Ask("down") == "ok"); // in the middle of it
        SetValue(fader, -21.0F);
        const DWORD down = GetTickCount();
        REQUIRE(panel.Until([&] { return a_CountNotLive(panel.Root()) == 1; }));
        longestStale = std::max(longestStale, GetTickCount() - down);
        CHECK(panel.State("FOH*ch32.send16") != PH_STATE_LIVE);
        Poll(fader);
        CHECK(ObjectOf(fader).requests.size() == 1);
        REQUIRE(mixer.Ask("up") == "ok");
        mixer.Ask("set /ch/32/mix/16/level 0.5");
        const DWORD up = GetTickCount();
        REQUIRE(panel.Shows("FOH*ch32.send16", "-10"));
        REQUIRE(panel.Until([&] { return panel.State("FOH*ch32.eq4.frequency") == PH_STATE_LIVE; }));
        longestBack = std::max(longestBack, GetTickCount() - up);
        CHECK(panel.ShowsWhat(mixer));
    }
    MESSAGE("stale ", longestStale, " ms at most after it went, all back ", longestBack,
            " ms at most after it came, ", rounds, " times; memory grew by ", MemoryInUse() - memory);
    CHECK(CountResources().Settled(before) == before);
    CHECK(trace.CountContaining("FOH: nothing heard any more") >= rounds + 1);
    CHECK(trace.CountContaining("FOH is back") >= rounds + 1);

    // One that was started anew so quickly that nothing shows is found out, too.
    REQUIRE(mixer.Ask("restart 0") == "ok");
    CHECK(panel.Shows("FOH*ch32.send16", "0"));
    CHECK(panel.ShowsWhat(mixer));
    // Gone in the middle of everything.
    SetValue(fader, -30.0F);
    panel.Close();
    CHECK(mixer.Value("/ch/01/mix/fader") < 1); // it is still there
}

TEST_CASE("rubbish, faults of the network and others' answers do not matter") {
    if (HasNoPartners()) {
        return;
    }
    const Mixer mixer;
    LivePanel panel(Foh());
    HWND fader = panel.Create("FADER", "Fader");
    Load(fader, "properties=-90,10,0");
    Load(fader, "function=FOH*ch01.fader");
    REQUIRE(panel.ShowsWhat(mixer));
    mixer.Ask("garbage 20000");
    const DWORD flood = static_cast<DWORD>(Rounds(1)) * 1000;
    panel.longestTick = 0;
    panel.Until([] { return false; }, 500);
    const SIZE_T memory = MemoryInUse();
    panel.Until([] { return false; }, flood);
    MESSAGE("longest tick in the flood: ", panel.longestTick, " ms; memory grew by ", MemoryInUse() - memory);
    CHECK(MemoryInUse() < memory + 4'000'000);
    mixer.Ask("garbage 0");
    CHECK(panel.ShowsWhat(mixer));
    mixer.Ask("drop 20");
    mixer.Ask("double 20");
    mixer.Ask("reorder 20");
    for (int i = 1; i <= 100; ++i) {
        SetValue(fader, -static_cast<float>(i) / 5);
        panel.Tick();
    }
    mixer.Ask("drop 0");
    CHECK(panel.ShowsWhat(mixer));
    CHECK(std::fabs(mixer.Value("/ch/01/mix/fader") - 0.375) < 0.001);
    mixer.Ask("otherport 1");
    CHECK(panel.Until([&] { return a_CountNotLive(panel.Root()) == 1; }));
    CHECK(a_WhyNotLive(&ObjectOf(fader)).starts_with("FOH: nothing heard for "));
    mixer.Ask("otherport 0");
    CHECK(panel.Until([&] { return a_CountNotLive(panel.Root()) == 0; }));
    CHECK(mixer.Ask("violations").substr(0, 1) == "0");
}

TEST_CASE("sixteen devices come and go in the middle of their traffic") {
    if (HasNoPartners()) {
        return;
    }
    const Mixer mixer;
    std::string lines;
    for (int i = 1; i <= 16; ++i) {
        lines += "D" + std::to_string(i) + "*device=" + AddressOf(MixerPort(), "x32") + "\n";
    }
    CHECK(LeftBehind(3, [&] {
              LivePanel panel(lines);
              REQUIRE(panel.devices == 16);
              HWND led = panel.Create("LED", "Led");
              Load(led, "function=D1*ch01.fader;D16*ch32.fader;D8*ch01.level");
              CHECK(panel.Until([&] { return a_CountNotLive(panel.Root()) == 0; }));
              CHECK(panel.Until([&] { return panel.State("D16*ch32.fader") == PH_STATE_LIVE; }));
              for (int i = 1; i <= 16; ++i) {
                  CHECK(panel.Set(("D" + std::to_string(i) + "*ch02.fader").c_str(), "-20"));
              }
          }) == "");
    const SIZE_T memory = MemoryInUse();
    const LivePanel panel(lines);
    MESSAGE("memory of a console with all its channels: ", (MemoryInUse() - memory) / 16);
}

TEST_CASE("the host library goes while it has devices that nobody answers for") {
    const TestFolder folder;
    const std::string copy = folder.Path("Host.dll"); // unloaded, as the one that this program uses cannot be
    REQUIRE(CopyFileA((ProgramFolder() + "Panelhost.dll").c_str(), copy.c_str(), TRUE));
    folder.Write("p.profile", "profile=osc,1\nhello=/hi,/hi\np=float,0,1,,/p,l\n");
    const std::string devices =
        folder.Write("Test.devices", "A*device=osc,127.0.0.1:9,p\nB*device=osc,127.0.0.1:9,p\n");
    for (int round = 0; round < 3; ++round) {
        const Library library(LoadLibraryA(copy.c_str()));
        REQUIRE(library != nullptr);
        HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
        HOSTINFO* root = Exported<decltype(ph_CreateRoot)>("Host.dll", "ph_CreateRoot")(window, "Panel");
        CHECK(Exported<decltype(ph_LoadDevices)>("Host.dll", "ph_LoadDevices")(root, devices.c_str()) == 2);
        Exported<decltype(ph_Tick)>("Host.dll", "ph_Tick")(root);
        Exported<decltype(ph_DestroyRoot)>("Host.dll", "ph_DestroyRoot")(root);
        DestroyWindow(window);
    }
    CHECK(Await([] { return GetModuleHandleA("Host.dll") == nullptr; })); // its thread is gone, too
}

TEST_CASE("a synthesizer and a printer of messages that others wrote") {
    if (HasNoPartners()) {
        return;
    }
    const Partner partners(PartnersPort());
    const std::string port = partners.Ask("synth start");
    const std::string printer = partners.Ask("dump");
    if (port == "none" || printer == "none") {
        MESSAGE("skipped: zynaddsubfx and liblo-tools are not installed");
        return;
    }
    std::string profile = ReadBytes(std::getenv("OSMIR_SYNTH_PROFILE"));
    const std::size_t range = profile.find("13.333");
    REQUIRE(range != std::string::npos);
    profile.replace(range, 6, "99"); // more than it takes
    LivePanel panel("SYN*device=" + AddressOf(std::atoi(port.c_str()), "zyn") + "\n", profile, "zyn");
    std::string functions;
    for (int part = 0; part < 16; ++part) {
        for (const char* name : {"volume", "panning", "on"}) {
            functions += "SYN*part" + std::to_string(part) + "." + name + ";";
        }
    }
    HWND led = panel.Create("LED", "Led");
    Load(led, "function=" + functions);
    CHECK(panel.Until(
        [&] { return a_CountNotLive(panel.Root()) == 0 && a_WhyNotLive(&ObjectOf(led)).empty(); }));
    REQUIRE(panel.Set("SYN*part0.volume", "-6.5"));
    CHECK(panel.Shows("SYN*part0.volume", "-6.5"));
    REQUIRE(panel.Set("SYN*part0.volume", "99"));
    CHECK(panel.Until([&] {
        return panel.Parameter("SYN*part0.volume").starts_with("13.33") &&
               panel.State("SYN*part0.volume") == PH_STATE_LIVE;
    }));
    const std::string isOn = panel.Parameter("SYN*part3.on") == "1" ? "0" : "1";
    REQUIRE(panel.Set("SYN*part3.on", isOn.c_str()));
    CHECK(panel.Shows("SYN*part3.on", isOn));
    REQUIRE(partners.Ask("send " + port + " /part0/Ppanning i 17") == "ok");
    CHECK(panel.Shows("SYN*part0.panning", "17"));
    CHECK(panel.Parameter("SYN*unconfirmed") == "0");
    partners.Ask("synth stop");
    CHECK(panel.Until([&] { return panel.State("SYN*part0.panning") == PH_STATE_STALE; }));
    partners.Ask("synth start");
    CHECK(panel.Shows("SYN*part0.panning", "64"));
    partners.Ask("synth stop");

    LivePanel sender("OUT*device=" + AddressOf(std::atoi(printer.c_str()), "out") + "\n",
                     "profile=osc,1\nhello=none\nlaw*f=f,same\nlaw*i=i,same\nlaw*t=T,same\nlaw*s=s,same\n"
                     "f=float,-9,9,,/f,f\ni=integer,-9,9,,/i/1,i\nt=integer,0,1,,/t,t\ns=text,,9,,/s,s\n",
                     "out");
    REQUIRE(sender.Until([&] { return sender.Parameter("OUT*state") == "open"; }));
    for (const auto& [name, text] : {std::pair("OUT*f", "-6.5"), std::pair("OUT*i", "-3"),
                                     std::pair("OUT*t", "1"), std::pair("OUT*s", "Kick")}) {
        CHECK(sender.Set(name, text));
    }
    std::string printed;
    const bool isAllPrinted = sender.Until([&] {
        printed = partners.Ask("dump");
        return printed.find("/f f -6.5") != std::string::npos &&
               printed.find("/i/1 i -3") != std::string::npos && printed.find("/t T") != std::string::npos &&
               printed.find("/s s \"Kick\"") != std::string::npos;
    });
    INFO(printed);
    CHECK(isAllPrinted);
    CHECK(sender.State("OUT*f") == PH_STATE_SENT);
    CHECK(a_CountNotLive(sender.Root()) == 1); // nobody knows
}
