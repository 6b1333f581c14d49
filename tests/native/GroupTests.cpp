// Groups of controls: their numbers, and those of copies.

#include "logic/editing/Groups.h"
#include "tests/native/Tables.h"

#include <set>
#include <string>
#include <vector>

using namespace logic;

TEST_CASE("a group is a number from 1 on, or none") {
    const Row<int, std::string> rows[] = {{{""}, 0},       {{"1"}, 1},   {{"65535"}, 65535}, {{"0"}, -1},
                                          {{"65536"}, -1}, {{"-1"}, -1}, {{"1x"}, -1},       {{"one"}, -1}};
    CheckRows([](const std::string& text) { return int{ParseGroup(text).value_or(0)} - !ParseGroup(text); },
              rows);
    CHECK(FreeGroup({}) == 1);
    CHECK(FreeGroup({1, 2, 4}) == 3);
    CHECK(FreeGroup({2}) == 1);
    std::set<GroupNumber> all;
    for (int number = 1; number <= 65535; ++number) {
        all.insert(static_cast<GroupNumber>(number));
    }
    CHECK(FreeGroup(all) == 0);
}

TEST_CASE("copies of groups are groups of their own") {
    const auto header = [](const std::string& name) {
        return "control=0x00000000 KNOB \"" + name + "\" 0x50000000 0,0,10,10\r\n";
    };
    const std::string text = header("A") + "A*editgroup=1\r\n" + header("B") + "B*editgroup=5\r\n" +
                             header("C") + "C*editgroup=1\r\nC*Part*editgroup=1\r\nC*editgroup=soon\r\n" +
                             header("D") + "d*editgroup=5\r\n" + header("E") +
                             "E*editgroup=9\r\nE*value=1\r\n";
    std::vector<std::string> damaged;
    std::vector<Component> components = ReadComponents(text, damaged);
    std::set<GroupNumber> taken{1, 3};
    GiveOwnGroups(components, taken);
    CHECK(taken == std::set<GroupNumber>{1, 2, 3, 4});
    CHECK(ComponentsText(components) ==
          header("A") + "A*editgroup=2\r\n" + header("B") + "B*editgroup=4\r\n" + header("C") +
              "C*editgroup=2\r\nC*Part*editgroup=1\r\nC*editgroup=soon\r\n" + header("D") +
              "d*editgroup=4\r\n" + header("E") + "E*value=1\r\n"); // it came alone
}
