// Everything that is bound on a panel: what is found, its state and value, and the texts that hold addresses.

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
        Header("IMESSAGING", "Mail") + "Mail*text=at %{AMP1*gain} %{Knob} %{Gone*x}\r\n");
    const std::string expected = "Knob function AMP1*gain -> AMP1 (device) live -6\n"
                                 "Knob function AMP1*lost -> AMP1 (device) no such parameter \n"
                                 "Knob function AMP9*gain ->  no such parameter \n"
                                 "Fader connection knob -> Knob live 0\n"
                                 "Fader connection Knob*interval -> Knob live 1000\n"
                                 "Fader connection Knob*no -> Knob no such keyword \n"
                                 "Fader connection None ->  no such control \n";
    const std::string lines = Lines(panel);
    CHECK(lines.substr(0, expected.size()) == expected);
    for (const std::string line :
         {"Strip*Fader function AMP1*gain -> AMP1 (device) live -6\n",
          "Strip*Fader connection Strip*Value -> Strip*Value live ",
          "Strip*Fader connection Strip -> Strip live ", "Push click Fader*function -> Fader live \n",
          "Push click AMP1*gain -> AMP1 (device) live -6\n", "Further click Knob*value -> Knob live 0\n",
          "List click %l*value ->  no value yet \n", "Matrix inputnames AMP1*in1 -> AMP1 (device) live One\n",
          "Matrix inputnames AMP1*in2 -> AMP1 (device) live Two\n",
          "Matrix routes AMP1*r1_1 -> AMP1 (device) live 1\n",
          "Matrix routes AMP1*r2_1 -> AMP1 (device) no such parameter \n",
          "Mail text AMP1*gain -> AMP1 (device) live -6\n", "Mail text Knob -> Knob live 0\n",
          "Mail text Gone*x ->  no such control \n"}) {
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
