// What is particular to the selector of a network channel, with the device that simulates a receiver.

#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("Dante");

namespace {

struct Fixture {
    Fixture() {
        panel.Declare("NET*device=simulated\nNET*rx1=subscription,300,01@Stage;Talk=02@Stage\n");
        CHECK(LoadLines(control, "function=NET*rx1|function1=NET*rx1.state|itemsfunction=NET*rx1.items"));
        Poll(control);
        MoveCursor(panel, 400, 5);
    }
    std::string Subscribed() const { return panel.Parameter("NET*rx1"); }
    std::string State() const { return panel.Parameter("NET*rx1.state"); }
    bool Awaits(const char* state) const {
        return Await([&] {
            ph_Tick(panel.Root());
            return State() == state;
        });
    }
    void Type(const char* text) const {
        SetFocus(control);
        SendMessageA(field, EM_SETSEL, 0, -1);
        for (; *text != '\0'; ++text) {
            SendMessageA(field, WM_CHAR, static_cast<unsigned char>(*text), 1);
        }
    }
    void Press(WPARAM key) const {
        SendMessageA(GetFocus(), WM_KEYDOWN, key, 1);
        PumpAll();
    }
    COLORREF Lamp() const {
        Poll(control);
        return Picture(control).At(1 + 8, 20);
    }

    TestPanel panel{TestPanel::Visible};
    HWND control = panel.Create("DANTECONTROL", "Receiver");
    HWND list = FindWindowExA(control, nullptr, "COMBOBOX", nullptr);
    HWND field = FindWindowExA(list, nullptr, "EDIT", nullptr);
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "a choice is resolved by the device, and the lamp shows how far it is") {
    CHECK(SendMessageA(list, CB_GETCOUNT, 0, 0) == 2);
    CHECK(TipOf(control) == "No subscription");
    const COLORREF none = Lamp();
    SetFocus(control);
    CHECK(GetFocus() == field);
    Press(VK_DOWN);
    Press(VK_DOWN);
    CHECK(TextOf(field) == "Talk");
    CHECK(Subscribed().empty());
    Press(VK_RETURN);
    CHECK(Subscribed() == "02@Stage");
    REQUIRE(Awaits("2"));
    const COLORREF resolving = Lamp();
    CHECK(TipOf(control) == "Resolving");
    REQUIRE(Awaits("1"));
    const COLORREF subscribed = Lamp();
    CHECK(TipOf(control) == "Subscribed");
    CHECK((none != resolving && resolving != subscribed && none != subscribed));

    Type("03@Stage"); // nobody offers it
    Press(VK_RETURN);
    CHECK(Subscribed() == "03@Stage");
    REQUIRE(Awaits("3"));
    Lamp();
    CHECK(TipOf(control) == "Unresolved");
    Type("nowhere");
    SetFocus(panel.Window());
    PumpAll();
    REQUIRE(Awaits("4"));
    Lamp();
    CHECK(TipOf(control) == "Wrong format");
    ph_SetParameter(panel.Root(), "NET*rx1", "01@Stage"); // by somebody else
    Poll(control);
    CHECK(TextOf(field) == "01@Stage");
    ph_SetParameter(panel.Root(), "NET*online", "0");
    CHECK(IsMarked(control));
    CHECK(TipOf(control) == "State not known");
    Load(control, "function1=");
    Poll(control);
    CHECK(TipOf(control) == "No subscription");
}

TEST_CASE_FIXTURE(Fixture, "a question stands before a choice, even when the field is left") {
    Load(control, "confirm=Sure?");
    for (const int command : {IDNO, IDYES}) {
        for (const bool isLeaving : {true, false}) {
            CAPTURE(command);
            CAPTURE(isLeaving);
            ph_SetParameter(panel.Root(), "NET*rx1", "");
            Poll(control);
            Answer answer("Receiver", command, [&] { // asked already, and not sent yet
                CHECK(Subscribed().empty());
            });
            Type("01@Stage");
            if (isLeaving) {
                SetFocus(panel.Window());
            } else {
                SendMessageA(field, WM_KEYDOWN, VK_RETURN, 1);
            }
            CHECK(Subscribed().empty());
            PumpAll();
            CHECK(answer.Question() == "Sure?");
            CHECK(Subscribed() == (command == IDYES ? "01@Stage" : ""));
            CHECK(TextOf(field) == Subscribed());
        }
    }
    // It ends with its question.
    Answer answer("Receiver", IDYES, [&] { PostMessageA(control, WM_CLOSE, 0, 0); });
    Type("02@Stage");
    SendMessageA(field, WM_KEYDOWN, VK_RETURN, 1);
    PumpAll();
    CHECK(answer.Question() == "Sure?");
    PumpAll();
    CHECK_FALSE(IsWindow(control));
}

TEST_CASE_FIXTURE(Fixture, "its windows are the panel's while it is edited, and of any size") {
    MSG posted;
    ph_SetMode(panel.Root(), 1);
    for (HWND child : {list, field}) {
        SendMessageA(child, WM_LBUTTONDOWN, MK_LBUTTON, At(2, 2));
        CHECK(TakePosted(panel.Window(), WM_LBUTTONDOWN, posted));
        SendMessageA(child, WM_KEYDOWN, VK_DOWN, 1);
        CHECK(TakePosted(panel.Window(), WM_KEYDOWN, posted));
    }
    CHECK(TextOf(field).empty());
    ph_SetMode(panel.Root(), 0);
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}, {184, 24}}) {
        SetWindowPos(control, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
        const Picture picture(control);
    }
    RECT place;
    GetWindowRect(list, &place);
    MapWindowPoints(nullptr, control, reinterpret_cast<POINT*>(&place), 2);
    CHECK((place.left == 21 && place.right == 183 && place.top >= 0 && place.bottom <= 24));
    SendMessageA(list, CB_SHOWDROPDOWN, TRUE, 0); // still a list of some lines
    RECT dropped;
    SendMessageA(list, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    CHECK(dropped.bottom - dropped.top > 40);
    SendMessageA(list, CB_SHOWDROPDOWN, FALSE, 0);
    CHECK(GetNextDlgTabItem(panel.Window(), field, FALSE) != field);
}

TEST_SUITE_END();
