// Everything that is bound on a panel: what is found, its state and value, and the texts that hold addresses.

#include "Panel/bindings/BindingTable.h"
#include "Panel/bindings/ReplacePlan.h"
#include "Panel/editing/PanelEdits.h"
#include "Panelhost/BindingList.h"
#include "Panelhost/Root.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>

namespace {

struct Listed {
    std::string object, keyword, address, target;
    int isDevice, state;
    std::string value;
    int age;
};

void __cdecl Receive(const PH_BINDING* binding, void* context) {
    static_cast<std::vector<Listed>*>(context)->push_back(
        {binding->object, binding->keyword, binding->address, binding->target, binding->isDevice,
         binding->state, binding->value, binding->age});
}

std::vector<Listed> List(const TestPanel& panel) {
    std::vector<Listed> bindings;
    const int count = ph_ListBindings(panel.Root(), Receive, &bindings);
    CHECK(count == static_cast<int>(bindings.size()));
    CHECK(ph_ListBindings(panel.Root(), nullptr, nullptr) == count);
    return bindings;
}

// A line each: "Knob function AMP1*gain AMP1 live -6".
std::string Lines(const TestPanel& panel) {
    std::string lines;
    for (const Listed& one : List(panel)) {
        lines += one.object + " " + one.keyword + " " + one.address + " -> " + one.target +
                 (one.isDevice != 0 ? " (device) " : " ") + a_StateName(one.state) + " " + one.value + "\n";
    }
    return lines;
}

std::string Header(const std::string& className, const std::string& name) {
    return "control=0x00000000 " + className + " \"" + name + "\" 0x40000000 0,0,47,47\r\n";
}

} // namespace

TEST_CASE("every binding is listed with what it is bound to, its state and value") {
    const TestPanel panel;
    REQUIRE(panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-6,dB\nAMP1*in1=text,,,One\n"
                          "AMP1*in2=text,,,Two\nAMP1*r1_1=integer,0,1,1\n") == 1);
    panel.Open(
        Header("KNOB", "Knob") + "Knob*function=AMP1*gain;AMP1*lost;AMP9*gain\r\n" +
        Header("FADER", "Fader") + "Fader*value=-3\r\nFader*connection=knob;Knob*interval;Knob*no;None\r\n" +
        Header("MIXER", "Strip") +
        "Strip*Fader*function=AMP1*gain\r\nStrip*Fader*connection=%n*Value;Strip\r\n" +
        Header("BBUTTON", "Push") + "Push*click=Fader*function=AMP1*gain\r\n" + Header("BBUTTON", "Further") +
        "Further*click=%c*value=1\r\nFurther*connection=Knob\r\n" + Header("LISTSELECTION", "List") +
        "List*click=%l*value=1\r\n" + Header("MINIROUTING", "Matrix") +
        "Matrix*inputs=2\r\nMatrix*outputs=1\r\nMatrix*inputnames=AMP1*in%i\r\nMatrix*routes=AMP1*r%i_%"
        "o\r\n" +
        Header("BBUTTON", "Page") + "Page*click=layer=u2\r\n" + Header("BBUTTON", "Go") +
        "Go*click=resolution=2\r\nGo*connection=Knob;Strip\r\n" + Header("LISTSELECTION", "Scenes") +
        "Scenes*click=%s=1\r\n" + Header("IMESSAGING", "Mail") +
        "Mail*text=at %{AMP1*gain} %{Knob} %{Gone*x}\r\n");
    const std::string expected = "Knob function AMP1*gain -> AMP1 (device) live -6\n"
                                 "Knob function AMP1*lost -> AMP1 (device) no such parameter \n"
                                 "Knob function AMP9*gain ->  no such parameter \n"
                                 "Fader connection knob -> Knob live 0\n"
                                 "Fader connection Knob*interval -> Knob live 1000\n"
                                 "Fader connection Knob*no -> Knob no such keyword \n"
                                 "Fader connection None ->  no such control \n";
    const std::string lines = Lines(panel);
    CHECK(lines.substr(0, expected.size()) == expected);
    for (const std::string& line : std::initializer_list<std::string>{
             "Strip*Fader function AMP1*gain -> AMP1 (device) live -6\n",
             "Strip*Fader connection Strip*Value -> Strip*Value live ",
             "Strip*Fader connection Strip -> Strip live ", "Push click Fader*function -> Fader live \n",
             "Push click AMP1*gain -> AMP1 (device) live -6\n", "Further click Knob*value -> Knob live 0\n",
             "List click %l*value ->  no value yet \n",
             "Matrix inputnames AMP1*in1 -> AMP1 (device) live One\n",
             "Matrix inputnames AMP1*in2 -> AMP1 (device) live Two\n",
             "Matrix routes AMP1*r1_1 -> AMP1 (device) live 1\n",
             "Matrix routes AMP1*r2_1 -> AMP1 (device) no such parameter \n",
             "Mail text AMP1*gain -> AMP1 (device) live -6\n", "Mail text Knob -> Knob live 0\n",
             "Mail text Gone*x ->  no such control \n",
             "Page click *layer -> " + panel.Root()->name + " live \n",
             "Go click Knob*resolution -> Knob live ",
             "Go click Strip*resolution -> Strip no such keyword \n",
             "Scenes click *%s -> " + panel.Root()->name + " no value yet "}) {
        CAPTURE(line);
        CHECK(lines.find(line) != std::string::npos);
    }
    for (const Listed& one : List(panel)) {
        const bool hasAge = one.isDevice != 0 && one.state == PH_STATE_LIVE;
        CAPTURE(one.address);
        CHECK((one.age >= 0) == hasAge);
        if (one.isDevice != 0) { // one enumeration
            CHECK(ph_ParameterState(panel.Root(), one.address.c_str()) == one.state);
        }
    }
    CHECK(ph_ListBindings(nullptr, Receive, nullptr) == -1);
}

TEST_CASE("the version of the bindings changes with all that changes the list, and with nothing else") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-6,dB\n");
    panel.Open(Header("KNOB", "Knob") + Header("BBUTTON", "Push") + Header("IMESSAGING", "Mail"));
    unsigned version = a_BindingsVersion(panel.Root());
    const auto changes = [&] {
        const unsigned before = std::exchange(version, a_BindingsVersion(panel.Root()));
        return before != version;
    };
    for (const std::string text : {"Knob*function=AMP1*gain", "Knob*connection=Push",
                                   "Push*click=Knob*value=1", "Mail*text=%{Knob}", "Mail*subject=%{Knob}"}) {
        CAPTURE(text);
        const auto star = text.find('*');
        Load(panel.Find(text.substr(0, star).c_str()), text.substr(star + 1));
        CHECK(changes());
    }
    SetValue(panel.Find("Knob"), 3);
    Load(panel.Find("Knob"), "interval=100");
    ph_SetParameter(panel.Root(), "AMP1*gain", "3");
    ph_Tick(panel.Root());
    CHECK_FALSE(changes());
    panel.Create("KNOB", "New");
    CHECK(changes());
    DestroyWindow(panel.Find("New"));
    CHECK(changes());
    panel.Declare("AMP2*device=simulated\n");
    CHECK(changes());
    CHECK(a_BindingsVersion(nullptr) == 0);
}

TEST_CASE("texts with addresses are changed in one step, which undo takes back") {
    const TestPanel panel;
    panel.Open(Header("KNOB", "Knob") + "Knob*function= AMP1*a;AMP1*b\r\n" + Header("BBUTTON", "Push") +
               "Push*click=AMP1*c=1\r\n" + Header("MIXER", "Strip") + "Strip*Fader*function=AMP1*d\r\n");
    PanelEdits edits(panel.Root(), [](const std::string& text) { FAIL_CHECK(text); });
    ph_SetMode(panel.Root(), 1);
    a_SetChanged(panel.Root(), false);
    const std::string before = panel.Saved();
    edits.MarkSaved();
    std::vector<PanelEdits::Line> lines;
    for (const ADDRESSTEXT& text : a_AddressTexts(panel.Root())) {
        if (text.form == logic::AddressForm::Connections) {
            continue; // of a part of the strip
        }
        std::vector<std::string> addresses;
        for (const logic::AddressPlace& place : text.addresses) {
            addresses.push_back("NEW" + std::string(place.In(text.text).substr(4)));
        }
        const auto changed = a_WithAddresses(text, addresses);
        REQUIRE(changed);
        lines.push_back({text.object, std::string(text.row->keyword) + "=" + *changed});
        CHECK_FALSE(a_WithAddresses(text, {"A;B", "=", "A;B"}));
    }
    REQUIRE(lines.size() == 3);
    lines.push_back({lines.front().object, "properties=none"});
    CHECK(edits.Apply("Replace", lines) == 3);
    CHECK(Text(panel.Find("Knob"), "function") == "NEW*a;NEW*b");
    CHECK(Text(panel.Find("Push"), "click") == "NEW*c=1");
    CHECK(Text(panel.Find("Strip*Fader"), "function") == "NEW*d");
    CHECK(edits.UnsavedChanges() == 1);
    CHECK(edits.Undo());
    CHECK(panel.Saved() == before);
    CHECK(edits.UnsavedChanges() == 0); // as it is on the disk
    CHECK(edits.Redo());
    CHECK(Text(panel.Find("Strip*Fader"), "function") == "NEW*d");
    CHECK_FALSE(edits.Redo());

    CHECK(a_AddressTexts(panel.Root(), {&ObjectOf(panel.Find("Push"))}).size() == 1);
    DestroyWindow(panel.Find("Knob"));
    CHECK(edits.Apply("Replace", lines) == 2);
}

TEST_CASE("the rows of bindings are searched, sorted and exported") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*a=float,-80,18,-6,dB\nAMP1*b=float,-80,18,-20,dB\n"
                  "AMP1*t=text,,,y\n");
    ph_SetParameter(panel.Root(), "AMP1*t", "\"x\", y");
    panel.Open(Header("KNOB", "Z") + "Z*function=AMP1*a;AMP1*b;Gone*x\r\n" + Header("KNOB", "A") +
               "A*function=AMP1*t\r\n");
    BindingTable table;
    CHECK(table.Read(panel.Root()));
    CHECK_FALSE(table.Read(panel.Root()));
    const auto shown = [&] {
        std::string addresses;
        for (int row = 0; row < table.Count(); ++row) {
            addresses += (row == 0 ? "" : " ") + table.Cell(row, BindingColumn::Address);
        }
        return addresses;
    };
    CHECK(shown() == "AMP1*a AMP1*b Gone*x AMP1*t");
    using enum BindingColumn;
    const std::tuple<BindingColumn, bool, const char*> orders[] = {
        {Control, false, "AMP1*t AMP1*a AMP1*b Gone*x"}, {Address, true, "Gone*x AMP1*t AMP1*b AMP1*a"},
        {State, true, "Gone*x AMP1*a AMP1*b AMP1*t"},    {Value, false, "Gone*x AMP1*b AMP1*a AMP1*t"},
        {Value, true, "AMP1*t AMP1*a AMP1*b Gone*x"},
    };
    for (const auto& [column, descending, expected] : orders) {
        table.SortBy(column, descending);
        CHECK(shown() == expected);
    }
    table.SortBy(Address, false);
    for (const auto& [text, expected] : {std::pair("amp1 Z", "AMP1*a AMP1*b"),
                                         {"no SUCH", "Gone*x"},
                                         {"nothing", ""},
                                         {" ", "AMP1*a AMP1*b AMP1*t Gone*x"}}) {
        table.Search(text);
        CHECK(shown() == expected);
    }
    CHECK(table.Csv().starts_with("Control,Keyword,Bound to,State,Value,Age\r\nZ,function,AMP1*a,live,-6,"));
    CHECK(table.Csv().find("A,function,AMP1*t,live,\"\"\"x\"\", y\",") != std::string::npos);
    CHECK(table.Text().starts_with("Control  Keyword   Bound to  State              Value   Age\r\n"
                                   "Z        function  AMP1*a    live               -6      "));
    table.ShowOnlyNotLive(true);
    CHECK(shown() == "Gone*x");
    CHECK(table.NotLive() == 1);
    CHECK(table.Total() == 4);

    // It follows the panel, and what is gone by then is no row of words.
    ph_SetParameter(panel.Root(), "AMP1*a", "3");
    table.ShowOnlyNotLive(false);
    table.Read(panel.Root());
    CHECK(table.Cell(0, Value) == "3");
    DestroyWindow(panel.Find("Z"));
    CHECK(table.Cell(0, Control).empty());
    CHECK(table.Cell(0, Value).empty());
    table.Search("Z");
    CHECK(table.Count() == 0);
    table.Search("");
    CHECK(table.Read(panel.Root()));
    CHECK(shown() == "AMP1*t");
}

TEST_CASE("a panel of 200 controls moves from a simulated device to a console, with a preview") {
    const TestPanel panel;
    std::string devices = "AMP1*device=simulated\nFOH*device=osc,127.0.0.1:9,x32\n";
    std::string lines;
    for (int i = 1; i <= 200; ++i) {
        const std::string number = std::to_string(i);
        const std::string parameter = (i <= 32   ? "gain"
                                       : i <= 64 ? "mute"
                                                 : "other") +
                                      std::to_string((i - 1) % 32 + 1);
        devices += i <= 96 ? "AMP1*" + parameter + "=float,-80,18,-6,dB\n" : "";
        lines += Header("KNOB", "K" + number) + "K" + number + "*function=AMP1*" + parameter + "\r\n";
    }
    lines += Header("MINIROUTING", "M") + "M*inputs=4\r\nM*outputs=2\r\nM*routes=AMP1*send%i_%o\r\n";
    REQUIRE(panel.Declare(devices) == 2);
    REQUIRE(panel.Open(lines) == 201);
    PanelEdits edits(panel.Root(), [](const std::string& text) { FAIL_CHECK(text); });
    ph_SetMode(panel.Root(), 1);
    const std::string start = panel.Saved();
    const std::tuple<const char*, const char*, int, int, int> rows[] = {
        // addresses, those that will name nothing, properties
        {"AMP1*gain%i", "FOH*ch%02i.fader", 32, 0, 32},
        {"AMP1*mute%i", "FOH*ch%02i.mute", 32, 0, 32},
        {"AMP1*send%i_%o", "FOH*ch%02i.send%02o", 1, 0, 1},
        {"AMP1", "FOH", 136, 136, 136},
        {"AMP1", "FOH", 0, 0, 0},
    };
    for (const auto& [find, by, addresses, unresolved, properties] : rows) {
        CAPTURE(std::string(find));
        std::string why;
        const auto replacement = logic::AddressReplacement::Parse(find, by, why);
        REQUIRE(replacement);
        const std::vector<HOSTINFO*> one{&ObjectOf(panel.Find("K200"))};
        CHECK(PlanReplacement(panel.Root(), &one, *replacement).entries.size() == (addresses == 136 ? 1 : 0));
        const ReplacePlan plan = PlanReplacement(panel.Root(), nullptr, *replacement);
        CHECK(static_cast<int>(plan.entries.size()) == addresses);
        CHECK(plan.unresolved == unresolved);
        CHECK(edits.Apply("Replace", plan.lines) == properties);
    }
    CHECK(Text(panel.Find("K7"), "function") == "FOH*ch07.fader");
    CHECK(Text(panel.Find("M"), "routes") == "FOH*ch%02i.send%02o");
    int bound = 0;
    for (const Listed& one : List(panel)) {
        bound += one.target == "FOH" && one.state == PH_STATE_UNKNOWN ? 1 : 0;
        CHECK(one.target != "AMP1");
    }
    CHECK(bound == 32 + 32 + 8);
    int steps = 0;
    for (; edits.Undo(); ++steps) {
    }
    CHECK(steps == 4);
    CHECK(panel.Saved() == start);

    std::string why; // a click cannot hold what would end its address
    Load(panel.Find("K1"), "function=AMP1*gain1");
    panel.Create("BBUTTON", "Push");
    Load(panel.Find("Push"), "click=K1*value=1");
    const ReplacePlan plan =
        PlanReplacement(panel.Root(), nullptr, *logic::AddressReplacement::Parse("K1*value", "K2", why));
    REQUIRE(plan.entries.size() == 1);
    CHECK_FALSE(plan.entries[0].isTaken);
    CHECK(plan.lines.empty());
}
