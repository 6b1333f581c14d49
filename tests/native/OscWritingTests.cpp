// Values that are set at a device: sent, confirmed, given up, dropped or owed.
#include "tests/native/FalseConsole.h"

using namespace logic;

namespace {

// Live, with some values read.
struct LiveConsole : FalseConsole {
    explicit LiveConsole(const std::vector<std::string>& more = {}) : FalseConsole(more) {
        for (int i = 1; i <= 200; ++i) {
            values["/p/" + std::to_string(i)] = 0.0F;
        }
        values["/step"] = 0.0F;
        values["/on"] = 0;
        values["/name"] = std::string("old");
        Want({"p1", "p2", "step", "on", "name"});
        Run(1500);
        sent.clear();
    }
    float Held(const std::string& address) const { return std::get<float>(values.at(address)); }
    void GoSilent() {
        isThere = false;
        Run(3500);
        REQUIRE(State() == DeviceState::Stale);
    }
};

} // namespace

TEST_CASE("a value is sent at once and read back; the one that is held already is not sent") {
    LiveConsole console;
    console.Set("p1", 5);
    CHECK(console.Shown("p1") == "pending 5");
    console.Run(2);
    CHECK(console.Held("/p/1") == 5);
    CHECK(console.Shown("p1") == "pending 5");
    console.Move("/p/1", 3.0F); // older, or somebody else: not shown yet
    console.values["/p/1"] = 5.0F;
    console.Run(20);
    CHECK(console.Shown("p1") == "pending 5");
    console.Run(40);
    CHECK(console.Shown("p1") == "live 5");
    CHECK(console.panel.seen[console.Number("p1")].update.serial == 1);
    console.Set("p1", 5);
    console.Set("step", {0.3F, {}}); // nearest to the step that is there
    console.Run(100);
    CHECK(console.Sent("/p/1", true) == 1);
    CHECK(console.Sent("/step", true) == 0);
    CHECK(console.panel.seen[console.Number("p1")].update.serial == 2);
    console.Set("step", 33.4F);
    console.Set("name", {0, "S\xE4nger"});
    console.Set("on", 1);
    console.Run(100);
    CHECK(console.Held("/step") == 0.33F);
    CHECK(std::get<std::string>(console.values["/name"]) == "S?nger");
    CHECK(console.values["/on"] == OscValue(1));
    CHECK(console.Shown("step") == "live 33");
    // Without a form for the wire.
    const auto isSent = [&](const char* name, LinkValue value) {
        return OscLink::WireOf(*console.profile, console.Number(name), value).has_value();
    };
    CHECK(isSent("p1", {100, {}}));
    CHECK_FALSE(isSent("p1", {100.1F, {}}));
    CHECK_FALSE(isSent("p1", {notANumber, {}}));
    CHECK_FALSE(isSent("seen", {0.5F, {}}));
    CHECK_FALSE(isSent("level1", {0, {}}));
    CHECK_FALSE(isSent("name", {0, "longer than that"}));
}

TEST_CASE("of a fader that is dragged at most forty values a second are sent, and the last one arrives") {
    for (const bool echoes : {false, true}) {
        for (const Milliseconds delay : {1U, 120U}) { // late echoes do not move it back
            LiveConsole console;
            console.echoes = echoes;
            console.delay = delay;
            const Milliseconds start = console.now;
            for (int i = 1; i <= 400; ++i) {
                console.Set("p1", static_cast<float>(i) / 4);
                console.Run(5);
                REQUIRE(console.Shown("p1") == "pending " + FormatFloat(static_cast<float>(i) / 4));
            }
            CHECK(console.Sent("/p/1", true) <= 2 * 40 + 1);
            for (const auto& [time, datagram] : console.sent) { // in any second
                int count = 0;
                for (const auto& [other, bytes] : console.sent) {
                    count += FalseConsole::IsWrite(bytes) && other >= time && other < time + 1000 ? 1 : 0;
                }
                REQUIRE(count <= 40);
            }
            const Milliseconds end = console.now;
            while (console.Shown("p1") == "pending 100" && console.now < end + 2000) {
                console.Run(1);
            }
            CHECK(console.Shown("p1") == "live 100");
            CHECK(console.Held("/p/1") == 100);
            console.Run(1000);
            CHECK(console.Shown("p1") == "live 100");
            CHECK(console.panel.device.unconfirmed == 0);
            CHECK(start < end);
        }
    }
}

TEST_CASE(
    "another value than the one that was set is taken, a lost one sent again, an ignored one given up") {
    LiveConsole console;
    console.stores = [](const std::string&, OscValue value) {
        return OscValue(std::min(std::get<float>(value), 13.333F));
    };
    console.Set("p1", 99);
    console.Run(60);
    CHECK(console.Shown("p1") == "live 13.333");
    CHECK(console.Sent("/p/1", true) == 1);
    console.stores = nullptr;

    int attempts = 0;
    console.stores = [&](const std::string&, OscValue value) { // the first two get lost on the way
        return ++attempts > 2 ? value : OscValue(13.333F);
    };
    console.Set("p1", 50);
    console.Run(200);
    CHECK(console.Shown("p1") == "live 50");
    CHECK(attempts == 3);
    console.stores = [&](const std::string&, OscValue) { return OscValue(50.0F); }; // keeps what it has
    console.Set("p1", 60);
    console.Run(200);
    CHECK(console.Shown("p1") == "live 50");
    CHECK(console.Traces("not confirmed") == 0);

    console.isIgnored = [](const std::string& address) { return address == "/p/1"; };
    console.sent.clear();
    console.Set("p1", 70);
    console.Run(895);
    CHECK(console.Shown("p1") == "pending 70");
    console.Run(30);
    CHECK(console.Shown("p1") == "unconfirmed 50");
    CHECK(console.Sent("/p/1", true) == 3);
    CHECK(console.panel.device.unconfirmed == 1);
    CHECK(console.Traces("FOH*p1: not confirmed") == 1);
    console.isIgnored = nullptr;
    console.Run(12'000);
    CHECK(console.Shown("p1") == "live 50");
}

TEST_CASE("what waits for a device is sent behind the first read, dropped when it is lost, or owed") {
    LiveConsole console;
    // Never read: the first press.
    console.Set("p9", 4);
    CHECK(console.Shown("p9") == "pending 4");
    console.Run(5);
    CHECK(console.Held("/p/9") == 4);
    console.isIgnored = [](const std::string& address) { return address == "/p/8"; };
    console.Set("p8", 4);
    console.Run(1010);
    CHECK(console.Shown("p8") == "unconfirmed 0");
    CHECK(console.Sent("/p/8", true) == 0);
    console.isIgnored = nullptr;
    CHECK(console.panel.device.unconfirmed == 1);

    console.GoSilent();
    console.sent.clear();
    console.Set("p1", 10);
    console.Run(1000);
    console.Set("p1", 11);
    CHECK(console.Sent("/p/1", true) == 0);
    console.isThere = true;
    console.Run(1100);
    CHECK(console.Held("/p/1") == 11);
    CHECK(console.Sent("/p/1", true) == 1);
    CHECK(console.Shown("p1") == "live 11");

    console.GoSilent();
    console.Set("p1", 20);
    console.Set("go", 3);
    console.Set("p2", {1, {}}, true);
    console.Run(8000);
    REQUIRE(console.State() == DeviceState::Lost);
    CHECK(console.Traces("FOH: 2 values that waited were dropped") == 1);
    CHECK(console.panel.device.unconfirmed == 3);
    console.Set("p1", 21); // nobody there
    CHECK(console.panel.seen[console.Number("p1")].update.serial == console.serial);
    console.isThere = true;
    console.sent.clear();
    console.Run(3000);
    CHECK(console.Held("/p/1") == 11);
    CHECK(console.Held("/p/2") == 1); // a release, however late
    CHECK(console.Sent("/go", true) == 0);

    // One that was sent into the void just before is owed all the same.
    console.isThere = false;
    console.Set("p2", {2, {}}, true);
    console.Set("p1", 12);
    console.Run(20'000);
    CHECK(console.Shown("p1") == "unconfirmed 11");
    REQUIRE(console.State() == DeviceState::Lost);
    console.isThere = true;
    console.Run(3000);
    CHECK(console.Held("/p/2") == 2);
    CHECK(console.Held("/p/1") == 11);

    // At the end what waits is sent.
    console.GoSilent();
    console.sent.clear();
    console.Set("p1", 30);
    console.link->Finish(console.now);
    CHECK(console.Sent("/p/1", true) == 1);
}

TEST_CASE("each trigger is sent, equal or not, and a device that answers nothing is told") {
    LiveConsole console;
    CHECK(console.Shown("go") == "live 0");
    for (int i = 0; i < 3; ++i) {
        console.Set("go", 3);
    }
    console.Run(10'000);
    CHECK(console.Sent("/go", true) == 3);
    CHECK(console.Sent("/go", false) == 0);
    CHECK(console.Shown("go") == "live 0");

    FalseConsole open({"hello=none"});
    open.Want({"p1"});
    open.Run(100);
    CHECK(open.State() == DeviceState::Open);
    CHECK(open.Shown("p1") == "unknown 0");
    for (int i = 1; i <= 50; ++i) {
        open.Set("p1", static_cast<float>(i));
        open.Run(10);
    }
    open.Run(20'000);
    CHECK(open.Shown("p1") == "sent 50");
    CHECK(open.Sent("/p/1", true) <= 21);
    CHECK(open.Sent("/p/1", false) + open.Sent("/hi", false) + open.Sent("/keep", false) == 0);
    CHECK(FalseConsole::IsWrite(open.sent.back().second));
}

TEST_CASE("however bad the network is, both ends hold the same in the end") {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        INFO("seed ", seed);
        LiveConsole console;
        console.random.seed(seed);
        console.lost = 30;
        console.doubled = console.overtaken = 20;
        console.echoes = seed % 2 == 0;
        std::vector<std::string> names;
        for (int i = 1; i <= 30; ++i) {
            names.push_back("p" + std::to_string(i));
        }
        console.Want(names);
        for (int i = 0; i < 1000; ++i) {
            const std::string name = names[static_cast<std::size_t>(Any(console.random, 0, 29))];
            if (Any(console.random, 0, 3) == 0) {
                console.Move("/p/" + name.substr(1), static_cast<float>(Any(console.random, 0, 100)));
            } else {
                console.Set(name, static_cast<float>(Any(console.random, 0, 100)));
            }
            console.Run(10);
        }
        console.lost = 0;
        console.Run(15'000); // one sweep, should news have been lost
        REQUIRE(console.State() == DeviceState::Live);
        for (const std::string& name : names) {
            CHECK(console.Shown(name) == "live " + FormatFloat(console.Held("/p/" + name.substr(1))));
        }
    }
}

TEST_CASE("ten thousand writes keep neither the subscription nor the hello waiting") {
    LiveConsole console;
    for (int i = 0; i < 10'000; ++i) {
        console.Set("p" + std::to_string(i % 200 + 1), static_cast<float>(i % 97));
        if (i % 4 == 0) {
            console.Run(4);
        }
        REQUIRE(console.State() == DeviceState::Live);
    }
    CHECK(console.Sent("/keep", false) >= 3);
    CHECK(console.sent.size() <= 200 * 10 + 100 + 20);
    console.Run(15'000);
    for (int i = 0; i < 200; ++i) {
        CHECK(console.Held("/p/" + std::to_string(i + 1)) == static_cast<float>((9800 + i) % 97));
    }
}
