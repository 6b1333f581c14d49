// Components as text, and what is done and undone with them.
#include "logic/editing/ComponentText.h"
#include "logic/editing/EditHistory.h"
#include "tests/native/Tables.h"

#include <algorithm>
#include <map>
#include <set>

using namespace logic;

namespace {

bool IsPart(const std::string& name, const std::string& whole) {
    return name == whole || name.starts_with(whole + "*");
}

// A panel without windows: controls with property lines, in order. A control of class STRIP makes its own
// part.
class Sheet : public EditTarget {
public:
    struct Control {
        ControlHeader header;
        std::map<std::string, std::string> lines;
    };

    bool Exists(const std::string& name) override { return controls.contains(name); }
    std::string Text(const std::string& name) override {
        if (!Exists(name)) {
            return {};
        }
        std::string text = HeaderLine(name.substr(0, name.rfind('*') + 1), controls.at(name).header) + "\r\n";
        for (const auto& [keyword, value] : controls.at(name).lines) {
            text += name + "*" + keyword + "=" + value + "\r\n";
        }
        return text;
    }
    bool Load(const std::string& text) override {
        for (const std::string& line : SplitLines(text)) {
            const PropertyLine parts = SplitPropertyLine(line);
            const std::string object(parts.object);
            const std::string keyword(parts.keyword);
            if (keyword == "control") {
                const ControlHeader header = ParseControlHeader(parts.value).value();
                Create((object.empty() ? "" : object + "*") + header.name, header);
            } else if (parts.value.empty() && keyword != "connection") {
                controls.at(object).lines.erase(keyword);
            } else {
                controls.at(object).lines[keyword] = parts.value;
            }
        }
        return text.find("=refused") == std::string::npos;
    }
    void Rename(const std::string& name, const std::string& newName) override {
        REQUIRE(Exists(name));
        REQUIRE_FALSE(Exists(newName));
        for (std::string& each : order) {
            if (IsPart(each, name)) {
                auto control = controls.extract(each);
                each.replace(0, name.size(), newName);
                control.key() = each;
                controls.insert(std::move(control));
            }
        }
        controls.at(newName).header.name = newName.substr(newName.rfind('*') + 1);
    }
    void Destroy(const std::string& name) override {
        REQUIRE(Exists(name));
        std::erase_if(controls, [&](const auto& control) { return IsPart(control.first, name); });
        std::erase_if(order, [&](const std::string& other) { return IsPart(other, name); });
    }
    void Place(const std::string& name, const Rectangle& place) override {
        controls.at(name).header.rectangle = place;
    }
    void SetStyle(const std::string& name, std::uint32_t changed, std::uint32_t style) override {
        std::uint32_t& held = controls.at(name).header.style;
        held = (held & ~changed) | (style & changed);
    }
    std::vector<std::string> Order() override { return order; }
    void MoveBefore(const std::string& name, const std::string& other) override {
        const auto rest = std::stable_partition(order.begin(), order.end(),
                                                [&](const auto& each) { return !IsPart(each, name); });
        const std::vector<std::string> moved(rest, order.end());
        order.erase(rest, order.end());
        order.insert(other.empty() ? End(name) : std::find(order.begin(), order.end(), other), moved.begin(),
                     moved.end());
    }

    std::string All() {
        std::string text;
        for (const std::string& name : order) {
            text += Text(name);
        }
        return text;
    }
    void Create(const std::string& name, const ControlHeader& header) {
        if (Exists(name)) {
            return Place(name, header.rectangle);
        }
        order.insert(End(name), name);
        controls[name] = {header, {{"connection", ""}}};
        if (header.className == "STRIP") {
            Create(name + "*Part", {0, "KNOB", "Part", 0, {1, 1, 5, 5}});
        }
    }

    std::map<std::string, Control> controls;
    std::vector<std::string> order;

private:
    // Behind the last part of what holds the control.
    std::vector<std::string>::iterator End(const std::string& name) {
        const auto star = name.rfind('*');
        if (star == std::string::npos) {
            return order.end();
        }
        const auto isBeside = [&](const auto& each) { return IsPart(each, name.substr(0, star)); };
        return std::find_if(order.rbegin(), order.rend(), isBeside).base();
    }
};

// Changes the sheet in some places, as an editor might, and answers with the step.
EditStep ChangeAtRandom(Sheet& sheet, std::mt19937& random) {
    EditStep step;
    if (Any(random, 0, 3) == 0 && !sheet.order.empty()) {
        const std::string name = sheet.order.front();
        const auto isTaken = [&](const std::string& other) { return sheet.Exists(other); };
        step.names.push_back({name, FreeName("Name 1", isTaken)});
        sheet.Rename(name, step.names.back().after);
    }
    Sheet before = sheet;
    const Offset by{Any(random, -9, 9), Any(random, -9, 9)};
    for (const std::string& name : before.order) {
        const int action = Any(random, 0, 19);
        if (!sheet.Exists(name) || action > 6) {
            continue;
        }
        Sheet::Control& control = sheet.controls.at(name);
        if (action == 0) {
            sheet.Destroy(name);
        } else if (action == 1) {
            control.header.style ^= 0x04000000U;
        } else if (action == 2) {
            control.lines.erase("layer");
        } else if (action == 3) {
            control.lines[Any(random, 0, 1) == 0 ? "layer" : "connection"] = "u" + std::to_string(by.x);
        } else if (action == 4) {
            control.header.rectangle = Moved(control.header.rectangle, by);
        } else if (name.find('*') == std::string::npos) {
            sheet.MoveBefore(name, action == 5 || sheet.order.front() == name ? "" : sheet.order.front());
        }
    }
    if (Any(random, 0, 1) == 0) {
        const auto isTaken = [&](const std::string& name) {
            return before.Exists(name) || sheet.Exists(name);
        };
        const std::string name = FreeName("Knob 1", isTaken);
        const char* className = Any(random, 0, 3) == 0 ? "STRIP" : "KNOB";
        sheet.Create(name, {0, className, name, 0x50010000, {Any(random, 0, 99), 0, 120, 30}});
    }
    step.orderBefore = before.order;
    step.orderAfter = sheet.order;
    for (const std::string& name : before.order) {
        if (before.Text(name) != sheet.Text(name)) {
            step.texts.push_back({name, before.Text(name), sheet.Text(name)});
        }
    }
    for (const std::string& name : sheet.order) {
        if (!before.Exists(name)) {
            step.texts.push_back({name, "", sheet.Text(name)});
        }
    }
    return step;
}

EditStep MoveAtRandom(Sheet& sheet, std::mt19937& random) {
    EditStep step;
    for (const std::string& name : sheet.order) {
        const Rectangle before = sheet.controls.at(name).header.rectangle;
        const Rectangle after = Moved(before, {Any(random, -9, 9), 1});
        if (Any(random, 0, 4) == 0) {
            sheet.Place(name, after);
            step.places.push_back({name, before, after});
        }
    }
    return step;
}

// Moves control A from one place to another.
EditStep Shift(int from, int to) {
    EditStep step;
    step.places.push_back({"A", {from, 0, from + 1, 1}, {to, 0, to + 1, 1}});
    return step;
}

// Where a step takes control A; -1 without a step.
int Target(const std::optional<EditStep>& step) {
    return step ? step->places[0].after.left : -1;
}

} // namespace

TEST_CASE("undoing all and redoing all gives the same text at both ends") {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        CAPTURE(seed);
        Sheet sheet;
        for (int i = 1; i <= 6; ++i) {
            const std::string name = "Start " + std::to_string(i);
            sheet.Create(name, {0, i % 3 == 0 ? "STRIP" : "KNOB", name, 0x50010000, {i, i, i + 40, i + 40}});
        }
        EditHistory history;
        std::mt19937 random(seed);
        const std::string start = sheet.All();
        for (unsigned i = 0; i < 40; ++i) {
            if (Any(random, 0, 1) == 0) {
                history.Commit(ChangeAtRandom(sheet, random), "Change");
            } else {
                history.CommitRun(MoveAtRandom(sheet, random), "Move", Any(random, 0, 2), i * 500);
            }
        }
        std::vector<std::string> stations{sheet.All()};
        while (const auto step = history.Undo()) {
            ApplyStep(*step, sheet);
            stations.push_back(sheet.All());
        }
        REQUIRE(stations.back() == start);
        std::size_t station = stations.size() - 1;
        while (const auto step = history.Redo()) {
            ApplyStep(*step, sheet);
            REQUIRE(sheet.All() == stations.at(--station));
        }
        REQUIRE(station == 0);
    }
}

TEST_CASE("a control that refuses a line of the wanted text is made anew") {
    Sheet sheet;
    sheet.Create("K", {0, "KNOB", "K", 0, {0, 0, 9, 9}});
    auto& lines = sheet.controls["K"].lines;
    lines["bitmap"] = "refused";
    EditStep step;
    step.texts.push_back({"K", sheet.Text("K"), ""});
    lines = {{"bitmap", "there"}, {"connection", ""}, {"shown", "beside the text"}};
    step.texts.front().after =
        "control=0x00000000 KNOB \"K\" 0x00000000 0,0,9,9\r\nK*bitmap=there\r\nK*connection=\r\n";
    ApplyStep(step.Reversed(), sheet);
    CHECK(sheet.Text("K") == step.texts.front().before);
}

TEST_CASE("a quick run of the same key is one step, a pause or another key begins the next") {
    EditHistory history;
    CHECK_FALSE(history.Commit({}, "Nothing"));
    history.CommitRun(Shift(0, 1), "Nudge", 1, 1000);
    history.CommitRun(Shift(1, 2), "Nudge", 1, 1700);
    history.CommitRun(Shift(2, 3), "Nudge", 1, 2401); // 701 ms later
    history.CommitRun(Shift(3, 4), "Nudge", 2, 2402);
    history.MarkSaved();
    history.CommitRun(Shift(4, 5), "Nudge", 2, 2403); // what is saved stays a place of its own
    CHECK(Target(history.Undo()) == 4);
    CHECK(history.IsSaved());
    for (const int target : {3, 2, 0, -1}) {
        CHECK(Target(history.Undo()) == target);
    }
    CHECK(Target(history.Redo()) == 2); // of the whole run
    while (history.Redo()) {
    }
    history.CommitRun(Shift(5, 6), "Nudge", 2, 2404); // a run does not go on over an undo
    CHECK(Target(history.Undo()) == 5);
}

TEST_CASE("the history holds the last steps that its limit has room for") {
    const auto step = [](std::size_t length) {
        EditStep made;
        made.texts.push_back({"A", "", std::string(length, 'x')});
        return made;
    };
    EditHistory history(3 * step(1000).Bytes());
    const auto known = [&history] {
        std::string labels;
        for (; history.CanUndo(); history.Undo()) {
            labels += history.UndoLabel() + " ";
        }
        while (history.Redo()) {
        }
        return labels;
    };
    for (const char* label : {"1", "2", "3"}) {
        CHECK(history.Commit(step(1000), label));
    }
    CHECK(known() == "3 2 1 ");
    history.MarkSaved();
    CHECK(history.Commit(step(1001), "4")); // a byte too many
    CHECK(known() == "4 3 ");
    history.Undo();
    CHECK(history.IsSaved());
    CHECK(history.RedoLabel() == "4");
    CHECK(history.Commit(step(10), "5")); // in its place
    CHECK(known() == "5 3 ");
    history.MarkSaved();
    history.Undo();
    CHECK(history.Commit(step(10), "6")); // in place of what is saved
    CHECK_FALSE(history.IsSaved());
    CHECK(history.Commit(step(9000), "7")); // the last one stays, however large it is
    CHECK(known() == "7 ");
    history.Undo();
    history.MarkSaved();
    history.Redo();
    CHECK(history.Commit(step(10), "8")); // what is saved is out of reach
    CHECK(known() == "8 ");
    history.Undo();
    CHECK_FALSE(history.IsSaved());
}

TEST_CASE("an order is restored by the fewest moves") {
    const auto moves = [](const std::string& from, const std::string& to) {
        const auto names = [](const std::string& letters) {
            std::vector<std::string> each;
            for (const char letter : letters) {
                each.emplace_back(1, letter);
            }
            return each;
        };
        std::string text;
        for (const OrderMove& move : OrderMoves(names(from), names(to))) {
            text += move.name + "<" + move.before + " ";
        }
        return text;
    };
    CHECK(moves("abc", "abc") == "");
    CHECK(moves("bcda", "abcd") == "a<b ");
    CHECK(moves("abcd", "bcda") == "a< ");
    CHECK(moves("axb", "bya").size() == 4);
}

namespace {

const char* const COPIED = "control=0x00000000 KNOB \"Gain 1\" 0x50010000 36,56,83,103\r\n"
                           "Gain 1*function=AMP1*gain1\r\n"
                           "Gain 1*connection=gain 2*resolution;Strip*Fader;Far;Gain 1b\r\n"
                           "control=0x00000000 KNOB \"Gain 2\" 0x50010000 108,56,155,103\r\n"
                           "Gain 2*connection=Gain 1\r\n"
                           "control=0x00000200 MIXER \"Strip\" 0x50000000 10,10,100,200\r\n"
                           "Strip*connection=\r\n"
                           "Strip*control=0x00000000 FADER \"Fader\" 0x50010000 1,2,30,40\r\n"
                           "Strip*Fader*connection=%n*Mute;Strip*Mute\r\n";

} // namespace

TEST_CASE("components are written as they were read, and renamed in headers, lines and connections") {
    std::vector<std::string> damaged;
    auto components = ReadComponents(COPIED, damaged);
    CHECK(damaged.empty());
    REQUIRE(components.size() == 3);
    CHECK(ComponentsText(components) == COPIED);
    CHECK(ComponentBounds(components) == Rectangle{10, 10, 155, 200});
    RenameComponents(components, std::vector<std::string>{"Gain 3", "Gain 4", "Strip 2"});
    MoveComponents(components, {8, -8});
    CHECK(ComponentsText(components) == "control=0x00000000 KNOB \"Gain 3\" 0x50010000 44,48,91,95\r\n"
                                        "Gain 3*function=AMP1*gain1\r\n"
                                        "Gain 3*connection=Gain 4*resolution;Strip 2*Fader;Far;Gain 1b\r\n"
                                        "control=0x00000000 KNOB \"Gain 4\" 0x50010000 116,48,163,95\r\n"
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
