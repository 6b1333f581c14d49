// The editor of a crossover channel.

#include "Controls/resources/resource.h"
#include "Panelhost/Clipboard.h"
#include "Panelhost/Root.h"
#include "logic/controls/Crossover.h"
#include "tests/windows/FormPanels.h"

#include <limits>

TEST_SUITE_BEGIN("XOver");

namespace {

using logic::Crossover;

constexpr int HIGH_PASS_TITLE = 100, HIGH_PASS_TYPE = 101, HIGH_PASS = 102, HIGH_PASS_SPIN = 103;
constexpr int LOW_PASS_TITLE = 104, LOW_PASS_TYPE = 105, LOW_PASS = 106, LOW_PASS_SPIN = 107;
constexpr int GAIN = 108, GAIN_SPIN = 109, DELAY = 110, DELAY_SPIN = 111, BYPASS = 112, POLARITY = 113;
constexpr const char* CHANNEL = "LINK24,80 Hz,OFF,20000 Hz,-3 dB,normal,0,2.5 ms";

std::string FiltersOf(const logic::CrossoverFilters& filters) {
    return "F " + logic::FiltersText(filters);
}
std::string DelayOf(const logic::DelaySetting& delay) {
    return "D " + logic::DelayText(delay);
}
std::string GainOf(const float& gain) {
    return "G " + std::to_string(gain).substr(0, std::to_string(gain).find('.') + 2);
}
std::string PolarityOf(const int& polarity) {
    return "P " + std::to_string(polarity);
}

// What the status bar says of the control, and what its parameter dialog says of the configuration.
std::string ShownState(HWND xover) {
    char status[TEXT_SIZE] = "";
    ObjectOf(xover).OnGetTooltip(0, reinterpret_cast<LPARAM>(status));
    HWND dialog = nullptr;
    SendMessageA(xover, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    const std::string shown = std::string(status) + "|" + TextOf(Item(dialog, IDC_CONFIGURATION_STATE));
    DestroyWindow(dialog);
    return shown;
}

// A control whose four slots are bound to a target each, in the state of CHANNEL.
struct Fixture {
    explicit Fixture(TestPanel::Visibility visibility = TestPanel::Hidden) : panel(visibility) {
        const Crossover all = *logic::ReadCrossover(CHANNEL, {});
        filters.held = all.filters;
        gain.held = all.gain;
        polarity.held = all.polarity;
        delay.held = all.delay;
        xover = panel.Create("XOVER", "Low");
        LoadLines(xover, std::string("interval=1000000|value=") + CHANNEL +
                             "|function=Filters|function1=Gain|function2=Polarity|function3=Delay");
    }
    std::string Sent() { return TakeAll(sent); }
    std::string Field(int id) const { return TextOf(Item(xover, id)); }

    TestPanel panel;
    std::vector<std::string> sent;
    ValueTarget<logic::CrossoverFilters> filters{panel, "Filters", DATATYPE_CROSSOVER, FiltersOf, sent};
    ValueTarget<float> gain{panel, "Gain", DATATYPE_FLOAT, GainOf, sent};
    ValueTarget<int> polarity{panel, "Polarity", DATATYPE_INTEGER, PolarityOf, sent};
    ValueTarget<logic::DelaySetting> delay{panel, "Delay", DATATYPE_DELAY, DelayOf, sent};
    HWND xover = nullptr;
};

// Configurations lie beside the library.
class Configuration {
public:
    Configuration(const char* name, const std::string& lines)
        : path_(ProgramFolder() + "Controls\\" + name + ".cfg") {
        REQUIRE(WriteBytes(path_, lines));
    }
    ~Configuration() { DeleteFileA(path_.c_str()); }
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;

private:
    std::string path_;
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "the children stand where they belong") {
    CHECK(SizeText(xover) == "292 x 170");
    CHECK(
        LayoutOf(xover) ==
        "100 Static HIPASS 5,5,141,20; 104 Static LOPASS 151,5,287,20; 0 Static RESPONSE 5,26,65,50 centred; "
        "0 Static RESPONSE 151,26,211,50 centred; 101 ComboBox  66,26,141,50 Tab; "
        "105 ComboBox  212,26,287,50 Tab; 0 Static FREQ 5,54,65,77 centred; 0 Static FREQ 151,54,211,77 "
        "centred; "
        "102 Edit  66,54 Tab scrolls; 103 msctls_updown32  102; 106 Edit  212,54 Tab scrolls; "
        "107 msctls_updown32  106; 0 Static GAIN TRIM 5,106,65,129 centred; 108 Edit  66,106 Tab scrolls; "
        "109 msctls_updown32  108; 0 Static POLARITY 5,134,65,157 centred; 113 ComboBox  66,134,141,158 Tab; "
        "0 Static DELAY 151,106,211,129 centred; 110 Edit  212,106 scrolls; 111 msctls_updown32  110; "
        "112 Button BYPASS 151,134,286,157");
    const std::string types =
        "thru,6dB,12dB/0.5,12dB/0.6,12dB/0.7,12dB/0.8,12dB/1.0,12dB/1.2,12dB/1.5,12dB/2.0,"
        "Bessel 12,Butter 12,Linkw 12,Bessel 18,Butter 18,Bessel 24,Butter 24,Linkw 24";
    CHECK(ItemsOf(Item(xover, HIGH_PASS_TYPE)) == types);
    CHECK(ItemsOf(Item(xover, LOW_PASS_TYPE)) == types);
    CHECK(ItemsOf(Item(xover, POLARITY)) == "normal,inverted");
    CHECK(Picture(xover).At(5, 85) == RGB(0, 0, 0));
    CHECK(Picture(xover).At(286, 86) == RGB(255, 255, 255));
}

TEST_CASE_FIXTURE(Fixture, "a record is shown and goes out in four parts") {
    CHECK(Sent().empty());
    CHECK(Load(xover, "value=S12Q05,99.96,BESS24,1600,+6,inverted,1,120 samples") == 1);
    CHECK(Sent() == "F S12Q05,99.96 Hz,BESS24,1600 Hz | G 6.0 | P 1 | D 1,120 samples");
    CHECK(TextOf(Item(xover, POLARITY)) == "inverted");
    CHECK(SendMessageA(Item(xover, HIGH_PASS_TYPE), CB_GETCURSEL, 0, 0) == 2);
    CHECK(SendMessageA(Item(xover, LOW_PASS_TYPE), CB_GETCURSEL, 0, 0) == 15);
    CHECK(Field(HIGH_PASS) + "|" + Field(LOW_PASS) + "|" + Field(GAIN) + "|" + Field(DELAY) ==
          "100.0 Hz|1600 Hz|+6.0 dB|120 samples");
    CHECK_FALSE((IsWindowEnabled(Item(xover, DELAY)) || IsWindowEnabled(Item(xover, DELAY_SPIN))));
    CHECK(SendMessageA(Item(xover, BYPASS), BM_GETCHECK, 0, 0) == BST_CHECKED);

    Crossover held;
    CHECK(Send(xover, COMMAND_GET, DATATYPE_CROSSOVER, &held) == 1);
    CHECK(Send(xover, COMMAND_GET, DATATYPE_CROSSOVER, &held) == 0);
    CHECK(Send(xover, COMMAND_SET, DATATYPE_CROSSOVER, &held) == 1);
    CHECK(Sent().empty()); // equal
    held.gain = std::numeric_limits<float>::quiet_NaN();
    CHECK(Send(xover, COMMAND_SET, DATATYPE_CROSSOVER, &held) == 0);
    CHECK(Load(xover, "gain=BUTT6") == 0); // text for no keyword of it
    CHECK(Sent().empty());
}

TEST_CASE_FIXTURE(Fixture, "what is typed and stepped is limited, shown and sent to its slot") {
    const Entry rows[] = {
        {",", HIGH_PASS, "5", 0, "20 Hz", "F LINK24,20 Hz,OFF,20000 Hz"},
        {",", LOW_PASS, "1600 Hz", 0, "1600 Hz", "F LINK24,80 Hz,OFF,1600 Hz"},
        {",", GAIN, "+10", 0, "+6.0 dB", "G 6.0"},
        {",", DELAY, "7", 0, "7 ms", "D 0,7 ms"},
        {",", LOW_PASS, "1e6", 0, "20000 Hz", "F LINK24,80 Hz,OFF,20000 Hz"},
        {",,,,,,,0.5 samples", DELAY_SPIN, "", 1, "0 samples", "D 0,0 samples"},
        {",", GAIN, "loud", 0, "-3.0 dB", ""},
        {"OFF,20", HIGH_PASS_SPIN, "", -1, "20.2 Hz", "F OFF,20.2417 Hz,OFF,20000 Hz"},
        {",,,1000", LOW_PASS_SPIN, "", -1, "1017 Hz", "F LINK24,80 Hz,OFF,1016.52 Hz"},
        {",,,,5.8", GAIN_SPIN, "", -1, "+6.0 dB", "G 6.0"},
        {",", DELAY_SPIN, "10 cm", -1, "11 cm",
         "D 0,11 cm"}, // typed and not committed: it goes on from there
        {",,,,,,,11 ms", DELAY_SPIN, "10", -1, "11 ms", "D 0,11 ms"}, // and arrives at what is held already
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.value));
        CAPTURE(std::string(row.typed));
        Load(xover, std::string("value=") + CHANNEL);
        Load(xover, std::string("value=") + row.value);
        Sent();
        CHECK(Enter(xover, row) == row.shown);
        CHECK(Sent() == row.sent);
    }
}

TEST_CASE_FIXTURE(Fixture, "lists and the toggle send their slot") {
    ChooseItem(xover, HIGH_PASS_TYPE, 1);
    ChooseItem(xover, LOW_PASS_TYPE, 17);
    ChooseItem(xover, POLARITY, 1);
    ChooseItem(xover, HIGH_PASS_TYPE, -1);
    CHECK(Sent() == "F BUTT6,80 Hz,OFF,20000 Hz | F BUTT6,80 Hz,LINK24,20000 Hz | P 1");
    SendMessageA(Item(xover, BYPASS), BM_CLICK, 0, 0);
    CHECK(Sent() == "D 1,2.5 ms");
    CHECK_FALSE(IsWindowEnabled(Item(xover, DELAY)));
    SendMessageA(Item(xover, BYPASS), BM_CLICK, 0, 0);
    CHECK(IsWindowEnabled(Item(xover, DELAY)));
    CHECK(Sent() == "D 0,2.5 ms");
}

TEST_CASE("each slot is polled from its own function") {
    const TestPanel panel;
    panel.Declare("XO1*device=simulated\nXO1*filters=xoverfilters,,,LINK24,80 Hz,OFF,20000 Hz\n"
                  "XO1*gain=float,-30,6,-3,dB\nXO1*polarity=integer,0,5,1\nXO1*delay=delay,,,1,2.5 ms\n");
    const HWND xover = panel.Create("XOVER", "Low");
    const auto device = [&panel](const char* address, const char* value) {
        ph_SetParameter(panel.Root(), address, value);
        return IsMarked(panel.Find("Low"));
    };
    LoadLines(xover, "function=XO1*filters|function1=XO1*gain|function2=XO1*polarity");
    Load(xover, "value=BUTT24"); // before the first poll: the rest of the record is the device's
    CHECK(panel.Parameter("XO1*filters") == "BUTT24,80 Hz,OFF,20000 Hz");
    CHECK(panel.Parameter("XO1*gain") == "-3");
    Load(xover, "function=XO1*filters");
    ph_SetParameter(panel.Root(), "XO1*filters", "LINK24");
    TypeInto(xover, HIGH_PASS, "100");
    CHECK(panel.Parameter("XO1*filters") == "LINK24,100 Hz,OFF,20000 Hz");
    CHECK(!IsMarked(xover));
    CHECK(Text(xover, "value") == "LINK24,100 Hz,OFF,20000 Hz,-3 dB,inverted,0,0 ms");
    Load(xover, "function3=XO1*delay");
    SendMessageA(Item(xover, BYPASS), BM_CLICK, 0, 0); // nor has anybody asked for the delay
    CHECK(panel.Parameter("XO1*delay").ends_with(",2.5 ms"));
    CHECK(!device("XO1*delay", "0,120 samples"));
    CHECK(TextOf(Item(xover, DELAY)) == "120 samples");
    CHECK(device("XO1*polarity", "4")); // it is none
    CHECK(TextOf(Item(xover, POLARITY)).empty());
    CHECK(!device("XO1*polarity", "0"));
    CHECK(TextOf(Item(xover, POLARITY)) == "normal");
    Load(xover, "function1=XO9*gain");
    CHECK(device("XO1*filters", "BUTT6")); // the others are followed all the same
    CHECK(TextOf(Item(xover, HIGH_PASS_TYPE)) == "6dB");
}

TEST_CASE("connected controls have the same record") {
    const TestPanel panel;
    const HWND a = panel.Create("XOVER", "A");
    const HWND b = panel.Create("XOVER", "B");
    Load(a, "connection=B");
    Load(b, "connection=A");
    const TraceCapture trace;
    Load(a, std::string("value=") + CHANNEL);
    CHECK(Text(b) == CHANNEL);
    TypeInto(b, GAIN, "-6");
    ChooseItem(b, POLARITY, 1);
    TypeInto(a, DELAY, "4 m");
    CHECK(Text(a) == "LINK24,80 Hz,OFF,20000 Hz,-6 dB,inverted,0,4 m");
    CHECK(Text(b) == Text(a));
    CHECK(trace.All().empty());
}

TEST_CASE("of what cannot be reached a connected control keeps what it holds") {
    constexpr const char* OTHER = "BUTT24,40 Hz,BESS12,900 Hz,2 dB,inverted,1,5 ft";
    const struct {
        const char* gone;
        const char* edit; // of the other members
        const char* result;
    } rows[] = {
        {"function=GONE*p", ",,,,-9", "BUTT24,40 Hz,BESS12,900 Hz,-9 dB,inverted,1,5 ft"},
        {"function1=GONE*p", ",50", "LINK24,50 Hz,OFF,20000 Hz,2 dB,normal,0,2.5 ms"},
        {"function3=GONE*p", ",,,,-9", "LINK24,80 Hz,OFF,20000 Hz,-9 dB,normal,1,5 ft"},
        {"function3=GONE*p", ",,,,,,1,8 m", "LINK24,80 Hz,OFF,20000 Hz,-3 dB,normal,1,8 m"}}; // as a whole
    for (const auto& row : rows) {
        CAPTURE(row.gone);
        const TestPanel panel;
        const HWND a = panel.Create("XOVER", "A");
        const HWND b = panel.Create("XOVER", "B");
        OddDevice<logic::CrossoverFilters> filters(panel);
        filters.held = logic::ReadCrossover(CHANNEL, {})->filters;
        Load(b, std::string("value=") + OTHER);
        LoadLines(a, std::string("value=") + CHANNEL + "|interval=1000000|function=ODD*filters|" + row.gone +
                         "|connection=B|value=" + row.edit);
        CHECK(Text(b) == row.result);
    }
}

TEST_CASE_FIXTURE(Fixture, "unknown types, POLARITIES and units are put right by an edit of their part") {
    const HWND b = panel.Create("XOVER", "B");
    Load(b, "value=BUTT24,40,BESS12,900,2,inverted,1,5 ft");
    filters.held.highPass.type = 18;
    filters.held.lowPass.frequency = 1600.0F;
    polarity.held = 2;
    delay.held.unit = -1;
    CHECK(IsMarked(xover));
    Load(xover, "connection=B");
    CHECK(TextOf(Item(xover, HIGH_PASS_TYPE)).empty());
    CHECK(TextOf(Item(xover, LOW_PASS_TYPE)) == "thru");
    CHECK(TextOf(Item(xover, POLARITY)).empty());
    CHECK(Field(LOW_PASS) == "1600 Hz");
    CHECK(Sent().empty());
    TypeInto(xover, GAIN, "-9"); // of a part of its own: the others stay as they are
    CHECK(Sent() == "G -9.0");
    ChooseItem(xover, POLARITY, 0);
    CHECK(Sent() == "P 0");
    CHECK(TextOf(Item(xover, HIGH_PASS_TYPE)).empty());
    CHECK(Text(b) == "BUTT24,40 Hz,BESS12,900 Hz,-9 dB,normal,1,5 ft"); // what is unknown is not passed on
    TypeInto(xover, DELAY, "4");
    CHECK(Sent() == "D 0,4 ms");
    TypeInto(xover, LOW_PASS, "1700");
    CHECK(Sent() == "F LINK24,80 Hz,OFF,1700 Hz");
    CHECK(TextOf(Item(xover, HIGH_PASS_TYPE)) == "Linkw 24");
    CHECK(Text(b) == Text(xover));
    CHECK(!IsMarked(xover));
}

TEST_CASE_FIXTURE(Fixture, "configurations") {
    const TraceCapture trace;
    const Configuration good("TestGood", "# a comment\r\n\r\nvalue=BUTT24,1600,OFF,,-6\r\ninterval=250\r\n");
    const Configuration partly("TestPartly", "volume=BUTT6,100\r\nvalue=BESS12\r\ninterval=x\r\n");
    const Configuration damaged("TestDamaged", std::string("\x01\0BUTT6,100\r\nvalue=x\r\n,,,500\r\n", 31));
    CHECK(Load(xover, "config=TestGood") == 1);
    CHECK(Sent() == "F BUTT24,1600 Hz,OFF,20000 Hz | G -6.0 | P 0 | D 0,2.5 ms"); // once, at the end
    CHECK(Text(xover, "config") == "TestGood");
    const std::string before = Text(xover);
    for (const char* bad : {"..\\Demo", "TestDamaged", "C:x"}) {
        CAPTURE(std::string(bad));
        CHECK(Load(xover, std::string("config=") + bad) == 0);
        CHECK((Text(xover) == before && Text(xover, "config") == "TestGood"));
    }
    CHECK(Load(xover, "config=TestMissing") == 1); // the name stays, for the file may come back
    CHECK((Text(xover) == before && Text(xover, "config") == "TestMissing"));
    CHECK(trace.CountContaining("XOver configuration TestMissing: cannot be read") == 1);
    CHECK(ShownState(xover).ends_with("   (configuration TestMissing is missing)|file is missing"));
    CHECK(Sent().empty());
    CHECK(Load(xover, "config=TestPartly") == 1);
    CHECK(ShownState(xover).ends_with("|"));
    CHECK(Text(xover).starts_with("BESS12,1600 Hz"));
    CHECK(trace.CountContaining("Keyword not found: volume") == 1);
    for (const char* shipped : {"TwoWayLow", "TwoWayHigh", "Subwoofer80"}) {
        Sent();
        CHECK(Load(xover, std::string("config=") + shipped) == 1);
        CHECK(Sent() != "");
    }

    // A panel that is opened shows its configuration and then what the devices hold; it sends nothing.
    LoadLines(xover, "config=TestGood|function=XO1*filters");
    const TestPanel second;
    second.Declare("XO1*device=simulated\nXO1*filters=xoverfilters,,,LINK24,80 Hz,OFF,20000 Hz\n");
    REQUIRE(second.Open(panel.Saved()) >= 1);
    CHECK(a_LoadErrorCount(second.Root()) == 0);
    const HWND opened = second.Find("Low");
    CHECK(Text(opened, "config") == "TestGood");
    CHECK(Text(opened).starts_with("BUTT24,1600 Hz,OFF,0 Hz,-6 dB,normal"));
    CHECK(second.Parameter("XO1*filters") == "LINK24,80 Hz,OFF,20000 Hz");
    Poll(opened);
    CHECK(Text(opened).starts_with("LINK24,80 Hz,OFF,20000 Hz"));
}

TEST_CASE("Tab, the section with the focus and the keys") {
    Fixture fixture(TestPanel::Visible);
    const HWND xover = fixture.xover;
    const auto marked = [xover](int title) { return Picture(Item(xover, title)).At(1, 1) == RGB(0, 200, 0); };
    Load(xover, "focus=1");
    CHECK(marked(HIGH_PASS_TITLE));
    CHECK_FALSE(marked(LOW_PASS_TITLE));
    SetFocus(xover);
    SendMessageA(xover, WM_KEYUP, VK_TAB, 0);
    std::string ids;
    for (int i = 0; i < 6; ++i) {
        ids += std::to_string(GetDlgCtrlID(GetFocus())) + (marked(LOW_PASS_TITLE) ? "L " : "H ");
        PressKey(VK_TAB);
    }
    CHECK(ids == "101H 102H 105L 106L 108L 113L ");
    SendMessageA(Item(xover, HIGH_PASS_TITLE), WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
    SendMessageA(Item(xover, HIGH_PASS_TITLE), WM_LBUTTONUP, 0, At(5, 5));
    CHECK(GetFocus() == Item(xover, HIGH_PASS_TYPE));
    CHECK(marked(HIGH_PASS_TITLE));
}

TEST_CASE("a filter and a whole channel are copied from one panel to another") {
    Fixture from(TestPanel::Visible);
    Fixture to(TestPanel::Visible);
    Load(from.xover, "value=BESS18,440,S12Q20,880,-12,inverted,0,1 s");
    ChooseFromMenu(from.xover, HIGH_PASS_TITLE, COPY);
    ChooseFromMenu(to.xover, LOW_PASS_TYPE, PASTE);
    CHECK(to.Sent().starts_with("F LINK24,80 Hz,BESS18,440 Hz | "));
    CHECK(Text(to.xover) == "LINK24,80 Hz,BESS18,440 Hz,-3 dB,normal,0,2.5 ms");
    ChooseFromMenu(from.xover, LOW_PASS_TITLE, COPY);
    ChooseFromMenu(to.xover, HIGH_PASS_TITLE, PASTE);
    CHECK(Text(to.xover) == "S12Q20,880 Hz,BESS18,440 Hz,-3 dB,normal,0,2.5 ms");
    ChooseFromMenu(from.xover, BYPASS, COPY);
    ChooseFromMenu(to.xover, POLARITY, PASTE);
    CHECK(Text(to.xover) == Text(from.xover));
    to.Sent();
    const std::uint32_t bad[6] = {3, 0x7FC00000}; // no number
    PutOnClipboard(a_GetClipboardFormat("XOver filter"), bad, sizeof bad);
    ChooseFromMenu(to.xover, HIGH_PASS_TITLE, PASTE);
    CHECK(to.Sent().empty());
}

TEST_SUITE_END();
