#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("SwitchButton");

namespace {

struct Fixture {
    explicit Fixture(TestPanel::Visibility visibility = TestPanel::Hidden) : panel(visibility) {
        button = panel.Create("BTRISTATEBUTTON", "Switch");
        LoadLines(button, "connection=Target|interval=100000");
    }
    TestPanel panel;
    Recorder target{panel, "Target"};
    HWND button = nullptr;
};

// The face is shaded in columns when it is on and in rows when it is off.
bool LooksOn(HWND button) {
    ObjectOf(button).flags = 0; // no focus frame
    const Picture picture(button);
    return picture.At(2, 20) != picture.At(50, 20) && picture.At(50, 2) == picture.At(50, 20);
}

} // namespace

TEST_CASE_FIXTURE(Fixture, "clicks switch on and off in turn") {
    Load(button, "caption=");
    CHECK(Text(button) == "0");
    for (const int sent : {1, 0, 1}) {
        PressButton(button);
        CHECK(target.sets.empty());
        CHECK(GetCapture() == button);
        CHECK(LooksOn(button) == (sent == 0)); // the face is the old one while it is held down
        ReleaseButton(button);
        CHECK(target.Take() == std::to_string(sent));
        CHECK(Text(button) == std::to_string(sent));
        CHECK(LooksOn(button) == (sent == 1));
        ReleaseButton(button); // without a press
        CHECK(target.Take().empty());
    }
    Load(button, "properties=5,-3");
    Click(button);
    Click(button);
    CHECK(target.Take() == "-3 5");
    PressButton(button);
    SetCapture(panel.Window()); // taken away: nothing is switched
    ReleaseButton(button);
    ReleaseCapture();
    CHECK(target.Take().empty());
    CHECK(LooksOn(button));
}

TEST_CASE("a switch that is left while it is held stays as it is") {
    Fixture fixture(TestPanel::Visible);
    MoveCursor(fixture.panel, 30, 30);
    for (const bool back : {false, true}) {
        PressButton(fixture.button);
        MoveCursor(fixture.panel, 300, 300);
        if (back) {
            MoveCursor(fixture.panel, 40, 30);
        }
        ReleaseButton(fixture.button);
        CHECK(fixture.target.Take() == (back ? "1" : ""));
    }
}

TEST_CASE_FIXTURE(Fixture, "each direction has its question") {
    LoadLines(button, "caption=Amplifier|confirmwhenreleased=Off?\\nSure?");
    CHECK(Text(button, "confirm").empty());
    Click(button); // goes on unasked
    CHECK(target.Take() == "1");
    for (const int command : {IDNO, IDYES}) {
        Answer answer("Amplifier", command);
        Click(button);
        CHECK(answer.Question() == "Off?\nSure?");
        CHECK(target.Take() == (command == IDYES ? "0" : ""));
        CHECK(Text(button) == (command == IDYES ? "0" : "1"));
    }
    Load(button, "confirm=Both");
    // It went on by itself while it was asked whether it should.
    Answer yes("Amplifier", IDYES, [this] {
        int on = 1;
        Send(button, COMMAND_SET, DATATYPE_INTEGER, &on);
    });
    Click(button);
    CHECK(yes.Question() == "Both");
    CHECK(target.Take() == "1 1");
}

TEST_CASE_FIXTURE(Fixture, "the caption comes from a second binding") {
    panel.Declare("DSP1*device=simulated\nDSP1*label=text,,,Front left,\n");
    CHECK(Load(button, "function1=DSP1*label") == 1);
    CHECK(!IsMarked(button));
    CHECK(Text(button, "caption") == "Front left");
    ph_SetParameter(panel.Root(), "DSP1*label", "Sub");
    CHECK(!IsMarked(button));
    CHECK(Text(button, "caption") == "Sub");
    Load(button, "function1=Label*caption");
    CHECK(IsMarked(button));
    panel.Create("BBUTTON", "Label");
    CHECK(!IsMarked(button)); // it came after it was bound
    CHECK(Text(button, "caption") == "Click!");
}

TEST_CASE_FIXTURE(Fixture, "a set takes one of the two values and sends a change") {
    const auto set = [this](int value) { return Send(button, COMMAND_SET, DATATYPE_INTEGER, &value); };
    CHECK(set(7) == 0);
    CHECK(set(1) == 1);
    CHECK(Text(button) == "1");
    CHECK(set(1) == 1);
    CHECK(set(0) == 1);
    CHECK(target.Take() == "1 0");
}

TEST_CASE_FIXTURE(Fixture,
                  "the image has a dark and a lit face, and of three one for a switch that is held down") {
    struct Face {
        COLORREF lamp, key;
    };
    for (const bool hasThree : {false, true}) {
        CAPTURE(hasThree);
        LoadLines(button, "caption=|value=0");
        REQUIRE(Load(button, hasThree ? "bitmap=.\\Controls\\SWITCHBUTTON_lamp_red_32x28.bmp"
                                      : "bitmap=.\\Controls\\SWITCHBUTTON_green_48x24.bmp") == 1);
        CHECK(SizeText(button) == (hasThree ? "32 x 28" : "48 x 24"));
        const auto face = [this, hasThree] {
            ObjectOf(button).flags = 0;
            const Picture picture(button);
            return hasThree ? Face{picture.At(16, 6), picture.At(16, 20)} : Face{picture.At(24, 12), 0};
        };
        const Face off = face();
        PressButton(button);
        const Face held = face();
        ReleaseButton(button);
        const Face on = face();
        CHECK(on.lamp != off.lamp);
        CHECK(on.key == off.key);
        CHECK((held.key != off.key) == hasThree);
        CHECK((held.lamp == on.lamp) == !hasThree); // of two it is the lit one
        CHECK((!hasThree || (GetRValue(held.lamp) < 100 && GetRValue(on.lamp) > 200)));
    }
}

TEST_SUITE_END();
