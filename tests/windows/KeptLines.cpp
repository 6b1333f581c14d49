// Lines of panel files that cannot be read: kept, listed, written back where they stood.

#include "Panelhost/Editing.h"
#include "Panelhost/Root.h"
#include "logic/editing/ComponentText.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>

TEST_SUITE_BEGIN("KeptLines");

namespace {

using Listed = std::tuple<std::string, std::string, int, int>; // object, line, number, reason

void __cdecl Receive(const PH_UNREADLINE* line, void* context) {
    static_cast<std::vector<Listed>*>(context)->push_back(
        {line->object, line->line, line->number, line->reason});
}

std::vector<Listed> List(const TestPanel& panel) {
    std::vector<Listed> lines;
    const int count = ph_ListUnread(panel.Root(), Receive, &lines);
    CHECK(count == static_cast<int>(lines.size()));
    CHECK(ph_ListUnread(panel.Root(), nullptr, nullptr) == count);
    return lines;
}

void CheckSame(const std::string& text, const std::string& expected) {
    const auto lines = logic::SplitLines(text);
    const auto wanted = logic::SplitLines(expected);
    const auto first = std::mismatch(lines.begin(), lines.end(), wanted.begin(), wanted.end());
    CHECK((first.first == lines.end() ? "(end)" : *first.first).substr(0, 100) ==
          (first.second == wanted.end() ? "(end)" : *first.second).substr(0, 100));
    CHECK((text == expected));
}

// A panel that was filled from a text.
struct Opened : TestPanel {
    explicit Opened(const std::string& text) { Open(text); }
    std::string TextOf(const char* name) const {
        std::string text;
        a_ObjectText(&ObjectOf(Find(name)), &text);
        return text;
    }
};

const std::string TOO_LONG = "A*properties=" + std::string(9000, 'x');
const std::string WITH_NUL("B*values=1\0,2", 13);

} // namespace

TEST_CASE("what cannot be read is listed, changes nothing and is saved where it stood") {
    // As it is saved: a knob, a strip with its parts and a lamp in it, an interface, another knob.
    std::vector<std::string> lines =
        logic::SplitLines(Opened("background=0x00402010\r\nsize=640,480\r\ntitle=Kept\r\n"
                                 "control=0x00000000 KNOB \"A\" 0x40010000 0,0,47,47\r\n"
                                 "control=0x00000000 MIXER \"S\" 0x40000000 100,0,148,252\r\n"
                                 "S*control=0x00000000 LED \"Lamp\" 0x40000000 0,0,8,8\r\nS*Lamp*layer=u3\r\n"
                                 "control=0x00000000 IMIDI \"M\" 0x40000000 200,0,232,32\r\n"
                                 "control=0x00000000 KNOB \"B\" 0x40010000 300,0,347,47\r\n")
                              .Saved());
    const auto find = [&](const std::string& start) {
        const auto found = std::find_if(lines.begin(), lines.end(),
                                        [&](const std::string& line) { return line.starts_with(start); });
        REQUIRE(found != lines.end());
        return found;
    };
    const auto replace = [&](const std::string& start, const std::string& line) { *find(start) = line; };
    const auto insert = [&](const std::string& behind, const std::vector<std::string>& added) {
        lines.insert(find(behind) + 1, added.begin(), added.end());
    };
    replace("background", "background=.\\Controls\\Missing.png");
    replace("A*bitmap", "A*bitmap=.\\Controls\\Missing.bmp");
    replace("A*properties", TOO_LONG);
    replace("A*interval", "A*interval=soon");
    replace("B*values=", WITH_NUL);
    replace("M*connection", "M*connection=A"); // which it does not know
    insert("A*resolution", {"A*later=1", "A*later=2", "A*newest"});
    insert("A*connection", {"control=0x00000000 NOSUCH \"N\" 0x40000000 0,0,9,9", "N*bitmap=x",
                            "N*control=0x00000000 KNOB \"In\" 0x40000000 0,0,9,9", "N*In*value=1",
                            "N*In*connection=A", "N*connection=A"});
    insert("size", {"nosuch", "nosuch=1"});
    insert("S*Lamp*connection",
           {"S*control=0x00000000 NOSUCH \"Part\" 0x40000000 0,0,9,9", "S*Part*value=1"});
    insert("B*connection",
           {"control=0x00000000 KNOB \"Bad\" 0x40000000 0,0,9", "Bad*interval=9", "control=garbage",
            "control=0x00000000 LED \"A\" 0x40000000 0,0,9,9", "A*bitmap=.\\Controls\\Missing.bmp", "words"});
    std::string file;
    for (const std::string& line : lines) {
        file += line + "\r\n";
    }
    const Opened opened(file);
    CheckSame(opened.Saved(), file);
    CheckSame(Opened(opened.Saved()).Saved(), file);
    CHECK(Text(opened.Find("A"), "bitmap") == ".\\Controls\\Knob.bmp");
    CHECK(Text(opened.Find("A"), "properties") == "0,100,0");
    CHECK(Value(opened.Find("A")) == 0.0F); // an unknown keyword is no value
    CHECK(ObjectOf(opened.Find("A")).interval == ObjectOf(opened.Find("B")).interval);
    CHECK(a_MissingPicture(&ObjectOf(opened.Find("A"))) == ".\\Controls\\Missing.bmp");
    CHECK(a_MissingPicture(&ObjectOf(opened.Find("B"))).empty());

    opened.Open(file); // what is read twice stands there once
    CheckSame(opened.Saved(), file);

    const std::vector<Listed> listed = List(opened);
    CHECK(static_cast<int>(listed.size()) == a_LoadErrorCount(opened.Root()));
    CHECK(listed.size() == 25);
    CHECK(listed.front() == Listed{"", "background=.\\Controls\\Missing.png", 1, PH_UNREAD_PICTURE});
    const auto has = [&](const char* object, const std::string& line, int reason) {
        INFO(line);
        const auto at = static_cast<int>(std::find(lines.begin(), lines.end(), line) - lines.begin());
        const Listed expected(object, line.c_str(), at + 1, reason);
        CHECK(std::find(listed.begin(), listed.end(), expected) != listed.end());
    };
    has("A", "A*bitmap=.\\Controls\\Missing.bmp", PH_UNREAD_PICTURE);
    has("A", "A*interval=soon", PH_UNREAD_VALUE);
    has("A", TOO_LONG, PH_UNREAD_DAMAGED);
    has("A", "A*later=2", PH_UNREAD_KEYWORD);
    has("A", "A*newest", PH_UNREAD_KEYWORD);
    has("M", "M*connection=A", PH_UNREAD_VALUE);
    has("S", "S*Part*value=1", PH_UNREAD_OBJECT);
    has("", "control=0x00000000 NOSUCH \"N\" 0x40000000 0,0,9,9", PH_UNREAD_CLASS);
    has("", "N*In*value=1", PH_UNREAD_OBJECT);
    has("", "control=0x00000000 LED \"A\" 0x40000000 0,0,9,9", PH_UNREAD_NAME);
    has("", "Bad*interval=9", PH_UNREAD_OBJECT);
    CHECK(ph_ListUnread(nullptr, Receive, nullptr) == -1);
    CHECK(ph_ListUnread(&ObjectOf(opened.Find("A")), Receive, nullptr) == -1);
}

TEST_CASE("a kept line goes when its keyword is set, and by nothing else") {
    const std::string head = "control=0x00000000 KNOB \"A\" 0x40010000 0,0,47,47\r\n";
    const auto holds = [](const Opened& opened, const char* line) {
        return opened.Saved().find("\r\n" + std::string(line) + "\r\n") != std::string::npos;
    };
    const Opened opened(head +
                        "A*interval=soon\r\nA*interval=later\r\nA*resolution=fine\r\nA*later=1\r\nA* =x\r\n"
                        "size=all\r\n");
    HWND knob = opened.Find("A");
    CHECK(List(opened).size() == 6);
    ph_Tick(opened.Root());
    Load(knob, "interval=now");
    Load(knob, "resolution=2", LOAD_FROM_FILE); // a control that configures another one
    CHECK(holds(opened, "A*interval=soon\r\nA*interval=later"));
    CHECK(holds(opened, "A*resolution=fine"));
    CHECK(Load(knob, "interval=70") == 1);
    CHECK(holds(opened, "A*interval=70"));
    CHECK_FALSE(holds(opened, "A*interval=soon"));
    CHECK_FALSE(holds(opened, "A*interval=later"));
    float resolution = 0.25F;
    CHECK(Send(knob, COMMAND_SET, DATATYPE_FLOAT, &resolution, "resolution") == 1);
    CHECK(holds(opened, "A*resolution=0.25"));
    CHECK_FALSE(holds(opened, "A*resolution=fine"));
    CHECK(SetValue(knob, 5) == 1);
    CHECK(Load(opened.Window(), "size=9,9") == 1);
    CHECK(List(opened) == std::vector<Listed>{{"A", "A*later=1", 5, PH_UNREAD_KEYWORD}});

    // A keyword that stands twice in a file, once readable, keeps both.
    for (const char* both : {"A*interval=50\r\nA*interval=soon", "A*interval=soon\r\nA*interval=50"}) {
        const Opened twice(head + both + "\r\n");
        CHECK(ObjectOf(twice.Find("A")).interval == 50);
        CHECK(holds(twice, "A*interval=soon"));
        CHECK(holds(twice, "A*interval=50"));
    }
}

TEST_CASE("kept lines are copied and deleted with their control, and come back with it") {
    const std::string head = "control=0x00000000 ";
    const std::string text =
        Opened(head + "KNOB \"A\" 0x40010000 0,0,47,47\r\nA*bitmap=none.bmp\r\n" + head +
               "MINIEDIT \"S\" 0x40000000 0,0,99,99\r\nS*" + head + "LED \"P\" 0x40000000 0,0,9,9\r\nS*" +
               head + "NOSUCH \"N\" 0x40000000 0,0,9,9\r\nS*N*value=1\r\nS*N*connection=A\r\nS*" + head +
               "LED \"Q\" 0x40000000 0,0,9,9\r\n" + head + "NOSUCH \"T\" 0x40000000 0,0,9,9\r\n" + head +
               "KNOB \"B\" 0x40010000 0,0,47,47\r\nB*later=1\r\n")
            .Saved();
    const Opened opened(text);
    HOSTINFO* root = opened.Root();
    REQUIRE(opened.Saved() == text);
    for (const char* name : {"S", "A", "B"}) {
        INFO(std::string(name));
        std::string own = opened.TextOf(name);
        if (*name == 'S') {
            CHECK(own.find("\r\nS*N*connection=A\r\n") != std::string::npos);
            own += opened.TextOf("S*P") + opened.TextOf("S*Q");
        }
        DestroyWindow(opened.Find(name));
        const std::string without = opened.Saved();
        CHECK(without.find("*bitmap=none.bmp") ==
              (*name == 'A' ? std::string::npos : without.find("A*bitmap") + 1));
        CHECK((without.find("\"N\"") == std::string::npos) == (*name == 'S'));
        CHECK(without.find("\"T\"") != std::string::npos); // the panel's

        const int errors = static_cast<int>(List(opened).size());
        CHECK(a_LoadText(root, own, "Undo") > 0);
        CHECK(static_cast<int>(List(opened).size()) == errors + a_LoadErrorCount(root));
        HOSTINFO* next = *name == 'A'   ? &ObjectOf(opened.Find("S"))
                         : *name == 'S' ? &ObjectOf(opened.Find("B"))
                                        : nullptr;
        a_MoveBefore(&ObjectOf(opened.Find(name)), next);
        CheckSame(opened.Saved(), text);
    }
    // What belongs to no control is not brought in by the text of controls.
    a_LoadText(root, head + "NOSUCH \"Z\" 0x40000000 0,0,9,9\r\nZ*value=1\r\nZ*connection=A\r\n",
               "Clipboard");
    CHECK(a_LoadErrorCount(root) == 3);
    CheckSame(opened.Saved(), text);
    // A line that sets a keyword to nothing takes back what was kept.
    a_LoadText(root, "B*later=\r\nA*bitmap=.\\Controls\\Knob.bmp\r\n", "Undo");
    CHECK(a_LoadErrorCount(root) == 0);
    CHECK(List(opened).size() == 4);
}

TEST_SUITE_END();
