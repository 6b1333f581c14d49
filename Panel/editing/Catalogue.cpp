#include "Panel/editing/Catalogue.h"

namespace {

constexpr auto CONTINUOUS = CatalogueGroup::Continuous;
constexpr auto DISCRETE = CatalogueGroup::Discrete;
constexpr auto PROCESSING = CatalogueGroup::Processing;
constexpr auto STRIPS = CatalogueGroup::Strips;
constexpr auto INTERFACES = CatalogueGroup::Interfaces;

// Those that take their size from an image do so when they are made.
constexpr CatalogueEntry ENTRIES[] = {
    {CONTINUOUS, "KNOB", "Knob", "Kn", {47, 47}, true},
    {CONTINUOUS, "FADER", "Fader", "Fa", {30, 200}, true},
    {CONTINUOUS, "METER", "Meter", "Me", {16, 160}, false},
    {CONTINUOUS, "REVMETER", "Reverse Meter", "Rm", {16, 160}, false},
    {CONTINUOUS, "FADING", "Bar Graph", "Bg", {120, 16}, false},
    {CONTINUOUS, "SPINEDIT", "Spin Edit", "Sp", {80, 24}, true},
    {CONTINUOUS, "BRANGE", "Range", "Ra", {160, 24}, true},
    {CONTINUOUS, "SCALE", "Scale", "Sc", {32, 160}, false},
    {DISCRETE, "BBUTTON", "Push Button", "Pb", {64, 24}, true},
    {DISCRETE, "BTRISTATEBUTTON", "Switch Button", "Sb", {48, 24}, true},
    {DISCRETE, "BRADIOBUTTON", "Radio Button", "Rb", {96, 24}, true},
    {DISCRETE, "SWITCH", "Rocker Switch", "Rs", {32, 48}, true},
    {DISCRETE, "CONTACTBUTTON", "Contact Button", "Cb", {64, 24}, true},
    {DISCRETE, "LED", "LED", "Le", {16, 16}, false},
    {DISCRETE, "CONDITIONALLED", "Conditional LED", "Cl", {16, 16}, false},
    {DISCRETE, "BSTATIC", "Text", "Tx", {96, 16}, false},
    {DISCRETE, "BEDIT", "Edit Field", "Ed", {96, 18}, true},
    {DISCRETE, "BEDIT2", "Edit Field 2", "E2", {96, 24}, true},
    {DISCRETE, "BCOMBOBOX", "Combo Box", "Co", {120, 120}, true},
    {DISCRETE, "LISTSELECTION", "List Selection", "Ls", {160, 96}, true},
    {DISCRETE, "LSBBUTTON", "List Button", "Lb", {64, 24}, true},
    {DISCRETE, "LSBSTATIC", "List Text", "Lt", {96, 16}, false},
    {DISCRETE, "BIMAGELIST", "Image List", "Il", {64, 64}, false},
    {DISCRETE, "CLOCK", "Clock", "Ck", {96, 24}, false},
    {PROCESSING, "EQ", "Equalizer", "Eq", {125, 170}, true},
    {PROCESSING, "XOVER", "Crossover Filter", "Xo", {292, 170}, true},
    {PROCESSING, "SPEAKERCONTROL", "Speaker Selector", "Ss", {160, 96}, true},
    {PROCESSING, "DANTECONTROL", "Dante Selector", "Da", {160, 96}, true},
    {STRIPS, "MIXER", "Mixer Strip", "Mx", {48, 252}, true},
    {STRIPS, "AUTOMIXER", "Automixer Strip", "Am", {80, 320}, true},
    {STRIPS, "CROSSOVER", "Crossover Strip", "Cs", {80, 320}, true},
    {STRIPS, "MINIDELAY", "Delay View", "De", {64, 48}, true},
    {STRIPS, "MINIDYNAMICS", "Dynamics View", "Dy", {64, 48}, true},
    {STRIPS, "MINIEDIT", "Edit View", "Ev", {64, 48}, true},
    {STRIPS, "MINIEQ", "Equalizer View", "Qv", {64, 48}, true},
    {STRIPS, "MINIROUTING", "Routing View", "Ro", {64, 48}, true},
    {STRIPS, "MINIXOVER", "Crossover View", "Xv", {64, 48}, true},
    {INTERFACES, "INETWORK", "Network", "Nw", {32, 32}, false},
    {INTERFACES, "IMIDI", "MIDI", "Mi", {32, 32}, false},
    {INTERFACES, "ITELEPHONE", "Telephone", "Te", {32, 32}, false},
    {INTERFACES, "IMESSAGING", "Messaging", "Ms", {32, 32}, false},
    {INTERFACES, "IWAVEGENERATOR", "Wave Generator", "Wg", {32, 32}, false},
    {INTERFACES, "IWAVEIN", "Wave Input", "Wi", {32, 32}, false},
    {INTERFACES, "IWAVEOUT", "Wave Output", "Wo", {32, 32}, false},
    {INTERFACES, "XIPCHECK", "Host Check", "Hc", {32, 32}, false},
};
static_assert(std::size(ENTRIES) == 45);

} // namespace

std::span<const CatalogueEntry> Catalogue() {
    return ENTRIES;
}

const char* GroupName(CatalogueGroup group) {
    constexpr const char* NAMES[CATALOGUE_GROUPS] = {"Continuous values", "Buttons and text",
                                                     "Processing panels", "Strips and views", "Interfaces"};
    return NAMES[static_cast<int>(group)];
}

COLORREF GroupColour(CatalogueGroup group) {
    constexpr COLORREF COLOURS[CATALOGUE_GROUPS] = {RGB(36, 113, 190), RGB(31, 138, 92), RGB(176, 96, 20),
                                                    RGB(122, 82, 168), RGB(90, 98, 110)};
    return COLOURS[static_cast<int>(group)];
}
