// Strips that are bound to the channels of a device, and copied in a row.

#include "tests/windows/Buttons.h"
#include "tests/windows/PanelCommands.h"

#include <commctrl.h>

#include <initializer_list>

TEST_SUITE_BEGIN("PanelStrips");

namespace {

constexpr const char* DEVICES = "FOH*device=simulated\r\n"
                                "FOH*ch01.fader=float,-80,10,-12,dB\r\nFOH*ch02.fader=float,-80,10,-12,dB\r\n"
                                "FOH*ch03.fader=float,-80,10,-12,dB\r\nFOH*ch04.fader=float,-80,10,-12,dB\r\n"
                                "FOH*ch01.mute=integer,0,1,0\r\nFOH*ch02.mute=integer,0,1,0\r\n"
                                "FOH*ch03.mute=integer,0,1,0\r\nFOH*main=float,-80,10,-12,dB\r\n"
                                "AMP1*device=simulated\r\n"
                                "AMP1*gain1=float,-80,18,-20,dB\r\nAMP1*gain2=float,-80,18,-20,dB\r\n";

// The strips stand the other way round than they are saved.
constexpr const char* STRIPS = "size=600,400\r\n"
                               "control=0x00000000 MIXER \"Left\" 0x54000000 200,0,248,252\r\n"
                               "control=0x00000000 MIXER \"Right\" 0x54000000 100,0,148,252\r\n"
                               "Right*SOLO*function=FOH*main\r\n"
                               "control=0x00000000 KNOB \"Knob\" 0x50010000 300,0,347,47\r\n";

struct Strips : Editing {
    explicit Strips(const char* panel, const char* devices = DEVICES) : Editing(panel) {
        ph_LoadDevices(Root(), Folder().Write("hall.devices", devices).c_str());
    }
    void CheckLines(std::initializer_list<const char*> lines) const {
        const std::string saved = Saved();
        for (const char* line : lines) {
            CHECK_MESSAGE(Contains(saved, line), std::string(line));
        }
    }
    // Runs the command, whose dialog is filled in and answered with OK.
    void Ask(int command, const char* title, const std::function<void(HWND dialog)>& fill) {
        const Answer answer(title, IDOK, [&] { fill(FindWindowA("#32770", title)); });
        Command(command);
    }
};

std::string CellOf(HWND dialog, int row, int column) {
    char text[256] = "";
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendDlgItemMessageA(dialog, IDC_CHANNEL_TABLE, LVM_GETITEMTEXTA, static_cast<WPARAM>(row),
                        reinterpret_cast<LPARAM>(&item));
    return text;
}

// Of the part with that name, "pattern, first, last".
std::string RowOf(HWND dialog, const std::string& part) {
    for (int row = 0; row < SendDlgItemMessageA(dialog, IDC_CHANNEL_TABLE, LVM_GETITEMCOUNT, 0, 0); ++row) {
        if (CellOf(dialog, row, 0) == part) {
            return CellOf(dialog, row, 1) + ", " + CellOf(dialog, row, 2) + ", " + CellOf(dialog, row, 3);
        }
    }
    return "no such part";
}

} // namespace

TEST_CASE("strips are bound to channels that count up, in the order in which they stand") {
    Strips program(STRIPS);
    program.Click({110, 240});
    program.Click({210, 240}, MK_CONTROL);
    std::string status;
    program.Ask(CMD_BIND_CHANNEL, "Bind Channel", [&](HWND dialog) {
        CHECK(RowOf(dialog, "Fader") == "ch%02i.fader, FOH*ch01.fader, FOH*ch02.fader");
        CHECK(RowOf(dialog, "MUTE") == "ch%02i.mute, FOH*ch01.mute, FOH*ch02.mute");
        CHECK(RowOf(dialog, "SOLO") == ", , "); // nothing is like it
        SetDlgItemTextA(dialog, IDC_CHANNEL_FIRST, "none");
        CHECK_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
        SetDlgItemTextA(dialog, IDC_CHANNEL_FIRST, "3");
        CHECK(RowOf(dialog, "MUTE") == "ch%02i.mute, FOH*ch03.mute, FOH*ch04.mute (not there)");
        status = TextOf(GetDlgItem(dialog, IDC_CHANNEL_STATUS));
    });
    CHECK(status == "4 bindings in 2 selected, 1 of them to what the device does not have");
    program.CheckLines({"Right*Fader*function=FOH*ch03.fader\r\n", "Right*MUTE*function=FOH*ch03.mute\r\n",
                        "Left*Fader*function=FOH*ch04.fader\r\n", "Left*MUTE*function=FOH*ch04.mute\r\n",
                        "Right*SOLO*function=FOH*main\r\n"});
    program.CheckHistory(1);
    // A control without parts, and another device.
    program.Click({320, 20});
    program.Ask(CMD_BIND_CHANNEL, "Bind Channel", [&](HWND dialog) {
        const HWND device = GetDlgItem(dialog, IDC_CHANNEL_DEVICE);
        SendMessageA(device, CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("AMP1"));
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_CHANNEL_DEVICE, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(device));
        CHECK(RowOf(dialog, "(itself)") == ", , ");
        CHECK_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
        SetDlgItemTextA(dialog, IDC_CHANNEL_PATTERN, "gain%i");
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDC_CHANNEL_PATTERN, CBN_EDITCHANGE), 0);
        CHECK(RowOf(dialog, "(itself)") == "gain%i, AMP1*gain1, AMP1*gain1");
    });
    program.Check("Knob*function=AMP1*gain1\r\n");
    program.CheckHistory(1);
}

TEST_CASE("copies in a row count up their names, captions and bindings") {
    Strips program("size=600,400\r\n"
                   "control=0x00000000 MIXER \"ch01\" 0x54000000 10,0,58,252\r\n"
                   "ch01*Fader*function=FOH*%n.fader\r\n"
                   "ch01*MUTE*function=FOH*ch01.mute\r\n"
                   "ch01*Label*caption=Mic 1\r\n"
                   "control=0x00000000 KNOB \"Gain 1\" 0x50010000 70,0,117,47\r\n"
                   "Gain 1*function=AMP1*gain1\r\n"
                   "Gain 1*connection=ch01*Fader;Main\r\n"
                   "control=0x00000000 BBUTTON \"Push\" 0x50000000 70,60,110,80\r\n"
                   "Push*click=Gain 1*value=0\r\n"
                   "control=0x00000000 KNOB \"Main\" 0x50010000 500,300,547,347\r\n",
                   ""); // devices that are not there yet
    const auto copy = [&](const char* count, bool counts) {
        program.Click({20, 240});
        program.Click({90, 20}, MK_CONTROL);
        program.Click({80, 70}, MK_CONTROL);
        program.Ask(CMD_DUPLICATE_ROW, "Duplicate in a Row", [&](HWND dialog) {
            CHECK(TextOf(GetDlgItem(dialog, IDC_ROW_X)) == "115"); // as wide as they are, and a gap
            CheckDlgButton(dialog, IDC_ROW_COUNTS, counts ? BST_CHECKED : BST_UNCHECKED);
            SetDlgItemTextA(dialog, IDC_ROW_COUNT, "many");
            SendMessageA(dialog, WM_COMMAND, IDOK, 0);
            CHECK(TextOf(GetDlgItem(dialog, IDC_ROW_FAULT)) == "This is a whole number from 1 to 256.");
            SetDlgItemTextA(dialog, IDC_ROW_COUNT, count);
            SetDlgItemTextA(dialog, IDC_ROW_Y, "5");
        });
        program.Tick();
    };
    copy("2", true);
    CHECK(program.Status().starts_with("6 selected"));
    program.CheckLines({"MIXER \"ch02\" 0x56000000 125,5,173,257", "MIXER \"ch03\" 0x56000000 240,10,288,262",
                        "ch02*Fader*function=FOH*%n.fader\r\n", "ch03*MUTE*function=FOH*ch03.mute\r\n",
                        "ch02*Label*caption=Mic 2\r\n", "ch03*Label*caption=Mic 3\r\n",
                        "Gain 2*function=AMP1*gain2\r\n", "Gain 3*function=AMP1*gain3\r\n",
                        "Gain 2*connection=ch02*Fader;Main\r\n", "Gain 3*connection=ch03*Fader;Main\r\n",
                        "Push 3*click=Gain 3*value=0\r\n"});
    program.CheckHistory(1);
    copy("1", false);
    program.CheckLines({"ch2*Fader*function=FOH*ch01.fader\r\n", "ch2*MUTE*function=FOH*ch01.mute\r\n",
                        "ch2*Label*caption=Mic 1\r\n", "Gain 2*function=AMP1*gain1\r\n",
                        "Gain 2*connection=ch2*Fader;Main\r\n", "Push 2*click=Gain 2*value=0\r\n"});
    program.CheckHistory(1);
}

TEST_SUITE_END();
