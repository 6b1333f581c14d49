// The editor of an equaliser band: its fields, and what they exchange with others.

#include "Panelhost/Editing.h"
#include "tests/windows/EqFixture.h"

#include <limits>

TEST_SUITE_BEGIN("EQ");

TEST_CASE_FIXTURE(EqFixture, "the children stand where they belong") {
    CHECK(SizeText(eq) == "125 x 170");
    CHECK(LayoutOf(eq) ==
          "0 Static Band 1 5,5,120,20; 0 Static TYPE 5,26,40,50 centred; 100 ComboBox  45,26,120,50 Tab; "
          "0 Static GAIN 5,55,40,78 centred; 101 Edit  45,55 Tab scrolls; 106 msctls_updown32  101; "
          "0 Static FREQ 5,84,45,107 centred; 102 Edit  45,84 Tab scrolls; 107 msctls_updown32  102; "
          "0 Static Q 5,113,45,136 centred; 103 Edit  45,113 Tab scrolls; 108 msctls_updown32  103; "
          "0 Static SLOPE 5,113,45,137 hidden centred; 104 ComboBox  45,113,120,137 hidden Tab; "
          "105 Button BYPASS 5,142,120,165 Tab");
    const HWND caption = FindWindowExA(eq, nullptr, "STATIC", "Band 1");
    SetWindowTextA(eq, "Low");
    CHECK(TextOf(caption) == "Low");
}

TEST_CASE_FIXTURE(EqFixture, "each type shows what it has") {
    const struct {
        const char* type;
        const char* slope;
        bool gain, q;
        const char* slopes; // empty where there is no list
        const char* place;
    } rows[] = {{"PEQ", "6", true, true, "", ""},
                {"Loshelv", "12", true, false, "6dB/Oct,12dB/Oct", "45,113,120,137"},
                {"Hipass", "6", false, false, "6dB/Oct,12dB/Oct", "45,55,120,79"},
                {"Lopass", "12", false, true, "6dB/Oct,12dB/Oct", "45,55,120,79"},
                {"Allpass", "6", false, false, "first,second", "45,55,120,79"},
                {"PEQ", "12", true, true, "", ""}};
    for (const auto& row : rows) {
        CAPTURE(std::string(row.type));
        Load(eq, std::string("properties=0,") + row.type + "," + row.slope);
        CHECK(lstrcmpiA(TextOf(Item(eq, TYPES)).c_str(), row.type) == 0);
        CHECK((IsShown(Item(eq, GAIN)) == row.gain && IsShown(Item(eq, GAIN_SPIN)) == row.gain));
        CHECK((IsShown(Item(eq, Q)) == row.q && IsShown(Item(eq, Q_SPIN)) == row.q));
        CHECK(IsShown(Item(eq, FREQUENCY)));
        CHECK(IsShown(Item(eq, SLOPES)) == (*row.slopes != '\0'));
        if (*row.slopes != '\0') {
            CHECK(ItemsOf(Item(eq, SLOPES)) == row.slopes);
            CHECK(PlaceOf(Item(eq, SLOPES)) == row.place);
            CHECK(SendMessageA(Item(eq, SLOPES), CB_GETCURSEL, 0, 0) == (row.slope == std::string("12")));
            CHECK(FindWindowExA(eq, nullptr, "STATIC", *row.slopes == 'f' ? "ORDER" : "SLOPE") != nullptr);
        }
    }
}

TEST_CASE("the types that are offered depend on datatype and device") {
    const TestPanel panel;
    const HWND eq = panel.Create("EQ", "Band");
    const struct {
        const char* datatype;
        const char* function;
        LRESULT type;
        const char* items;
    } rows[] = {{"mastereq", "DSP*band", 30, "PEQ,Loshelv,Hishelv,Hipass,Lopass"},
                {"ChannelEQ", "DSP_ZQACON*band", 32, "PEQ,Loshelv,Hishelv,Hipass,Lopass,Allpass"},
                {"channeleq", "zqbcon_left_2*band", 32, "PEQ,Loshelv,Hishelv,Hipass,Lopass"},
                {"", "ZQACON*band", 30, "PEQ,Loshelv,Hishelv,Hipass"},
                {"", "ZQACONX*band", 30, "PEQ,Loshelv,Hishelv,Hipass,Lopass"},
                {"anything", "", 30, "PEQ,Loshelv,Hishelv,Hipass,Lopass"}};
    for (const auto& row : rows) {
        CHECK(LoadLines(eq, std::string("datatype=") + row.datatype + "|function=" + row.function));
        CHECK(Text(eq, "function") == row.function);
        CHECK(SendMessageA(eq, CWM_GETCONTROLTYPE, 0, 0) == row.type);
        CHECK(ItemsOf(Item(eq, TYPES)) == row.items);
        CHECK(TextOf(Item(eq, TYPES)) == "PEQ");
    }
}

TEST_CASE_FIXTURE(EqFixture, "what is typed and stepped is limited, shown and sent") {
    const Entry rows[] = {
        // Of what is sent the last three members.
        {"PEQ,6 dB,1000,-3,0.7", GAIN, " +3.25 dB", 0, "+3.2 dB", "1000 Hz,3.25 dB,0.7"},
        {"Hipass,12 dB,1000,-3,0.7", Q, "5", 0, "2.0", "1000 Hz,-3 dB,2"},
        {"PEQ,6 dB,1000,-3,0.7", FREQUENCY, "5", 0, "20.0 Hz", "20 Hz,-3 dB,0.7"},
        {"PEQ,6 dB,1000,-3,0.7", FREQUENCY, "440", 0, "440.0 Hz", "440 Hz,-3 dB,0.7"},
        {"PEQ,6 dB,1000,-3,0.7", GAIN, "20", 0, "+12.0 dB", "1000 Hz,12 dB,0.7"},
        {"PEQ,6 dB,1000,-3,0.7", GAIN, "loud", 0, "-3.0 dB", ""},
        {"PEQ,6 dB,1000,-3,0.7", GAIN_SPIN, "", -1, "-2.5 dB", "1000 Hz,-2.5 dB,0.7"},
        {"PEQ,6 dB,20,0,0.7", FREQUENCY_SPIN, "", -1, "20.2 Hz", "20.2417 Hz,0 dB,0.7"},
        {"PEQ,6 dB,20000,0,0.7", FREQUENCY_SPIN, "", -1, "20000 Hz", ""},
        {"PEQ,6 dB,1000,0,0.7", Q_SPIN, "", -1, "0.8", "1000 Hz,0 dB,0.8"},
    };
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        for (const auto& row : rows) {
            CAPTURE(std::string(row.value));
            CAPTURE(std::string(row.typed));
            Load(eq, std::string("properties=0,") + row.value);
            Sent();
            CHECK(Enter(eq, row, key) == row.shown);
            const std::string sentBand = Sent();
            CHECK(sentBand.substr(std::min(sentBand.size(), sentBand.find(" dB,") + 4)) == row.sent);
        }
    }
}

TEST_CASE("a field that is left commits what was typed") {
    EqFixture fixture(TestPanel::Visible);
    LeaveField(fixture.eq, GAIN, "-6.5");
    CHECK(fixture.Sent() == "0,PEQ,6 dB,1000 Hz,-6.5 dB,0.7");
    Load(fixture.eq, "properties=0,PEQ,6,1000,-3.14,0.7");
    fixture.Sent();
    LeaveField(fixture.eq, GAIN, "-3.1 dB"); // as it was shown: nothing was typed
    CHECK(fixture.Sent().empty());
    CHECK(fixture.Band() == "0,PEQ,6 dB,1000 Hz,-3.14 dB,0.7");
    TypeInto(fixture.eq, GAIN, "-3.1 dB"); // Enter sends it once more, with the digits that are not shown
    CHECK(fixture.Sent() == "0,PEQ,6 dB,1000 Hz,-3.14 dB,0.7");
}

TEST_CASE_FIXTURE(EqFixture, "the arrows themselves step, far more often than their range is long") {
    Load(eq, std::string("properties=") + BAND);
    Sent();
    const HWND spin = Item(eq, GAIN_SPIN);
    RECT arrows;
    GetClientRect(spin, &arrows);
    SendMessageA(spin, WM_LBUTTONDOWN, MK_LBUTTON, At(arrows.right / 2, 3));
    SendMessageA(spin, WM_LBUTTONUP, 0, At(arrows.right / 2, 3));
    DispatchCommands(eq);
    CHECK(Field(GAIN) == "-2.5 dB");
    for (int i = 0; i < 200; ++i) {
        SendMessageA(Item(eq, GAIN), WM_KEYDOWN, VK_DOWN, 0);
        SendMessageA(Item(eq, GAIN), WM_KEYUP, VK_DOWN, 0);
    }
    DispatchCommands(eq);
    CHECK(Field(GAIN) == "-18.0 dB");
    CHECK(sent.size() == 1 + 31);
}

TEST_CASE_FIXTURE(EqFixture, "bandwidth in place of Q") {
    Load(eq, "properties=0,PEQ,6 dB,1000,0,1");
    Sent();
    CHECK(Load(eq, "bw=bw") == 1);
    CHECK(Field(Q) == "1.39 Oct");
    CHECK(FindWindowExA(eq, nullptr, "STATIC", "BW") != nullptr);
    CHECK(Sent() == "0,PEQ,6 dB,1000 Hz,0 dB,1"); // committed again, unchanged by the two digits shown
    StepSpin(eq, Q_SPIN, -1);
    CHECK(Field(Q) == "1.49 Oct");
    TypeInto(eq, Q, "99");
    CHECK(Field(Q) == "6.67 Oct");
    TypeInto(eq, Q, "0.7213 Oct");
    CHECK(Load(eq, "bw=quality") == 1);
    CHECK(Field(Q) == "2.0");
    CHECK(FindWindowExA(eq, nullptr, "STATIC", "Q") != nullptr);
    Load(panel.Window(), "bandwidth=bw");
    CHECK(Text(panel.Create("EQ", "Other"), "bw") == "bw");
}

TEST_CASE_FIXTURE(EqFixture, "lists and the toggle send") {
    const struct {
        const char* band;
        int id; // 0: the toggle
        int item;
        const char* sent;
    } rows[] = {
        {"0,PEQ,6 dB,1000,-3,0.7", TYPES, 2, "0,Hishelv,6 dB,1000 Hz,-3 dB,0.7"},
        {"0,Hishelv,6 dB,1000,-3,0.7", SLOPES, 1, "0,Hishelv,12 dB,1000 Hz,-3 dB,0.7"},
        {"0,Hishelv,6 dB,1000,-3,0.7", SLOPES, -1, ""},
        {"0,Hishelv,6 dB,1000,-3,0.7", 0, 0, "1,Hishelv,6 dB,1000 Hz,-3 dB,0.7"},
        {"1,Hishelv,6 dB,1000,-3,0.7", 0, 0, "0,Hishelv,6 dB,1000 Hz,-3 dB,0.7"},
        {"0,PEQ,12 dB,1000,0,5", TYPES, 3, "0,Hipass,12 dB,1000 Hz,0 dB,2"}, // of 12 dB its Q is limited
        {"0,Lopass,6 dB,1000,0,5", SLOPES, 1, "0,Lopass,12 dB,1000 Hz,0 dB,2"}};
    for (const auto& row : rows) {
        CAPTURE(std::string(row.sent));
        Load(eq, std::string("properties=") + row.band);
        Sent();
        row.id != 0 ? ChooseItem(eq, row.id, row.item) : void(SendMessageA(Item(eq, BYPASS), BM_CLICK, 0, 0));
        SendMessageA(eq, WM_COMMAND, MAKEWPARAM(999, 0), 0);
        CHECK(Sent() == row.sent);
    }
    CHECK(Field(Q) == "2.0");
}

TEST_CASE_FIXTURE(EqFixture, "records and texts from outside") {
    CHECK(Load(eq, "properties=1,Hipass,12 dB,1000,0,0.7") == 1);
    CHECK(Band() == "1,Hipass,12 dB,1000 Hz,0 dB,0.7");
    CHECK(Sent() == Band());
    CHECK(Load(eq, "properties=1") == 1); // sent though nothing is new
    CHECK(Sent() == Band());
    CHECK(Load(eq, "gain=-6.5") == 0); // text for no keyword of it
    CHECK(Sent().empty());
    CHECK(Text(eq) == "1,Hipass,12 dB,1000 Hz,0 dB,0.7");
    CHECK(Load(eq, "value=0") == 1);
    CHECK(Sent() == "0,Hipass,12 dB,1000 Hz,0 dB,0.7");
    EqBand band{0, logic::Peak, 250.0F, 1.5F, 3.0F, 1};
    CHECK(Send(eq, COMMAND_SET, DATATYPE_MASTER_EQ, &band) == 0); // of the other kind
    CHECK(Send(eq, COMMAND_SET, DATATYPE_CHANNEL_EQ, &band) == 1);
    CHECK(Sent() == "0,PEQ,6 dB,250 Hz,1.5 dB,3");
    CHECK(Send(eq, COMMAND_SET, DATATYPE_CHANNEL_EQ, &band, "value") == 1);
    CHECK(Sent().empty()); // the one that is shown
    CHECK(Field(FREQUENCY) == "250 Hz");
    CHECK(Field(Q) == "3.0");
    constexpr float ODD = std::numeric_limits<float>::quiet_NaN();
    const EqBand bad[] = {{0, 6, 250.0F, 0.0F, 1.0F, 1},
                          {0, 0, 250.0F, 0.0F, 1.0F, 3},
                          {0, 0, ODD, 0.0F, 1.0F, 1},
                          {0, 0, 250.0F, ODD, 1.0F, 1},
                          {0, 0, 250.0F, 0.0F, ODD, 1}};
    for (EqBand record : bad) {
        CHECK(Send(eq, COMMAND_SET, DATATYPE_CHANNEL_EQ, &record) == 0);
    }
    CHECK(Sent().empty());
}

TEST_CASE("a poll follows the device, and marks what it cannot show") {
    const TestPanel panel;
    panel.Declare("EQ1*device=simulated\nEQ1*band=channeleq,,,1,Loshelv,12 dB,99.5 Hz,+4 dB,0.7\n");
    OddDevice<EqBand> odd(panel);
    const HWND eq = panel.Create("EQ", "Band");
    const auto field = [eq](int id) { return TextOf(Item(eq, id)); };
    LoadLines(eq, "function=EQ1*band|datatype=channeleq"); // of which another record is asked for then
    CHECK(!IsMarked(eq));
    CHECK(Text(eq, "properties") == "1,Loshelv,12 dB,99.5 Hz,4 dB,0.7");
    CHECK(field(GAIN) + field(FREQUENCY) + TextOf(Item(eq, SLOPES)) == "+4.0 dB99.5 Hz12dB/Oct");
    ph_SetParameter(panel.Root(), "EQ1*band", "0,Loshelv,12 dB,440,4,0.7");
    CHECK(!IsMarked(eq));
    CHECK(field(FREQUENCY) == "440 Hz");
    ph_SetParameter(panel.Root(), "EQ1*online", "0");
    CHECK(IsMarked(eq));
    CHECK(Picture(eq).At(9, 25) != RGB(212, 208, 200)); // the sign
    Load(eq, "function=ODD*band");
    odd.held = {0, 0, std::numeric_limits<float>::quiet_NaN(), 0.0F, 1.0F, 1};
    CHECK(IsMarked(eq));
    CHECK(Text(eq, "properties") == "0,Loshelv,12 dB,440 Hz,4 dB,0.7");
    TypeInto(eq, GAIN, "4"); // not sent: nobody knows what the rest should be
    CHECK(odd.sets == 0);
    odd.held = {0, 0, 250.0F, 0.0F, 1.0F, 1};
    CHECK(!IsMarked(eq));
    StepSpin(eq, FREQUENCY_SPIN, -1);
    CHECK(odd.sets == 1);
}

TEST_CASE("a band of an unknown type or slope is put right by the first edit") {
    const TestPanel panel;
    OddDevice<EqBand> odd(panel);
    const HWND eq = panel.Create("EQ", "Band");
    Load(eq, "datatype=channeleq");
    Load(eq, "function=ODD*band");
    const auto choose = [eq] { ChooseItem(eq, TYPES, 1); };
    const auto type = [eq] { TypeInto(eq, FREQUENCY, "300"); };
    const auto leave = [eq] { Load(eq, "bw=q"); };
    const struct {
        EqBand device;
        std::function<void()> edit;
        const char* result; // empty: nothing is sent
    } rows[] = {{{0, 6, 250.0F, 3.0F, 1.0F, 2}, type, "0,Loshelv,12 dB,300 Hz,3 dB,1"},
                {{0, -1, 250.0F, 3.0F, 1.0F, 2}, choose, "0,Loshelv,12 dB,250 Hz,3 dB,1"},
                {{0, 2, 250.0F, 3.0F, 1.0F, 3}, type, "0,Hishelv,12 dB,300 Hz,3 dB,1"},
                {{0, 6, 250.0F, 3.0F, 1.0F, 2}, leave, ""}};
    for (const auto& row : rows) {
        CAPTURE(row.device.type);
        odd.held = {0, 1, 440.0F, 4.0F, 0.7F, 2};
        CHECK(!IsMarked(eq));
        odd.held = row.device;
        odd.sets = 0;
        CHECK(IsMarked(eq));
        CHECK((TextOf(Item(eq, TYPES)) == "") == (row.device.type != 2));
        CHECK((TextOf(Item(eq, SLOPES)) == "") == (row.device.type == 2));
        CHECK(TextOf(Item(eq, FREQUENCY)) == "250 Hz");
        CHECK(odd.sets == 0);
        row.edit();
        CHECK(odd.sets == (*row.result != '\0' ? 1 : 0));
        CHECK(IsMarked(eq) == (*row.result == '\0'));
        CHECK((*row.result == '\0' || logic::EqBandText(odd.held) == row.result));
    }
}

TEST_CASE("a dropped file of properties is taken, and another one refused") {
    const TestFolder folder;
    const std::string properties =
        folder.Write("Saved.CFG", "# saved\r\nBand*interval=250\r\nBand*value=BUTT24,1600\r\n"
                                  "Band*properties=0,Hipass,12\r\nBand*gain=7\r\n");
    const std::string other = folder.Write("Saved.txt", "interval=300\r\n");
    static int changes;
    for (const char* className : {"EQ", "XOVER"}) {
        CAPTURE(className);
        const TestPanel panel;
        const HWND editor = panel.Create(className, "Band");
        a_SetEditListener(
            panel.Root(),
            [](int event, HOSTINFO*, void*) {
                changes += event == EDIT_CHANGED ? 1 : 0;
                return 1;
            },
            nullptr);
        const TraceCapture trace;
        for (const std::string& refused : {other + '\0', folder.Path("none.cfg") + '\0'}) {
            CHECK(Drop(editor, refused));
            CHECK(trace.CountContaining(refused.c_str()) >= 1);
        }
        CHECK(Text(editor, "interval") == "1000");
        changes = 0;
        CHECK(Drop(editor, properties + '\0'));
        CHECK(changes == 1); // so that one step of undo takes it back
        CHECK(Text(editor, "interval") == "250");
        CHECK(Text(editor).starts_with(className[0] == 'E' ? "0,Hipass,12 dB" : "BUTT24,1600 Hz"));
        CHECK(trace.CountContaining("Error reading line Band*gain=7") == 1);
    }
}

TEST_CASE("a field that is being typed in is left alone by a poll") {
    EqFixture fixture(TestPanel::Visible);
    SetFocus(Item(fixture.eq, GAIN));
    SetWindowTextA(Item(fixture.eq, GAIN), "-1");
    fixture.target.held.gain = 6.0F;
    fixture.target.held.q = 2.0F;
    Poll(fixture.eq);
    CHECK(fixture.Field(GAIN) == "-1");
    CHECK(fixture.Field(Q) == "2.0");
    CHECK(fixture.Band() == "0,PEQ,6 dB,1000 Hz,6 dB,2");
    SetFocus(Item(fixture.eq, TYPES));
    SendMessageA(Item(fixture.eq, TYPES), CB_SHOWDROPDOWN, TRUE, 0); // an open list holds up all
    CHECK(fixture.Sent() == "0,PEQ,6 dB,1000 Hz,-1 dB,2");
    fixture.target.held.gain = 3.0F;
    Poll(fixture.eq);
    CHECK(fixture.Field(GAIN) == "-1.0 dB");
    SendMessageA(Item(fixture.eq, TYPES), CB_SHOWDROPDOWN, FALSE, 0);
    Poll(fixture.eq);
    CHECK(fixture.Field(GAIN) == "+3.0 dB");
}

TEST_CASE("what a new control holds reaches no device") {
    const TestPanel panel;
    panel.Declare("EQ1*device=simulated\nEQ1*a=channeleq,,,0,Loshelv,12 dB,100 Hz,4 dB,0.7\n"
                  "EQ1*b=channeleq,,,0,Hishelv,6 dB,8000 Hz,1 dB,0.5\n");
    const auto create = [&](const char* function) {
        const HWND eq = panel.Create("EQ", "Band");
        LoadLines(eq, std::string("datatype=channeleq|function=") + function);
        return eq;
    };
    const std::pair<std::function<void(HWND)>, const char*> edits[] = {
        // before the first poll
        {[](HWND eq) { TypeInto(eq, GAIN, "-2"); }, "0,Loshelv,12 dB,100 Hz,-2 dB,0.7"},
        {[](HWND eq) { StepSpin(eq, GAIN_SPIN, -1); }, "0,Loshelv,12 dB,100 Hz,-1.5 dB,0.7"},
        {[](HWND eq) { SendMessageA(Item(eq, BYPASS), BM_CLICK, 0, 0); },
         "1,Loshelv,12 dB,100 Hz,-1.5 dB,0.7"},
        {[](HWND eq) { Load(eq, "properties=1,Loshelv,6"); }, "1,Loshelv,6 dB,100 Hz,-1.5 dB,0.7"},
        {[](HWND eq) {
             Load(eq, "properties=0,PEQ,6 dB,0 Hz,0 dB,0", LOAD_FROM_FILE);
         }, // saved by a new control
         "1,Loshelv,6 dB,100 Hz,-1.5 dB,0.7"},
        {[](HWND eq) { ChooseItem(eq, TYPES, 2); }, "1,Hishelv,6 dB,100 Hz,-1.5 dB,0.7"}};
    for (const auto& [edit, result] : edits) {
        edit(create("EQ1*a"));
        CHECK(panel.Parameter("EQ1*a") == result);
    }
    TypeInto(create("EQ1*a;EQ1*b"), FREQUENCY,
             "500"); // they disagree: both become the first one and the change
    CHECK(panel.Parameter("EQ1*a") == "1,Hishelv,6 dB,500 Hz,-1.5 dB,0.7");
    CHECK(panel.Parameter("EQ1*b") == panel.Parameter("EQ1*a"));
}

TEST_SUITE_END();
