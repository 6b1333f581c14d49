#pragma once

#include <windows.h>

#include <string_view>

// What a host relies on of each window class.
struct ExpectedClass {
    const char* name;
    UINT style; // a superclassed control: what it adds to the style of the system class
    int extraBytes;
    bool hasIcon;
    int background;  // 0: none
    int controlType; // datatype of the main value; NOT_FIXED: hosts do not rely on it
    const char* systemClass = nullptr;
};

constexpr int NULL_BACKGROUND = -1; // the stock brush
constexpr int NOT_FIXED = -1;

constexpr ExpectedClass EXPECTED_CLASSES[] = {
    {"AUTOMIXER", 0x4003, 0, false, 0, 5},
    {"FADING", 0x4003, 0, false, 0, 5},
    {"DANTECONTROL", 0x4003, 0, false, 0, 11},
    {"BEDIT2", 0x4000, 0, true, 2, 11, "EDIT"},
    {"CLOCK", 0x4003, 0, false, 0, NOT_FIXED},
    {"BCOMBOBOX", 0x4000, 0, true, 0, 11, "COMBOBOX"},
    {"CONDITIONALLED", 0x4003, 0, false, 0, 5},
    {"CONTACTBUTTON", 0x4003, 0, true, 0, 5},
    {"CROSSOVER", 0x4003, 0, false, 0, 5},
    {"BEDIT", 0x4000, 0, true, 0, NOT_FIXED, "EDIT"},
    {"EQ", 0x4003, 0, false, 0, NOT_FIXED},
    {"FADER", 0x4003, 0, false, 0, 9},
    {"BIMAGELIST", 0x400B, 0, false, 0, 5},
    {"XIPCHECK", 0x4003, 0, false, 0, 5},
    {"KNOB", 0x4003, 4, false, 0, 9},
    {"LED", 0x400B, 0, false, 0, 5},
    {"LISTSELECTION", 0x4003, 0, false, 0, 5},
    {"LSBBUTTON", 0x4003, 0, true, 0, 5},
    {"LSBSTATIC", 0x4003, 0, false, 0, NOT_FIXED},
    {"IMESSAGING", 0x400B, 4, true, 0, 5},
    {"METER", 0x4003, 0, false, 0, 5},
    {"IMIDI", 0x4003, 0, true, 0, 37},
    {"MINIDELAY", 0x400B, 0, false, 0, NOT_FIXED},
    {"MINIDYNAMICS", 0x400B, 0, false, 0, NOT_FIXED},
    {"MINIEDIT", 0x400B, 0, false, 0, NOT_FIXED},
    {"MINIEQ", 0x400B, 0, false, 0, NOT_FIXED},
    {"MINIROUTING", 0x400B, 0, false, 0, NOT_FIXED},
    {"MINIXOVER", 0x400B, 0, false, 0, NOT_FIXED},
    {"MIXER", 0x4003, 0, false, 0, 5},
    {"INETWORK", 0x4003, 4, true, NULL_BACKGROUND, 0},
    {"BBUTTON", 0x4003, 0, true, 0, 5},
    {"BRADIOBUTTON", 0x4003, 0, false, 0, 5},
    {"BRANGE", 0x4003, 0, false, 0, 9},
    {"REVMETER", 0x4003, 0, false, 0, 5},
    {"SWITCH", 0x4003, 4, true, NULL_BACKGROUND, 5},
    {"SCALE", 0x4003, 0, false, 0, 5},
    {"SPEAKERCONTROL", 0x4003, 0, false, 0, 5},
    {"SPINEDIT", 0x4003, 0, false, 0, 9},
    {"BSTATIC", 0x4003, 0, false, 0, NOT_FIXED},
    {"BTRISTATEBUTTON", 0x4003, 0, false, 0, 5},
    {"ITELEPHONE", 0x400B, 4, true, 0, 0},
    {"IWAVEGENERATOR", 0x4003, 0, true, 0, 5},
    {"IWAVEIN", 0x4003, 0, true, 0, 37},
    {"IWAVEOUT", 0x4003, 0, true, 0, 5},
    {"XOVER", 0x4003, 0, false, 0, NOT_FIXED},
};
static_assert(sizeof EXPECTED_CLASSES / sizeof *EXPECTED_CLASSES == 45);

// Few controls take no connections.
constexpr bool TakesConnections(std::string_view className) {
    return className != "IMIDI" && className != "IWAVEGENERATOR" && className != "INETWORK" &&
           className != "ITELEPHONE";
}
