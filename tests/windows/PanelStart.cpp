// What the program begins with: its start page, the panels that were opened last, and the place of its
// window.

#include "Panel/start/RecentFiles.h"
#include "Panel/start/WindowPlace.h"
#include "Panelhost/PropertyLines.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/PanelCommands.h"

#include <algorithm>

TEST_SUITE_BEGIN("PanelStart");

namespace {

std::string Text(const RECT& rectangle) {
    return a_GetRectString(rectangle);
}

HWND Page(const PanelUser& program) {
    return program.Part("PanelStart");
}

// The button of the page whose name begins so.
HWND Card(const PanelUser& program, const std::string& name) {
    HWND button = GetWindow(Page(program), GW_CHILD);
    while (button && !TextOf(button).starts_with(name)) {
        button = GetWindow(button, GW_HWNDNEXT);
    }
    return button;
}

// Unlike the program's loop it ends without a message that a question would take for its own.
void ServePosted(HWND window) {
    MSG message;
    while (PeekMessageA(&message, window, WM_APP, 0xBFFF, PM_REMOVE)) {
        DispatchMessageA(&message);
    }
}

RECT PlaceOfFrame(const PanelUser& program) {
    RECT place{};
    GetWindowRect(program.Frame(), &place);
    return place;
}

} // namespace

TEST_CASE(
    "a window's place is read as it was written, damaged ones are none, and all of it is on the screen") {
    WindowPlace read{{1, 2, 3, 4}, false, "before"};
    for (const char* text : {"", "10,20,30,40", "10,20,30,40\r\nnormal", "10,20,10,40\r\nnormal\r\n\r\n",
                             "10,20,30\r\nnormal\r\n\r\n", "10,20,2000000,40\r\nnormal\r\n\r\n"}) {
        CAPTURE(text);
        CHECK_FALSE(ReadWindowPlace(text, read));
        CHECK(read.panelFile == "before");
    }
    for (const WindowPlace& place :
         {WindowPlace{{-800, 20, 30, 40}, true, "C:\\a b.panel"}, WindowPlace{{0, 0, 1, 1}, false, ""}}) {
        CHECK(ReadWindowPlace(WindowPlaceText(place), read));
        CHECK(Text(read.place) == Text(place.place));
        CHECK(read.isMaximized == place.isMaximized);
        CHECK(read.panelFile == place.panelFile);
    }
    struct Row {
        RECT place;
        const char* moved;
    };
    for (const auto& [place, moved] :
         {Row{{200, 150, 400, 350}, "200,150,400,350"}, Row{{-300, 150, -100, 350}, "100,150,300,350"},
          Row{{5000, 5000, 5200, 5200}, "700,400,900,600"}, Row{{0, 0, 5000, 5000}, "100,50,900,600"}}) {
        CHECK(Text(MovedInto(place, {100, 50, 900, 600})) == moved);
    }
}

TEST_CASE("the files opened last come first, once each, and take their pictures along when they go") {
    const TestFolder folder;
    const RecentFiles recent(folder.Path("new\\settings"));
    CHECK(recent.List().empty());
    for (int i = 0; i < 20; ++i) {
        const std::string file = "C:\\panels\\" + std::to_string(i) + ".panel";
        recent.Add(file);
        REQUIRE(WriteBytes(recent.PictureOf(file), "picture"));
    }
    recent.Add("c:\\PANELS\\15.panel");
    std::vector<std::string> files = recent.List();
    REQUIRE(files.size() == RecentFiles::MOST);
    CHECK(files[0] == "c:\\PANELS\\15.panel");
    CHECK(files[1] == "C:\\panels\\19.panel");
    CHECK(std::count(files.begin(), files.end(), "C:\\panels\\15.panel") == 0);
    CHECK(ReadBytes(recent.PictureOf(files[0])) == "picture");
    CHECK(ReadBytes(recent.PictureOf("C:\\panels\\3.panel")).empty());
    recent.Remove("C:\\panels\\19.PANEL");
    CHECK(recent.List().size() == RecentFiles::MOST - 1);
    CHECK(ReadBytes(recent.PictureOf("C:\\panels\\19.panel")).empty());

    const RecentFiles nothing("");
    nothing.Add("C:\\a.panel");
    CHECK(nothing.List().empty());
    CHECK(nothing.PictureOf("C:\\a.panel").empty());
}

TEST_CASE("the start page opens panels, and drops those that are gone, by keys alone") {
    PanelHere program("size=300,200\r\nbackground=0x004080c0\r\n");
    const std::string other = program.Folder().Write("other.panel", "size=320,240\r\n");
    const std::string gone = program.Folder().Write("gone.panel", "size=320,240\r\n");
    const RecentFiles recent(program.Settings());
    REQUIRE(program.Open(gone));
    REQUIRE(program.Open(other));
    REQUIRE(program.Open(program.Folder().Path("test.panel")));
    program.Command(CMD_START_PAGE);
    CHECK(recent.List().size() == 3);
    CHECK(ReadBytes(recent.PictureOf(program.Folder().Path("test.panel"))).starts_with("\x89PNG"));

    const auto press = [&](WPARAM key, const std::string& held = "") {
        program.Type(key, held);
        return TextOf(GetFocus());
    };
    CHECK(TextOf(GetFocus()).starts_with("test, "));
    CHECK(press(VK_RIGHT).starts_with("other, "));
    CHECK(press(VK_TAB).starts_with("gone, "));
    CHECK(press(VK_TAB, "Shift").starts_with("other, "));
    CHECK(press(VK_HOME) == "New panel..., Ctrl+N");
    CHECK(press(VK_DOWN) == "Open..., Ctrl+O");
    CHECK(press(VK_DELETE) == "Open..., Ctrl+O"); // is on no list
    CHECK(press(VK_TAB).starts_with("test, "));
    press(VK_END);
    CHECK(Card(program, "Mixer, ") != nullptr);
    CHECK(TextOf(GetFocus()) == TextOf(GetWindow(GetWindow(Page(program), GW_CHILD), GW_HWNDLAST)));

    // One that is gone is said to be, and asked for.
    DeleteFileA(gone.c_str());
    CHECK(program.Open(other));
    program.Command(CMD_START_PAGE);
    REQUIRE(Await([&] {
        program.Tick();
        return TextOf(Card(program, "gone, ")).ends_with(", not found");
    }));
    for (const int answer : {IDNO, IDYES}) {
        SetFocus(Card(program, "gone, "));
        Answer asked("Panel", answer);
        SendMessageA(Card(program, "gone, "), BM_CLICK, 0, 0);
        ServePosted(Page(program));
        CHECK(asked.Question() == gone + " is not there any more.\n\nTake it off the list?");
        CHECK((Card(program, "gone, ") == nullptr) == (answer == IDYES));
    }
    SetFocus(Card(program, "other, "));
    press(VK_RETURN);
    CHECK_FALSE(IsWindowVisible(Page(program)));
    CHECK(program.Title() == "other.panel - Panel");

    program.Command(CMD_START_PAGE);
    SetFocus(Card(program, "test, "));
    press(VK_DELETE);
    CHECK(recent.List() == std::vector<std::string>{other});
}

TEST_CASE("the program begins with the page, where its window stood before, but never beside the screen") {
    const TestFolder folder;
    const std::string file = folder.Write("test.panel", "size=300,200\r\n");
    const RECT place{120, 90, 120 + 800, 90 + 500};
    {
        PanelProgram first(folder, "", &folder);
        first.FindFrame();
        CHECK(IsWindowVisible(Page(first)));
        SetWindowPos(first.Frame(), nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER);
        CHECK(Await([&] { return Text(PlaceOfFrame(first)) == Text(place); }));
        CHECK(first.Close() == 0);
    }
    {
        PanelProgram second(folder, "", &folder);
        second.FindFrame();
        CHECK(Await([&] { return Text(PlaceOfFrame(second)) == Text(place); }));
        CHECK(second.Close() == 0);
    }
    {
        PanelProgram fitting(folder, file, &folder); // has another size, and no start page
        fitting.FindFrame();
        CHECK_FALSE(IsWindowVisible(Page(fitting)));
        CHECK(PlaceOfFrame(fitting).left == place.left);
        CHECK(PlaceOfFrame(fitting).right < place.right);
        CHECK(fitting.Close() == 0);
    }
    REQUIRE(WriteBytes(folder.Path("settings\\Window.txt"), "9000,9000,9800,9500\r\nnormal\r\n\r\n"));
    PanelProgram moved(folder, "", &folder);
    moved.FindFrame();
    const RECT screen = WorkArea(moved.Frame());
    CHECK(Await([&] {
        const RECT now = PlaceOfFrame(moved);
        return now.right == screen.right && now.bottom == screen.bottom && now.right - now.left == 800;
    }));
    CHECK(moved.Close() == 0);
}

TEST_SUITE_END();
