#include "tests/faults/Scenery.h"

#include <span>

namespace {

constexpr const char* DEVICES = "AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n"
                                "AMP1*mute=integer,0,1,0\nAMP1*name=text,,,Left and right\n"
                                "AMP1*input=float,-80,18,-80,dB\nAMP1*input=wave,programme,-40,0,600\n"
                                "AMP1*band=channeleq,,,0,PEQ,6 dB,1000 Hz,0 dB,0.7\n"
                                "AMP1*filters=xoverfilters,,,LINK24,80 Hz,OFF,20000 Hz\n"
                                "AMP1*delay=delay,,,0,2.5 ms\n";

constexpr const char* FUNCTIONS[] = {"AMP1*gain",    "AMP1*mute",  "AMP1*name",   "AMP1*input",  "AMP1*band",
                                     "AMP1*filters", "AMP1*delay", "AMP1*online", "AMP1*nosuch", "amp2*gain"};

constexpr const char* NUMBERS[] = {"0",           "1",          "-1",   "0.5",   "-12.25", "2147483647",
                                   "-2147483648", "2147483648", "1e38", "-1e39", "nan",    "inf",
                                   "0x7fffffff",  "0x00ffffff", "0:00", "10 ms"};
constexpr const char* LISTS[] = {"-5,5",      "0,100,50",   "100,0,50",       "5,3,1,2,4,6,8",
                                 ",,,",       "440 Hz,100", "u1,u64",         "u65",
                                 "a;;b*;*;=", "C1*value=1", "C1;C2*value;C0", "C1*bitmap;C3*name"};
constexpr const char* FORMATS[] = {"%n*C1", "%n", "%s%s%n%d", "%.1f dB", "%9999f", "a\\nb\\tc"};
constexpr const char* NAMES[] = {"avg", "max", "C0", "Arial,8", "tahoma,999", ".\\Controls"};
constexpr const char* LONGER[] = {".\\Controls\\KNOB_blue.bmp",  ".\\Controls\\nosuch.bmp",
                                  ".\\Controls\\Panel_dark.png", "AMP1*gain;AMP1*mute",
                                  "PEQ,6 dB,1000 Hz,0 dB,0.7",   "LINK24,80 Hz,OFF,1 Hz"};

} // namespace

std::string Described(HWND control) {
    char className[32];
    GetClassNameA(control, className, sizeof className);
    return className + (" " + ObjectOf(control).name);
}

std::string RandomValue(Random& random, const std::string& present) {
    // Around the sizes of texts, names and lines.
    constexpr int SIZES[] = {15, 63, 64, 127, 128, 255, 259, 260, 1023, 4000, 4094, 4095, 4096, 5000};
    const std::span<const char* const> words[] = {NUMBERS, LISTS, FORMATS, NAMES, LONGER};
    switch (random.Below(8)) {
    case 0:
        return present;
    case 1:
        return "";
    case 2:
        return std::to_string(random.Below(2000) - 1000) + (random.OneIn(2) ? ".125" : "");
    case 3:
        return std::string(static_cast<std::size_t>(random.Pick(SIZES)), random.OneIn(2) ? 'x' : '9');
    case 4:
        return random.Bytes(40);
    default:
        return random.Pick(random.Pick(words));
    }
}

Scenery::Scenery(Random& random, int count, char letter) {
    panel.Declare(DEVICES);
    for (int i = 0; i < count; ++i) {
        const char* className = random.Pick(EXPECTED_CLASSES).name;
        Doing("create %s", className);
        HWND control = panel.Create(className, (letter + std::to_string(i)).c_str());
        Expect(control != nullptr, "%s is not created", className);
    }
    for (int i = 0; i < 2 * count; ++i) {
        HWND control = Control(random);
        const std::string line = random.OneIn(2) ? std::string("function=") + random.Pick(FUNCTIONS)
                                                 : "connection=C" + std::to_string(random.Below(count)) +
                                                       (random.OneIn(2) ? "*value" : "");
        Doing("bind: %s", line.c_str());
        Load(control, line, LOAD_FROM_FILE);
    }
}

HWND Scenery::Control(Random& random) const {
    std::vector<HWND> controls;
    for (const HOSTINFO* object : a_ListHostinfos(panel.Root())) {
        if (object->kind == KIND_CONTROL) {
            controls.push_back(object->window);
        }
    }
    return controls.empty() ? nullptr : random.Pick(controls);
}

std::string Scenery::Line(Random& random, HWND control) {
    std::vector<std::string> keywords{"", "nosuch", "connection", "function", "layer"};
    for (const KEYWORDROW* row = ObjectOf(control).GetHostinfoTable(); row->keyword != nullptr; ++row) {
        keywords.emplace_back(row->keyword);
    }
    const std::string keyword = random.Pick(keywords);
    const std::string value = RandomValue(random, Text(control, keyword.c_str()));
    return keyword.empty() ? value : keyword + "=" + value;
}

void Scenery::LoadLine(Random& random, HWND control, WPARAM mode) {
    const std::string line = Line(random, control);
    Doing("line %s to %s", Shown(line).c_str(), Described(control).c_str());
    Load(control, line, mode);
}
