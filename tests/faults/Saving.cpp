// Panels of random controls that hold random things are saved, loaded and saved again: the same bytes, in a
// country of decimal commas too.

#include "logic/editing/ComponentText.h"
#include "logic/text/PropertyLine.h"
#include "tests/faults/Scenery.h"

#include <clocale>
#include <cstdio>

namespace {

std::string Saved(const TestPanel& panel, const TestFolder& folder, const char* name) {
    const std::string path = folder.Path(name);
    Expect(ph_SavePanel(panel.Root(), path.c_str()) == 1, "the panel is not saved");
    return ReadBytes(path);
}

// Lines that need not come back: distances of relative mode follow what the control is bound to, and a value
// in a range that is reversed is limited anew each time.
bool MayDiffer(const std::string& line) {
    const logic::PropertyLine parts = logic::SplitPropertyLine(line);
    int minimum = 0;
    int maximum = 0;
    return parts.keyword == "values" || parts.keyword == "valuescopy" ||
           (parts.keyword == "properties" &&
            std::sscanf(parts.value.data(), "%d,%d", &minimum, &maximum) == 2 && minimum > maximum);
}

void Compare(const std::string& first, const std::string& second) {
    const auto before = logic::SplitLines(first);
    const auto after = logic::SplitLines(second);
    const auto differing =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end(),
                      [](const auto& one, const auto& other) { return one == other || MayDiffer(one); });
    const bool isAll = differing.first == before.end() && differing.second == after.end();
    Expect(isAll, "saved first: %s\n  saved then:  %s",
           differing.first == before.end() ? "no more" : Shown(*differing.first).c_str(),
           differing.second == after.end() ? "no more" : Shown(*differing.second).c_str());
}

// Whether a part of a strip is bound to its own strip, other than strips do it themselves. It sends the strip
// what it loads, so that the order of the lines decides.
bool HasBoundPart(const std::string& text) {
    constexpr std::string_view BOUND = "=%n";
    constexpr std::string_view BY_STRIP = "=%n*Fader\r";
    for (auto at = text.find(BOUND); at != std::string::npos; at = text.find(BOUND, at + 1)) {
        if (!std::string_view(text).substr(at).starts_with(BY_STRIP)) {
            return true;
        }
    }
    return false;
}

void Round(Random& random, int) {
    const TestFolder folder;
    std::string first;
    {
        const Scenery scenery(random, 10, 'S');
        for (int i = 0; i < 60; ++i) {
            HWND control = scenery.Control(random);
            Scenery::LoadLine(random, control, random.OneIn(3) ? LOAD_FROM_FILE : LOAD_FROM_DIALOG);
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
    if (!HasBoundPart(first)) {
        Compare(first, second);
    }
}

} // namespace

const Topic savingTopic{"saving", Round};
