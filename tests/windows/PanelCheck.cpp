// What is wrong with a panel is found, and nothing where nothing is.
#include "Panelhost/PanelCheck.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>

namespace {

constexpr const char* WHOLE = "size=400,300\n"
                              "layer=u1\n"
                              "control=0x00000000 BSTATIC \"Ground\" 0x50000000 0,0,400,300\n"
                              "control=0x00000000 KNOB \"K\" 0x50010000 10,10,57,57\n"
                              "K*function=AMP*gain\n"
                              "K*connection=F\n"
                              "control=0x00000000 FADER \"F\" 0x50010000 70,10,110,200\n"
                              "F*layer=u1\n"
                              "control=0x00000000 LED \"L\" 0x50010000 75,20,95,40\n"
                              "L*layer=u2\n"
                              "control=0x00000000 SCALE \"S\" 0x50000000 115,10,140,200\n"
                              "S*beside=F\n"
                              "control=0x00000000 BBUTTON \"B\" 0x50010000 10,220,90,240\n"
                              "B*click=layer=u2\n"
                              "control=0x00000000 INETWORK \"N\" 0x40000000 390,290,450,350\n";
constexpr const char* DEVICES = "AMP*device=simulated\nAMP*gain=float,0,1,0\n";

// Names stand for what is drawn in the order of the file: the first one lies in front.
std::vector<std::string> Found(
    const std::string& lines, const std::string& devices = DEVICES,
    const std::function<void(const TestPanel&)>& change = [](const TestPanel&) {}) {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare(devices);
    panel.Open(lines);
    // The ground lies behind the others.
    if (const HWND ground = panel.Find("Ground"); ground != nullptr) {
        SetWindowPos(ground, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    change(panel);
    std::vector<std::string> found;
    const int count = ph_CheckPanel(
        panel.Root(),
        [](const PH_FINDING* finding, void* context) {
            static_cast<std::vector<std::string>*>(context)->push_back(
                std::to_string(finding->kind) + " " + finding->object + ": " + finding->text);
        },
        &found);
    CHECK(count == static_cast<int>(found.size()));
    CHECK(a_CheckPanel(panel.Root()).size() == found.size());
    return found;
}

} // namespace

TEST_CASE("each fault of a panel is found by itself, and none in a whole one") {
    CHECK(Found(WHOLE) == std::vector<std::string>{});
    // What a control of the panel records is not there before.
    CHECK(Found("control=0x00000000 IWAVEIN \"In\" 0x40000000 0,0,9,9\nIn*file=.\\Temp\\none.wav\n"
                "control=0x00000000 IWAVEOUT \"Out\" 0x40000000 0,0,9,9\nOut*files=.\\temp\\None.wav\n") ==
          std::vector<std::string>{});
    struct Case {
        const char* from;
        const char* to;
        const char* finding;
    };
    for (const Case& given : std::initializer_list<Case>{
             {"AMP*gain", "AMP*loss", "2 K: function AMP*loss: no such parameter"},
             {"AMP*gain", "PRE*gain", "2 K: function PRE*gain: no such parameter"},
             {"connection=F", "connection=G", "2 K: connection G: no such control"},
             {"connection=F", "connection=F*colour", "2 K: connection F*colour: no such keyword"},
             {"beside=F", "beside=G", "2 S: beside G: no such control"},
             {"click=layer=u2", "click=G*value=1\nL*layer=u1", "2 B: click G*value: no such control"},
             {"click=layer=u2", "caption=Layer", "6 L: on u2, which no button brings up"},
             {"L*layer=u2", "L*layer=u4", "6 L: on u4, which no button brings up"},
             {"10,10,57,57", "-5,10,42,57", "4 K: at -5,10,42,57 it reaches beyond the panel"},
             {"10,220,90,240", "10,290,90,310", "4 B: at 10,290,90,310 it reaches beyond the panel"},
             {"10,10,57,57", "60,10,107,57", "5 K: covers F"},
             {"K*function", "K*bitmap=.\\Controls\\None.bmp\nK*function",
              "3 K: line 5, file missing or unreadable: K*bitmap=.\\Controls\\None.bmp"},
             {"K*function", "K*colour=red\nK*function", "1 K: line 5, unknown keyword: K*colour=red"},
             {"INETWORK \"N\" 0x40000000 390,290,450,350",
              "IWAVEOUT \"N\" 0x40000000 0,0,9,9\nN*files=.\\Temp\\none.wav;.\\Controls\\Panel.ico",
              "3 N: files .\\Temp\\none.wav: there is no such file"},
             {"INETWORK \"N\" 0x40000000 390,290,450,350",
              "IMESSAGING \"N\" 0x40000000 0,0,9,9\nN*file=.\\none.pdf",
              "3 N: file .\\none.pdf: there is no such file"},
             {"click=layer=u2", "click=layers=u2\nL*layer=u1", "2 B: click *layers: no such keyword"},
             {"KNOB \"K\"", "NOB \"K\"", "1 : line 4, unknown class: control=0x00000000 NOB \"K\""},
             {"B*click", "B*bitmap=0\nB*click", "3 B: line 14, file missing or unreadable: B*bitmap=0"}}) {
        INFO(std::string(given.finding));
        std::string lines = WHOLE;
        REQUIRE(lines.find(given.from) != std::string::npos);
        lines.replace(lines.find(given.from), std::string(given.from).size(), given.to);
        const auto found = Found(lines);
        CHECK(std::ranges::any_of(found,
                                  [&](const std::string& line) { return line.starts_with(given.finding); }));
        const std::string all = [&] {
            std::string text;
            for (const std::string& line : found) {
                text += line + "\n";
            }
            return text;
        }();
        INFO(all);
        CHECK(found.size() <= 3); // what it leads to included
    }
    CHECK(Found(WHOLE, DEVICES, [](const TestPanel& panel) {
              ph_SetParameter(panel.Root(), "AMP*online", "0");
          }) == std::vector<std::string>{"7 AMP: nothing heard for 0 s"});
    CHECK(Found("", "FOH*device=osc,127.0.0.1:9,none\n") ==
          std::vector<std::string>{"7 : FOH: the profile none.profile cannot be read"});
    CHECK(Found("control=0x00000000 LISTSELECTION \"List\" 0x50010000 0,0,99,99\nList*file=.\\None.txt\n",
                "") ==
          std::vector<std::string>{"3 List: line 2, file missing or unreadable: List*file=.\\None.txt"});
    CHECK(ph_CheckPanel(nullptr, nullptr, nullptr) == -1);
    CHECK(a_CheckPanel(nullptr).empty());
}

TEST_CASE("the panels that come with the program have nothing to be found") {
    for (const char* name :
         {"Buttons", "Demo", "Interfaces", "Levels", "Mixer", "Processor", "Stage", "Strips"}) {
        INFO(name);
        const TestPanel panel(TestPanel::Visible);
        const std::string file = ProgramFolder() + name;
        if (GetFileAttributesA((file + ".devices").c_str()) != INVALID_FILE_ATTRIBUTES) {
            ph_LoadDevices(panel.Root(), (file + ".devices").c_str());
        }
        REQUIRE(ph_LoadPanel(panel.Root(), (file + ".panel").c_str()) > 0);
        ph_Tick(panel.Root());
        auto findings = a_CheckPanel(panel.Root());
        std::erase_if(findings, [](const PANELFINDING& finding) {
            return finding.object.starts_with("Lost "); // to show what that looks like
        });
        const std::string found = a_FindingsText(findings);
        CHECK(found == "");
    }
}
