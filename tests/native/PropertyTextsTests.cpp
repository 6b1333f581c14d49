// What the property pane makes of texts: sentences, list entries, searches.

#include "logic/editing/PropertyTexts.h"
#include "logic/text/Search.h"

#include <doctest/doctest.h>

#include <tuple>

TEST_SUITE_BEGIN("PropertyTexts");

TEST_CASE("a sentence is shown without its marks") {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"`send`: to its [devices](panel-files.md#opening).", "send: to its devices."},
        {"[`a`](b) and [c", "a and [c"},
        {"a[1] (b) ]( )", "a[1] (b) ]( )"},
        {"[a](b", "[a](b"},
    };
    for (const auto& [marked, plain] : rows) {
        CHECK(logic::PlainSentence(marked) == plain);
    }
}

TEST_CASE("the entry at a place of a list") {
    const std::tuple<const char*, std::size_t, const char*, std::size_t> rows[] = {
        {"", 0, "", 0},           {"A*gain", 0, "A*gain", 0}, {"A*gain", 99, "A*gain", 0},
        {"A; B C ;D", 1, "A", 0}, {"A; B C ;D", 2, "B C", 3}, {"A; B C ;D", 7, "B C", 3},
        {"A; B C ;D", 8, "D", 8}, {"A;", 2, "", 2},           {"A;  ;B", 3, "", 4},
    };
    for (const auto& row : rows) {
        const auto& [text, place, entry, begin] = row;
        INFO("place ", std::get<1>(row));
        const logic::EntryPlace found = logic::EntryAt(text, place);
        CHECK(std::string(text).substr(found.begin, found.length) == entry);
        CHECK(found.begin == begin);
    }
}

TEST_CASE("a search wants all words, in any order and case") {
    const std::tuple<const char*, const char*, bool> rows[] = {{"amp1*gain12", "", true},
                                                               {"amp1*gain12", "  ", true},
                                                               {"amp1*gain12", "GAIN Amp", true},
                                                               {"amp1*gain12", "gain 3", false}};
    for (const auto& [text, typed, held] : rows) {
        CHECK(logic::HoldsAll(text, logic::SearchWords(typed)) == held);
    }
}

TEST_SUITE_END();
