// What the keywords of all classes take and refuse, and that what was taken comes back from a panel file.

#include "Panel/editing/PanelEdits.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Root.h"
#include "logic/text/Text.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/ControlClasses.h"

#include <algorithm>
#include <clocale>

TEST_SUITE_BEGIN("PropertyValues");

namespace {

// Saves a panel, loads it into another one and saves that. Both must be the same.
std::string SavedAgain(const TestPanel& panel) {
    const TestPanel second;
    const TraceCapture trace;
    const std::string saved = panel.Saved();
    CHECK(second.Open(saved) >= 0);
    CHECK(trace.All() == "");
    CHECK(a_LoadErrorCount(second.Root()) == 0);
    CHECK(second.Saved() == saved);
    return saved;
}

// The panel itself, and a control of every class that has a keyword table.
std::vector<HWND> Everyone(const TestPanel& panel) {
    std::vector<HWND> all{panel.Window()};
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        all.push_back(panel.Create(expected.name, expected.name));
    }
    return all;
}

// All that the object answers.
std::string AllValues(HWND window) {
    std::string all;
    for (const KEYWORDROW* row = ObjectOf(window).GetHostinfoTable(); row->keyword != nullptr; ++row) {
        all += std::string(row->keyword) + "=" + Text(window, row->keyword) + "\n";
    }
    return all;
}

// By a line and by a record.
void CheckRefused(HWND window, const std::string& keyword, std::string text) {
    INFO(ObjectOf(window).name, " ", keyword, "=", text.substr(0, 100));
    const std::string before = AllValues(window);
    TraceCapture trace;
    CHECK(Load(window, keyword + "=" + text) == 0);
    CHECK(trace.CountContaining("Error reading line " + keyword) == 1);
    text.resize(std::max<std::size_t>(text.size() + 1, TEXT_SIZE));
    CHECK(Send(window, COMMAND_SET, DATATYPE_TEXT, text.data(), keyword.c_str()) == 0);
    CHECK(AllValues(window) == before);
}

} // namespace

TEST_CASE("what a keyword takes, keeps and refuses") {
    // Lines, with what is answered where it is another, and "!" behind those that are refused.
    const std::pair<const char*, const char*> classes[] = {
        {"KNOB",
         "interval=20|interval=0|interval=-1!|relative=1|resolution=0.125|resolution=0|"
         "values=1,-2.5,3|values=|layer=u1|level=anything!|level=>layer=|properties=-5>properties=-5,100,0|"
         "properties=100,0,50>properties=100,0,100|properties= 5 , 30>properties=5,30,30"},
        {"FADER",
         "properties=-60>properties=-60,0,0|properties=loud!|resolution=.1230>resolution=0.123|"
         "resolution=0.12345!|resolution=.0005!|resolution=1e5!|resolution=1e400!|" // of five characters
         "setvalue=-12|knobheight=0!|knobheight=16385!|knobheight=16384|knobheight=1|fmt=%d!|fmt=%f %f!|"
         "fmt=loud!|fmt=%n!|fmt=%.1f dB, as loud as it gets....!!|"
         "fmt=%.1f dB, as loud as it "
         "gets....|values=1,,2,,3,>values="},
        {"METER",
         "properties=5>properties=5,0|properties=,7!|combine=min!|combine=avg|value=loud!| =-4>value=-4"},
        {"BRANGE",
         "low=30|high=20>high=30|high=150>high=100|low=>low=|properties=0,50>high=50|properties=100,-9,-20"
         ">properties=100,-9,-9|high=|low=-80>low=-9|low=x!|settable=both!|settable=all|rangecolor=!|"
         "state=0!"},
        {"REVMETER",
         "properties=0,-60,-99>properties=0,-60,-60|properties=-20>properties=-20,-60,-60|"
         "value=-3.5>value=-20|value=x!|settable=2!|settable=1|combine=avg|resolution=0.25|relative=1|"
         "values=1,-2.5,3|values="},
        {"FADING", "properties=-60>properties=-60,100,0|properties=5,1,3|properties=1,9,50>properties=1,9,9|"
                   "law=log|law=cubic!|"
                   "properties=0!|properties=8,-1!|law=linear|origin=loud!|origin=-2.5|origin=|"
                   "zones=0=0xff;-8=ff00>zones=-8=0x0000ff00;0=0x000000ff|zones=0!|zones=|barcolor=!|"
                   "barcolor=0x00010203|"
                   "style=segments|segment=1>segment=2|segment=5000>segment=1000|direction=up|direction=left|"
                   "direction=sideways!|"
                   "hold=-1>hold=0|hold=2000|fall=-1>fall=0|fall=12.5|fmt=%d!|fmt=%.1f "
                   "dB|textcolor=|backgroundcolor=|value=loud!|"
                   "value=-7>value=1|font=Tahoma!"},
        {"SCALE", "properties=-60>properties=-60,0|properties=x!|law=log!|properties=20000,20|law=log|"
                  "properties=0!|law=linear|step=-1>step=0|step=2.5|minor=12>minor=9|margin=-1>margin=0|"
                  "marks=0,-5, -10>marks=0,-5,-10|marks=loud!|marks=|side=above!|side=both|side=none|"
                  "fmt=%d!|fmt=%.1f|fmt=|font=Tahoma!|textcolor=|linecolor=0x00010203|backgroundcolor=red!|"
                  "beside=%n*FADER|beside=FADER;METER!|beside=|value=30|value=7>value=20|value=loud!"},
        {"SPINEDIT",
         "properties=-2.5>properties=-2.5,100,0|properties=10.5,0.1,99>properties=10.5,0.1,10.5|properties=0,"
         "x!|"
         "properties=0,1234567.9,1234567.8>properties=0,1234567.9,1234567.8|properties=5,5>properties=5,5,5|"
         "properties=0,10,3|value=-4>value=0|value=2.25|value=loud!|resolution=-1>resolution=0|resolution=0."
         "001|"
         "fmt=%d!|fmt=%.1f ms|fmt=|unit=dB|unit=0123456789012345678901234567890x!|readonly=2!|readonly=1|"
         "alignment=middle!|alignment=right|textcolor=red!|textcolor=0x0000ff00|backgroundcolor=0x00ffffff|"
         "font=Tahoma!"},
        {"MINIDELAY",
         "unit=in!|unit=ft|samplerate=0>samplerate=8000|samplerate=96000|maximum=0!|maximum=-1!|"
         "maximum=20.5|value=1,2.5 ft|value=x!|value=0,-3>value=0,0 ft|linecolor=!|font=Tahoma!"},
        {"MINIDYNAMICS", "mode=loud!|mode=gate|mode=expander|value=-30.5|value=7>value=0|value=x!|"
                         "value=-99>value=-80|textcolor=red!"},
        {"MINIEDIT", "caption=Gate|click=layer=u2|font=Tahoma!|textcolor=red!|linecolor=0x00010203|"
                     "backgroundcolor=!|picture=.\\Nothing.bmp!|value=loud!|value=1"},
        {"MINIEQ",
         "range=0.5>range=1|range=999>range=120|range=24|range=x!|samplerate=1>samplerate=8000|"
         "samplerate=96000|readonly=2!|readonly=1|datatype=channeleq|datatype=other>datatype=mastereq|"
         "linecolor=red!|caption=Tone|font=Tahoma!|value=0,PEQ!"},
        {"MINIXOVER", "value=OFF!|range=0.5>range=1|range=60|samplerate=1e9!|samplerate=44100|readonly=1|"
                      "function1=x;y|function3="},
        {"MINIROUTING",
         "inputs=0>inputs=1|inputs=65>inputs=64|outputs=x!|outputs=2|exclusive=2>exclusive=1|exclusive=0|"
         "value=3_2;64_1|value=1_3!|value=|routes=DSP*route%i_%02o|inputnames=DSP*in%i|outputnames=|value="
         "x!"},
        {"LED", "value=loud!|offthreshold=!|frames=1!|frames=65!|frames=64|onthreshold=-6|offthreshold=-9.5"},
        {"CONDITIONALLED",
         "condition=not a or (b=2)|condition=!|condition=a>!|condition=1<a<2!|condition=ab!|delayon=-1>"
         "delayon=0|delayon=99999999>delayon=86400000|delayoff=250|blink=70000>blink=60000|blink=0|latch=2>"
         "latch=1|latch=0|frames=65!|frames=3|litcolor=!|darkcolor=0x00010203|value=1!"},
        {"BIMAGELIST",
         "stretch=2>stretch=1|step=-1>step=0|step=1|wrap=0|frames=0>frames=1|frames=3|first=-7|first=x!|"
         "default=|default=5|default=1.5!|images=.\\Controls\\Nothing.bmp!|value=1.5!|value=-3|"
         "images=.\\Controls\\Knob.bmp;.\\Controls\\LED_red_16x16.bmp|images="},
        {"LISTSELECTION",
         "items=a=1;b\\;c=x|items=|file=.\\Nothing.txt!|file=.\\Controls\\Knob.bmp!|file=.\\Controls!|"
         "rows=-1>rows=0|rows=999>rows=200|numbers=0|confirm=Recall %s?|click=%n*value=%s|"
         "itemsfunction=AMP1*list|function1=AMP1*name|textcolor=|backgroundcolor=0x00102030|font=Tahoma!|"
         "value=1.5!|value=-3"},
        {"CLOCK",
         "backgroundcolor=0x00123456|backgroundcolor=!|backgroundcolor=red!|textcolor=0x00ffffff|"
         "textcolor=0x01000000!|caption=anything>caption=|click=exactly15bytes=|click=sixteen=16 bytes!|"
         "font=Tahoma,8|font=!|font=Tahoma!|font=,8!|font=Tahoma,0!|font=Tahoma,8,italic!|interval=700|"
         "interval=!|layer=u1,u3|layer=u99!|level=u2>layer=u2|level=no!"},
        {"BBUTTON",
         "captureperiod=5000>captureperiod=1000|captureperiod=99999999999>captureperiod=1000|"
         "captureperiod=250|captureaccel=20>captureaccel=10|captureaccel=0.1>captureaccel=0.5|"
         "captureaccel=2.5|captureaccel=inactive>captureaccel=2.5|captureperiod=-3>captureperiod=inactive|"
         "captureaccel=3>captureaccel=inactive|captureperiod=abc>captureperiod=inactive|"
         "properties=6>properties=6,0|properties=7,8|onvalue=9|onvalue=inactive>onvalue=9|value=12|"
         "onvalue=12>onvalue=inactive|" // the same as the off value
         "mode=inc>mode=increment|mode=d>mode=decrement|mode=>mode=absolute|confirm=a\\nb|"
         "dialogentries=1=2*3|font=tahoma,11,bold|font=tahoma!|"
         "textcolor=ff,0x00FF00>textcolorwhenunpressed=0x000000ff|textcolor=1,1000000!|textcolor=1!|"
         "textcolorwhenpressed=0xff000000!|ispressed=1!"},
        {"BTRISTATEBUTTON",
         "textcolor=0xffffff,0>textcolor=0x00ffffff,0x00000000|textcolorwhenreleased=0x00010203|"
         "textcolorwhenpressed=12345678901!|confirm=a>confirmwhenreleased=a|"
         "confirmwhenpressed=a\\tb>confirm=|font=Small Fonts,5|function1=Nobody*text|onvalue=-7|"
         "caption=MUTE|value=1!|value=on!|offvalue=3>value=3"},
        {"CONTACTBUTTON",
         "minimum=-1>minimum=0|minimum=4000000>minimum=3600000|maximum=1500|maximum=x!|toggle=2!|toggle=1|"
         "onvalue=-7|offvalue=3>value=3|value=loud!|textcolor=1!"},
        {"BRADIOBUTTON",
         "group=a, "
         "b|style=round!|style=button|confirm=a\\nb|onvalue=1.5!|onvalue=-3|value=-3|value=x!"},
        {"SWITCH", "positions=1!|positions=1,1!|positions=1,2,3,4!|positions= -1 ,0, 1>positions=-1,0,1|"
                   "positions=5,3>value=5|momentary=2!|momentary=1|caption=OFF;ON|value=7|value=x!"},
        {"BSTATIC",
         "datatype=x!|datatype=!|fmt=%d!|fmt=%f%f!|alignment=middle!|alignment=right|textcolor=red!|"
         "textcolor=0x0000ff00|backgroundcolor=0x1000000!|backgroundcolor=0x00ffffff|font=Tahoma!"},
        {"BEDIT", "readonly=2!|readonly=1|limits=-2.5,2.5|limits=5!|limits=|alignment=center|datatype=d|"
                  "value=6.6>value=7"},
        {"BEDIT2",
         "caption=a\\nb\\\\c|caption=C:\\temp>caption=C:\\\\temp|append=x>caption=C:\\\\temp\\nx|value=1\\n2|"
         "maximum=0>maximum=1|maximum=5000>maximum=4000|readonly=2!|readonly=1|wrap=2!|wrap=0|alignment="
         "middle!|"
         "alignment=right|textcolor=red!|backgroundcolor=0x00ffffff|font=Tahoma!"},
        {"BCOMBOBOX",
         "items=b=1;a|value=x|value=|sort=2!|sort=1|lines=0>lines=1|lines=500>lines=100|editable=2!|"
         "editable=1|itemsfunction=AMP1*list|textcolor=red!|backgroundcolor=0x00ffffff|font=Tahoma!"},
        {"DANTECONTROL",
         "value=01@Stage|itemsfunction=NET*rx1.items|function1=NET*rx1.state|confirm=Route %s?\\nSure?|"
         "textcolor=red!|backgroundcolor=0x00ffffff|font=Tahoma!"},
        {"EQ",
         "bw=bw|bw=quality>bw=q|datatype=ChannelEQ>datatype=channeleq|datatype=anything>datatype=mastereq|"
         "disableitems=3f>disableitems=0x3f|disableitems=x!|disableitems=0xfffffff0>disableitems=0x30|"
         "focus=yes>focus=1|focuscolor=ff>focuscolor=0x000000ff|properties=x!"},
        {"XOVER", "value=nothing,of,this!|value=!|focus=0"},
        {"XIPCHECK",
         "host=a.example; 10.0.0.1|host=a "
         "b!|host=a=b!|host=|timeout=1>timeout=10|timeout=99999>timeout=60000|"
         "timeout=250|tries=0>tries=1|tries=500>tries=100|visible=2!|visible=1|visible=x!|caption=FOH|"
         "click=Knob*value=1|value=1!|state=a!|time=1!"},
        {"IMESSAGING",
         "to=a@example.org; Desk|copy=b@example.org|subject=%n %v|text=a\\n%{AMP1*gain}|file=C:\\a.txt|file=|"
         "onvalue=3|onvalue=1.5!|limit=-1>limit=0|limit=2000>limit=1000|limit=x!|confirm=Sure?|value=-5|"
         "value=x!|"
         "status=sent!"},
        {"IWAVEOUT",
         "files=Temp\\a.wav;.\\b.wav|files=|files=C:\\a.wav!|files=..\\a.wav!|files=a;\\\\desk\\b.wav!|"
         "driver=Line|"
         "volume=3>volume=0|volume=-99>volume=-80|volume=-6.5|volume=loud!|loop=2>loop=1|loop=0|value=-1!|"
         "value=x!|"
         "position=1!|length=1!"},
        {"IWAVEIN",
         "file=Temp\\a.wav|file=!|file=C:\\a.wav!|format=48000hz,24BIT,mono>format=48000 Hz,24bit,Mono|"
         "format=96000 Hz,float,Stereo|format=48000!|format=48000 "
         "Hz,20bit,Mono!|maximum=0>maximum=1|maximum=5|"
         "driver=Line|record=1!|run=2!|run=x!|peak1=1!|recorded=a!|value=1!"},
        {"AUTOMIXER",
         "advanced=1|advanced=2!|details=0|value=-100>value=-80|value=-6.5|value=loud!|frozen=7>frozen=1|"
         "gatelevel=-33|gatelevel=99>gatelevel=18|holdtime=1500|holdtime=-1>holdtime=0|input=-3!|muted=1|"
         "priority=1|share=-3!|weighting=-4.5|weighting=25>weighting=24"},
        {"CROSSOVER",
         "highpass=link24>highpass=LINK24|highpass=6dB>highpass=BUTT6|highpass=loud!|highpass=OFF,80!|"
         "highcorner=1k2>highcorner=1200 Hz|highcorner=5 Hz>highcorner=20.0 Hz|highcorner=5 "
         "s!|lowpass=BUTT12|"
         "lowcorner=99999>lowcorner=20000 Hz|gain=-50>gain=-30|gain=loud!|inverted=2>inverted=1|"
         "delaytime=2,5>delaytime=2.5 ms|delaytime=3 "
         "parsec!|delaytime=off|bypass=1|bypass=0|signal=1!|value=7>"
         "value=1|value=x!"},
        {"SPEAKERCONTROL",
         "speakers=Main;Near|speakers=a;b;c;d;e;f;g;h;i!|speakers=|dim=-99>dim=-80|dim=3>dim=0|dim=-12.5|"
         "dim=loud!|talkdim=0|talkdim=2!|volume=-12.5|volume=20>volume=10|volume=nan!|muted=3>muted=1|summed="
         "1|"
         "summed=x!|dimmed=x!|talking=x!|value=x!"},
        {"MIXER", "mode=Output>mode=output|mode=Input>mode=input|stereo=maybe>stereo=no|stereo=Y>stereo=yes"},
    };
    const TestPanel panel;
    PanelEdits edits(panel.Root(), [](const std::string& told) { FAIL_CHECK(told); });
    ph_SetMode(panel.Root(), 1);
    for (const auto& [className, text] : classes) {
        HWND control = panel.Create(className, className);
        for (const std::string_view row : logic::SplitFields(text, '|')) {
            INFO(std::string(className), " ", std::string(row));
            const std::string line(row.substr(0, row.find('>')));
            const std::string answer(row.substr(row.find('>') + 1)); // all of it where there is none
            const auto valueAt = answer.find('=') + 1;
            if (row.ends_with('!')) {
                CheckRefused(control, line.substr(0, valueAt - 1),
                             line.substr(valueAt, line.size() - valueAt - 1));
                continue;
            }
            const std::string before = panel.Saved();
            CHECK(a_ApplyEdit(&ObjectOf(control), line.c_str()) == 1);
            CHECK(Text(control, answer.substr(0, valueAt - 1).c_str()) == answer.substr(valueAt));
            if (const std::string after = panel.Saved(); after != before) {
                CHECK(edits.Undo());
                CHECK(panel.Saved() == before);
                CHECK(edits.Redo());
                CHECK(panel.Saved() == after);
                control = panel.Find(className); // it may have been made anew
            }
        }
    }
    // Offsets that are loaded are appended, so that no line takes them back.
    LoadLines(panel.Find("FADER"), "relative=1");
    CHECK(a_ApplyEdit(&ObjectOf(panel.Find("FADER")), "values=1,,2,") == 1);
    CHECK(edits.Undo());
    CHECK(Text(panel.Find("FADER"), "values").empty());
    SavedAgain(panel);
}

TEST_CASE("a keyword takes what its row says, and nothing else") {
    const TestPanel panel;
    const std::vector<HWND> all = Everyone(panel);
    for (const char* className : {"FADING", "SCALE"}) {
        Load(panel.Find(className), "properties=20,20000"); // for which it takes each law
    }
    int checked = 0;
    for (HWND window : all) {
        const KEYWORDINFO* info = ObjectOf(window).GetKeywordInfo();
        REQUIRE(info != nullptr);
        const KEYWORDROW* const table = ObjectOf(window).GetHostinfoTable();
        for (const KEYWORDROW* row = table; row->keyword != nullptr; ++row, ++info) {
            const std::string keyword = row->keyword;
            INFO(ObjectOf(window).name, " ", keyword);
            CHECK(*info->sentence != '\0');
            if (row->handler == nullptr || row->handler == table->handler) {
                continue;
            }
            std::vector<std::string> bad;
            if (info->kind == KeywordKind::Integer && info->hasLimits) {
                bad = {std::to_string(static_cast<std::int64_t>(info->minimum) - 1),
                       std::to_string(static_cast<std::int64_t>(info->maximum) + 1)};
                CHECK(Load(window, keyword + "=" + std::to_string(static_cast<int>(info->minimum))) == 1);
            } else if (info->kind == KeywordKind::Colour) {
                bad = {"red", "0x1000000"};
                if (!info->mayBeEmpty) {
                    bad.emplace_back();
                }
            } else if (info->kind == KeywordKind::Typeface) {
                bad = {"", "Tahoma", ",8", "Tahoma,0", "Tahoma,8,italic"};
            } else if (keyword == "bitmap" && ObjectOf(window).name != "CLOCK") { // which lets the old one go
                bad = {".\\Controls\\Nothing.bmp"};
            } else if (info->kind == KeywordKind::Words) {
                for (const std::string_view word : logic::SplitFields(info->words, ',')) {
                    CHECK(Load(window, keyword + "=" + std::string(word)) == 1);
                    CHECK(Text(window, keyword.c_str()) == word);
                }
            }
            checked += bad.empty() && info->kind != KeywordKind::Words ? 0 : 1;
            for (const std::string& text : bad) {
                CheckRefused(window, keyword, text);
            }
        }
    }
    CHECK(checked > 40); // there is much to be checked
}

TEST_CASE("a number with anything behind it, or none at all, is refused as a whole") {
    const TestPanel panel;
    const std::vector<HWND> all = Everyone(panel);
    const std::pair<const char*, const char*> prepared[] = {
        {"KNOB", "relative=1|values=1,2.5"},
        {"FADER", "relative=1|values=1,,2.5,"},
        {"BSTATIC", "datatype=f|value=2.5|backgroundcolor=0x00ff0000"},
        {"BEDIT", "datatype=d|value=7|limits=0,10|textcolor=0x00ff0000"},
    };
    for (const auto& [name, lines] : prepared) {
        INFO(name, " ", lines);
        CHECK(LoadLines(panel.Find(name), lines));
    }
    CHECK(LoadLines(panel.Window(), "size=640,480|background=0x00402010|layer=u2,u5"));
    int checked = 0;
    for (HWND window : all) {
        for (const KEYWORDROW* row = ObjectOf(window).GetHostinfoTable(); row->keyword != nullptr; ++row) {
            const std::string keyword = row->keyword;
            const std::string value = Text(window, row->keyword);
            const bool isWord = keyword == "focus" || keyword == "captureperiod" || keyword == "bitmap" ||
                                keyword == "fmt" || keyword == "caption" || value == "BEDIT2"; // its text
            if (isWord || value.find_first_of("0123456789") == std::string::npos) {
                continue;
            }
            ++checked;
            for (const char* behind : {"g", ",x", " 1 2", ".."}) {
                CheckRefused(window, keyword, value + behind);
            }
            for (const char* none : {"x", "nan", "-inf", "1e+99", "--1", "0x"}) {
                CheckRefused(window, keyword, none);
            }
        }
    }
    CHECK(checked > 120); // the table would be of no use if it found nothing
    const std::pair<const char*, const char*> further[] = {
        {"KNOB", "properties=0,100,2,5"},      {"KNOB", "properties=-10,"},
        {"KNOB", "properties=-10,abc"},        {"METER", "properties=1,2,3"},
        {"BBUTTON", "properties=1.5"},         {"BBUTTON", "textcolor=0x1,0x2,0x3"},
        {"EQ", "properties=0,PEQ,6 dB,9 kHz"}, {"XOVER", "value=OFF,80 kHz"},
    };
    for (const auto& [name, line] : further) {
        const std::string text = line;
        CheckRefused(panel.Find(name), text.substr(0, text.find('=')), text.substr(text.find('=') + 1));
    }
    CHECK(Load(panel.Find("KNOB"), "interval= 12 ") == 1);
}

TEST_CASE("no keyword takes a control character") {
    const TestPanel panel;
    const std::vector<HWND> all = Everyone(panel);
    const std::string before = panel.Saved();
    for (HWND window : all) {
        const bool isPanel = window == panel.Window();
        const KEYWORDROW* table = ObjectOf(window).GetHostinfoTable();
        for (const KEYWORDROW* row = table; row->keyword != nullptr; ++row) {
            if (row->handler == nullptr || (row->handler == table->handler && !isPanel)) {
                continue; // what is merely shown becomes one line
            }
            for (const char code : {'\1', '\t', '\n', '\r', '\x1F', '\x7F'}) {
                CheckRefused(window, row->keyword, std::string("a") + code + "Knob*interval=7");
            }
        }
    }
    CHECK(panel.Saved() == before);
    CHECK(Load(panel.Find("BBUTTON"), "confirm=a\\nb\\tc") == 1);
    CHECK(Text(panel.Find("BBUTTON"), "confirm") == "a\\nb\\tc");
}

TEST_CASE("the longest value comes back, and a longer one is refused as a whole") {
    const TestPanel panel;
    // 273 addresses, which are as long as a value can be.
    const std::string longest = Repeated(272, "AMP1*level1000;") + "AMP1*level10000";
    REQUIRE(longest.size() == TEXT_SIZE - 1);
    HWND strip = panel.Create("MIXER", std::string(63, 'S').c_str());
    const struct {
        const char* className;
        const char* keyword;
        bool isList = false;
    } keywords[] = {
        {"KNOB", "connection", true}, {"KNOB", "function", true},   {"BTRISTATEBUTTON", "function1", true},
        {"XOVER", "function1", true}, {"XOVER", "function3", true}, {"BBUTTON", "caption"},
        {"BBUTTON", "confirm"},       {"BBUTTON", "click"},         {"BBUTTON", "dialogentries"},
        {"BSTATIC", "caption"},       {"BEDIT", "caption"},         {"BEDIT2", "caption"},
    };
    for (const auto& [className, keyword, isList] : keywords) {
        INFO(className, " ", keyword);
        HWND control = CreateControl(className, std::string(63, 'C').c_str(), strip, &ObjectOf(strip));
        const std::string line = std::string(keyword) + "=" + longest;
        CHECK(Load(control, line) == 1);
        CHECK(panel.Saved().find("*" + line + "\r\n") != std::string::npos);
        CheckRefused(control, keyword, longest + "x");
        const TraceCapture trace;
        CHECK(Load(control, line + ";y", LOAD_FROM_FILE) == 0);
        CHECK(trace.CountContaining("is longer than 4095 bytes") == 1);
        CHECK(trace.CountContaining("273 of its entries would fit") == (isList ? 1 : 0));
    }
    CHECK(Load(panel.Window(), "title=" + longest) == 1);
    CheckRefused(panel.Window(), "title", longest + "x");
    CHECK(SavedAgain(panel).find("title=" + longest + "\r\n") != std::string::npos);

    // A value that is sent is not cut either.
    HWND text = panel.Create("BSTATIC", "Text");
    REQUESTLIST requests;
    a_BuildRequestList({}, {"Text"}, &ObjectOf(text), requests);
    for (std::string value : {longest, longest + "x"}) {
        const int sent = a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, value.data(), nullptr);
        CHECK((sent != 0) == (value == longest));
        CHECK(Text(text) == longest);
    }
}

TEST_CASE("relative controls have as many bindings as their offsets can be saved") {
    const TestPanel panel;
    const std::string names = Repeated(292, "AMP1*a;");
    const std::string offsets = Repeated(292, "-1.17549e-38,");
    for (const char* className : {"KNOB", "FADER", "REVMETER"}) {
        INFO(className);
        HWND control = panel.Create(className, className);
        CHECK(Load(control, "function=" + names + "more") == 1);
        CheckRefused(control, "relative", "1");
        CHECK(Load(control, "function=" + names) == 1);
        CHECK(Load(control, "relative=1") == 1);
        CheckRefused(control, "function", names + "more");
        const TraceCapture trace;
        CHECK(Load(control, "connection=more") == 0);
        CHECK(trace.CountContaining("at most 292 functions and connections") == 1);
        CHECK(Load(control, "function=") == 1);
        CHECK(Load(control, "values=" + offsets) == 1);
        CHECK(Text(control, "values").size() > 292 * 13 - 2);
        CheckRefused(control, "values", offsets + "1");
    }
    // Offsets that are written longer than they were read do not get lost. (Those of the fader are taken anew
    // when its connections are loaded.)
    CHECK(Load(panel.Find("FADER"), "relative=0") == 1);
    CHECK(Load(panel.Find("KNOB"), "values=" + Repeated(292, "1e9,")) == 1);
    SavedAgain(panel);
}

TEST_CASE("a comma locale of the host changes nothing") {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-2.5,dB\n");
    const std::pair<const char*, const char*> lines[] = {
        {"KNOB", "properties=0,100,2.5|resolution=0.125|relative=1|values=1.5,-2.5"},
        {"FADER", "properties=-80,18,2.5|resolution=0.125"},
        {"SPINEDIT", "properties=-2.5,2.5,1.25|resolution=0.125|fmt=%.2f|unit=dB"},
        {"LED", "onthreshold=-6.5"},
        {"BBUTTON", "captureperiod=100|captureaccel=1.5"},
        {"BEDIT", "datatype=f|fmt=%.2f, dB|limits=-2.5,2.5|value=1.5"},
        {"EQ", "properties=0,PEQ,6 dB,80.5 Hz,1.5 dB,0.7"},
        {"XOVER", "value=LINK24,80.5 Hz,OFF,20000 Hz,-1.5 dB,normal,0,2.5 ms"},
        {"IWAVEGENERATOR", "signal=440.5 Hz,1000"},
    };
    const auto set = [&](const char* locale) {
        REQUIRE(std::setlocale(LC_ALL, locale) != nullptr);
        for (const auto& [name, text] : lines) {
            LoadLines(panel.Create(name, name), text);
        }
    };
    // All that is shown and answered.
    const auto state = [&] {
        std::string all = panel.Saved() + panel.Parameter("AMP1*gain") + "\n";
        for (HWND window : ChildrenOf(panel.Window())) {
            char text[200] = "";
            GetWindowTextA(window, text, sizeof text);
            all += std::string(text) + "\n" + (a_FromWindow(window) != nullptr ? AllValues(window) : "");
        }
        return all;
    };
    set("C");
    const std::string pointState = state();
    CHECK(pointState.find("80.5 Hz") != std::string::npos);
    CHECK(pointState.find("+1.5 dB") != std::string::npos);
    CHECK(pointState.find("1.50, dB") != std::string::npos);
    for (const auto& [name, line] : lines) {
        DestroyWindow(panel.Find(name));
    }
    set("German");
    REQUIRE(std::localeconv()->decimal_point == std::string(","));
    CHECK(state() == pointState);
    DestroyWindow(panel.Find("IWAVEGENERATOR")); // it refuses two of its own lines
    SavedAgain(panel);

    HWND fader = panel.Find("FADER"); // it writes the limit back into the text
    char beyond[TEXT_SIZE] = "99.5";
    Send(fader, COMMAND_SET, DATATYPE_TEXT, beyond);
    CHECK(beyond == std::string("18.000000"));
    CHECK(ph_SetParameter(panel.Root(), "AMP1*gain", "-6,5") == 0);
    CHECK(ph_SetParameter(panel.Root(), "AMP1*gain", "-6.5") == 1);
    CHECK(panel.Parameter("AMP1*gain") == "-6.5");
    std::setlocale(LC_ALL, before.c_str());
}

TEST_SUITE_END();
