// The table of all control classes.

#include "Controls/ClassTable.h"

#include "Controls/framework/Control.h"

extern const ControlImplementation barGraphControl;
extern const ControlImplementation clockControl;
extern const ControlImplementation comboBoxControl;
extern const ControlImplementation conditionalLedControl;
extern const ControlImplementation contactButtonControl;
extern const ControlImplementation crossoverStripControl;
extern const ControlImplementation danteControl;
extern const ControlImplementation editControl;
extern const ControlImplementation eqControl;
extern const ControlImplementation faderControl;
extern const ControlImplementation hostCheckControl;
extern const ControlImplementation imageListControl;
extern const ControlImplementation knobControl;
extern const ControlImplementation ledControl;
extern const ControlImplementation listSelectionControl;
extern const ControlImplementation messagingControl;
extern const ControlImplementation meterControl;
extern const ControlImplementation midiControl;
extern const ControlImplementation miniDelayControl;
extern const ControlImplementation miniDynamicsControl;
extern const ControlImplementation miniEditControl;
extern const ControlImplementation miniEqControl;
extern const ControlImplementation miniRoutingControl;
extern const ControlImplementation miniXoverControl;
extern const ControlImplementation mixerControl;
extern const ControlImplementation networkControl;
extern const ControlImplementation notesControl;
extern const ControlImplementation plainInteger;
extern const ControlImplementation pushButtonControl;
extern const ControlImplementation radioButtonControl;
extern const ControlImplementation rangeControl;
extern const ControlImplementation reverseMeterControl;
extern const ControlImplementation rockerSwitchControl;
extern const ControlImplementation scaleControl;
extern const ControlImplementation spinEditControl;
extern const ControlImplementation staticControl;
extern const ControlImplementation switchButtonControl;
extern const ControlImplementation telephoneControl;
extern const ControlImplementation waveGeneratorControl;
extern const ControlImplementation waveInControl;
extern const ControlImplementation waveOutControl;
extern const ControlImplementation xoverControl;
extern const WNDPROC listRow;

namespace {

constexpr UINT S1 = CS_GLOBALCLASS | CS_HREDRAW | CS_VREDRAW;
constexpr UINT S2 = S1 | CS_DBLCLKS;

constexpr int INTEGER = DATATYPE_INTEGER;
constexpr int FLOAT = DATATYPE_FLOAT;
constexpr int TEXT_TYPE = DATATYPE_TEXT;
constexpr int DATA = DATATYPE_DATA;
constexpr int BAND = DATATYPE_MASTER_EQ; // or that of a channel, as its keyword says
constexpr int NONE = DATATYPE_NONE;

constexpr auto CONTINUOUS = PaletteGroup::Continuous;
constexpr auto DISCRETE = PaletteGroup::Discrete;
constexpr auto PROCESSING = PaletteGroup::Processing;
constexpr auto STRIPS = PaletteGroup::Strips;
constexpr auto INTERFACES = PaletteGroup::Interfaces;

// In the order of registration.
constexpr ControlClass CLASSES[] = {
    {.name = "FADER",
     .displayName = "Fader",
     .implementation = &faderControl,
     .controlType = FLOAT,
     .style = S1,
     .palette = {CONTINUOUS, 2, "Fader", "Fa", {30, 200}, true}},
    {.name = "LED",
     .displayName = "Led",
     .implementation = &ledControl,
     .controlType = INTEGER,
     .style = S2,
     .palette = {DISCRETE, 6, "LED", "Le", {16, 16}, false}},
    {.name = "BBUTTON",
     .displayName = "PushButton",
     .implementation = &pushButtonControl,
     .controlType = INTEGER,
     .style = S1,
     .icon = "Controls\\PushButton.ico",
     .palette = {DISCRETE, 1, "Push Button", "Pb", {64, 24}, true}},
    {.name = "BSTATIC",
     .displayName = "Static",
     .implementation = &staticControl,
     .controlType = NONE,
     .style = S1,
     .palette = {DISCRETE, 8, "Text", "Tx", {96, 16}, false}},
    {.name = "BTRISTATEBUTTON",
     .displayName = "SwitchButton",
     .implementation = &switchButtonControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {DISCRETE, 2, "Switch Button", "Sb", {48, 24}, true}},
    {.name = "CONTACTBUTTON",
     .displayName = "ContactButton",
     .implementation = &contactButtonControl,
     .controlType = INTEGER,
     .style = S1,
     .icon = "Controls\\ContactButton.ico",
     .palette = {DISCRETE, 5, "Contact Button", "Cb", {64, 24}, true}},
    {.name = "METER",
     .displayName = "Meter",
     .implementation = &meterControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {CONTINUOUS, 3, "Meter", "Me", {16, 160}, false}},
    {.name = "BRADIOBUTTON",
     .displayName = "RadioButton",
     .implementation = &radioButtonControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {DISCRETE, 3, "Radio Button", "Rb", {96, 24}, true}},
    {.name = "CLOCK",
     .displayName = "Clock",
     .implementation = &clockControl,
     .controlType = NONE,
     .style = S1,
     .palette = {DISCRETE, 16, "Clock", "Ck", {96, 24}, false}},
    {.name = "LISTSELECTION",
     .displayName = "ListSelection",
     .implementation = &listSelectionControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {DISCRETE, 12, "List Selection", "Ls", {160, 96}, true}},
    {.name = "LSBBUTTON",
     .displayName = "LSPushButton",
     .implementation = &pushButtonControl,
     .controlType = INTEGER,
     .style = S1,
     .icon = "Controls\\PushButton.ico",
     .purpose = "Button of a row of a list selection; by itself a push button.",
     .palette = {DISCRETE, 13, "List Button", "Lb", {64, 24}, true},
     .part = &listRow},
    {.name = "LSBSTATIC",
     .displayName = "LSStatic",
     .implementation = &staticControl,
     .controlType = NONE,
     .style = S1,
     .purpose = "Number of a row of a list selection; by itself a line of text.",
     .palette = {DISCRETE, 14, "List Text", "Lt", {96, 16}, false},
     .part = &listRow},
    {.name = "DANTECONTROL",
     .displayName = "DanteControl",
     .implementation = &danteControl,
     .controlType = TEXT_TYPE,
     .style = S1,
     .palette = {PROCESSING, 4, "Dante Selector", "Da", {184, 24}, true}},
    {.name = "BCOMBOBOX",
     .displayName = "ComboBox",
     .implementation = &comboBoxControl,
     .controlType = TEXT_TYPE,
     .icon = "Controls\\ComboBox.ico",
     .systemClass = "COMBOBOX",
     .palette = {DISCRETE, 11, "Combo Box", "Co", {120, 120}, true}},
    {.name = "CONDITIONALLED",
     .displayName = "ConditionalLed",
     .implementation = &conditionalLedControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {DISCRETE, 7, "Conditional LED", "Cl", {16, 16}, false}},
    {.name = "BEDIT",
     .displayName = "Edit",
     .implementation = &editControl,
     .controlType = NONE,
     .icon = "Controls\\Edit.ico",
     .systemClass = "EDIT",
     .palette = {DISCRETE, 9, "Edit Field", "Ed", {96, 18}, true}},
    {.name = "BEDIT2",
     .displayName = "Edit2",
     .implementation = &notesControl,
     .controlType = TEXT_TYPE,
     .icon = "Controls\\Edit.ico",
     .background = ClassBackground::SystemColour2,
     .systemClass = "EDIT",
     .palette = {DISCRETE, 10, "Edit Field 2", "E2", {160, 96}, true}},
    {.name = "EQ",
     .displayName = "EQ",
     .implementation = &eqControl,
     .controlType = BAND,
     .style = S1,
     .palette = {PROCESSING, 1, "Equalizer", "Eq", {125, 170}, true}},
    {.name = "FADING",
     .displayName = "BarGraph",
     .implementation = &barGraphControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {CONTINUOUS, 5, "Bar Graph", "Bg", {16, 160}, false}},
    {.name = "BIMAGELIST",
     .displayName = "ImageList",
     .implementation = &imageListControl,
     .controlType = INTEGER,
     .style = S2,
     .palette = {DISCRETE, 15, "Image List", "Il", {64, 64}, false}},
    {.name = "XIPCHECK",
     .displayName = "IPCheck",
     .implementation = &hostCheckControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {INTERFACES, 8, "Host Check", "Hc", {120, 24}, false}},
    {.name = "KNOB",
     .displayName = "Knob",
     .implementation = &knobControl,
     .controlType = FLOAT,
     .style = S1,
     .extraBytes = 4,
     .palette = {CONTINUOUS, 1, "Knob", "Kn", {47, 47}, true}},
    {.name = "IMESSAGING",
     .displayName = "Messaging",
     .implementation = &messagingControl,
     .controlType = INTEGER,
     .style = S2,
     .extraBytes = 4,
     .icon = "Controls\\Messaging.ico",
     .picture = "Controls\\Messaging.bmp",
     .palette = {INTERFACES, 4, "Messaging", "Ms", {32, 32}, false}},
    {.name = "MINIDELAY",
     .displayName = "MiniDelay",
     .implementation = &miniDelayControl,
     .controlType = NONE,
     .style = S2,
     .picture = "Controls\\MiniDelay.bmp",
     .image = "Controls\\MiniDelay.png",
     .palette = {STRIPS, 4, "Delay View", "De", {120, 48}, true}},
    {.name = "MINIDYNAMICS",
     .displayName = "MiniDynamics",
     .implementation = &miniDynamicsControl,
     .controlType = NONE,
     .style = S2,
     .picture = "Controls\\MiniDynamics.bmp",
     .image = "Controls\\MiniDynamics.png",
     .palette = {STRIPS, 5, "Dynamics View", "Dy", {144, 112}, true}},
    {.name = "MINIEDIT",
     .displayName = "MiniEdit",
     .implementation = &miniEditControl,
     .controlType = NONE,
     .style = S2,
     .picture = "Controls\\MiniEdit.bmp",
     .image = "Controls\\MiniEdit.png",
     .palette = {STRIPS, 6, "Edit View", "Ev", {96, 72}, true}},
    {.name = "MINIEQ",
     .displayName = "MiniEQ",
     .implementation = &miniEqControl,
     .controlType = NONE,
     .style = S2,
     .picture = "Controls\\MiniEQ.bmp",
     .image = "Controls\\MiniEQ.png",
     .palette = {STRIPS, 7, "Equalizer View", "Qv", {240, 128}, true}},
    {.name = "MINIROUTING",
     .displayName = "MiniRouting",
     .implementation = &miniRoutingControl,
     .controlType = NONE,
     .style = S2,
     .picture = "Controls\\MiniRouting.bmp",
     .image = "Controls\\MiniRouting.png",
     .palette = {STRIPS, 8, "Routing View", "Ro", {200, 168}, true}},
    {.name = "MINIXOVER",
     .displayName = "MiniXOver",
     .implementation = &miniXoverControl,
     .controlType = NONE,
     .style = S2,
     .picture = "Controls\\MiniXOver.bmp",
     .image = "Controls\\MiniXOver.png",
     .palette = {STRIPS, 9, "Crossover View", "Xv", {240, 128}, true}},
    {.name = "INETWORK",
     .displayName = "Network",
     .implementation = &networkControl,
     .controlType = NONE,
     .style = S1,
     .extraBytes = 4,
     .icon = "Controls\\Network.ico",
     .background = ClassBackground::Null,
     .picture = "Controls\\Network.bmp",
     .palette = {INTERFACES, 1, "Network", "Nw", {32, 32}, false}},
    {.name = "BRANGE",
     .displayName = "Range",
     .implementation = &rangeControl,
     .controlType = FLOAT,
     .style = S1,
     .palette = {CONTINUOUS, 7, "Range", "Ra", {160, 24}, true}},
    {.name = "SWITCH",
     .displayName = "RockerSwitch",
     .implementation = &rockerSwitchControl,
     .controlType = INTEGER,
     .style = S1,
     .extraBytes = 4,
     .icon = "Controls\\RockerButton.ico",
     .background = ClassBackground::Null,
     .palette = {DISCRETE, 4, "Rocker Switch", "Rs", {32, 48}, true}},
    {.name = "SCALE",
     .displayName = "Scale",
     .implementation = &scaleControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {CONTINUOUS, 8, "Scale", "Sc", {32, 200}, false}},
    {.name = "SPEAKERCONTROL",
     .displayName = "SpeakerControl",
     .implementation = &plainInteger,
     .controlType = INTEGER,
     .style = S1,
     .purpose = "Loudspeaker selector.",
     .palette = {PROCESSING, 3, "Speaker Selector", "Ss", {160, 96}, true}},
    {.name = "SPINEDIT",
     .displayName = "SpinEdit",
     .implementation = &spinEditControl,
     .controlType = FLOAT,
     .style = S1,
     .palette = {CONTINUOUS, 6, "Spin Edit", "Sp", {80, 24}, true}},
    {.name = "ITELEPHONE",
     .displayName = "Telephone",
     .implementation = &telephoneControl,
     .controlType = NONE,
     .style = S2,
     .extraBytes = 4,
     .icon = "Controls\\Telephone.ico",
     .picture = "Controls\\Telephone.bmp",
     .palette = {INTERFACES, 3, "Telephone", "Te", {32, 32}, false}},
    {.name = "IWAVEGENERATOR",
     .displayName = "WaveGenerator",
     .implementation = &waveGeneratorControl,
     .controlType = INTEGER,
     .style = S1,
     .icon = "Controls\\WaveGenerator.ico",
     .picture = "Controls\\WaveGenerator.bmp",
     .palette = {INTERFACES, 5, "Wave Generator", "Wg", {32, 32}, false}},
    {.name = "IWAVEIN",
     .displayName = "WaveIn",
     .implementation = &waveInControl,
     .controlType = DATA,
     .style = S1,
     .icon = "Controls\\WaveIn.ico",
     .picture = "Controls\\WaveIn.bmp",
     .palette = {INTERFACES, 6, "Wave Input", "Wi", {32, 32}, false}},
    {.name = "IMIDI",
     .displayName = "Midi",
     .implementation = &midiControl,
     .controlType = DATA,
     .style = S1,
     // Deliberately with the icon of the sound output.
     .icon = "Controls\\WaveOut.ico",
     .picture = "Controls\\midi.bmp",
     .palette = {INTERFACES, 2, "MIDI", "Mi", {32, 32}, false}},
    {.name = "IWAVEOUT",
     .displayName = "WaveOut",
     .implementation = &waveOutControl,
     .controlType = INTEGER,
     .style = S1,
     .icon = "Controls\\WaveOut.ico",
     .picture = "Controls\\WaveOut.bmp",
     .palette = {INTERFACES, 7, "Wave Output", "Wo", {32, 32}, false}},
    {.name = "XOVER",
     .displayName = "XOver",
     .implementation = &xoverControl,
     .controlType = DATATYPE_CROSSOVER,
     .style = S1,
     .palette = {PROCESSING, 2, "Crossover Filter", "Xo", {292, 170}, true}},
    {.name = "CROSSOVER",
     .displayName = "CrossOver",
     .implementation = &crossoverStripControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {STRIPS, 3, "Crossover Strip", "Cs", {72, 252}, true}},
    {.name = "MIXER",
     .displayName = "Mixer",
     .implementation = &mixerControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {STRIPS, 1, "Mixer Strip", "Mx", {48, 252}, true}},
    {.name = "AUTOMIXER",
     .displayName = "AutoMixer",
     .implementation = &plainInteger,
     .controlType = INTEGER,
     .style = S1,
     .purpose = "Automatic mixer strip.",
     .palette = {STRIPS, 2, "Automixer Strip", "Am", {80, 320}, true}},
    {.name = "REVMETER",
     .displayName = "RevMeter",
     .implementation = &reverseMeterControl,
     .controlType = INTEGER,
     .style = S1,
     .palette = {CONTINUOUS, 4, "Reverse Meter", "Rm", {16, 160}, false}},
};
static_assert(std::size(CLASSES) == 45);

} // namespace

std::span<const ControlClass> ControlClasses() {
    return CLASSES;
}
