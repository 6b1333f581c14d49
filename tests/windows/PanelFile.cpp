// Panel files and device files, whole and damaged, and the functions of the host interface that read and
// write them.

#include "Panelhost/Editing.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/OwnControl.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>

TEST_SUITE_BEGIN("PanelFile");

namespace {

int LoadFile(const TestPanel& panel, const std::string& path) {
    return ph_LoadPanel(panel.Root(), path.c_str());
}

int SaveFile(const TestPanel& panel, const std::string& path) {
    return ph_SavePanel(panel.Root(), path.c_str());
}

} // namespace

TEST_CASE("a panel of every class is saved, loaded and saved again byte for byte") {
    const std::string all = "artscale=150\r\nbackground=0x00402010\r\nground=night\r\nlayer=u2,u5\r\nsize="
                            "640,480\r\nstyle=dark\r\ntitle=All * of = them\r\n";
    const char* const lines[] = {"One KNOB*bitmap=.\\Controls\\KNOB_amber.bmp",
                                 "One KNOB*function=AMP1*gain;%n*level",
                                 "One KNOB*connection=One KNOB*value;%n*Inside;Nobody",
                                 "One KNOB*properties=-80,18,-20",
                                 "One KNOB*relative=1",
                                 "One KNOB*values=1,2,3,4,5",
                                 "One KNOB*valuescopy=1,2,3,4,5,",
                                 "One EQ*Inside*properties=-5,5,2.5",
                                 "One FADER*function=AMP1*gain;AMP1*gain",
                                 "One FADER*properties=-80,18,-20",
                                 "One FADER*relative=1",
                                 "One LED*layer=u1,u64"};
    std::string file = all;
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        const std::string name = "One " + std::string(expected.name);
        file += "control=0x00000000 " + name.substr(4) + " \"" + name + "\" 0x40010000 5,5,65,45\r\n" + name +
                "*control=0x00000000 KNOB \"Inside\" 0x50000000 0,0,47,47\r\n";
    }
    for (const char* line : lines) {
        file += std::string(line) + "\r\n";
    }
    // However often: what is loaded replaces what was loaded or made before, and adds nothing to it.
    for (int round = 0; round < 4; ++round) {
        const TestPanel panel;
        const TraceCapture trace;
        if (round > 1) { // with devices that answer
            panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n");
        }
        CHECK(panel.Open(file) == 90);
        INFO(trace.All());
        CHECK(a_LoadErrorCount(panel.Root()) == 0);
        CHECK_FALSE(a_IsChanged(panel.Root()));
        const std::string saved = panel.Saved();
        CHECK(saved.find("\r\nOne FADER*values=0,,0,\r\n") != saved.npos);
        CHECK((saved == file || round == 0 || round == 2)); // what devices answer is saved, too
        file = saved;
    }
    CHECK(file.starts_with(all + "control=0x00010000 AUTOMIXER \"One AUTOMIXER\" 0x42010000 5,5,69,335\r\n"));
    for (const char* line : lines) {
        INFO(std::string(line));
        CHECK(file.find("\r\n" + std::string(line) + "\r\n") != file.npos);
    }
}

TEST_CASE("a damaged line is traced with its place and skipped, the rest lives") {
    const std::string header = "control=0x00000000 KNOB \"X\" 0x40000000 0,0,47,47";
    const std::string error = "Error reading line ";
    const std::string nobody = "Object not found: ";
    const std::string tooLong(2 * TEXT_SIZE, 'x');
    const struct {
        std::string line;
        std::string message; // behind the place; it ends with the line unless that has another end
        std::string end = "(line)";
        int kind = TRACE_EDIT;
    } rows[] = {
        {"control=garbage", error},
        {"control=0x00000000 KNOB \"X\" 0x40000000 0,0,1", error},
        {"control=0x00000000 NOSUCH \"X\" 0x40000000 0,0,9,9", "Unknown class: "},
        {"Nobody*" + header, "Panel not found: "},
        {"Nobody*value=1", nobody},
        {"just words", nobody},
        {tooLong, "Line is too long or damaged: ", tooLong.substr(0, 64)},
        {std::string("First*value\0=1", 14), "Line is too long or damaged: ", "First*value"},
        {"First*bitmap=.\\Controls\\Missing.bmp", error, "bitmap=.\\Controls\\Missing.bmp"},
        {"First*interval=soon", error, "interval=soon"},
        {"First*nosuch=x", "Knob Keyword not found: ", "nosuch\n", TRACE_DEBUG},
        {"size=0,5", error},
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
        const std::string end = row.end == "(line)" ? row.line : row.end;
        CHECK(trace.Count(row.kind, "bad.panel(3): " + row.message + end) == 1);
        CHECK(a_LoadErrorCount(panel.Root()) == 1);
        CHECK(Value(panel.Find("First")) == 3.0F);
        CHECK(Value(panel.Find("Last")) == 7.0F);
        trace.Clear();
        Load(panel.Find("First"), "interval=x");
        CHECK(trace.Count(TRACE_EDIT, "Error reading line interval=x") == 1); // no longer of that file
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

TEST_CASE("simulated parameters stay in their range, follow, add up, mute and are silenced by a solo") {
    const TestPanel panel;
    HOSTINFO* root = panel.Root();
    CHECK(panel.Declare(
              "AMP1*device=simulated\nDSP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n"
              "AMP1*input=integer,1,4,2,\nAMP1*mute=integer,0,1,0,\nAMP1*wave=float,0,100,0,\n"
              "AMP1*wave=wave,triangle,20,40,200\nAMP1*out=float,-80,18,0,\nAMP1*out=follow,gain,-3\n"
              "AMP1*out=mute,mute,DSP1*mute\nAMP1*slow=float,-80,18,-80,\nAMP1*slow=follow,gain,0,60000\n"
              "DSP1*band=mastereq,,,0,PEQ,6 dB,1000 Hz,0 dB,0.7\nDSP1*delay=delay,,,0,2.5 ms\n"
              "DSP1*filters=xoverfilters,,,LINK24,80 Hz,OFF,20000 Hz\nDSP1*bad=delay,,,soon\n"
              "DSP1*bad2=channeleq,0,1,0,PEQ\nDSP1*delay=wave,sine,0,1,100\nDSP1*mute=integer,0,1,0,\n"
              "DSP1*sum=float,-200,200,0,\nDSP1*sum=add,AMP1*gain,AMP1*gain,AMP1*nosuch\n"
              "DSP1*solo1=integer,0,1,0\nDSP1*solo2=integer,0,1,0\nDSP1*gain=float,-80,18,-20,dB\n"
              "DSP1*out=float,-80,18,0,dB\nDSP1*out=follow,gain,0\nDSP1*out=solo,solo1,solo1,solo2\n") == 2);
    CHECK(a_LoadErrorCount(root) == 3);
    CHECK(panel.Parameter("DSP1*bad") == "(none)");
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"DSP1*band", "1,Hipass,12,440", "1,Hipass,12 dB,440 Hz,0 dB,0.7"},
        {"DSP1*filters", ",,BUTT12,5", "LINK24,80 Hz,BUTT12,20 Hz"},
        {"DSP1*delay", "1,12 ft", "1,12 ft"},
        {"DSP1*delay", "x", nullptr},
        {"DSP1*band", "", nullptr},
        {"AMP1*gain", "99", "18"},
        {"AMP1*gain", "-99", "-80"},
        {"AMP1*gain", "5.5", "5.5"},
        {"AMP1*gain", "nan", nullptr},
        {"AMP1*gain", "1e99", nullptr},
        {"AMP1*input", "2.5", "3"},
        {"AMP1*input", "9", "4"},
    };
    for (const auto& [address, text, held] : rows) {
        INFO(std::string(address), "=", std::string(text));
        const std::string before = panel.Parameter(address);
        CHECK(ph_SetParameter(root, address, text) == (held != nullptr));
        CHECK(panel.Parameter(address) == (held != nullptr ? held : before));
    }
    const std::tuple<const char*, const char*, const char*, const char*> steps[] = {
        {"DSP1*solo2", "1", "2.5", "-80"}, {"DSP1*solo1", "1", "2.5", "-20"},
        {"DSP1*solo2", "0", "2.5", "-20"}, {"AMP1*mute", "1", "-80", "-20"},
        {"AMP1*mute", "0", "2.5", "-20"},  {"DSP1*mute", "1", "-80", "-20"}};
    for (const auto& [address, text, amplifier, processor] : steps) {
        INFO(std::string(address), "=", std::string(text));
        ph_SetParameter(root, address, text);
        ph_Tick(root);
        CHECK(panel.Parameter("AMP1*out") == amplifier);
        CHECK(panel.Parameter("DSP1*out") == processor);
    }
    CHECK(panel.Parameter("DSP1*sum") == "11");
    const auto value = [&](const char* address) { return std::stof(panel.Parameter(address)); };
    const float start = value("AMP1*wave");
    CHECK(start >= 20.0F);
    CHECK(start <= 40.0F);
    const float slow = value("AMP1*slow");
    CHECK(Await([&] { // on its way, not there yet
        ph_Tick(root);
        return value("AMP1*slow") > slow && value("AMP1*wave") != start;
    }));
    CHECK(value("AMP1*slow") < 5.0F);

    panel.Declare("DSP1*gain=delay,,,never\nDSP1*out=float,-80,18,5,dB\n");
    CHECK(panel.Parameter("DSP1*gain") == "-20"); // what cannot be read changes nothing
    ph_Tick(root);
    CHECK(panel.Parameter("DSP1*out") == "5"); // declared anew, it follows nothing any more
}

TEST_CASE("a panel that cannot be saved leaves the old file as it was") {
    const TestPanel panel;
    panel.Create("KNOB", "Knob");
    const TestFolder folder;
    const std::string path = folder.Write("x.panel", "the old panel");
    CreateDirectoryA(folder.Path("folder").c_str(), nullptr);
    const auto check = [&](const std::string& file, DWORD reason) {
        a_SetChanged(panel.Root(), true);
        SetLastError(ERROR_SUCCESS);
        CHECK(SaveFile(panel, file) == 0);
        CHECK(GetLastError() == reason);
        CHECK(ReadBytes(path) == "the old panel");
        CHECK(folder.Names() == std::vector<std::string>{"folder", "x.panel"});
        CHECK(a_IsChanged(panel.Root()));
    };
    check(folder.Path("folder"), ERROR_ACCESS_DENIED);
    check(folder.Path("nowhere\\x.panel"), ERROR_PATH_NOT_FOUND);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    check(path, ERROR_ACCESS_DENIED);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    { // a control of the library has no memory to be written
        const NoMemory none(GetModuleHandleA(CONTROL_LIBRARY));
        check(path, ERROR_NOT_ENOUGH_MEMORY);
        CHECK(none.Refusals() > 0);
    }
    { // a control of another maker fails, for the system's reason where there is one
        const OwnControl registered(OwnControl::Saves);
        const HWND control = panel.Create(OwnControl::CLASS, "Own");
        for (const auto& [saving, reason] : {std::pair(OwnControl::Refuses, ERROR_NOT_ENOUGH_MEMORY),
                                             {OwnControl::HitsFullDisk, ERROR_INVALID_HANDLE}}) {
            const OwnControl own(saving);
            check(path, static_cast<DWORD>(reason));
            std::string text = "as before";
            CHECK(a_ObjectText(&ObjectOf(control), &text) == 0);
            CHECK(text.empty());
        }
        DestroyWindow(control);
    }
    HANDLE held =
        CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    check(path, ERROR_ACCESS_DENIED);
    CloseHandle(held);
    CHECK(SaveFile(panel, path) == 1); // when the other program lets go
    CHECK(ReadBytes(path).find("control=") == 0);
    CHECK_FALSE(a_IsChanged(panel.Root()));
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
    names.erase(names.begin());
    for (const std::string& name : names) {
        CHECK(ReadBytes(folder.Path(name)) == "of the user");
    }
}

TEST_CASE("a panel file creates windows of registered classes alone") {
    const auto load = [](const TestPanel& panel, const std::string& className) {
        return panel.Open("control=0x00000000 " + className + " \"X\" 0x40000000 0,0,10,10\r\n");
    };
    const OwnControl own(OwnControl::Saves);
    const TestPanel panel;
    for (const char* className : {"TestPanel", "BUTTON", "OWNCONTROLS"}) { // the first is the host's own
        INFO(std::string(className));
        CHECK(load(panel, className) == 0);
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
    HOSTINFO* const root = panel.Root();
    char text[8] = "before";
    for (HOSTINFO* object :
         {static_cast<HOSTINFO*>(nullptr), goneRoot, &ObjectOf(knob), &ObjectOf(panel.Find("AMP1")), root}) {
        const char* name = object == root ? nullptr : file.c_str(); // one of the two is wrong
        CHECK(ph_LoadPanel(object, name) == -1);
        CHECK(ph_LoadDevices(object, name) == -1);
        CHECK(ph_SavePanel(object, name) == 0);
        CHECK(ph_Find(object, object == root ? nullptr : "Knob") == nullptr);
        for (const char* address :
             {static_cast<const char*>(nullptr), "", "*", "AMP1", "AMP1*", "*gain", "Knob*value",
              "AMP1*nosuch", "AMP1*gain*x", object == root ? "" : "AMP1*gain"}) {
            CHECK(ph_GetParameter(object, address, text, sizeof text) == 0);
            CHECK(ph_SetParameter(object, address, "1") == 0);
        }
        if (object != root) {
            ph_Tick(object);
            ph_SetMode(object, 1);
            ph_DestroyRoot(object);
        }
    }
    CHECK(ph_SavePanel(root, "") == 0);
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
