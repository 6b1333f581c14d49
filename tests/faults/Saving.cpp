// Panels of random controls that hold random things are saved, loaded and saved again: the same bytes, in a
// country of decimal commas too.

#include "tests/faults/Scenery.h"

#include <clocale>
#include <cstdio>
#include <sstream>
#include <string_view>

namespace {

std::string Saved(const TestPanel& panel, const TestFolder& folder, const char* name) {
    const std::string path = folder.Path(name);
    Expect(ph_SavePanel(panel.Root(), path.c_str()) == 1, "the panel is not saved");
    return ReadBytes(path);
}

// Lines that need not come back: distances of relative mode follow what the control is bound to, and a value
// in a range that is reversed is limited anew each time.
bool MayDiffer(const std::string& line) {
    const std::string_view text = line;
    const auto keyword = text.substr(0, text.find('=')).substr(text.rfind('*', text.find('=')) + 1);
    int minimum = 0;
    int maximum = 0;
    return keyword == "values" || keyword == "valuescopy" ||
           (keyword == "properties" &&
            std::sscanf(line.c_str() + line.find('='), "=%d,%d", &minimum, &maximum) == 2 &&
            minimum > maximum);
}

void Compare(const std::string& first, const std::string& second) {
    std::istringstream firstLines(first);
    std::istringstream secondLines(second);
    const auto next = [](std::istringstream& lines, std::string& line) {
        return std::getline(lines, line) ? true : (line.clear(), false);
    };
    for (std::string before, after; int{next(firstLines, before)} + int{next(secondLines, after)} > 0;) {
        if (before != after && !MayDiffer(before)) {
            Expect(false, "saved first: %s\n  saved then:  %s", Shown(before).c_str(), Shown(after).c_str());
            return; // the rest follows from it
        }
    }
}

void Round(Random& random, int) {
    const TestFolder folder;
    std::string first;
    {
        const Scenery scenery(random, 10, 'S');
        for (int i = 0; i < 60; ++i) {
            HWND control = scenery.Control(random);
            const std::string line = Scenery::Line(random, control);
            Doing("line %s to %s", Shown(line).c_str(), Described(control).c_str());
            Load(control, line, random.OneIn(3) ? LOAD_FROM_FILE : LOAD_FROM_DIALOG);
        }
        Doing("save");
        first = Saved(scenery.panel, folder, "first.panel");
    }
    const struct Comma {
        explicit Comma(bool isUsed) { std::setlocale(LC_NUMERIC, isUsed ? "German_Germany.1252" : "C"); }
        ~Comma() { std::setlocale(LC_NUMERIC, "C"); }
    } comma(random.OneIn(3));
    const TestPanel again;
    Doing("load what was saved");
    ph_LoadPanel(again.Root(), folder.Path("first.panel").c_str());
    Doing("save what was loaded");
    const std::string second = Saved(again, folder, "second.panel");
    Compare(first, second);
}

} // namespace

const Topic savingTopic{"saving", Round};
