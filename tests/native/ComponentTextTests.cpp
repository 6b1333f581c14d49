#include "logic/ComponentText.h"
#include "tests/native/Tables.h"

#include <set>

using namespace logic;

namespace {

const char* const COPIED = "control=0x00000000 KNOB \"Gain 1\" 0x50010000 36,56,83,103\r\n"
                           "Gain 1*bitmap=.\\Controls\\Knob.bmp\r\n"
                           "Gain 1*function=AMP1*gain1\r\n"
                           "Gain 1*connection=gain 2*resolution;Strip*Fader;Far;Gain 1b\r\n"
                           "control=0x00000000 KNOB \"Gain 2\" 0x50010000 108,56,155,103\r\n"
                           "Gain 2*properties=-80,18,-12\r\n"
                           "Gain 2*connection=Gain 1\r\n"
                           "control=0x00000200 MIXER \"Strip\" 0x50000000 10,10,100,200\r\n"
                           "Strip*connection=\r\n"
                           "Strip*control=0x00000000 FADER \"Fader\" 0x50010000 1,2,30,40\r\n"
                           "Strip*Fader*connection=%n*Mute;Strip*Mute\r\n";

} // namespace

TEST_CASE("components are read and written back as they were") {
    std::vector<std::string> damaged;
    const auto components = ReadComponents(COPIED, damaged);
    CHECK(damaged.empty());
    REQUIRE(components.size() == 3);
    CHECK(components[2].name == "Strip");
    CHECK(components[2].header.className == "MIXER");
    CHECK(components[2].lines.size() == 3);
    CHECK(ComponentsText(components) == COPIED);
    CHECK(ComponentBounds(components) == Rectangle{10, 10, 155, 200});
}

TEST_CASE("renaming reaches headers, own lines and the connections among the components") {
    std::vector<std::string> damaged;
    auto components = ReadComponents(COPIED, damaged);
    RenameComponents(components, std::vector<std::string>{"Gain 3", "Gain 4", "Strip 2"});
    MoveComponents(components, {8, -8});
    CHECK(ComponentsText(components) == "control=0x00000000 KNOB \"Gain 3\" 0x50010000 44,48,91,95\r\n"
                                        "Gain 3*bitmap=.\\Controls\\Knob.bmp\r\n"
                                        "Gain 3*function=AMP1*gain1\r\n"
                                        "Gain 3*connection=Gain 4*resolution;Strip 2*Fader;Far;Gain 1b\r\n"
                                        "control=0x00000000 KNOB \"Gain 4\" 0x50010000 116,48,163,95\r\n"
                                        "Gain 4*properties=-80,18,-12\r\n"
                                        "Gain 4*connection=Gain 3\r\n"
                                        "control=0x00000200 MIXER \"Strip 2\" 0x50000000 18,2,108,192\r\n"
                                        "Strip 2*connection=\r\n"
                                        "Strip 2*control=0x00000000 FADER \"Fader\" 0x50010000 1,2,30,40\r\n"
                                        "Strip 2*Fader*connection=%n*Mute;Strip 2*Mute\r\n");
}

TEST_CASE("a part that was copied without what holds it stands on its own") {
    std::vector<std::string> damaged;
    auto components = ReadComponents("Strip*control=0x00000000 FADER \"Fader\" 0x50010000 1,2,30,40\r\n"
                                     "Strip*Fader*connection=Strip*Fader*level\r\n",
                                     damaged);
    REQUIRE(components.size() == 1);
    RenameComponents(components, std::vector<std::string>{"Fader"});
    CHECK(ComponentsText(components) == "control=0x00000000 FADER \"Fader\" 0x50010000 1,2,30,40\r\n"
                                        "Fader*connection=Fader*level\r\n");
}

TEST_CASE("what is damaged is told apart from what is sound") {
    std::vector<std::string> damaged;
    const auto components = ReadComponents("title=Not of a control\r\n"
                                           "control=0x00000000 KNOB \"A\" 0x50010000 1,2\r\n"
                                           "A*interval=5\r\n"
                                           "control=0x00000000 KNOB \"B\" 0x50010000 1,2,3,4\r\n"
                                           "control=0x00000000 KNOB \"b\" 0x50010000 1,2,3,4\r\n"
                                           "B*interval=5\r\n"
                                           "Elsewhere*interval=5\r\n"
                                           "noise",
                                           damaged);
    CHECK(damaged.size() == 6);
    REQUIRE(components.size() == 1);
    CHECK(ComponentsText(components) ==
          "control=0x00000000 KNOB \"B\" 0x50010000 1,2,3,4\r\nB*interval=5\r\n");
}

TEST_CASE("random damage never gives a line that belongs to another control") {
    std::mt19937 random(3);
    for (int i = 0; i < 3000; ++i) {
        std::string text = COPIED;
        for (int n = 0; n < 6; ++n) {
            const std::size_t at = random() % text.size();
            random() % 3 == 0 ? text.erase(at, random() % 20)
                              : text.replace(at, 1, 1, static_cast<char>(random()));
        }
        std::vector<std::string> damaged;
        auto components = ReadComponents(text, damaged);
        std::vector<std::string> names;
        for (std::size_t k = 0; k < components.size(); ++k) {
            names.push_back("New " + std::to_string(k));
        }
        RenameComponents(components, names);
        for (std::size_t k = 0; k < components.size(); ++k) {
            for (const std::string& line : components[k].lines) {
                REQUIRE(std::string(SplitPropertyLine(line).object).starts_with(names[k]));
            }
        }
        std::vector<std::string> again;
        CHECK(ReadComponents(ComponentsText(components), again).size() == components.size());
        CHECK(again.empty());
    }
}

TEST_CASE("free names count on") {
    const std::set<std::string> taken{"Knob 1", "Knob 2", "Gain", "Gain 2", "x9", "x10", "007"};
    const auto isTaken = [&](const std::string& name) { return taken.contains(name); };
    CHECK(FreeName("Fader 1", isTaken) == "Fader 1");
    CHECK(FreeName("Knob 1", isTaken) == "Knob 3");
    CHECK(FreeName("Gain", isTaken) == "Gain 3");
    CHECK(FreeName("x9", isTaken) == "x11");
    CHECK(FreeName("007", isTaken) == "8");
    const std::string longest(63, 'a');
    const std::string free = FreeName(longest, [&](const std::string& name) { return name == longest; });
    CHECK(free.size() == 63);
    CHECK(free.ends_with("2"));
}

TEST_CASE("changed lines leave out what is alike and empty what is gone") {
    const std::string from =
        "control=0x00000000 KNOB \"A\" 0x50010000 1,2,3,4\r\nA*x=1\r\nA*layer=u1\r\nA*y=2\r\n";
    const std::string to = "control=0x00000000 KNOB \"A\" 0x50010000 9,2,3,4\r\nA*x=1\r\nA*y=3\r\n";
    CHECK(ChangedLines(from, to) == "A*y=3\r\nA*layer=\r\n");
    CHECK(ChangedLines(to, to).empty());
    CHECK(HeaderOf(to)->rectangle.left == 9);
    CHECK_FALSE(HeaderOf("A*x=1\r\n"));
}
