// Snapshots of a mixer that loses datagrams: where a fade goes, and how.
#include "tests/windows/LivePanel.h" // has winsock2.h, which refuses to stand behind windows.h

#include "Panelhost/Devices.h"
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

class Desk : public LivePanel {
public:
    Desk() : LivePanel(Foh("")) {
        for (int channel = 1; channel <= CHANNELS; ++channel) {
            const std::string strip = "FOH*ch" + Number(channel) + ".";
            for (const auto& [className, function] :
                 std::initializer_list<std::pair<const char*, std::string>>{
                     {"FADER", strip + "fader"},
                     {"KNOB", strip + "pan"},
                     {"BTRISTATEBUTTON", strip + "mute"},
                     {"BSTATIC", strip + "name"},
                     {"METER", strip + "level"},
                     {"EQ", strip + "eq1"}}) {
                Load(Create(className, className), "function=" + function);
            }
        }
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
            i < MOVING ? (300 + 120 * ((i + scene) % 3) + i) / 1023.0 : 0.75,
            i % 8 == 0 ? (30 + 15 * scene) / 100.0 : 0.5, (i + scene) % 2,
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
    REQUIRE(desk.Until([&] { return a_CountNotLive(desk.Root()) == 0; }));
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
        CHECK(ph_TakeSnapshot(desk.Root(), desk.Path(std::to_string(scene)).c_str(), nullptr) ==
              5 * CHANNELS);
    }

    mixer.Ask("drop 5");
    mixer.Ask("step");
    for (const int scene : {1, 2, 3}) {
        CHECK(ph_RecallSnapshot(desk.Root(), desk.Path(std::to_string(scene)).c_str(), 2000) == 5 * CHANNELS);
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
    CHECK(ph_RecallSnapshot(desk.Root(), desk.Path("1").c_str(), 0) == 5 * CHANNELS);
    CHECK(desk.Ends());
    Desk::CheckStrips(mixer, SceneOf(1));
    CHECK(mixer.Ask("violations").substr(0, 1) == "0");

    // On its way the mixer goes: the rest is given up. While it is lost nothing is changed, then or later.
    CHECK(ph_RecallSnapshot(desk.Root(), desk.Path("2").c_str(), 60'000) == 5 * CHANNELS);
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
    CHECK(report.size() == 5 * CHANNELS);
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
