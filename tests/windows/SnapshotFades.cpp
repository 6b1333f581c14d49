// Snapshots of a mixer that loses datagrams: where a fade goes, and how.
#include "tests/windows/LivePanel.h" // has winsock2.h, which refuses to stand behind windows.h

#include "Panelhost/AddressTexts.h"
#include "Panelhost/Devices.h"
#include "Panelhost/PanelCheck.h"
#include "Panelhost/Snapshots.h"

#include <array>

namespace {

constexpr int CHANNELS = 32;
constexpr int MOVING = 20; // of them

std::string Number(int channel) {
    return (channel < 10 ? "0" : "") + std::to_string(channel);
}

struct Strip { // as the mixer's scale has it
    double fader, pan;
    int on;
    std::string name;
};

// What a strip has: the class of the control, the parameter, and its declaration at a simulated device.
constexpr struct {
    const char* className;
    const char* parameter;
    const char* declaration;
} PARTS[] = {{"FADER", "fader", "float,-90,10,0,dB"},
             {"KNOB", "pan", "float,-100,100,0"},
             {"BTRISTATEBUTTON", "mute", "integer,0,1,0"},
             {"BSTATIC", "name", "text,,,,"},
             {"METER", "level", "float,-90,18,-90,dB"},
             {"BSTATIC", "eq1", "channeleq,,,0,PEQ,12 dB,1000 Hz,0 dB,1"}};
constexpr int DCAS = 8;
constexpr int RECALLED = 5 * CHANNELS + DCAS; // all but the meters

// A panel of 200 controls, built for a simulated console.
class Desk : public LivePanel {
public:
    Desk() : LivePanel(Foh("")) {
        std::string declared = "SIM*device=simulated\n";
        std::string panel = "size=1200,600\n";
        int count = 0;
        const auto add = [&](const char* className, const std::string& parameter, const char* declaration) {
            const int left = count % 20 * 60;
            const int top = count / 20 * 60;
            const std::string name = "C" + std::to_string(++count);
            panel += std::string("control=0x00000000 ") + className + " \"" + name + "\" 0x50010000 " +
                     std::to_string(left) + "," + std::to_string(top) + "," + std::to_string(left + 50) +
                     "," + std::to_string(top + 50) + "\n" + name + "*function=SIM*" + parameter + "\n";
            declared += "SIM*" + parameter + "=" + declaration + "\n";
        };
        for (int channel = 1; channel <= CHANNELS; ++channel) {
            for (const auto& part : PARTS) {
                add(part.className, "ch" + Number(channel) + "." + part.parameter, part.declaration);
            }
        }
        for (int dca = 1; dca <= DCAS; ++dca) {
            add("FADER", "dca" + std::to_string(dca) + ".fader", "float,-90,10,0,dB");
        }
        CHECK(Declare(declared) == 1);
        CHECK(Open(panel) == 200);
    }

    // Binds all to another device. How many texts that were.
    int Replace(const std::string& from, const std::string& to) const {
        int count = 0;
        for (const ADDRESSTEXT& text : a_AddressTexts(Root())) {
            std::vector<std::string> addresses;
            for (const logic::AddressPlace& place : text.addresses) {
                const std::string address(place.In(text.text));
                addresses.push_back(address.starts_with(from) ? to + address.substr(from.size()) : address);
            }
            const auto changed = a_WithAddresses(text, addresses);
            count += changed && Load(text.object->window, text.row->keyword + ("=" + *changed)) == 1 ? 1 : 0;
        }
        return count;
    }
    std::string Path(const std::string& name) const { return folder_.Path(name + ".snapshot"); }
    // What a fade leaves behind when it is over, as far as the strips go.
    static void CheckStrips(const Mixer& mixer, const std::array<Strip, CHANNELS>& strips) {
        for (int channel = 1; channel <= CHANNELS; ++channel) {
            INFO(channel);
            const Strip& wanted = strips.at(static_cast<std::size_t>(channel - 1));
            const std::string address = "/ch/" + Number(channel) + "/";
            CHECK(std::fabs(mixer.Value((address + "mix/fader").c_str()) - wanted.fader) < 0.001);
            CHECK(std::fabs(mixer.Value((address + "mix/pan").c_str()) - wanted.pan) < 0.006);
            CHECK(mixer.Value((address + "mix/on").c_str()) == wanted.on);
            CHECK(mixer.Ask("get " + address + "config/name") == wanted.name);
        }
    }
    bool Ends() {
        return Until([this] { return ph_ListRecall(Root(), nullptr, nullptr) == 0; }, 60'000);
    }
};

// The scenes differ in where most faders are, some pans, and all the rest.
std::array<Strip, CHANNELS> SceneOf(int scene) {
    std::array<Strip, CHANNELS> strips;
    for (int i = 0; i < CHANNELS; ++i) {
        strips.at(static_cast<std::size_t>(i)) = {
            i < MOVING ? (300 + 60 * ((i + scene) % 3) + i) / 1023.0 : 0.75,
            i % 8 == 0 ? (40 + 5 * scene) / 100.0 : 0.5, (i + scene) % 2,
            (i + scene) % 4 == 0 ? "Scene " + std::to_string(scene) : "Channel"};
    }
    return strips;
}

} // namespace

TEST_CASE("a fade over a network that loses datagrams ends where it should, and no fader jumps on the way") {
    if (HasNoPartners()) {
        return;
    }
    const Mixer mixer;
    Desk desk;
    CHECK(desk.Replace("SIM*", "NONE*") == 200);
    CHECK(ph_CheckPanel(desk.Root(), nullptr, nullptr) >= 200);
    CHECK(desk.Replace("NONE*", "FOH*") == 200);
    CHECK(a_ListRecallable(desk.Root()).size() == RECALLED);
    REQUIRE(desk.Until([&] { return a_HasAnswers(desk.Root()); }));
    CHECK(a_FindingsText(a_CheckPanel(desk.Root())) == "");
    for (int scene = 1; scene <= 3; ++scene) {
        const auto strips = SceneOf(scene);
        for (int channel = 1; channel <= CHANNELS; ++channel) {
            const Strip& strip = strips.at(static_cast<std::size_t>(channel - 1));
            const std::string address = "set /ch/" + Number(channel) + "/";
            mixer.Ask(address + "mix/fader " + std::to_string(strip.fader));
            mixer.Ask(address + "mix/pan " + std::to_string(strip.pan));
            mixer.Ask(address + "mix/on " + std::to_string(strip.on));
            mixer.Ask(address + "config/name " + strip.name);
        }
        mixer.Ask("set /ch/32/config/color " + std::to_string(scene)); // behind everything else
        REQUIRE(desk.Shows("FOH*ch32.color", std::to_string(scene)));
        CHECK(ph_TakeSnapshot(desk.Root(), desk.Path(std::to_string(scene)).c_str(), nullptr) == RECALLED);
    }

    mixer.Ask("drop 5");
    mixer.Ask("step");
    for (const int scene : {1, 2, 3}) {
        CHECK(ph_RecallSnapshot(desk.Root(), desk.Path(std::to_string(scene)).c_str(), 2000) == RECALLED);
        CHECK(desk.Ends());
        for (const RECALLEDVALUE& value : a_ListRecall(desk.Root())) {
            INFO(value.address << ": " << value.why);
            CHECK(value.state == RECALL_DONE);
        }
        Desk::CheckStrips(mixer, SceneOf(scene));
        const std::string farthest = mixer.Ask("step");
        INFO(farthest);
        CHECK(std::atof(farthest.c_str()) > 0);
        CHECK(std::atof(farthest.c_str()) <= 0.05);
    }
    CHECK(ph_RecallSnapshot(desk.Root(), desk.Path("1").c_str(), 0) == RECALLED);
    CHECK(desk.Ends());
    Desk::CheckStrips(mixer, SceneOf(1));
    CHECK(mixer.Ask("violations").substr(0, 1) == "0");

    // On its way the mixer goes: the rest is given up. While it is lost nothing is changed, then or later.
    CHECK(ph_RecallSnapshot(desk.Root(), desk.Path("2").c_str(), 60'000) == RECALLED);
    mixer.Ask("silent 1");
    CHECK(desk.Ends());
    CHECK(a_ListRecall(desk.Root()).front().why.starts_with("nothing heard for "));
    CHECK(desk.Until([&] { return desk.State("FOH*ch01.fader") == PH_STATE_LOST; }));
    mixer.Ask("drop 0");
    mixer.Ask("restart 0");
    const double start = mixer.Value("/ch/01/mix/fader");
    const std::string writes = mixer.Ask("writes /ch/01/mix/fader");
    CHECK(ph_RecallSnapshot(desk.Root(), desk.Path("2").c_str(), 2000) == 0);
    CHECK(ph_RecallSnapshot(desk.Root(), desk.Path("2").c_str(), 0) == 0);
    const auto report = a_ListRecall(desk.Root());
    CHECK(report.size() == RECALLED);
    for (const RECALLEDVALUE& value : report) {
        CHECK(value.state == RECALL_FAILED);
        CHECK(value.why.starts_with("nothing heard for "));
    }
    CHECK(ph_TakeSnapshot(desk.Root(), desk.Path("Lost").c_str(), nullptr) == 0);
    mixer.Ask("silent 0");
    REQUIRE(desk.Until([&] { return desk.State("FOH*ch01.fader") == PH_STATE_LIVE; }));
    CHECK(mixer.Value("/ch/01/mix/fader") == start);
    CHECK(mixer.Ask("writes /ch/01/mix/fader") == writes);
}
