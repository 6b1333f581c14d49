// Snapshots: their file, and how numbers move to what one holds.
#include "logic/devices/Fade.h"
#include "logic/devices/SnapshotFile.h"
#include "tests/native/Tables.h"

#include <cmath>

using namespace logic;

namespace {

std::optional<Snapshot> Read(std::initializer_list<std::string_view> lines, int* refused = nullptr) {
    SnapshotReader reader;
    for (const std::string_view line : lines) {
        if (!reader.Take(line) && refused != nullptr) {
            ++*refused;
        }
    }
    return reader.Finish();
}

ParameterLaw Law(std::string_view text) {
    return *ParameterLaw::Parse(text);
}

} // namespace

TEST_CASE("a snapshot comes back from its text, and what is none of its lines is refused") {
    const Snapshot written{
        "Hall.panel",
        "2026-03-01 19:30:00",
        "Panel.exe 1.0",
        {{"FOH*ch01.fader", "-10"}, {"FOH*ch01.name", "a=b*c"}, {"FOH*bad", "two\nlines"}}};
    SnapshotReader reader;
    const std::string text = SnapshotText(written);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        CHECK(reader.Take(text.substr(at, end - at)));
        at = end + 2;
    }
    const auto read = reader.Finish();
    REQUIRE(read);
    CHECK(read->panel + "|" + read->time + "|" + read->program ==
          "Hall.panel|2026-03-01 19:30:00|Panel.exe 1.0");
    CHECK(read->values == std::vector<SnapshotValue>(written.values.begin(), written.values.begin() + 2));

    int refused = 0;
    const auto odd =
        Read({"snapshot=1", "", "colour=red", "nothing", "A*=1", "*x=1", "A*x", "A*b*c= 1 "}, &refused);
    REQUIRE(odd);
    CHECK(refused == 4);
    CHECK(odd->values == std::vector<SnapshotValue>{{"A*b*c", " 1 "}});
    for (const std::string_view first : {"snapshot=2", "A*x=1", "control=0x0", " snapshot=1"}) {
        CHECK_FALSE(Read({first, "snapshot=1", "A*x=1"}));
    }
    CHECK_FALSE(Read({}));
    SnapshotReader endless;
    endless.Take("snapshot=1");
    for (std::size_t i = 0; i < SnapshotReader::MOST_VALUES; ++i) {
        REQUIRE(endless.Take("A*x=1"));
    }
    CHECK_FALSE(endless.Take("A*x=1"));
    CHECK_FALSE(endless.Finish());
}

TEST_CASE("a recall names a snapshot and perhaps a time, never a path or a device of the system") {
    const auto text = [](std::string_view given) {
        const auto read = ReadSnapshotRecall(given);
        return read ? read->name + "|" + std::to_string(read->milliseconds) : std::string("none");
    };
    const Row<std::string, std::string_view> rows[] = {{{"Evening"}, "Evening|0"},
                                                       {{" Evening , 2000 "}, "Evening|2000"},
                                                       {{"Act 2.1,0"}, "Act 2.1|0"},
                                                       {{"Evening,3600000"}, "Evening|3600000"},
                                                       {{"Evening,3600001"}, "none"},
                                                       {{"Evening,-1"}, "none"},
                                                       {{"Evening,soon"}, "none"},
                                                       {{"Evening,"}, "none"},
                                                       {{"a,b,5"}, "none"},
                                                       {{""}, "none"},
                                                       {{",5"}, "none"},
                                                       {{"..\\Evening"}, "none"},
                                                       {{"../Evening"}, "none"},
                                                       {{"C:Evening"}, "none"},
                                                       {{".."}, "none"},
                                                       {{"Evening."}, "none"},
                                                       {{"nul"}, "none"},
                                                       {{"Com1.x"}, "none"},
                                                       {{"Contra"}, "Contra|0"},
                                                       {{"%l"}, "none"},
                                                       {{"a\tb"}, "none"}};
    CheckRows(text, rows);
}

TEST_CASE("positions follow the law of a parameter, and choices do not move") {
    const FadeScale none[] = {FadeScale(),
                              FadeScale(ParameterType::Integer, 0, 19, ""),
                              FadeScale(ParameterType::Text, 0, 0, ""),
                              FadeScale(ParameterType::Delay, 0, 0, ""),
                              FadeScale(ParameterType::Float, 3, 3, ""),
                              FadeScale(ParameterType::Integer, 0, 1, Law("i,not")),
                              FadeScale(ParameterType::Integer, 0, 100, Law("i,map,0:0,1:100")),
                              FadeScale(ParameterType::Float, 0, 1, Law("T,same"))};
    for (const FadeScale& scale : none) {
        CHECK_FALSE(scale.Moves());
    }
    struct Case {
        FadeScale scale;
        float low, middle, high; // where positions 0, 0.5 and 1 are
    };
    const Case cases[] = {
        {{ParameterType::Float, -80, 20, "dB"}, -80, -30, 20},
        {{ParameterType::Integer, 0, 127, ""}, 0, 64, 127},
        {{ParameterType::Float, 20, 20000, "Hz"}, 20, 632.4555F, 20000},
        {{ParameterType::Float, 0, 20000, "Hz"}, 0, 10000, 20000},
        {{ParameterType::Float, -90, 10, Law("f,points,1023,0:-90,0.0625:-60,0.25:-30,0.5:-10,1:10")},
         -90,
         -10,
         10},
        {{ParameterType::Float, 0.3F, 10, Law("f,log,71,10,0.3")}, 10, 1.7320508F, 0.3F},
        {{ParameterType::Float, 0, 100, Law("f,same")}, 0, 50, 100}};
    for (const Case& given : cases) {
        REQUIRE(given.scale.Moves());
        CHECK(given.scale.ValueAt(-1) == doctest::Approx(given.low));
        CHECK(given.scale.ValueAt(0.5) == doctest::Approx(given.middle));
        CHECK(given.scale.ValueAt(2) == doctest::Approx(given.high));
        CHECK(given.scale.PositionOf(notANumber) == 0);
        CHECK(std::fabs(given.scale.PositionOf(given.middle) - 0.5) < 0.01);
        for (int i = 0; i <= 100; ++i) { // there and back, on steps where there are some
            CHECK(std::fabs(given.scale.PositionOf(given.scale.ValueAt(i / 100.0)) - i / 100.0) < 0.0075);
        }
    }
}

TEST_CASE("a fade goes evenly, sends no closer than the grain, and ends exactly at its end") {
    constexpr double grain = 1.0 / 64; // what four ticks of 16 ms bring
    Fade fade(0.25, 0.75, 1000, 2048);
    CHECK(fade.Distance() == 0.5);
    CHECK(fade.PositionAt(500) == 0.25);
    CHECK(fade.PositionAt(2024) == 0.5);
    double last = 0.25;
    int sent = 0;
    for (std::uint64_t now = 1000; now < 3048; now += 16) {
        if (const auto next = fade.Next(now, grain)) {
            CHECK(*next - last == grain);
            last = *next;
            ++sent;
        }
    }
    CHECK(sent == 31);
    CHECK_FALSE(fade.IsOver(3047));
    CHECK(*fade.Next(3048, 1) == 0.75);
    CHECK(*Fade(0.5, 0, 7, 0).Next(7, 1) == 0);
    CHECK_FALSE(Fade(0.5, 0.5, 7, 100).Next(20, 0));

    CHECK(FadeGrain(10, 2000, 0) == 0);
    CHECK(FadeGrain(10, 0, 500) == 0);
    CHECK(FadeGrain(12, 2000, 500) == doctest::Approx(0.02));
}
