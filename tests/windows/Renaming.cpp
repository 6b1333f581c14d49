// Other names for controls: what named them goes on naming them, in one step that can be undone.

#include "Panel/editing/PanelEdits.h"
#include "Panelhost/Renaming.h"
#include "Panelhost/Root.h"
#include "tests/windows/PanelProgram.h"

#include <tuple>

TEST_SUITE_BEGIN("Renaming");

namespace {

// A panel that uses every way to name a control there is.
constexpr const char* PANEL = "size=600,400\r\n"
                              "control=0x00000000 MIXER \"ch01\" 0x54000000 0,0,48,252\r\n"
                              "ch01*Fader*function=FOH*%n.fader;AMP1*gain1\r\n"
                              "ch01*MUTE*connection=%n*SOLO\r\n"
                              "ch01*control=0x00000000 BBUTTON \"Extra\" 0x50000000 0,0,20,20\r\n"
                              "ch01*Extra*click=Fader*value=0\r\n"
                              "control=0x00000000 KNOB \"Knob\" 0x50010000 60,0,107,47\r\n"
                              "Knob*connection=CH01*Fader;ch01*Extra*value;Other\r\n"
                              "control=0x00000000 BBUTTON \"Push\" 0x50010000 120,0,160,40\r\n"
                              "Push*click=ch01*Fader*connection=ch01*SOLO;Knob\r\n"
                              "control=0x00000000 SCALE \"Scale\" 0x50000000 160,0,180,40\r\n"
                              "Scale*beside=Knob\r\n"
                              "control=0x00000000 MINIROUTING \"Matrix\" 0x50000000 200,0,300,100\r\n"
                              "Matrix*inputs=2\r\n"
                              "Matrix*outputs=2\r\n"
                              "Matrix*inputnames=ch0%i*Label\r\n"
                              "Matrix*routes=Knob*r%i_%o\r\n"
                              "control=0x00000000 IMESSAGING \"Mail\" 0x50000000 300,0,332,32\r\n"
                              "Mail*subject=%n: %{Knob*value} of %{ch01*Fader*value}\r\n"
                              "control=0x00000000 CLOCK \"Clock\" 0x50000000 340,0,400,40\r\n"
                              "Clock*click=Knob*value=1\r\n";

using Losses = std::vector<std::tuple<std::string, std::string, std::string, std::string, int>>;

int Rename(const TestPanel& panel, const char* object, const char* name, int anyway = 0,
           Losses* losses = nullptr) {
    return ph_RenameControl(
        panel.Root(), object, name, anyway,
        [](const PH_RENAMELOSS* loss, void* context) {
            if (context != nullptr) {
                static_cast<Losses*>(context)->emplace_back(loss->object, loss->keyword, loss->text,
                                                            loss->wanted, loss->reason);
            }
        },
        losses);
}

bool HasLine(const TestPanel& panel, const std::string& line) {
    return Contains(panel.Saved(), "\r\n" + line + "\r\n");
}

} // namespace

TEST_CASE("whatever names a control follows its new name, and so does what is inside it") {
    const TestPanel panel;
    CHECK(panel.Declare("AMP1*device=simulated\r\nAMP1*gain1=float,-80,18,-20,dB\r\n"
                        "FOH*device=simulated\r\nFOH*ch01.fader=float,-80,10,-12,dB\r\n") == 2);
    panel.Open(PANEL);
    const std::string before = panel.Saved();
    const HWND fader = panel.Find("ch01*Fader");
    CHECK(Rename(panel, "CH01", "Vocal") == PH_RENAME_LOSS); // the names of the matrix
    CHECK(panel.Saved() == before);
    Losses losses;
    CHECK(Rename(panel, "ch01", "Vocal", 1, &losses) == PH_RENAMED);
    CHECK(losses == Losses{{"Matrix", "inputnames", "ch0%i*Label", "ch0%i*Label", PH_LOSS_MEANING}});
    CHECK(a_IsChanged(panel.Root()));
    for (const char* line :
         {"Vocal*Fader*function=FOH*ch01.fader;AMP1*gain1", "Vocal*MUTE*connection=%n*SOLO",
          "Vocal*Extra*click=Fader*value=0", "Knob*connection=Vocal*Fader;Vocal*Extra*value;Other",
          "Push*click=Vocal*Fader*connection=Vocal*SOLO;Knob", "Matrix*inputnames=ch0%i*Label",
          "Mail*subject=%n: %{Knob*value} of %{Vocal*Fader*value}"}) {
        CHECK_MESSAGE(HasLine(panel, line), line);
    }
    CHECK_FALSE(Contains(panel.Saved(), "\"ch01\""));
    CHECK(panel.Find("Vocal*Fader") == fader);
    CHECK(panel.Find("ch01") == nullptr);
    CHECK(panel.Find("ch01*Fader") == nullptr);
    // What was bound is bound.
    Poll(fader);
    CHECK(SetValue(fader, -3) != 0);
    CHECK(panel.Parameter("FOH*ch01.fader") == "-3");
    CHECK(ObjectOf(panel.Find("Knob")).requests.front().target == &ObjectOf(fader));

    CHECK(Rename(panel, "Knob", "Volume of the hall") == PH_RENAME_LOSS); // the clock's click is short
    losses.clear();
    CHECK(Rename(panel, "Knob", "Dial") == PH_RENAMED);
    for (const char* line : {"Push*click=Vocal*Fader*connection=Vocal*SOLO;Dial", "Scale*beside=Dial",
                             "Matrix*routes=Dial*r%i_%o", "Clock*click=Dial*value=1",
                             "Mail*subject=%n: %{Dial*value} of %{Vocal*Fader*value}"}) {
        CHECK_MESSAGE(HasLine(panel, line), line);
    }
    CHECK(Rename(panel, "Dial", "A long name", 1, &losses) == PH_RENAMED);
    CHECK(losses == Losses{{"Clock", "click", "Dial*value=1", "A long name*value=1", PH_LOSS_LENGTH}});
    CHECK(HasLine(panel, "Clock*click=Dial*value=1"));

    // A panel of the new names is the same panel.
    const TestPanel again;
    again.Open(panel.Saved());
    CHECK(again.Saved() == panel.Saved());
}

TEST_CASE("names that a control cannot have") {
    const TestPanel panel;
    panel.Open(PANEL);
    panel.Declare("AMP1*device=simulated\r\n");
    const std::string before = panel.Saved();
    const std::tuple<const char*, const char*, int> refused[] = {
        {"Nobody", "X", PH_RENAME_NO_CONTROL}, {"AMP1", "X", PH_RENAME_NO_CONTROL},
        {nullptr, "X", PH_RENAME_NO_CONTROL},  {"Knob", nullptr, PH_RENAME_NO_NAME},
        {"Knob", "", PH_RENAME_NO_NAME},       {"Knob", " X", PH_RENAME_NO_NAME},
        {"Knob", "a*b", PH_RENAME_NO_NAME},    {"Knob", "a=b", PH_RENAME_NO_NAME},
        {"Knob", "a;b", PH_RENAME_NO_NAME},    {"Knob", "50%", PH_RENAME_NO_NAME},
        {"Knob", "PUSH", PH_RENAME_TAKEN},     {"Knob", "amp1", PH_RENAME_TAKEN},
        {"ch01*Fader", "X", PH_RENAME_PART},   {"ch01*Extra", "solo", PH_RENAME_TAKEN},
    };
    for (const auto& [object, name, answer] : refused) {
        CHECK(Rename(panel, object, name, 1) == answer);
    }
    CHECK(Rename(panel, "Knob", std::string(64, 'x').c_str(), 1) == PH_RENAME_NO_NAME);
    CHECK(ph_RenameControl(nullptr, "Knob", "X", 1, nullptr, nullptr) == PH_RENAME_NO_CONTROL);
    CHECK(panel.Saved() == before);
    CHECK(Rename(panel, "Knob", std::string(63, 'x').c_str(), 1) == PH_RENAMED);
    CHECK(Rename(panel, std::string(63, 'X').c_str(), "KNOB", 1) == PH_RENAMED); // another case of letters
    CHECK(Rename(panel, "Knob", "Knob", 1) == PH_RENAMED);
    CHECK(Rename(panel, "ch01*Extra", "Push", 1) == PH_RENAMED); // free inside the strip
}

TEST_CASE("a name and all that follows it are one step of the history, which other steps reach over") {
    const TestPanel panel;
    panel.Open(PANEL);
    ph_SetMode(panel.Root(), 1);
    std::vector<std::string> told;
    PanelEdits edits(panel.Root(), [&](const std::string& text) { told.push_back(text); });
    HOSTINFO* knob = &ObjectOf(panel.Find("Knob"));
    std::vector<std::string> states{panel.Saved()};
    const auto next = [&] {
        CHECK(states.back() != panel.Saved());
        states.push_back(panel.Saved());
    };
    edits.Do("Move", {knob}, [&] {
        Load(knob->window, "properties=0,1,0");
        return std::vector<HOSTINFO*>{};
    });
    next();
    CHECK(Rename(panel, "Knob", "Dial") == PH_RENAMED);
    next();
    CHECK(Rename(panel, "ch01", "Choir", 1) == PH_RENAMED);
    next();
    edits.Delete({knob});
    next();
    ph_SetMode(panel.Root(), 0); // a host renames while the panel is operated, too
    CHECK(Rename(panel, "Push", "Pushed") == PH_RENAMED);
    next();
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = states.size() - 1; i-- > 0;) {
            REQUIRE(edits.Undo());
            CHECK(panel.Saved() == states[i]);
        }
        CHECK_FALSE(edits.Undo());
        for (std::size_t i = 1; i < states.size(); ++i) {
            REQUIRE(edits.Redo());
            CHECK(panel.Saved() == states[i]);
        }
        CHECK_FALSE(edits.Redo());
    }
    CHECK(told.empty());
    for (int i = 0; i < 4; ++i) {
        edits.Undo();
    }
    CHECK(edits.History().RedoLabel() == "Rename");
    CHECK(edits.Redo() == std::vector<std::string>{"Dial"}); // which is selected
}

TEST_CASE("lines that are kept go with the object, and those who wait for a name get it") {
    const TestPanel panel;
    panel.Open("control=0x00000000 KNOB \"A\" 0x50010000 0,0,47,47\r\n"
               "A*news=1\r\n"
               "control=0x00000000 MINIEDIT \"S\" 0x50000000 0,60,100,160\r\n"
               "S*control=0x00000000 NOSUCHCLASS \"Part\" 0x50010000 20,20,36,36\r\n"
               "S*Part*more=1\r\n"
               "control=0x00000000 KNOB \"B\" 0x50010000 60,0,107,47\r\n"
               "B*connection=Soon\r\n");
    Losses losses;
    CHECK(Rename(panel, "A", "Soon", 0, &losses) == PH_RENAME_LOSS);
    CHECK(losses == Losses{{"B", "connection", "Soon", "Soon", PH_LOSS_MEANING}});
    CHECK(Rename(panel, "A", "Soon", 1) == PH_RENAMED);
    CHECK(Rename(panel, "S", "T") == PH_RENAMED);
    CHECK(ObjectOf(panel.Find("B")).requests.front().target == &ObjectOf(panel.Find("Soon")));
    for (const char* line : {"Soon*news=1", "T*Part*more=1",
                             "T*control=0x00000000 NOSUCHCLASS \"Part\" 0x50010000 20,20,36,36"}) {
        CHECK_MESSAGE(HasLine(panel, line), line);
    }
}

TEST_SUITE_END();
