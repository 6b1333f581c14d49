// Panel files and device files, whole and damaged, and the functions of the host interface that read and
// write them.

#include "Panelhost/Editing.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/OwnControl.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cstring>
#include <random>

TEST_SUITE_BEGIN("PanelFile");

namespace {

int LoadFile(const TestPanel& panel, const std::string& path) {
    return ph_LoadPanel(panel.Root(), path.c_str());
}

int SaveFile(const TestPanel& panel, const std::string& path) {
    return ph_SavePanel(panel.Root(), path.c_str());
}

// One control of every class, each with a child, and everything that knobs and the panel itself can hold.
std::string EverythingFile() {
    std::string file = "background=0x00402010\r\nlayer=u2,u5\r\nsize=640,480\r\ntitle=All * of = them\r\n";
    int x = 0;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        const std::string name = expected.name;
        const std::string place = std::to_string(x) + ",5," + std::to_string(x + 60) + ",45\r\n";
        file += "control=0x00000000 " + name + " \"One " + name + "\" 0x40010000 " + place;
        file += "One " + name + "*control=0x00000000 KNOB \"Inside\" 0x50000000 0,0,47,47\r\n";
        file += "One " + name + "*Inside*properties=-5,5,2.5\r\n";
        if (TakesConnections(name)) {
            file += "One " + name + "*connection=One KNOB*value;%n*Inside;Nobody\r\n";
        }
        x += 10;
    }
    return file + "One KNOB*bitmap=.\\Controls\\KNOB_amber.bmp\r\n"
                  "One KNOB*function=AMP1*gain;%n*level\r\n"
                  "One KNOB*interval=20\r\n"
                  "One KNOB*properties=-80,18,-20\r\n"
                  "One KNOB*relative=1\r\n"
                  "One KNOB*resolution=0.125\r\n"
                  "One KNOB*values=1,2,3,4,5\r\n"
                  "One KNOB*valuescopy=1,2,3,4,5,\r\n"
                  "control=0x00000000 FADER \"Relative\" 0x40000000 0,0,30,200\r\n"
                  "Relative*function=AMP1*gain;AMP1*gain\r\n"
                  "Relative*properties=-80,18,-20\r\n"
                  "Relative*relative=1\r\n"
                  "One LED*layer=u1,u64\r\n"
                  "One LED*function=AMP1*mute\r\n";
}

// What the path held before, still there and nothing beside it.
void CheckUntouched(const TestFolder& folder, const std::vector<std::string>& names, const std::string& path,
                    const std::string& bytes) {
    CHECK(ReadBytes(path) == bytes);
    CHECK(folder.Names() == names);
}

} // namespace

TEST_CASE("a panel of every class is saved, loaded and saved again byte for byte") {
    const TestFolder folder;
    const std::string first = folder.Path("first.panel");
    const std::string second = folder.Path("second.panel");
    {
        const TestPanel panel;
        const TraceCapture trace;
        CHECK(LoadFile(panel, folder.Write("everything.panel", EverythingFile())) == 91);
        for (const char* complaint : {"Error reading", "not found", "Not implemented", "Unknown"}) {
            CHECK(trace.CountContaining(complaint) == 0);
        }
        CHECK(a_LoadErrorCount(panel.Root()) == 0);
        CHECK_FALSE(a_IsChanged(panel.Root()));
        for (const ExpectedClass& expected : EXPECTED_CLASSES) {
            INFO(std::string(expected.name));
            HWND control = panel.Find(("One " + std::string(expected.name)).c_str());
            REQUIRE(control != nullptr);
            if (TakesConnections(expected.name)) {
                CHECK(ObjectOf(control).connections == BINDINGLIST{"One KNOB*value", "%n*Inside", "Nobody"});
            }
            CHECK((GetWindowLongA(control, GWL_STYLE) & WS_TABSTOP) != 0);
        }
        CHECK(SaveFile(panel, first) == 1);
    }
    std::string saved = ReadBytes(first);
    CHECK(saved.rfind("background=0x00402010\r\nlayer=u2,u5\r\nsize=640,480\r\ntitle=All * of = them\r\n"
                      "control=0x00000000 AUTOMIXER \"One AUTOMIXER\" 0x40010000 0,5,60,45\r\n",
                      0) == 0);
    for (const char* line :
         {"One KNOB*bitmap=.\\Controls\\KNOB_amber.bmp", "One KNOB*function=AMP1*gain;%n*level",
          "One KNOB*interval=20", "One KNOB*properties=-80,18,-20", "One KNOB*relative=1",
          "One KNOB*resolution=0.125", "One KNOB*values=1,2,3,4,5", "One KNOB*valuescopy=1,2,3,4,5,",
          "One LED*layer=u1,u64", "One LED*function=AMP1*mute",
          "One EQ*control=0x00000000 KNOB \"Inside\" 0x50000000 0,0,47,47",
          "One EQ*Inside*properties=-5,5,2.5", "One BCOMBOBOX*connection=One KNOB*value;%n*Inside;Nobody"}) {
        INFO(std::string(line));
        CHECK(saved.find("\r\n" + std::string(line) + "\r\n") != std::string::npos);
    }
    // However often: what is loaded replaces what was loaded or made before, and adds nothing to it.
    for (int round = 0; round < 4; ++round) {
        const TestPanel panel;
        const TraceCapture trace;
        if (round > 1) { // with devices that answer
            panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\nAMP1*mute=integer,0,1,0,\n");
        }
        CHECK(LoadFile(panel, round == 0 ? first : second) == 91);
        INFO(trace.All());
        CHECK(a_LoadErrorCount(panel.Root()) == 0);
        CHECK(trace.CountContaining("not found") == 0);
        CHECK(SaveFile(panel, second) == 1);
        if (round == 2) { // what they answer is saved, too
            saved = ReadBytes(second);
            CHECK(saved.find("\r\nRelative*values=0,,0,\r\n") != std::string::npos);
        }
        CHECK(ReadBytes(second) == saved);
    }
    CHECK(folder.Names() == std::vector<std::string>{"everything.panel", "first.panel", "second.panel"});
}

TEST_CASE("a damaged line is traced with its place and skipped, the rest lives") {
    const std::string header = "control=0x00000000 KNOB \"X\" 0x40000000 0,0,47,47";
    const std::string tooLong(2 * TEXT_SIZE, 'x');
    const struct {
        std::string line;
        int kind;
        std::string message; // behind the place
    } rows[] = {
        {"control=garbage", TRACE_EDIT, "Error reading line control=garbage"},
        {"control=", TRACE_EDIT, "Error reading line control="},
        {"control=0x00000000 KNOB \"X 0x40000000 0,0,1,1", TRACE_EDIT,
         "Error reading line control=0x00000000 KNOB \"X 0x40000000 0,0,1,1"},
        {"control=0x00000000 KNOB \"X\" 0x40000000 0,0,1", TRACE_EDIT,
         "Error reading line control=0x00000000 KNOB \"X\" 0x40000000 0,0,1"},
        {"control=0x00000000 NOSUCH \"X\" 0x40000000 0,0,9,9", TRACE_EDIT,
         "Unknown class: control=0x00000000 NOSUCH \"X\" 0x40000000 0,0,9,9"},
        {"control=0x00000000 BUTTON \"X\" 0x40000000 0,0,9,9", TRACE_EDIT, // of the system, but no control
         "Unknown class: control=0x00000000 BUTTON \"X\" 0x40000000 0,0,9,9"},
        {"Nobody*" + header, TRACE_EDIT, "Panel not found: Nobody*" + header},
        {"AMP1*" + header, TRACE_EDIT, "Panel not found: AMP1*" + header},
        {"Nobody*value=1", TRACE_EDIT, "Object not found: Nobody*value=1"},
        {"Nobody*connection=First", TRACE_EDIT, "Object not found: Nobody*connection=First"},
        {"AMP1*gain=1", TRACE_EDIT, "Object not found: AMP1*gain=1"},
        {"just words", TRACE_EDIT, "Object not found: just words"},
        {tooLong, TRACE_EDIT, "Line is too long or damaged: " + tooLong.substr(0, 64)},
        {std::string("First*value\0=1", 14), TRACE_EDIT, "Line is too long or damaged: First*value"},
        {"First*bitmap=.\\Controls\\Missing.bmp", TRACE_EDIT,
         "Error reading line bitmap=.\\Controls\\Missing.bmp"},
        {"First*interval=soon", TRACE_EDIT, "Error reading line interval=soon"},
        {"First*nosuch=x", TRACE_DEBUG, "Knob Keyword not found: nosuch\n"},
        {"nosuch=1", TRACE_DEBUG, "Panel Keyword not found: nosuch\n"},
        {"size=0,5", TRACE_EDIT, "Error reading line size=0,5"},
        {"background=.\\Controls\\Missing.png", TRACE_EDIT,
         "Error reading line background=.\\Controls\\Missing.png"},
        {"layer=all", TRACE_EDIT, "Error reading line layer=all"},
    };
    const TestFolder folder;
    for (const auto& row : rows) {
        INFO(row.line);
        const TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,1,0,\n");
        TraceCapture trace;
        const std::string file = "\xEF\xBB\xBF"
                                 "control=0x00000000 KNOB \"First\" 0x40000000 0,0,47,47\r\n\r\n" +
                                 row.line +
                                 "\r\ncontrol=0x00000000 KNOB \"Last\" 0x40000000 0,0,47,47\n"
                                 "First*value=3\r\nLast*value=7"; // the end of the file ends the line
        CHECK(LoadFile(panel, folder.Write("bad.panel", file)) == 2);
        CHECK(trace.Count(row.kind, "bad.panel(3): " + row.message) == 1);
        CHECK(a_LoadErrorCount(panel.Root()) == 1);
        CHECK(Value(panel.Find("First")) == 3.0F);
        CHECK(Value(panel.Find("Last")) == 7.0F);
        CHECK(panel.Find("X") == nullptr);
        CHECK(GetWindow(GetWindow(panel.Window(), GW_CHILD), GW_HWNDLAST) ==
              GetWindow(GetWindow(GetWindow(panel.Window(), GW_CHILD), GW_HWNDFIRST),
                        GW_HWNDNEXT)); // two windows
        trace.Clear();
        Load(panel.Find("First"), "interval=x");
        CHECK(trace.Count(TRACE_EDIT, "Error reading line interval=x") == 1); // no longer of that file
    }
}

TEST_CASE("garbage is no panel and no device file, and does no harm") {
    const TestFolder folder;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        CAPTURE(seed);
        std::mt19937 random(seed);
        std::string bytes;
        while (bytes.size() < 10000) {
            bytes +=
                seed % 2 == 0 ? static_cast<char>(random()) : "control=0x*\r\n\"KNOB ,;%n4 "[random() % 25];
        }
        const std::string path = folder.Write("garbage", bytes);
        const TestPanel panel;
        const TraceCapture trace;
        CHECK(LoadFile(panel, path) == 0);
        CHECK(a_LoadErrorCount(panel.Root()) > 10);
        CHECK(ph_LoadDevices(panel.Root(), path.c_str()) == 0);
        CHECK(a_LoadErrorCount(panel.Root()) > 10);
        CHECK(trace.CountContaining("garbage(") > 20);
        HWND knob = panel.Create("KNOB", "Knob");
        CHECK(SetValue(knob, 5.0F) == 1);
    }
}

TEST_CASE("a device file declares devices, its damaged lines are traced and skipped") {
    const TestPanel panel;
    const TestFolder folder;
    const TraceCapture trace;
    const std::string path = folder.Write("net.devices", "# comment\r\n"
                                                         "AMP1*device=simulated\r\n"
                                                         "\r\n"
                                                         "AMP1*gain=float,-80,18,-200,dB\r\n"
                                                         "AMP1*gain=unknown,1\r\n"
                                                         "AMP1*level=wave,sine,0,1,1000\r\n" // never declared
                                                         "AMP2*gain=float,0,1,0,\r\n"
                                                         "AMP2*device=real\r\n"
                                                         "amp1*device=simulated\r\n" // taken
                                                         "*device=simulated\r\n"
                                                         "nonsense\r\n"
                                                         "AMP1*range=float,5,1,0,\r\n"
                                                         "AMP1*label=text,,,a, b,\r\n"
                                                         "AMP3*device=simulated");
    CHECK(ph_LoadDevices(panel.Root(), path.c_str()) == 2);
    CHECK(a_LoadErrorCount(panel.Root()) == 8);
    for (const char* line :
         {"(5): Error reading line AMP1*gain=unknown,1",
          "(6): Error reading line AMP1*level=wave,sine,0,1,1000",
          "(7): Error reading line AMP2*gain=float,0,1,0,", "(8): Error reading line AMP2*device=real",
          "(9): Error reading line amp1*device=simulated", "(10): Error reading line *device=simulated",
          "(11): Error reading line nonsense", "(12): Error reading line AMP1*range=float,5,1,0,"}) {
        INFO(std::string(line));
        CHECK(trace.Count(TRACE_EDIT, std::string("net.devices") + line) == 1);
    }
    CHECK(panel.Parameter("AMP1*gain") == "-80"); // within its range from the start
    CHECK(panel.Parameter("amp1*label") == "a, b");
    CHECK(panel.Parameter("AMP3*online") == "1");
    CHECK(panel.Parameter("AMP1*GAIN") == "(none)");
    CHECK(panel.Find("AMP3") != nullptr);
    for (const std::string& missing :
         {folder.Path("missing"), folder.Path(""), std::string("?"), std::string()}) {
        INFO(missing);
        CHECK(ph_LoadDevices(panel.Root(), missing.c_str()) == -1);
        CHECK(LoadFile(panel, missing) == -1);
    }
}

TEST_CASE("simulated records keep what is set, and a solo silences the others") {
    const TestPanel panel;
    CHECK(panel.Declare(
              "DSP1*device=simulated\nDSP1*band=mastereq,,,0,PEQ,6 dB,1000 Hz,0 dB,0.7\n"
              "DSP1*filters=xoverfilters,,,LINK24,80 Hz,OFF,20000 Hz\nDSP1*delay=delay,,,0,2.5 ms\n"
              "DSP1*bad=delay,,,soon\nDSP1*bad2=channeleq,0,1,0,PEQ\nDSP1*delay=wave,sine,0,1,100\n"
              "DSP1*solo1=integer,0,1,0\nDSP1*solo2=integer,0,1,0\nDSP1*gain=float,-80,18,-20,dB\n"
              "DSP1*out=float,-80,18,0,dB\nDSP1*out=follow,gain,0\nDSP1*out=solo,solo1,solo1,solo2\n") == 1);
    CHECK(a_LoadErrorCount(panel.Root()) == 3);
    CHECK(panel.Parameter("DSP1*bad") == "(none)");
    const struct {
        const char* address;
        const char* text;
        const char* held;
    } rows[] = {
        {"DSP1*band", "1,Hipass,12,440", "1,Hipass,12 dB,440 Hz,0 dB,0.7"},
        {"DSP1*filters", ",,BUTT12,5", "LINK24,80 Hz,BUTT12,20 Hz"},
        {"DSP1*delay", "1,12 ft", "1,12 ft"},
        {"DSP1*delay", "x", nullptr},
        {"DSP1*band", "", nullptr},
    };
    for (const auto& row : rows) {
        INFO(std::string(row.address), "=", std::string(row.text));
        const std::string before = panel.Parameter(row.address);
        CHECK(ph_SetParameter(panel.Root(), row.address, row.text) == (row.held != nullptr));
        CHECK(panel.Parameter(row.address) == (row.held != nullptr ? row.held : before));
    }
    const struct {
        const char* own;
        const char* other;
        const char* out;
    } solos[] = {{"0", "0", "-20"}, {"0", "1", "-80"}, {"1", "1", "-20"}, {"1", "0", "-20"}};
    for (const auto& row : solos) {
        ph_SetParameter(panel.Root(), "DSP1*solo1", row.own);
        ph_SetParameter(panel.Root(), "DSP1*solo2", row.other);
        ph_Tick(panel.Root());
        CHECK(panel.Parameter("DSP1*out") == row.out);
    }
    panel.Declare("DSP1*gain=delay,,,never\nDSP1*out=float,-80,18,5,dB\n");
    CHECK(panel.Parameter("DSP1*gain") == "-20"); // what cannot be read changes nothing
    ph_Tick(panel.Root());
    CHECK(panel.Parameter("DSP1*out") == "5"); // declared anew, it follows nothing any more
}

TEST_CASE("simulated parameters stay in their range, follow, add up and mute at each tick") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nDSP1*device=simulated\n"
                  "AMP1*gain=float,-80,18,-20,dB\nAMP1*input=integer,1,4,2,\n"
                  "AMP1*mute=integer,0,1,0,\nAMP1*wave=float,0,100,0,\nAMP1*wave=wave,triangle,20,40,200\n"
                  "AMP1*out=float,-80,18,0,\nAMP1*out=follow,gain,-3\nAMP1*out=mute,mute,DSP1*mute\n"
                  "AMP1*slow=float,-80,18,-80,\nAMP1*slow=follow,gain,0,60000\n"
                  "DSP1*sum=float,-200,200,0,\nDSP1*sum=add,AMP1*gain,AMP1*gain,AMP1*nosuch\n"
                  "DSP1*mute=integer,0,1,0,\n");
    HOSTINFO* root = panel.Root();
    const struct {
        const char* address;
        const char* text;
        const char* held;
    } limits[] = {
        {"AMP1*gain", "99", "18"},   {"AMP1*gain", "-99", "-80"}, {"AMP1*gain", "1e30", "18"},
        {"AMP1*gain", "5.5", "5.5"}, {"AMP1*input", "2.5", "3"},  {"AMP1*input", "9", "4"},
        {"AMP1*input", "-9", "1"},   {"AMP1*mute", "0.2", "0"},
    };
    for (const auto& row : limits) {
        INFO(std::string(row.address), "=", std::string(row.text));
        CHECK(ph_SetParameter(root, row.address, row.text) == 1);
        CHECK(panel.Parameter(row.address) == row.held);
    }
    for (const char* bad : {"", "x", "nan", "inf", "1e99"}) {
        CHECK(ph_SetParameter(root, "AMP1*gain", bad) == 0);
        CHECK(panel.Parameter("AMP1*gain") == "5.5");
    }
    ph_Tick(root);
    CHECK(panel.Parameter("AMP1*out") == "2.5");
    CHECK(panel.Parameter("DSP1*sum") == "11");
    for (const char* muting : {"AMP1*mute", "DSP1*mute"}) {
        ph_SetParameter(root, muting, "1");
        ph_Tick(root);
        CHECK(panel.Parameter("AMP1*out") == "-80");
        ph_SetParameter(root, muting, "0");
        ph_Tick(root);
        CHECK(panel.Parameter("AMP1*out") == "2.5");
    }
    std::string slow = panel.Parameter("AMP1*slow");
    std::string wave;
    bool hasMoved = false;
    for (int i = 0; i < 10; ++i) {
        Sleep(20);
        ph_Tick(root);
        const std::string now = panel.Parameter("AMP1*wave");
        CHECK(std::stof(now) >= 20.0F);
        CHECK(std::stof(now) <= 40.0F);
        hasMoved = hasMoved || (!wave.empty() && now != wave);
        wave = now;
        CHECK(std::stof(panel.Parameter("AMP1*slow")) > std::stof(slow)); // on its way, not there yet
        slow = panel.Parameter("AMP1*slow");
        CHECK(std::stof(slow) < 5.0F);
    }
    CHECK(hasMoved);
}

TEST_CASE("a panel that cannot be saved leaves the old file as it was") {
    const TestPanel panel;
    panel.Create("KNOB", "Knob");
    a_SetChanged(panel.Root(), true);
    const TestFolder folder;
    const std::string old = "the old panel";
    SUBCASE("the name is that of a folder") {
        CreateDirectoryA(folder.Path("x.panel").c_str(), nullptr);
        CHECK(SaveFile(panel, folder.Path("x.panel")) == 0);
        CHECK(folder.Names() == std::vector<std::string>{"x.panel"});
    }
    SUBCASE("the folder does not exist") {
        CHECK(SaveFile(panel, folder.Path("nowhere\\x.panel")) == 0);
        CHECK(folder.Names().empty());
    }
    SUBCASE("the file may not be written") {
        const std::string path = folder.Write("x.panel", old);
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
        CHECK(SaveFile(panel, path) == 0);
        CheckUntouched(folder, {"x.panel"}, path, old);
    }
    SUBCASE("another program holds the file") {
        const std::string path = folder.Write("x.panel", old);
        HANDLE held =
            CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        CHECK(SaveFile(panel, path) == 0);
        CheckUntouched(folder, {"x.panel"}, path, old);
        CloseHandle(held);
        CHECK(SaveFile(panel, path) == 1); // and when it lets go
        CHECK(ReadBytes(path).find("control=") == 0);
        a_SetChanged(panel.Root(), true);
    }
    SUBCASE("a control cannot be written") {
        const std::string path = folder.Write("x.panel", old);
        const OwnControl registered(OwnControl::Saves);
        panel.Create(OwnControl::CLASS, "Own");
        const struct {
            OwnControl::Saving saving;
            DWORD reason;
        } rows[] = {
            {OwnControl::Refuses, ERROR_NOT_ENOUGH_MEMORY},
            {OwnControl::HitsFullDisk, ERROR_INVALID_HANDLE}, // the system's reason, whichever that is
        };
        for (const auto& row : rows) {
            const OwnControl own(row.saving);
            SetLastError(ERROR_SUCCESS);
            CHECK(SaveFile(panel, path) == 0);
            CHECK(GetLastError() == row.reason);
            CheckUntouched(folder, {"x.panel"}, path, old);
            std::string text = "as before";
            CHECK(a_ObjectText(&ObjectOf(panel.Find("Own")), &text) == 0);
            CHECK(text.empty());
        }
        DestroyWindow(panel.Find("Own"));
        a_SetChanged(panel.Root(), true);
    }
    SUBCASE("a control of the library has no memory to be written") {
        const std::string path = folder.Write("x.panel", old);
        {
            const NoMemory none(GetModuleHandleA(CONTROL_LIBRARY));
            CHECK(SaveFile(panel, path) == 0);
            CHECK(GetLastError() == ERROR_NOT_ENOUGH_MEMORY);
            CHECK(none.Refusals() > 0);
        }
        CheckUntouched(folder, {"x.panel"}, path, old);
    }
    CHECK(a_IsChanged(panel.Root()));
}

TEST_CASE("saving touches no file but its own") {
    const TestPanel panel;
    panel.Create("KNOB", "Knob");
    const TestFolder folder;
    // Whatever stands beside it, and however the file that is written first is called.
    const std::string path = folder.Write("x.panel", "old");
    std::vector<std::string> names{"x.panel", "x.panel.bak", "x.panel.new"};
    char process[16];
    std::snprintf(process, sizeof process, "%x", static_cast<unsigned>(GetCurrentProcessId()));
    for (const char* number : {"0", "1"}) {
        names.push_back("x.panel." + std::string(process) + "." + number + ".tmp");
    }
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
        folder.Write(name, "of the user");
    }
    CHECK(SaveFile(panel, path) == 1);
    CHECK(folder.Names() == names);
    for (const std::string& name : names) {
        CHECK((ReadBytes(folder.Path(name)) == "of the user") == (name != "x.panel"));
    }
}

TEST_CASE("a panel file creates windows of registered classes alone") {
    const TestFolder folder;
    const auto load = [&](const TestPanel& panel, const std::string& className) {
        return LoadFile(panel, folder.Write("x.panel", "control=0x00000000 " + className +
                                                           " \"X\" 0x40000000 0,0,10,10\r\n"));
    };
    const OwnControl own(OwnControl::Saves);
    const TestPanel panel;
    for (const char* className :
         {"TestPanel", "BUTTON", "#32770", "OWNCONTROLS"}) { // the first is the host's own
        INFO(std::string(className));
        CHECK(load(panel, className) == 0);
        CHECK(a_LoadErrorCount(panel.Root()) == 1);
        CHECK(GetWindow(panel.Window(), GW_CHILD) == nullptr);
    }
    CHECK(ph_UnregisterControlClass(OwnControl::CLASS) == 1);
    CHECK(load(TestPanel(), OwnControl::CLASS) == 0);
    CHECK(ph_UnregisterControlClass(OwnControl::CLASS) == 0);
    CHECK(ph_RegisterControlClass("owncontrol") == 1); // twice
    CHECK(ph_RegisterControlClass(OwnControl::CLASS) == 1);
    CHECK(ph_UnregisterControlClass(OwnControl::CLASS) == 1);
    CHECK(load(TestPanel(), OwnControl::CLASS) == 1);
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        CHECK(ph_RegisterControlClass(name) == 0);
        CHECK(ph_UnregisterControlClass(name) == 0);
    }
    CHECK(ph_RegisterControlClass(std::string(65, 'x').c_str()) == 0);
}

TEST_CASE("the host interface takes no harm from null and wrong arguments") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,100,12.5,\n");
    HWND knob = panel.Create("KNOB", "Knob");
    const TestFolder folder;
    const std::string file = folder.Path("none.panel");
    TestPanel gone;
    HOSTINFO* const goneRoot = gone.Root();
    gone.Close();
    HOSTINFO* const noRoots[] = {nullptr, goneRoot, &ObjectOf(knob), &ObjectOf(panel.Find("AMP1"))};
    char text[8] = "before";
    for (HOSTINFO* object : noRoots) {
        CHECK(ph_LoadPanel(object, file.c_str()) == -1);
        CHECK(ph_LoadDevices(object, file.c_str()) == -1);
        CHECK(ph_SavePanel(object, file.c_str()) == 0);
        CHECK(ph_Find(object, "Knob") == nullptr);
        CHECK(ph_GetParameter(object, "AMP1*gain", text, sizeof text) == 0);
        CHECK(ph_SetParameter(object, "AMP1*gain", "1") == 0);
        ph_Tick(object);
        ph_SetMode(object, 1);
        ph_DestroyRoot(object);
    }
    HOSTINFO* root = panel.Root();
    CHECK(ph_LoadPanel(root, nullptr) == -1);
    CHECK(ph_LoadDevices(root, nullptr) == -1);
    CHECK(ph_SavePanel(root, nullptr) == 0);
    CHECK(ph_SavePanel(root, "") == 0);
    CHECK(ph_Find(root, nullptr) == nullptr);
    for (const char* address : {static_cast<const char*>(nullptr), "", "*", "AMP1", "AMP1*", "*gain",
                                "Knob*value", "AMP1*nosuch", "AMP1*gain*x"}) {
        CHECK(ph_GetParameter(root, address, text, sizeof text) == 0);
        CHECK(ph_SetParameter(root, address, "1") == 0);
    }
    for (const int size : {-1, 0, 1, 4}) {
        CHECK(ph_GetParameter(root, "AMP1*gain", text, size) == 0);
    }
    CHECK(ph_GetParameter(root, "AMP1*gain", nullptr, 100) == 0);
    CHECK(ph_SetParameter(root, "AMP1*gain", nullptr) == 0);
    CHECK(text == std::string("before"));
    CHECK(ph_GetParameter(root, "AMP1*gain", text, 5) == 1);
    CHECK(text == std::string("12.5"));

    CHECK(ph_CreateRoot(nullptr, "X") == nullptr);
    CHECK(ph_CreateRoot(reinterpret_cast<HWND>(0x1234), "X") == nullptr);
    CHECK(ph_CreateRoot(panel.Window(), "Again") == nullptr);
    CHECK(ph_CreateRoot(knob, "On a control") == nullptr);
    CHECK(IsWindow(knob));
    CHECK(ObjectOf(knob).mode == 0);
    HWND window = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    HOSTINFO* nameless = ph_CreateRoot(window, nullptr);
    REQUIRE(nameless != nullptr);
    HWND child = CreateControl("KNOB", "Child", window, nameless);
    DestroyWindow(window); // the window first
    CHECK(ph_Find(nameless, "Child") == nullptr);
    CHECK_FALSE(IsWindow(child));
    ph_Tick(nameless);
    ph_DestroyRoot(nameless);
}

TEST_SUITE_END();
