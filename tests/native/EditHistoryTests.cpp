#include "logic/ComponentText.h"
#include "logic/EditHistory.h"

#include <algorithm>
#include <list>
#include <map>
#include <random>
#include <set>

#include <doctest/doctest.h>

using namespace logic;

namespace {

// A panel without windows: controls with property lines, in order. A control of class STRIP makes its own
// part.
class Sheet : public EditTarget {
public:
    bool Exists(const std::string& name) override { return lines.contains(name); }
    std::string Text(const std::string& name) override {
        if (!Exists(name)) {
            return {};
        }
        const std::size_t ownName = name.rfind('*') + 1;
        std::string text = HeaderLine(name.substr(0, ownName), headers.at(name)) + "\r\n";
        for (const auto& [keyword, value] : lines.at(name)) {
            text += name + "*" + keyword + "=" + value + "\r\n";
        }
        return text;
    }
    bool Load(const std::string& text) override {
        for (const std::string& line : SplitLines(text)) {
            const PropertyLine parts = SplitPropertyLine(line);
            if (parts.keyword != "control") {
                const std::string object(parts.object);
                REQUIRE(Exists(object));
                auto& held = lines[object];
                if (parts.value.empty() && parts.keyword != "connection") {
                    held.erase(std::string(parts.keyword));
                } else {
                    held[std::string(parts.keyword)] = parts.value;
                }
                continue;
            }
            const auto header = ParseControlHeader(parts.value);
            REQUIRE(header);
            const std::string path(parts.object);
            Create(path.empty() ? header->name : path + "*" + header->name, *header);
        }
        return text.find("=refused") == std::string::npos;
    }
    void Destroy(const std::string& name) override {
        REQUIRE(Exists(name));
        const auto gone = [&](const std::string& other) {
            return other == name || other.starts_with(name + "*");
        };
        for (const std::string& other : std::vector<std::string>(order.begin(), order.end())) {
            if (gone(other)) {
                lines.erase(other);
                headers.erase(other);
            }
        }
        order.remove_if(gone);
    }
    void Place(const std::string& name, const Rectangle& place) override {
        headers.at(name).rectangle = place;
    }
    void SetStyle(const std::string& name, std::uint32_t changed, std::uint32_t style) override {
        std::uint32_t& held = headers.at(name).style;
        held = (held & ~changed) | (style & changed);
    }
    std::vector<std::string> Order() override { return {order.begin(), order.end()}; }
    void MoveBefore(const std::string& name, const std::string& other) override {
        std::list<std::string> moved;
        for (auto place = order.begin(); place != order.end();) {
            const auto next = std::next(place);
            if (*place == name || place->starts_with(name + "*")) {
                moved.splice(moved.end(), order, place);
            }
            place = next;
        }
        order.splice(other.empty() ? End(name) : std::find(order.begin(), order.end(), other), moved);
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
            headers[name].rectangle = header.rectangle;
            return;
        }
        order.insert(End(name), name);
        headers[name] = header;
        lines[name]["connection"] = "";
        if (header.className == "STRIP") {
            Create(name + "*Part", {0, "KNOB", "Part", 0, {1, 1, 5, 5}});
        }
    }

    std::list<std::string> order;
    std::map<std::string, ControlHeader> headers;
    std::map<std::string, std::map<std::string, std::string>> lines;

private:
    std::list<std::string>::iterator End(const std::string& name) {
        const auto star = name.rfind('*');
        if (star == std::string::npos) {
            return order.end();
        }
        auto place = std::find(order.begin(), order.end(), name.substr(0, star));
        do {
            ++place;
        } while (place != order.end() && place->starts_with(name.substr(0, star + 1)));
        return place;
    }
};

// What an editor does, on the sheet and into the history.
class RandomEditor {
public:
    RandomEditor(Sheet& sheet, EditHistory& history, unsigned seed)
        : sheet_(sheet), history_(history), random_(seed) {}

    void Edit() {
        switch (Any(0, 5)) {
        case 0:
            return Change({}, [&] { return std::vector{Create()}; });
        case 1: {
            const auto names = Some();
            return Change(names, [&] {
                for (const std::string& name : names) {
                    if (sheet_.Exists(name)) {
                        sheet_.Destroy(name);
                    }
                }
                return std::vector<std::string>{};
            });
        }
        case 2: {
            const auto names = Some();
            return Change(names, [&] {
                for (const std::string& name : names) {
                    auto& lines = sheet_.lines[name];
                    sheet_.headers[name].style ^= Any(0, 1) == 0 ? 0x04000000U : 0U;
                    if (Any(0, 2) == 0) {
                        lines.erase("layer");
                    } else {
                        lines[Any(0, 1) == 0 ? "layer" : "connection"] = "u" + std::to_string(Any(1, 9));
                    }
                }
                return std::vector<std::string>{};
            });
        }
        case 3: {
            const auto names = Some();
            return Change({}, [&] {
                if (!names.empty()) {
                    const std::string& name = names.front();
                    for (const std::string& other : sheet_.Order()) {
                        if (other != name && other.rfind('*') == name.rfind('*') &&
                            other.substr(0, other.rfind('*') + 1) == name.substr(0, name.rfind('*') + 1)) {
                            sheet_.MoveBefore(name, Any(0, 3) == 0 ? "" : other);
                            break;
                        }
                    }
                }
                return std::vector<std::string>{};
            });
        }
        default:
            return Move();
        }
    }

private:
    int Any(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

    std::string Create() {
        const std::string name =
            FreeName("Knob 1", [&](const std::string& candidate) { return sheet_.Exists(candidate); });
        sheet_.Create(name,
                      {0, Any(0, 3) == 0 ? "STRIP" : "KNOB", name, 0x50010000, {Any(0, 99), 0, 120, 30}});
        if (Any(0, 1) == 0) {
            const auto order = sheet_.Order();
            sheet_.MoveBefore(name, order.front() == name ? "" : order.front());
        }
        return name;
    }

    std::vector<std::string> Some() {
        std::vector<std::string> names;
        for (const std::string& name : sheet_.Order()) {
            if (Any(0, 4) == 0) {
                names.push_back(name);
            }
        }
        return names;
    }

    template <class Action>
    void Change(const std::vector<std::string>& touched, Action action) {
        EditStep step;
        step.orderBefore = sheet_.Order();
        std::set<std::string> seen;
        const auto add = [&](const std::string& root, bool existed) {
            for (const std::string& name : sheet_.Order()) {
                if ((name == root || name.starts_with(root + "*")) && seen.insert(name).second) {
                    step.texts.push_back({name, existed ? sheet_.Text(name) : "", ""});
                }
            }
        };
        for (const std::string& name : touched) {
            add(name, true);
        }
        for (const std::string& name : action()) {
            add(name, false);
        }
        for (EditStep::Text& text : step.texts) {
            text.after = sheet_.Text(text.name);
        }
        step.orderAfter = sheet_.Order();
        history_.Commit(std::move(step), "Change");
    }

    void Move() {
        EditStep step;
        const Offset by{Any(-9, 9), Any(-9, 9)};
        for (const std::string& name : Some()) {
            const Rectangle before = sheet_.headers[name].rectangle;
            sheet_.Place(name, Moved(before, by));
            step.places.push_back({name, before, Moved(before, by)});
        }
        now_ += static_cast<unsigned>(Any(0, 1000));
        history_.CommitRun(std::move(step), "Move", Any(0, 2), now_);
    }

    Sheet& sheet_;
    EditHistory& history_;
    std::mt19937 random_;
    std::uint64_t now_ = 0;
};

} // namespace

TEST_CASE("undoing all and redoing all gives the same text at both ends") {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        CAPTURE(seed);
        Sheet sheet;
        for (int i = 1; i <= 6; ++i) {
            const std::string name = "Start " + std::to_string(i);
            sheet.Create(name, {0, i % 3 == 0 ? "STRIP" : "KNOB", name, 0x50010000, {i, i, i + 40, i + 40}});
        }
        const std::string start = sheet.All();
        EditHistory history;
        RandomEditor editor(sheet, history, seed);
        for (int i = 0; i < 40; ++i) {
            editor.Edit();
        }
        const std::string end = sheet.All();
        std::vector<std::string> stations{end};
        for (int round = 0; round < 2; ++round) {
            while (const auto step = history.Undo()) {
                ApplyStep(*step, sheet);
                if (round == 0) {
                    stations.push_back(sheet.All());
                }
            }
            REQUIRE(sheet.All() == start);
            std::size_t station = stations.size();
            REQUIRE(--station + 1 == stations.size());
            while (const auto step = history.Redo()) {
                ApplyStep(*step, sheet);
                REQUIRE(sheet.All() == stations[--station]);
            }
            REQUIRE(sheet.All() == end);
        }
    }
}

TEST_CASE("a control that refuses a line of the wanted text is made anew") {
    Sheet sheet;
    sheet.Create("K", {0, "KNOB", "K", 0, {0, 0, 9, 9}});
    sheet.lines["K"]["bitmap"] = "refused";
    EditStep step;
    step.texts.push_back({"K", sheet.Text("K"), ""});
    sheet.lines["K"] = {{"bitmap", "there"}, {"connection", ""}, {"shown", "beside the text"}};
    step.texts.front().after =
        "control=0x00000000 KNOB \"K\" 0x00000000 0,0,9,9\r\nK*bitmap=there\r\nK*connection=\r\n";
    ApplyStep(step.Reversed(), sheet);
    CHECK_FALSE(sheet.lines["K"].contains("shown"));
    CHECK(sheet.Text("K") == step.texts.front().before);
}

TEST_CASE("new steps end what could be redone, and the saved state with it") {
    const auto move = [](int to) {
        EditStep step;
        step.places.push_back({"A", {0, 0, 1, 1}, {to, 0, to + 1, 1}});
        return step;
    };
    EditHistory history;
    CHECK(history.IsSaved());
    history.Commit({}, "Nothing");
    CHECK_FALSE(history.CanUndo());
    history.Commit(move(1), "One");
    CHECK_FALSE(history.IsSaved());
    history.Commit(move(2), "Two");
    history.MarkSaved();
    CHECK(history.UndoLabel() == "Two");
    CHECK(history.Undo()->places[0].after == Rectangle{0, 0, 1, 1});
    CHECK_FALSE(history.IsSaved());
    CHECK(history.RedoLabel() == "Two");
    CHECK(history.Redo()->places[0].after == Rectangle{2, 0, 3, 1});
    CHECK(history.IsSaved());
    history.Undo();
    history.Commit(move(3), "Three");
    CHECK_FALSE(history.CanRedo());
    CHECK_FALSE(history.IsSaved());
    history.Undo();
    CHECK_FALSE(history.IsSaved());
}

TEST_CASE("a quick run of the same key is one step, a pause or another key begins the next") {
    const auto nudge = [](int from) {
        EditStep step;
        step.places.push_back({"A", {from, 0, from + 1, 1}, {from + 1, 0, from + 2, 1}});
        return step;
    };
    EditHistory history;
    history.CommitRun(nudge(0), "Nudge", 1, 1000);
    history.CommitRun(nudge(1), "Nudge", 1, 1700);
    history.CommitRun(nudge(2), "Nudge", 1, 2401); // 701 ms later
    history.CommitRun(nudge(3), "Nudge", 2, 2402);
    history.MarkSaved();
    history.CommitRun(nudge(4), "Nudge", 2, 2403); // what is saved stays a place of its own
    CHECK(history.Undo()->places[0].before == Rectangle{5, 0, 6, 1});
    CHECK(history.IsSaved());
    CHECK(history.Undo()->places[0].before == Rectangle{4, 0, 5, 1});
    CHECK(history.Undo()->places[0].before == Rectangle{3, 0, 4, 1});
    const auto first = history.Undo();
    REQUIRE(first);
    CHECK(first->places[0].before == Rectangle{2, 0, 3, 1});
    CHECK(first->places[0].after == Rectangle{0, 0, 1, 1});
    CHECK_FALSE(history.Undo());
}

TEST_CASE("the history holds the last steps that its limit has room for") {
    constexpr std::size_t LIMIT = 5000;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        CAPTURE(seed);
        std::mt19937 random(seed);
        const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
        EditHistory history(LIMIT);
        // All steps ever, by their labels; of those from "first" on the history still knows.
        struct Known {
            std::string label;
            std::size_t bytes;
        };
        std::vector<Known> known;
        std::size_t first = 0;
        std::size_t position = 0;
        std::optional<std::size_t> saved = 0;
        for (int i = 0; i < 400; ++i) {
            switch (any(6)) {
            case 0:
                if (history.Undo()) {
                    --position;
                }
                break;
            case 1:
                if (history.Redo()) {
                    ++position;
                }
                break;
            case 2:
                if (any(3) == 0) {
                    history.MarkSaved();
                    saved = position;
                }
                break;
            default: {
                EditStep step;
                const int length = any(20) == 0 ? 7000 : any(900);
                step.texts.push_back({"A", "", std::string(static_cast<std::size_t>(length), 'x')});
                if (saved && *saved > position) {
                    saved.reset();
                }
                known.resize(position);
                known.push_back({std::to_string(i), step.Bytes()});
                ++position;
                CHECK(history.Commit(std::move(step), known.back().label));
                std::size_t total = 0;
                std::size_t from = known.size();
                while (from > first && (from == known.size() || total + known[from - 1].bytes <= LIMIT)) {
                    total += known[--from].bytes;
                }
                first = from;
                if (saved && *saved < first) {
                    saved.reset();
                }
                CHECK(history.Bytes() == total);
            }
            }
            REQUIRE(history.CanUndo() == (position > first));
            REQUIRE(history.CanRedo() == (position < known.size()));
            REQUIRE(history.UndoLabel() == (position > first ? known[position - 1].label : ""));
            REQUIRE(history.RedoLabel() == (position < known.size() ? known[position].label : ""));
            REQUIRE(history.IsSaved() == (saved == position));
        }
    }
}

TEST_CASE("an order is restored by the fewest moves") {
    const auto moves = [](const std::vector<std::string>& from, const std::vector<std::string>& to) {
        std::string text;
        for (const OrderMove& move : OrderMoves(from, to)) {
            text += move.name + "<" + move.before + " ";
        }
        return text;
    };
    CHECK(moves({"a", "b", "c"}, {"a", "b", "c"}) == "");
    CHECK(moves({"b", "c", "d", "a"}, {"a", "b", "c", "d"}) == "a<b ");
    CHECK(moves({"a", "b", "c", "d"}, {"b", "c", "d", "a"}) == "a< ");
    CHECK(moves({"a", "x", "b"}, {"b", "y", "a"}).size() == 4);
}
