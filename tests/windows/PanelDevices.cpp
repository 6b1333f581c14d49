// The device file of a panel in the program: which one it is, and what its window does with it.

#include "Panel/devices/DeviceText.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/PanelProgram.h"

#include <commctrl.h>

#include <tuple>

TEST_SUITE_BEGIN("PanelDevices");

namespace {

constexpr const char* PANEL = "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\nA*function=D*gain\r\n";
constexpr const char* SIMULATED = "D*device=simulated\r\nD*gain=float,0,10,1\r\n";

class Program : public PanelHere {
public:
    using PanelHere::PanelHere;

    HWND Window() const { return FindWindowA("PanelDevices", nullptr); }
    HWND Field() const { return GetDlgItem(Window(), IDC_DEVICES_TEXT); }
    void Do(int command) const { SendMessageA(Window(), WM_COMMAND, static_cast<WPARAM>(command), 0); }
    std::string Shown(int item) const {
        char text[1024] = "";
        GetDlgItemTextA(Window(), item, text, sizeof text);
        return text;
    }
    void TypeText(const char* text) const {
        SendMessageA(Field(), EM_SETSEL, 10000, 10000);
        SendMessageA(Field(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    }
    bool Has(const char* device) const { return ph_Find(Root(), device) != nullptr; }
    // Opens a panel of that name, whose lines begin with those.
    void OpenNamed(const std::string& name, const std::string& lines) {
        REQUIRE(Open(Folder().Write(name, lines + PANEL)));
        FindPanel();
    }
    std::string Notice() const {
        char text[512] = "";
        GetWindowTextA(Part("PanelNotice"), text, sizeof text);
        return text;
    }
};

} // namespace

TEST_CASE("the panel names its device file, or has the one beside it") {
    Program program("size=300,200\r\n");
    const TestFolder& folder = program.Folder();
    const TestFolder elsewhere;
    folder.Write("beside.devices", std::string(SIMULATED) + "BESIDE*device=simulated\r\n");
    folder.Write("hall.devices", std::string(SIMULATED) + "HALL*device=simulated\r\n");
    const std::string distant =
        elsewhere.Write("far.devices", std::string(SIMULATED) + "FAR*device=simulated\r\n");
    const std::tuple<std::string, const char*, std::string> rows[] = {
        {"", "BESIDE", "beside.devices   (beside the panel)"},
        {"devices=hall.devices\r\n", "HALL", "hall.devices   (named in the panel)"},
        {"devices=" + distant + "\r\n", "FAR", distant + "   (named in the panel)"},
    };
    for (const auto& [line, device, shown] : rows) {
        CAPTURE(line);
        program.OpenNamed("beside.panel", line);
        CHECK(program.Has(device));
        CHECK(program.Notice() == "");
        program.Command(CMD_DEVICES);
        CHECK(program.Shown(IDC_DEVICES_FILE) == shown);
        CHECK(program.Shown(IDC_DEVICES_TOLD) == "2 devices, live");
        CHECK_FALSE(IsWindowEnabled(GetDlgItem(program.Window(), CMD_DEVICES_CHOOSE))); // not edited
    }
    program.OpenNamed("beside.panel", "devices=none.devices\r\n");
    CHECK(program.Notice().starts_with("cannot open device file " + folder.Path("none.devices")));
    program.Command(CMD_EDIT_MODE); // there, and by other ways than the window
    Load(program.Panel(), "devices=hall.devices");
    program.Tick();
    program.Command(CMD_GRID);
    CHECK(program.Has("HALL"));
    CHECK(program.Notice() == "");
    Load(program.Panel(), "devices=none.devices");
    program.Command(CMD_GRID);
    CHECK(program.Has("HALL")); // what cannot be read changes nothing
    CHECK(Contains(program.Notice(), "none.devices"));
}

TEST_CASE("a panel that is saved elsewhere goes on with its devices") {
    Program program("size=300,200\r\n");
    const TestFolder& folder = program.Folder();
    const TestFolder elsewhere;
    folder.Write("hall.devices", SIMULATED);
    program.OpenNamed("hall.panel", "");
    const std::tuple<std::string, std::string> rows[] = {
        {folder.Path("other.panel"), "devices=hall.devices\r\n"},
        {elsewhere.Path("hall.panel"), "devices=" + folder.Path("hall.devices") + "\r\n"},
        {folder.Path("hall.panel"), ""}};
    for (const auto& [file, line] : rows) {
        CAPTURE(file);
        {
            Answer replace("Save As", IDYES);
            Answer answer("Save As", IDOK, [&file = file] {
                for (const int field : {0x480, 0x47C}) {
                    SetDlgItemTextA(FindWindowA("#32770", "Save As"), field, file.c_str());
                }
            });
            DeleteFileA(file.c_str());
            program.Command(CMD_SAVE_AS);
        }
        const std::string saved = ReadBytes(file);
        CHECK(Contains(saved, "\"A\""));
        CHECK((line.empty() ? !Contains(saved, "devices=") : Contains(saved, line)));
        CHECK(program.Has("D"));
    }
}

TEST_CASE("the text of the device file is saved whole, and nobody's change is lost unasked") {
    Program program("size=300,200\r\n");
    const std::string file = program.Folder().Write("hall.devices", "# hall\nD*device=simulated\n");
    program.OpenNamed("hall.panel", "");
    program.Command(CMD_DEVICES);
    CHECK(program.Shown(IDC_DEVICES_TEXT) == "# hall\r\nD*device=simulated\r\n");
    program.TypeText("D*gain=float,0,10,3");
    CHECK(program.Shown(IDC_DEVICES_TOLD) == "Not saved");
    program.Do(CMD_DEVICES_SAVE);
    CHECK(ReadBytes(file) == "# hall\nD*device=simulated\nD*gain=float,0,10,3"); // line ends as they were
    CHECK(program.Folder().Names() == std::vector<std::string>{"hall.devices", "hall.panel", "test.panel"});
    Poll(ph_Find(program.Root(), "A"));
    CHECK(Value(ph_Find(program.Root(), "A")) == 3.0F);

    program.TypeText("0");
    WriteBytes(file, "E*device=simulated\n");
    for (const auto& [button, text] : {std::pair(IDNO, "E*device=simulated\n"), {IDYES, "# hall"}}) {
        Answer asked("Panel", button);
        program.Do(CMD_DEVICES_SAVE);
        CHECK(Contains(asked.Question(), "hall.devices was changed by another program"));
        CHECK(ReadBytes(file).starts_with(text));
    }
    program.Do(CMD_DEVICES_SAVE); // it is asked once
    CHECK(Contains(ReadBytes(file), "0,10,30"));

    program.TypeText("#");
    for (const auto& [command, button] :
         {std::pair(CMD_EXIT, IDCANCEL), {CMD_DEVICES_RELOAD, IDCANCEL}, {CMD_DEVICES_RELOAD, IDYES}}) {
        Answer asked("Panel", button);
        command == CMD_EXIT ? program.Command(command) : program.Do(command);
        CHECK(asked.Question() == "Save the changes to hall.devices?");
        CHECK_FALSE(program.HasEnded());
    }
    CHECK(ReadBytes(file).ends_with("#"));
    CHECK(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    program.TypeText("#");
    {
        Answer told("Panel", IDOK);
        program.Do(CMD_DEVICES_SAVE);
        CHECK(told.Question().starts_with("Cannot save " + file));
    }
    SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    CHECK(program.Shown(IDC_DEVICES_TOLD) == "Not saved");
    Answer asked("Panel", IDNO);
    program.Do(CMD_DEVICES_RELOAD);
    CHECK_FALSE(program.Shown(IDC_DEVICES_TEXT).ends_with("##"));
}

TEST_CASE("what is no text is left alone, and who only operates a panel does not come to its devices") {
    Program program("size=300,200\r\n");
    const std::string bytes = std::string("D*device=simulated\n\0\n", 21);
    program.Folder().Write("hall.devices", bytes);
    program.OpenNamed("hall.panel", "");
    program.Command(CMD_DEVICES);
    CHECK(program.Shown(IDC_DEVICES_TOLD) == "This file cannot be edited here: it is no text");
    program.Do(CMD_DEVICES_SAVE);
    CHECK(ReadBytes(program.Folder().Path("hall.devices")) == bytes);
    SendMessageA(program.Window(), WM_CLOSE, 0, 0);

    program.OpenNamed("hall.panel", "lock=x\r\n");
    CHECK_FALSE(program.Item(CMD_DEVICES).enabled);
    program.Command(CMD_DEVICES);
    CHECK_FALSE(IsWindowVisible(program.Window()));
    CommandLine operate;
    operate.operate = true;
    const Program operated("size=300,200\r\n", operate);
    operated.Command(CMD_DEVICES);
    for (HWND window = nullptr;
         (window = FindWindowExA(nullptr, window, "PanelDevices", nullptr)) != nullptr;) {
        CHECK_FALSE(IsWindowVisible(window));
    }
}

TEST_CASE("a device that is added fits the text it is added to") {
    Program program("size=300,200\r\n");
    program.Folder().Write("hall.devices", "device1*device=simulated");
    program.OpenNamed("hall.panel", "");
    program.Command(CMD_DEVICES);
    std::string fault;
    const auto add = [&](const char* name, int kind) {
        Answer answer("Add Device", IDOK, [&] {
            const HWND dialog = FindWindowA("#32770", "Add Device");
            SendDlgItemMessageA(dialog, IDC_ADD_KIND, CB_SETCURSEL, static_cast<WPARAM>(kind), 0);
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_ADD_KIND, CBN_SELCHANGE), 0);
            if (*name != '\0') {
                SetDlgItemTextA(dialog, IDC_ADD_NAME, "A");
                SendMessageA(dialog, WM_COMMAND, IDOK, 0); // a control has that name
                char text[256] = "";
                GetDlgItemTextA(dialog, IDC_ADD_FAULT, text, sizeof text);
                fault = text;
                SetDlgItemTextA(dialog, IDC_ADD_NAME, name);
            }
        });
        program.Do(CMD_DEVICES_ADD);
    };
    add("", 0);
    CHECK(program.Shown(IDC_DEVICES_TEXT)
              .starts_with("device1*device=simulated\r\n\r\nDEVICE2*device=simulated\r\n"));
    add("Desk", 1);
    CHECK(fault == "This cannot be declared: the name is taken");
    CHECK(program.Shown(IDC_DEVICES_TEXT).ends_with("\r\n\r\nDesk*device=osc,127.0.0.1:10023,x32\r\n"));
    CHECK(ListView_GetItemCount(program.Below(program.Window(), WC_LISTVIEWA)) == 0);
    program.Do(CMD_DEVICES_SAVE);
    CHECK(program.Has("Desk"));
    CHECK(program.Has("DEVICE2"));
}

TEST_SUITE_END();
