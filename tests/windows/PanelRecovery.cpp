// What Panel.exe brings back of a panel when it was ended without being asked to.

#include "logic/editing/RecoveryCopy.h"
#include "tests/windows/PanelProgram.h"

#include <algorithm>

namespace {

constexpr const char* PANEL = "size=300,200\r\n"
                              "control=0x00000000 KNOB \"A\" 0x50010000 40,40,87,87\r\n"
                              "A*properties=0,100,50\r\n"
                              "control=0x00000000 BSTATIC \"B\" 0x50000000 140,60,187,107\r\n";

// Names of the copies that lie in the folder.
std::vector<std::string> Copies(const TestFolder& folder) {
    std::vector<std::string> names = folder.Names();
    std::erase_if(names, [](const std::string& name) { return !name.ends_with(".copy"); });
    return names;
}

} // namespace

TEST_CASE("what was not saved is offered after a crash, to one program, and opens as it was") {
    const TestFolder folder;
    const std::string file = folder.Write("a.panel", PANEL);
    const std::string others = folder.Write("other.panel", PANEL);
    std::string edited;
    {
        PanelProgram program(folder, file);
        program.FindFrame();
        PanelProgram operated(folder, others); // its values change, and nobody edits it
        operated.FindFrame();
        PostMessageA(operated.Below(operated.Panel(), "KNOB"), WM_KEYDOWN, VK_UP, 0);
        program.Command(CMD_EDIT_MODE);
        program.Drag({60, 60}, {100, 150});
        program.Click({160, 80});
        program.Command(CMD_DELETE);
        REQUIRE(WaitFor([&] { return Copies(folder).size() == 1; }));

        PanelProgram another(folder, others); // what lives is offered to nobody
        another.FindFrame();
        another.Command(CMD_EDIT_MODE);
        another.Command(CMD_SELECT_ALL);
        another.Command(CMD_DELETE);
        REQUIRE(WaitFor([&] { return Copies(folder).size() == 2; }));
        PostMessageA(another.Frame(), WM_CLOSE, 0, 0);
        CHECK(Contains(another.Question(), "Save the changes"));
        another.Answer(IDNO);
        CHECK(WaitFor([&] { return Copies(folder).size() == 1; }));

        const auto copy = logic::ParseRecoveryText(ReadBytes(folder.Path(Copies(folder).front())));
        REQUIRE(copy);
        edited = copy->panel;
        CHECK(Contains(edited, "\"A\" 0x50010000 80,128,127,175"));
        CHECK_FALSE(Contains(edited, "\"B\""));
        program.Kill();
    }
    PanelProgram next(folder, others);
    const std::string question = next.Question();
    CHECK(Contains(question, file));
    CHECK(Contains(question, " with 2 unsaved changes."));
    {
        PanelProgram third(folder, others); // the second one has it
        third.FindFrame();
        CHECK(third.Close() == 0);
    }
    next.Answer(IDYES);
    next.FindFrame();
    CHECK(WaitFor([&] { return Contains(next.Title(), "a.panel *"); }));
    CHECK(ReadBytes(file) == PANEL);
    CHECK(Copies(folder).size() == 1); // as long as it is not saved
    next.Command(CMD_SAVE);
    CHECK(ReadBytes(file) == edited);
    CHECK(WaitFor([&] { return Copies(folder).empty(); }));
    CHECK(next.Close() == 0);
    const std::vector<std::string> left = folder.Names();
    CHECK(left == std::vector<std::string>{"a.panel", "other.panel"});
}

TEST_CASE("a copy is kept, deleted or opened as the user says, and a damaged one is no copy") {
    const TestFolder folder;
    const std::string text = logic::RecoveryText({"", "", 1, PANEL});
    folder.Write("1.copy", text);
    folder.Write("2.copy", text.substr(0, text.size() - 1));
    folder.Write("3.new", text); // ended while it was written
    folder.Write("3.lock", "");
    for (const int answer : {IDCANCEL, IDNO}) {
        PanelProgram program(folder, "");
        CHECK(Contains(program.Question(), "an untitled panel"));
        CHECK(folder.Names() == std::vector<std::string>{"1.copy", "1.lock"});
        program.Answer(answer);
        program.FindFrame();
        CHECK(program.Title() == "Panel"); // with the start page
        CHECK(program.Close() == 0);
        CHECK(folder.Names().size() == (answer == IDCANCEL ? 1 : 0));
    }
    folder.Write("1.copy", text);
    PanelProgram program(folder, "");
    program.Question();
    program.Answer(IDYES);
    program.FindFrame();
    CHECK(WaitFor([&] { return Contains(program.Title(), "Untitled *"); }));
    CHECK(program.Below(program.Panel(), "KNOB") != nullptr);
    program.Kill();

    // The file that is opened comes first, then what was written last. Its devices are those it had.
    const std::string devices = folder.Write("net.devices", "AMP1*device=simulated\r\n");
    const std::string asked = folder.Write("asked.panel", PANEL);
    const std::string offered[] = {asked, "C:\\new.panel", "C:\\old.panel"};
    for (const int i : {2, 0, 1}) {
        folder.Write(std::to_string(i) + ".copy", logic::RecoveryText({offered[i], devices, 1, PANEL}));
        Sleep(30); // the times of the files differ
    }
    PanelProgram last(folder, asked);
    for (const std::string& file : offered) {
        CHECK(Contains(last.Question(), "saving " + file + ". There is a copy of 2"));
        CHECK(Contains(last.Question(), " with 1 unsaved change."));
        last.Answer(IDNO);
    }
    last.FindFrame();
    CHECK(last.Title() == "asked.panel - Panel");
    CHECK(Copies(folder).empty());
}
