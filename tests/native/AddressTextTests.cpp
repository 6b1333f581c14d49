#include "logic/text/AddressReplacement.h"
#include "logic/text/AddressText.h"
#include "logic/text/NamePattern.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

// As of keywords of a panel.
AddressForm FormOf(std::string_view keyword) {
    return keyword == "function"     ? AddressForm::Functions
           : keyword == "connection" ? AddressForm::Connections
           : keyword == "click"      ? AddressForm::Line
                                     : AddressForm::None;
}

std::string Found(AddressForm form, const std::string& text) {
    std::string found;
    for (const AddressPlace& place : FindAddresses(form, text, FormOf)) {
        found += "<" + std::string(place.In(text)) + ">";
    }
    return found;
}

} // namespace

TEST_CASE("addresses are found wherever a value holds them") {
    using enum AddressForm;
    const Row<std::string, AddressForm, const char*> rows[] = {
        {{Functions, " AMP1*gain1 ;; %n*x;"}, "<AMP1*gain1><%n*x>"},
        {{Connections, "Fader 1"}, "<Fader 1>"},
        {{Functions, " ; "}, ""},
        {{Pattern, "DSP*route%i_%02o"}, "<DSP*route%i_%02o>"},
        {{Line, "Strip1*Fader*value=-6"}, "<Strip1*Fader*value>"},
        {{Line, "layer=u1"}, ""},  // of the panel, or of whatever it is connected to
        {{Line, "Strip1*%l"}, ""}, // it sets nothing
        {{Line, "%c*function=AMP1*a;AMP1*b"}, "<%c*function><AMP1*a><AMP1*b>"},
        {{Line, "Eq*click=AMP1*x=3"}, "<Eq*click><AMP1*x>"},
        {{Line, "A*click=function=AMP1"}, "<A*click><AMP1>"},
        {{Inserted, "at %{AMP1*level} dB, %v %{Fader}%{} %{open"}, "<AMP1*level><Fader>"},
        {{None, "AMP1*gain"}, ""},
    };
    CheckRows(Found, rows);
    std::string deep;
    for (int i = 0; i < 1000; ++i) {
        deep += "A*click=";
    }
    CHECK(FindAddresses(Line, deep, FormOf).size() == 9); // and the rest is as good as any text
}

TEST_CASE("addresses are replaced where they stand, unless they would be read as others") {
    using enum AddressForm;
    const auto replaced = [](AddressForm form, const std::string& text, const std::string& by) {
        const auto places = FindAddresses(form, text, FormOf);
        return WithAddresses(form, text, places, std::vector<std::string>(places.size(), by), FormOf)
            .value_or("refused");
    };
    const Row<std::string, AddressForm, const char*, const char*> rows[] = {
        {{Functions, " AMP1*gain1 ;; %n*x;", "N*x"}, " N*x ;; N*x;"},
        {{Line, "Strip1*Fader*value=-6", "N*x"}, "N*x=-6"},
        {{Inserted, "%{A*b} and %{C}", "N"}, "%{N} and %{N}"},
        {{Functions, "A*b", "N;M"}, "refused"},
        {{Functions, "A*b", ""}, "refused"},
        {{Line, "A*b=1", "N=M"}, "refused"},
        {{Line, "A*b=1", "N"}, "refused"},          // it names no object any more
        {{Line, "A*b=1", "N*function"}, "refused"}, // whose value is an address
        {{Inserted, "%{A*b}", "N}"}, "refused"},
        {{Pattern, "A%i", "N;M"}, "N;M"},
    };
    CheckRows(replaced, rows);
}

TEST_CASE("a pattern stands for as many names as there are inputs and outputs") {
    using Names = std::vector<std::string>;
    CHECK(ExpandPatterns("r%i_%02o", 2, 2) == Names{"r1_01", "r1_02", "r2_01", "r2_02"});
    CHECK(ExpandPatterns("in%i%o", 2, 0) == Names{"in11", "in22"});
    CHECK(ExpandPatterns("", 2, 2).empty());
    CHECK(ExpandPatterns("r%i", 0, 2).empty());
}

TEST_CASE("addresses are replaced that begin with what is looked for") {
    const auto replaced = [](const char* find, const char* by, const char* address) -> std::string {
        std::string why;
        const auto replacement = AddressReplacement::Parse(find, by, why);
        return replacement ? replacement->Apply(address).value_or("other") : "refused: " + why;
    };
    const Row<std::string, const char*, const char*, const char*> rows[] = {
        {{"amp1", "FOH", "AMP1*gain1"}, "FOH*gain1"}, // a device, or a control with what is inside
        {{"Strip1", "Strip2", "strip1*Fader*value"}, "Strip2*Fader*value"},
        {{"Strip1*Fader", "F", "Strip1*fader*value"}, "F*value"},
        {{"AMP1", "FOH", "AMP1"}, "FOH"},
        {{"AMP1", "FOH", "AMP10*gain"}, "other"},
        {{"AMP1", "FOH", "X*AMP1*gain"}, "other"},
        {{"AMP1*gain", "FOH*ch01.fader", "amp1*gain"}, "FOH*ch01.fader"},
        {{"AMP1*gain", "FOH*ch01.fader", "AMP1*Gain"}, "other"}, // keywords are told apart by case
        {{"AMP1*gain", "FOH*ch01.fader", "AMP1*gain1"}, "other"},
        {{" AMP1*gain%i ", " FOH*ch%02i.fader ", "AMP1*gain7"}, "FOH*ch07.fader"},
        {{"AMP1*gain%i", "FOH*ch%02i.fader", "AMP1*gain12"}, "FOH*ch12.fader"},
        {{"FOH*ch%i.fader", "AMP1*gain%i", "foh*ch07.fader"}, "AMP1*gain7"},
        {{"AMP1*gain%i", "FOH*ch%02i.fader", "AMP1*gain"}, "other"},
        {{"AMP1*gain%i", "FOH*ch%02i.fader", "AMP1*gain1x"}, "other"},
        {{"D*r%i_%o", "E*x%02o.%i", "D*r3_4"}, "E*x04.3"},
        {{"D*r%i_%o", "E*x%02o.%i", "D*r%i_%02o"}, "E*x%02o.%i"}, // in a pattern
        {{"D*r%02i_%o", "E*r%02i_%o", "D*r3_4"}, "E*r03_4"},
        {{"D*r%i_%i", "E*r%i", "D*r3_3"}, "E*r3"},
        {{"D*r%i_%i", "E*r%i", "D*r3_4"}, "other"},
        {{"AMP%i", "RACK%i", "AMP2*gain1"}, "RACK2*gain1"},
        {{"%n*Fader", "%n*Level", "%n*Fader"}, "%n*Level"},
        {{"A*r%i", "A*r%02i", "A*r01"}, "other"}, // as it is
        {{"A*r%i", "B*r%i", "A*r99999999999999999999"}, "other"},
        {{"A", "", "A"}, "refused: "},
        {{"", "A", ""}, "refused: "},
        {{"A*r", "A*r%i", "A*r"}, "refused: There is no %i in what is looked for"},
        {{"A", "B;C", "A"}, "refused: An address holds neither ; nor ="},
    };
    CheckRows(replaced, rows);
}
