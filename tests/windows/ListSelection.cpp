// What is particular to the list selection and its rows.

#include "tests/windows/Buttons.h"

#include <map>

TEST_SUITE_BEGIN("ListSelection");

namespace {

constexpr int ROW = 21; // the height of a row, as the tests ask for it
constexpr COLORREF LIT = RGB(0, 0, 255), PLAIN = RGB(0, 64, 0);

// A list of five rows, 100 x 109, and what it is bound to.
struct Fixture {
    Fixture() {
        list = panel.Create("LISTSELECTION", "List");
        SetWindowPos(list, nullptr, 0, 0, 100, 5 * ROW + 4, SWP_NOMOVE | SWP_NOZORDER);
        REQUIRE(
            LoadLines(list, "rows=5|litcolor=0xff0000|rowcolor=0x4000|interval=100000|connection=Target"));
    }
    void Fill(int count) const {
        std::string items;
        for (int i = 1; i <= count; ++i) {
            items += "Scene " + std::to_string(i) + "=" + std::to_string(10 * i) + "\r\n";
        }
        REQUIRE(Load(list, "file=" + folder.Write("scenes.txt", items)) == 1);
    }
    // The captions of the rows; behind the active one a "*", behind the marked one a "<".
    std::string Rows() const {
        std::string all;
        const Picture picture(list);
        int row = 0;
        for (HWND window : ChildrenOf(list)) {
            char name[16] = "";
            GetClassNameA(window, name, sizeof name);
            if (name == std::string("LSBBUTTON")) {
                RECT place{};
                GetWindowRect(window, &place);
                MapWindowPoints(nullptr, list, reinterpret_cast<POINT*>(&place), 2);
                CHECK(place.top == 2 + ROW * row++);
                all += (all.empty() ? "" : ",") + TextOf(window);
                all += picture.At(place.right - 3, place.bottom - 3) == LIT ? "*" : "";
                all += picture.At(place.left, place.top + 5) == RGB(255, 176, 46) ? "<" : "";
            }
        }
        return all;
    }
    void Press(int row) const {
        SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(50, 2 + ROW * row + 5));
        SendMessageA(list, WM_LBUTTONUP, 0, At(50, 2 + ROW * row + 5));
    }
    void Key(WPARAM key) const { SendMessageA(list, WM_KEYDOWN, key, 1); }

    TestPanel panel{TestPanel::Visible};
    TestFolder folder;
    Recorder target{panel, "Target"};
    HWND list = nullptr;
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "rows are windows for what is seen, without a place among the objects") {
    const int objects = a_HostinfoCount();
    CHECK(ChildrenOf(list).empty());
    REQUIRE(Load(list, "items=Off;50 % & more;a\\;b=-3;100\xB0") == 1);
    const std::pair<const char*, const char*> expected[] = {
        {"LSBBUTTON", "Off"}, {"LSBSTATIC", "1"},  {"LSBBUTTON", "50 % & more"}, {"LSBSTATIC", "2"},
        {"LSBBUTTON", "a;b"}, {"LSBSTATIC", "-3"}, {"LSBBUTTON", "100\xB0"},     {"LSBSTATIC", "4"}};
    std::multimap<std::string, std::string> found;
    for (HWND row : ChildrenOf(list)) {
        char name[16] = "";
        GetClassNameA(row, name, sizeof name);
        found.emplace(name, TextOf(row));
        CHECK(a_FromWindow(row) == nullptr);
        CHECK(SendMessageA(row, CWM_GETPROPERTIES, 0, 0) == 0);
    }
    CHECK(found == std::multimap<std::string, std::string>(std::begin(expected), std::end(expected)));
    CHECK(a_HostinfoCount() == objects);
    CHECK(panel.Saved().find("LSB") == std::string::npos);
    REQUIRE(Load(list, "numbers=0") == 1);
    CHECK(ChildrenOf(list).size() == 4);
    Fill(40);
    CHECK(ChildrenOf(list).size() == 5);
    REQUIRE(LoadLines(list, "numbers=1|rows=0|font=Tahoma,20"));
    CHECK(ChildrenOf(list).size() < 8); // what fits
    std::string many;
    for (int i = 0; i < 100'000; ++i) {
        many += "Song " + std::to_string(i % 1000) + "\n";
    }
    REQUIRE(LoadLines(list, "font=Tahoma,8|rows=5|file=" + folder.Write("many.txt", many)));
    CHECK(ChildrenOf(list).size() == 10);
    Load(list, "value=100000");
    CHECK(Rows() == "Song 995,Song 996,Song 997,Song 998,Song 999*");
    const std::vector<HWND> rows = ChildrenOf(list);
    DestroyWindow(list);
    CHECK(std::none_of(rows.begin(), rows.end(), IsWindow));
    target.Take();
    // By themselves they are controls like others.
    HWND button = panel.Create("LSBBUTTON", "Alone");
    LoadLines(button, "connection=Target|properties=7,7");
    Click(button);
    CHECK(target.Take() == "7");
    HWND text = panel.Create("LSBSTATIC", "Text");
    CHECK(Load(text, "caption=Hello") == 1);
    CHECK(TextOf(text) == "Hello");
}

TEST_CASE_FIXTURE(Fixture, "a press sends number and text, and what is active is lit") {
    panel.Declare("AMP1*device=simulated\nAMP1*scene=integer,0,999,20,\nAMP1*name=text,,,x,\n");
    Fill(40);
    Load(list, "connection=");
    CHECK_FALSE(IsMarked(list)); // there is nobody to ask
    CHECK(Rows() == "Scene 1,Scene 2,Scene 3,Scene 4,Scene 5");
    REQUIRE(LoadLines(list, "function=AMP1*scene|function1=AMP1*name"));
    CHECK_FALSE(IsMarked(list));
    CHECK(Rows() == "Scene 1,Scene 2*,Scene 3,Scene 4,Scene 5");
    Press(3);
    CHECK(panel.Parameter("AMP1*scene") + panel.Parameter("AMP1*name") == "40Scene 4");
    CHECK(Text(list) == "40");
    ph_SetParameter(panel.Root(), "AMP1*scene", "200");
    CHECK_FALSE(IsMarked(list));
    CHECK(Rows() == "Scene 16,Scene 17,Scene 18,Scene 19,Scene 20*"); // it is brought into view
    ph_SetParameter(panel.Root(), "AMP1*scene", "201");
    CHECK(IsMarked(list)); // no entry
    CHECK(Rows() == "Scene 16,Scene 17,Scene 18,Scene 19,Scene 20");
    REQUIRE(LoadLines(list, "function=|connection=Target"));
    Press(0);
    Press(0); // once more is sent once more
    CHECK(target.Take() == "160 160");
    Load(list, "value=10");
    Load(list, "value=10"); // held already
    CHECK(target.Take() == "10");
    CHECK_FALSE(IsMarked(list));
}

TEST_CASE_FIXTURE(Fixture, "a press can be taken back, asks, and may end the list") {
    REQUIRE(Load(list, "items=One;T%wo \"quoted\"=5;Three") == 1);
    const auto press = [&](POINT from, POINT to) {
        SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(from.x, from.y));
        SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, At(to.x, to.y));
        SendMessageA(list, WM_LBUTTONUP, 0, At(to.x, to.y));
        return target.Take();
    };
    CHECK(press({50, 10}, {60, 15}) == "1");
    CHECK(press({50, 10}, {50, 10 + ROW}).empty());
    CHECK(press({50, 10}, {500, 10}).empty());
    CHECK(press({50, 90}, {50, 90}).empty()); // no row
    SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(50, 10));
    SetCapture(panel.Window());
    ReleaseCapture();
    CHECK(press({500, 500}, {50, 10}).empty());
    // Sent to the window of a row.
    for (HWND row : ChildrenOf(list)) {
        if (TextOf(row) == "Three") {
            PressButton(row);
            ReleaseButton(list);
        }
    }
    REQUIRE(LoadLines(list, "confirm=Recall\\n%s?|click=Target*note=%s!"));
    {
        Answer answer("List", IDNO);
        Press(1);
        CHECK(answer.Question() == "Recall\nT%wo \"quoted\"?");
    }
    target.Take();
    {
        Answer answer("List", IDYES, [&] { Load(list, "items="); });
        Press(1);
        CHECK(answer.Question() != "(none)");
    }
    CHECK(target.sets.size() == 2);
    CHECK(target.sets.front().text == "T%wo \"quoted\"!");
    CHECK(target.sets.back().value == 5);
    REQUIRE(LoadLines(list, "confirm=|click=|items=One"));
    target.onSet = [&] { DestroyWindow(list); };
    Press(0);
    CHECK_FALSE(IsWindow(list));
}

TEST_CASE_FIXTURE(Fixture, "keys move a mark, and Enter or Space sends it") {
    Fill(12);
    SetFocus(list);
    const std::pair<WPARAM, const char*> keys[] = {{VK_RETURN, ""},
                                                   {VK_DOWN, "Scene 1<,Scene 2,Scene 3,Scene 4,Scene 5"},
                                                   {VK_DOWN, "Scene 1,Scene 2<,Scene 3,Scene 4,Scene 5"},
                                                   {VK_NEXT, "Scene 2,Scene 3,Scene 4,Scene 5,Scene 6<"},
                                                   {VK_END, "Scene 8,Scene 9,Scene 10,Scene 11,Scene 12<"},
                                                   {VK_LEFT, "Scene 8,Scene 9,Scene 10,Scene 11,Scene 12<"},
                                                   {VK_PRIOR, "Scene 8<,Scene 9,Scene 10,Scene 11,Scene 12"},
                                                   {VK_UP, "Scene 7<,Scene 8,Scene 9,Scene 10,Scene 11"},
                                                   {VK_SPACE, "Scene 7*<,Scene 8,Scene 9,Scene 10,Scene 11"},
                                                   {VK_HOME, "Scene 1<,Scene 2,Scene 3,Scene 4,Scene 5"}};
    for (const auto& [key, rows] : keys) {
        INFO(key);
        Key(key);
        CHECK((key == VK_RETURN || Rows() == rows));
    }
    CHECK(target.Take() == "70");
    Key(VK_RETURN);
    CHECK(target.Take() == "10");
    ph_SetMode(panel.Root(), 1); // the keys are the panel's
    Key(VK_END);
    SendMessageA(list, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    ph_SetMode(panel.Root(), 0);
    CHECK(Rows() == "Scene 1*<,Scene 2,Scene 3,Scene 4,Scene 5");
}

TEST_CASE_FIXTURE(Fixture, "wheel and bar scroll a list that is longer than its window") {
    Fill(40);
    const auto first = [&] { return Rows().substr(0, Rows().find(',')); };
    const auto wheel = [&](int delta) { SendMessageA(list, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0); };
    wheel(-WHEEL_DELTA);
    CHECK(first() == "Scene 4");
    for (int i = 0; i < 3; ++i) {
        wheel(-WHEEL_DELTA / 3); // of a finer wheel
    }
    CHECK(first() == "Scene 7");
    wheel(50 * WHEEL_DELTA);
    CHECK(first() == "Scene 1");
    const auto drag = [&](int from, int to) {
        SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(92, from));
        SendMessageA(list, WM_MOUSEMOVE, MK_LBUTTON, At(92, to));
        SendMessageA(list, WM_LBUTTONUP, 0, At(92, to));
        return first();
    };
    CHECK(drag(100, 100) == "Scene 5"); // a page
    CHECK(drag(105, 105) == "Scene 9");
    CHECK(drag(3, 3) == "Scene 5");
    wheel(50 * WHEEL_DELTA);
    CHECK(drag(5, 400) == "Scene 36");
    CHECK(drag(104, -400) == "Scene 1");
    CHECK(target.Take().empty());
    Fill(5); // no bar: the row is as wide as the list
    SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(92, 10));
    SendMessageA(list, WM_LBUTTONUP, 0, At(92, 10));
    CHECK(target.Take() == "10");
}

TEST_CASE_FIXTURE(Fixture, "entries come from a device, a file or the items, in this order") {
    panel.Declare("AMP1*device=simulated\nAMP1*list=text,,,P1=1;P2=2,\n");
    REQUIRE(LoadLines(list, "connection=|items=Own;Other"));
    CHECK(Rows() == "Own,Other");
    const std::string path = folder.Write("list.txt", "\xEF\xBB\xBF\xC3\x84rger=3\r\n\r\nB; C\n");
    REQUIRE(Load(list, "file=" + path) == 1);
    CHECK(Rows() == "\xC4rger,B; C");
    DeleteFileA(path.c_str()); // it was read
    Poll(list);
    CHECK(Rows() == "\xC4rger,B; C");
    REQUIRE(Load(list, "itemsfunction=AMP1*list") == 1);
    CHECK_FALSE(IsMarked(list));
    CHECK(Rows() == "P1,P2");
    ph_SetParameter(panel.Root(), "AMP1*list", "");
    Poll(list);
    CHECK(Rows().empty());
    ph_SetParameter(panel.Root(), "AMP1*list", "New=7");
    Poll(list);
    ph_SetParameter(panel.Root(), "AMP1*online", "0");
    CHECK(IsMarked(list));
    CHECK(Rows() == "New"); // as long as none answers
    REQUIRE(Load(list, "itemsfunction=") == 1);
    CHECK_FALSE(IsMarked(list));
    CHECK(Rows() == "\xC4rger,B; C");
    REQUIRE(Load(list, "file=") == 1);
    CHECK(Rows() == "Own,Other");
}

TEST_CASE_FIXTURE(Fixture, "a file is dropped or named, and refused unless it is one text of a megabyte") {
    const std::string good = folder.Write("good.txt", "A\nB");
    const std::string exact = folder.Write("exact.txt", std::string(1 << 20, 'x'));
    const std::string larger = folder.Write("larger.txt", std::string((1 << 20) + 1, 'x'));
    const std::string binary = folder.Write("binary.txt", std::string("A\0B", 3));
    const auto drop = [&](const std::string& paths, UINT message) {
        Load(list, "file=");
        CHECK(Drop(list, paths, message));
        return Rows();
    };
    for (const UINT message : {UINT{WM_DROPFILES}, UINT{CWM_DROPFILES}}) {
        CHECK(drop(good + '\0', message) == "A,B");
        CHECK(Text(list, "file") == good);
        TraceCapture trace;
        CHECK(drop(good + '\0' + exact + '\0', message).empty());
        CHECK(trace.CountContaining("Not one file") == 1);
        for (const auto& [path, why] : {std::pair(larger, "is larger than 1 MB"),
                                        {binary, "is no text"},
                                        {folder.Path("."), "is a folder"},
                                        {folder.Path("missing.txt"), "cannot be read"}}) {
            INFO(path);
            trace.Clear();
            CHECK(drop(path + '\0', message).empty());
            CHECK(trace.CountContaining(why) == 1);
        }
    }
    CHECK(Load(list, "file=" + exact) == 1);
    CHECK(Load(list, "file=" + binary) == 0);
    CHECK(Text(list, "file") == exact);
    // A panel keeps the line of a file that is gone.
    Load(list, "file=" + good);
    const std::string saved = panel.Saved();
    DeleteFileA(good.c_str());
    const TestPanel second;
    REQUIRE(second.Open(saved) >= 0);
    CHECK(second.Saved() == saved);
}

TEST_CASE_FIXTURE(Fixture, "a list of any size is drawn, and its rows paint with it") {
    Fill(30);
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}, {9, 9}, {100, 109}}) {
        for (const char* rows : {"rows=0", "rows=200", "rows=5"}) {
            SetWindowPos(list, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
            REQUIRE(Load(list, rows) == 1);
            const Picture picture(list);
            Press(0);
            Key(VK_NEXT);
        }
    }
    LoadLines(list, "value=10");
    UpdateWindow(list);
    for (HWND row : ChildrenOf(list)) {
        CHECK_FALSE(GetUpdateRect(row, nullptr, FALSE));
    }
    Load(list, "value=20");
    CHECK(GetUpdateRect(list, nullptr, FALSE));
    UpdateWindow(list);
    Load(list, "value=20");
    CHECK_FALSE(GetUpdateRect(list, nullptr, FALSE));
    for (HWND row : ChildrenOf(list)) {
        if (TextOf(row) == "Scene 2" || TextOf(row) == "Scene 3") {
            RECT client{};
            GetClientRect(row, &client);
            CHECK(Picture(row).At(client.right - 3, client.bottom - 3) ==
                  (TextOf(row) == "Scene 2" ? LIT : PLAIN));
            InvalidateRect(row, nullptr, FALSE);
            UpdateWindow(row); // the list has painted it
            CHECK_FALSE(GetUpdateRect(row, nullptr, FALSE));
        }
    }
}

TEST_SUITE_END();
