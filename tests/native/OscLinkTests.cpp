// The conversation with a device: whether it is there, and what is read of it.
#include "tests/native/FalseConsole.h"

#include <algorithm>

using namespace logic;

namespace {

std::vector<std::string> Names(int count) {
    std::vector<std::string> names;
    for (int i = 1; i <= count; ++i) {
        names.push_back("p" + std::to_string(i));
    }
    return names;
}

// A console whose parameters hold their numbers.
struct FilledConsole : FalseConsole {
    explicit FilledConsole(const std::vector<std::string>& more = {}) : FalseConsole(more) {
        for (int i = 1; i <= 200; ++i) {
            values["/p/" + std::to_string(i)] = static_cast<float>(i) / 2;
        }
    }
};

std::string MeterBlock(std::initializer_list<float> amplitudes) {
    std::string blob{static_cast<char>(amplitudes.size()), 0, 0, 0};
    for (const float amplitude : amplitudes) {
        const auto bits = std::bit_cast<std::uint32_t>(amplitude);
        for (int shift = 0; shift < 32; shift += 8) {
            blob += static_cast<char>(bits >> shift & 0xFF);
        }
    }
    std::string datagram("/meters/1\0\0\0,b\0\0\0\0\0", 20);
    datagram.back() = static_cast<char>(blob.size());
    return datagram + blob;
}

} // namespace

TEST_CASE("a device is unknown, live, stale and lost by what is heard of it") {
    FilledConsole console;
    console.isThere = false;
    console.Want({"p1"});
    console.Run(12'000);
    CHECK(console.State() == DeviceState::Unknown);
    CHECK(console.Sent("/hi", false) == 13); // once a second
    CHECK(console.Sent("/p/1", false) == 0);
    console.isThere = true;
    console.Run(1000);
    CHECK(console.State() == DeviceState::Live);
    CHECK(console.panel.device.model == "Mixer");
    CHECK(console.Traces("FOH is there: Mixer") == 1);
    CHECK(console.Shown("p1") == "live 0.5");

    console.isThere = false;
    const Milliseconds silent = console.panel.seen[console.Number("p1")].update.heard;
    console.Move("/p/1", 7.0F); // the last that is heard
    console.Run(2);
    const Milliseconds last = console.panel.seen[console.Number("p1")].update.heard;
    CHECK(last > silent);
    console.Run(last + 2499 - console.now);
    CHECK(console.State() == DeviceState::Live);
    console.Run(1);
    CHECK(console.State() == DeviceState::Stale);
    CHECK(console.panel.device.heard == last);
    const int hellos = console.Sent("/hi", false);
    const int reads = console.Sent("/p/1", false);
    console.Run(last + 9999 - console.now);
    CHECK(console.State() == DeviceState::Stale);
    console.Run(1);
    CHECK(console.State() == DeviceState::Lost);
    CHECK(console.Sent("/p/1", false) == reads);
    CHECK(console.Sent("/hi", false) - hellos >= 7);
    console.Run(120'000); // every second for a minute, then every third
    CHECK(console.Sent("/hi", false) - hellos == doctest::Approx(8 + 60 + 20).epsilon(0.03));
    console.Move("/p/1", 9.0F); // anybody could say that
    console.Run(10);
    CHECK(console.State() == DeviceState::Lost);
    console.isThere = true;
    console.Run(3010);
    CHECK(console.State() == DeviceState::Live);
    CHECK(console.Shown("p1") == "live 9");
    CHECK(console.Traces("FOH is back") == 1);
    CHECK(console.Traces("nothing heard any more") == 1);

    console.isThere = false; // any word of it brings it back from stale
    console.Run(3500);
    REQUIRE(console.State() == DeviceState::Stale);
    const int keeps = console.Sent("/keep", false);
    console.Move("/p/2", 9.0F);
    console.Run(2);
    CHECK(console.State() == DeviceState::Live);
    CHECK(console.Sent("/keep", false) == keeps + 1);
    CHECK(console.Shown("p1") == "unknown 9"); // until it is read anew

    console.Switch(false);
    console.isThere = true;
    const std::size_t sent = console.sent.size();
    console.Run(5000);
    CHECK(console.State() == DeviceState::Off);
    CHECK(console.sent.size() == sent);
    console.Switch(true);
    CHECK(console.State() == DeviceState::Unknown);
    console.Run(10);
    CHECK(console.State() == DeviceState::Live);
}

TEST_CASE("something else in its place is refused, and said once") {
    FilledConsole console;
    console.Want({"p1"});
    console.Run(100);
    REQUIRE(console.State() == DeviceState::Live);
    console.model = "Light desk";
    console.Run(20'000);
    CHECK(console.State() == DeviceState::Refused);
    CHECK(console.Traces("FOH is refused: Light desk answers") == 1);
    CHECK(console.panel.device.model == "Light desk");
    const int hellos = console.Sent("/hi", false);
    console.Run(20'000);
    CHECK(console.Sent("/hi", false) == hellos + 4);
    console.model = "Mixer 2";
    console.Run(5010);
    CHECK(console.State() == DeviceState::Live);
    CHECK(console.panel.device.model == "Mixer 2");
}

TEST_CASE("reads keep to the window and the rate, and what is not answered is said once") {
    FilledConsole console;
    console.isIgnored = [](const std::string& address) { return address.starts_with("/p/"); };
    console.Want(Names(200));
    console.Run(300);
    CHECK(std::ranges::count_if(console.sent, [](const auto& one) {
              return one.second.starts_with("/p/");
          }) == 4); // outstanding, and not one more
    console.isIgnored = [](const std::string& address) { return address == "/p/7"; };
    console.Run(4000);
    CHECK(console.Shown("p1") == "live 0.5");
    CHECK(console.Shown("p200") == "live 100");
    CHECK(console.Shown("p7") == "stale 0");
    CHECK(console.Traces("FOH*p7: does not answer") == 1);
    console.isIgnored = nullptr;
    console.Run(12'000); // tried again with the sweep
    CHECK(console.Shown("p7") == "live 3.5");
    for (std::size_t first = 0, last = 0; last < console.sent.size(); ++last) {
        while (console.sent[last].first - console.sent[first].first >= 1000) {
            ++first;
        }
        REQUIRE(last - first + 1 <= 200 + 4 + 2);
    }
    // What nobody wants any more is followed no more; who asks gets it for a while.
    console.Want({});
    CHECK(console.Shown("p1") == "unknown 0.5");
    console.sent.clear();
    console.Move("/p/1", 33.0F);
    console.Run(15'000);
    CHECK(console.Sent("/p/1", false) == 0);
    console.Ask("p1");
    console.Run(10);
    CHECK(console.Shown("p1") == "live 33");
    console.Run(10'000);
    CHECK(console.Shown("p1") == "unknown 33");
}

TEST_CASE("a device that was started anew in between is found, and all is read again") {
    for (const int outOf : {1, 2}) { // most or half of its values are other ones
        FilledConsole console;
        console.Want(Names(200));
        console.Run(5000);
        for (int i = 1; i <= 200; ++i) {
            if (i % outOf == 0) {
                console.values["/p/" + std::to_string(i)] = 0.0F;
            }
        }
        const int keeps = console.Sent("/keep", false);
        console.Run(400 + 1500); // some of the sweep, and the reads
        CHECK(console.Shown("p2") == "live 0");
        CHECK(console.Shown("p200") == "live 0");
        CHECK(console.Sent("/keep", false) > keeps);
    }
    // One that only lost the news of one value is found within the period.
    FilledConsole console;
    console.Want(Names(20));
    console.Run(2000);
    console.values["/p/20"] = 50.0F;
    console.Run(10'500);
    CHECK(console.Shown("p20") == "live 50");
}

TEST_CASE("wrong, wild and foreign values") {
    FilledConsole console;
    console.values["/on"] = 1;
    console.values["/name"] = std::string("Kick\nand more than fits");
    console.values["/seen"] = 2.5F;
    console.Want({"p1", "on", "mute", "name", "seen"});
    console.Run(100);
    CHECK(console.Shown("on") == "live 1"); // one address, two laws
    CHECK(console.Shown("mute") == "live 0");
    CHECK(console.Shown("name") == "live Kick?and mor");
    CHECK(console.Shown("seen") == "live 1"); // limited
    console.Move("/p/1", 150.0F);
    console.Run(2);
    CHECK(console.Shown("p1") == "live 100");
    for (const OscValue& value : std::initializer_list<OscValue>{std::string("5"), 1.5F}) {
        console.Move("/on", value);
    }
    console.Move("/p/1", std::string("5"));
    console.Receive(std::string("/p/1\0\0\0\0,f\0\0\x7F\xC0\0\0", 16)); // not a number
    console.Receive(std::string("/p/1\0\0\0\0,\0\0\0", 12));
    console.Run(2);
    CHECK(console.Shown("p1") == "live 100");
    CHECK(console.Shown("on") == "live 1");
    console.Move("/p/1", 4);
    console.Move("/on", false);
    console.Run(2);
    CHECK(console.Shown("p1") == "live 4");
    CHECK(console.Shown("mute") == "live 1");
    for (int i = 0; i < 1000; ++i) {
        console.Receive("garbage");
        console.Receive("/odd");
    }
    CHECK(console.Traces("was dropped for its size") == 1);
    CHECK(console.Traces("was dropped for its address") == 1);
    CHECK(console.State() == DeviceState::Live);
    console.isThere = false;
    for (int i = 0; i < 3000; ++i) { // is no word of it
        console.Receive("garb");
        console.Run(1);
    }
    CHECK(console.State() == DeviceState::Stale);
}

TEST_CASE("meters are subscribed to while they are wanted, and stale without their blocks") {
    FilledConsole console;
    console.Want({"level1", "level3"});
    console.Run(100);
    CHECK(console.Sent("/meters", true) == 1);
    console.Receive(MeterBlock({1, 1, 0.5F, 1}));
    CHECK(console.Shown("level1") == "live 0");
    CHECK(console.Shown("level3") == "live -6.0206");
    CHECK(console.Shown("level2") == "unknown 0");
    console.Receive(MeterBlock({0, 1, notANumber}));
    CHECK(console.Shown("level1") == "live -90");
    CHECK(console.Shown("level3") == "live -6.0206");
    console.Run(999);
    CHECK(console.Shown("level1") == "live -90");
    console.Run(2);
    CHECK(console.Shown("level1") == "stale -90");
    CHECK(console.Sent("/meters", true) == 2); // once more, should it have forgotten
    console.Receive(MeterBlock({1}));
    CHECK(console.Shown("level1") == "live 0");
    console.Run(11'000);
    CHECK(console.Sent("/meters", true) >= 4);
    console.Want({});
    CHECK(console.Shown("level1") == "unknown -90");
    console.sent.clear();
    console.Run(6000);
    CHECK(console.Sent("/meters", true) == 0);
}
