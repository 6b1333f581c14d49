// What addresses become when objects get other names.
#include "logic/editing/Renaming.h"
#include "logic/text/PropertyLine.h"
#include "tests/native/Tables.h"

#include <set>

using namespace logic;

namespace {

struct Case {
    NewName name;
    AddressForm form;
    Renaming::Holder holder;
    const char* address;
    const char* after;
    bool keepsMeaning = true;
};

// A panel of strips, and devices beside them.
const std::set<std::string> OBJECTS{
    "foh",       "strip1", "strip1*fader", "strip1*mute", "strip2", "strip2*fader", "strip3", "ch04",
    "ch04*gain", "clock",  "fader",        "sub",         "sub*in", "sub*in*x",     "knob",   "knob*inner"};

bool Exists(const std::string& name) {
    return OBJECTS.contains(FoldName(name));
}

} // namespace

TEST_CASE("addresses follow the objects they name") {
    const NewName strip{"Strip1", "Vocal"};
    const NewName channel{"ch04", "Choir"};
    const NewName fader{"Strip1*Fader", "Strip1*Level"};
    const NewName knob{"Knob", "Dial"};
    constexpr auto FUNCTIONS = AddressForm::Functions;
    constexpr auto CONNECTIONS = AddressForm::Connections;
    constexpr auto LINE = AddressForm::Line;
    constexpr auto MAIL = AddressForm::Inserted;
    constexpr auto PATTERN = AddressForm::Pattern;
    const Case cases[] = {
        // Lists: full names alone, in any case; what only begins alike is another object.
        {strip, CONNECTIONS, {"Knob"}, "Strip1", "Vocal"},
        {strip, CONNECTIONS, {"Knob"}, "STRIP1*Fader*value", "Vocal*Fader*value"},
        {strip, CONNECTIONS, {"Knob"}, "Strip1*caption", "Vocal*caption"},
        {strip, CONNECTIONS, {"Knob"}, "Strip10*caption", "Strip10*caption"},
        {fader, CONNECTIONS, {"Strip1*Mute"}, "Fader", "Fader"},
        {fader, CONNECTIONS, {"Strip1*Mute"}, "%n*Fader*value", "%n*Level*value"},
        {strip, CONNECTIONS, {"Strip1*Mute"}, "%n*Fader", "%n*Fader"},
        {strip, CONNECTIONS, {"Strip1*Mute"}, "%n", "%n"},
        {strip, CONNECTIONS, {"Strip1*Mute"}, "Strip1*Gone*value", "Vocal*Gone*value"},
        {{"Sub*In", "Sub*Out"}, CONNECTIONS, {"Sub*In*X"}, "%n*X", "%n*X"},
        {{"Sub", "Low"}, CONNECTIONS, {"Sub*In*X"}, "%n*X;", "%n*X;"},
        // What the name of the strip stands for at a device stays there.
        {channel, FUNCTIONS, {"ch04*Gain"}, "FOH*%n.fader", "FOH*ch04.fader"},
        {channel, FUNCTIONS, {"Knob"}, "FOH*ch04.fader", "FOH*ch04.fader"},
        {channel, FUNCTIONS, {"Knob"}, "Nobody*%n", "Nobody*%n"},
        // Names inside what contains the control come first.
        {fader, LINE, {"Strip1*Mute"}, "Fader*value", "Level*value"},
        {{"Fader", "Main"}, LINE, {"Strip1*Mute"}, "Fader*value", "Fader*value"},
        {{"Fader", "Main"}, LINE, {"Strip3*Mute"}, "Fader*value", "Main*value"},
        {fader, LINE, {"Knob"}, "Strip1*Fader*value", "Strip1*Level*value"},
        {strip, LINE, {"Strip1*Mute"}, "Strip1*caption", "Vocal*caption"},
        {strip, LINE, {"Strip1*Mute"}, "%n*value", "%n*value"},
        {strip, LINE, {"Knob"}, "%c*value", "%c*value"},
        {knob, LINE, {"Knob"}, "%n*value", "%n*value"},
        {knob, LINE, {"Knob"}, "Knob*value", "Dial*value"},
        {{"Strip1*Mute", "Strip1*Strip2"}, LINE, {"Strip1*Fader"}, "Strip2*caption", "Strip2*caption", false},
        {{"Strip2", "Strip9"}, CONNECTIONS, {"Knob", true}, "%n*x;", "%n*x;"},
        {knob, CONNECTIONS, {"Knob", true}, "%n*x", "%n*x"},
        {fader, MAIL, {"Strip1*Mute"}, "Fader", "Level"},
        {fader, MAIL, {"Strip1*Mute"}, "Fader*value", "Level*value"},
        {strip, MAIL, {"Strip1*Mute"}, "Fader*value", "Fader*value"},
        {strip, MAIL, {"Strip1*Mute"}, "%n*value", "%n*value"},
        {knob, MAIL, {"Clock"}, "Knob*value", "Dial*value"},
        // Another object takes a name that an address has, or a keyword.
        {knob, CONNECTIONS, {"Clock"}, "Dial*value", "Dial*value", false},
        {{"Knob*Inner", "Knob*value"}, CONNECTIONS, {"Clock"}, "Knob*value", "Knob*value", false},
        // Patterns follow as a whole or not at all.
        {knob, PATTERN, {"Clock", false, 3, 2}, "Knob*route%i_%o", "Dial*route%i_%o"},
        {{"Strip2", "Drums"}, PATTERN, {"Clock", false, 3, 0}, "Strip%i*mute", "Strip%i*mute", false},
        {{"Strip2", "Drums"}, PATTERN, {"Clock", false, 1, 0}, "Strip%i*mute", "Strip%i*mute"},
        {knob, PATTERN, {"Clock", false, 3, 0}, "Dial%i*mute", "Dial%i*mute"},
        {{"Knob", "Dial2"}, PATTERN, {"Clock", false, 3, 0}, "Dial%i*mute", "Dial%i*mute", false},
        {{"Sub", "Low"}, PATTERN, {"Clock", false, 2, 0}, "Sub*In*Y%02i*mute", "Low*In*Y%02i*mute"},
        {channel, PATTERN, {"ch04*Gain", false, 2, 2}, "FOH*%n.r%i_%o", "FOH*ch04.r%i_%o"},
        {strip, PATTERN, {"Strip1*Mute", false, 2, 2}, "%n*r%i_%o", "%n*r%i_%o"},
        {strip, PATTERN, {"Clock", false, 2, 2}, "", ""},
    };
    for (const Case& one : cases) {
        CAPTURE(one.name.from);
        CAPTURE(one.address);
        CAPTURE(one.holder.name);
        const Renaming::Followed followed =
            Renaming({one.name}, Exists).Follow(one.form, one.address, one.holder);
        CHECK(followed.address == one.after);
        CHECK(followed.keepsMeaning == one.keepsMeaning);
    }
}
