#include "Controls/processing/routing/MiniRouting.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

using logic::Crosspoint;
using logic::CrosspointState;

namespace {

constexpr std::size_t LONGEST_NAME = 100;

// What the answer of a crosspoint says; status: as a_SendToItem answers.
CrosspointState StateOf(int status, int answer) {
    return status < 0 ? CrosspointState::Missing : answer != 0 ? CrosspointState::On : CrosspointState::Off;
}

} // namespace

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&MINIROUTINGPROPERTIES::ValueKeyword>("value", KeywordKind::Text)
        .Says("The crosspoints that are on, `input_output` joined by `;`: `1_1;3_2`. Set, all others are "
              "switched off, and what has changed is sent.");

template <auto Member>
constexpr Keyword SizeOf(const char* name) {
    return Limited<Member, 1, logic::MOST_ROUTED, &MINIROUTINGPROPERTIES::SizeChanged>(name).Saved();
}

template <auto Get, auto Set>
constexpr Keyword PatternOf(const char* name) {
    return Property<Get, Set>(name, KeywordKind::Addresses).Saved().Flagged(KEYWORD_CLOSED);
}

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    VIEW_BACKGROUND,
    VIEW_CAPTION,
    VIEW_CLICK,
    CONNECTION_KEYWORD.Says("Controls that are told the value, as text, whenever it is changed here."),
    Limited<&MINIROUTINGPROPERTIES::exclusive, 0, 1>("exclusive")
        .Saved()
        .OneOf("0,1")
        .Label("One input an output")
        .Says("1: an output gets one input at most; whichever is switched on switches the others off."),
    VIEW_FONT,
    FUNCTION_KEYWORD.Says("Text parameters that are told the value whenever it is changed here, joined by "
                          "`;`."),
    PatternOf<&MINIROUTINGPROPERTIES::InputNames, &MINIROUTINGPROPERTIES::SetInputNames>("inputnames")
        .HoldsPattern("inputs")
        .Label("Names of the inputs")
        .Says("Address of the name of each input, in which `%i` is its number, counted from 1; empty for "
              "numbers. `%02i` has two digits."),
    SizeOf<&MINIROUTINGPROPERTIES::inputs>("inputs").Label("Inputs").Says("Number of rows, 1 to 64."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the crosspoints that are on, `0x00bbggrr`."),
    PatternOf<&MINIROUTINGPROPERTIES::OutputNames, &MINIROUTINGPROPERTIES::SetOutputNames>("outputnames")
        .HoldsPattern("outputs")
        .Label("Names of the outputs")
        .Says("The same of each output, with `%o`."),
    SizeOf<&MINIROUTINGPROPERTIES::outputs>("outputs").Label("Outputs").Says("Number of columns, 1 to 64."),
    PatternOf<&MINIROUTINGPROPERTIES::Routes, &MINIROUTINGPROPERTIES::SetRoutes>("routes")
        .HoldsPattern("inputs", "outputs")
        .Label("Crosspoints")
        .Says("Address of each crosspoint, in which `%i` and `%o` are the numbers of its input and output, "
              "counted from 1: `DSP*route%i_%o`. `%02i` has two digits. A crosspoint is on while its value "
              "is not 0."),
    VIEW_TEXT_COLOUR,
    VALUE,
});

} // namespace

KeywordList MINIROUTINGPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void MINIROUTINGPROPERTIES::SetDefaults() {
    VIEWPROPERTIES::SetDefaults();
    routes_.Attach(*this);
    inputNames_.Attach(*this);
    outputNames_.Attach(*this);
}

void MINIROUTINGPROPERTIES::SizeChanged() {
    if (matrix_.Inputs() == inputs && matrix_.Outputs() == outputs) {
        return;
    }
    matrix_ = logic::RoutingMatrix(inputs, outputs);
    cursor_ = {std::min(cursor_.input, inputs - 1), std::min(cursor_.output, outputs - 1)};
    hovered_.reset();
    held_ = Grip::None;
    SetRoutes(Routes());
    SetInputNames(InputNames());
    SetOutputNames(OutputNames());
}

bool MINIROUTINGPROPERTIES::SetRoutes(const std::string& pattern) {
    matrix_ = logic::RoutingMatrix(inputs, outputs);
    routes_.Bind(*this, pattern, inputs, outputs);
    Redraw();
    return true;
}

bool MINIROUTINGPROPERTIES::SetInputNames(const std::string& pattern) {
    inputNames_.Bind(*this, pattern, inputs, 0);
    inputTexts_.clear();
    FontChanged();
    return true;
}

bool MINIROUTINGPROPERTIES::SetOutputNames(const std::string& pattern) {
    outputNames_.Bind(*this, pattern, outputs, 0);
    outputTexts_.clear();
    FontChanged();
    return true;
}

int MINIROUTINGPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        const std::string text = matrix_.Text();
        return text.size() < TEXT_SIZE ? AnswerWith(&record, text) : 0; // half of it would be another value
    }
    const auto text = TextToSet(&record);
    return text && Read(*text) ? 1 : 0;
}

// What the devices hold

int MINIROUTINGPROPERTIES::AskFor(Crosspoint place) {
    if (!matrix_.Has(place)) {
        return -1;
    }
    int answer = matrix_.IsOn(place) ? 1 : 0;
    const REQUESTITEM item = routes_.Item(matrix_.NumberOf(place));
    const int status = a_SendToItem(item, COMMAND_GET, DATATYPE_INTEGER, &answer);
    Take(place, StateOf(status, answer));
    return status;
}

// Whoever was asked or told may have made the matrix smaller.
void MINIROUTINGPROPERTIES::Take(Crosspoint place, CrosspointState state) {
    if (matrix_.Has(place) && matrix_.Set(place, state)) {
        RedrawCell(place);
    }
}

bool MINIROUTINGPROPERTIES::AskNames(PatternList& list, std::vector<std::string>& names, int& worst) {
    bool isNew = false;
    const std::vector<REQUESTITEM> items = ItemsOf(list.Requests());
    names.resize(items.size());
    for (std::size_t i = 0; i < items.size() && i < names.size(); ++i) {
        char text[TEXT_SIZE];
        std::snprintf(text, sizeof text, "%s", names[i].c_str());
        if (a_SendToItem(items[i], COMMAND_GET, DATATYPE_TEXT, text) < 0) {
            worst = REQUEST_UNREACHABLE;
            continue;
        }
        text[std::strcspn(text, "\r\n")] = '\0';
        text[LONGEST_NAME] = '\0';
        if (i < names.size() && names[i] != text) {
            names[i] = text;
            isNew = true;
        }
    }
    return isNew;
}

void MINIROUTINGPROPERTIES::Poll() {
    int worst = WhetherLive(); // of what is told, too
    const std::vector<REQUESTITEM> items = ItemsOf(routes_.Requests());
    for (std::size_t number = 0; number < items.size() && number < matrix_.Size(); ++number) {
        const Crosspoint place = matrix_.PlaceOf(number);
        int answer = matrix_.IsOn(place) ? 1 : 0;
        const int status = a_SendToItem(items[number], COMMAND_GET, DATATYPE_INTEGER, &answer);
        if (parent == nullptr) {
            return;
        }
        worst = status < 0 ? REQUEST_UNREACHABLE : worst;
        Take(place, StateOf(status, answer));
    }
    const bool areInputsNew = AskNames(inputNames_, inputTexts_, worst);
    if (AskNames(outputNames_, outputTexts_, worst) || areInputsNew) {
        FontChanged();
    }
    ShowPollResult(worst);
}

bool MINIROUTINGPROPERTIES::Tell(Crosspoint place, bool isOn) {
    int value = isOn ? 1 : 0;
    bool isTaken = true;
    if (IsBound()) { // otherwise it is a matrix of its own, for those that are told of the value
        REQUESTLIST one{routes_.Item(matrix_.NumberOf(place))};
        isTaken = a_SendRequest(one, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr) != 0;
    }
    const bool isThere = matrix_.Has(place) && (parent != nullptr || !IsBound());
    if (isTaken && isThere) {
        Take(place, StateOf(0, value));
    }
    return isThere;
}

// Off comes first, so that an output never has two.
bool MINIROUTINGPROPERTIES::Switch(Crosspoint place, bool isOn) {
    if (!matrix_.Has(place)) {
        return false;
    }
    if (isOn && exclusive != 0) {
        for (int input = 0; IsBound() && input < inputs; ++input) {
            if (input != place.input) {
                AskFor({input, place.output});
            }
        }
        for (const Crosspoint other : matrix_.OthersOn(place)) {
            if (!Tell(other, false)) {
                return false;
            }
        }
    }
    return matrix_.Has(place) && Tell(place, isOn);
}

void MINIROUTINGPROPERTIES::TellOfValue() {
    std::string text = matrix_.Text();
    if (!requests.empty() && text.size() < TEXT_SIZE) {
        a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, text.data(), nullptr);
    }
}

void MINIROUTINGPROPERTIES::Toggle(Crosspoint place) {
    if (AskFor(place) >= 0 && matrix_.Has(place) && Switch(place, !matrix_.IsOn(place))) {
        TellOfValue();
    }
}

bool MINIROUTINGPROPERTIES::Read(const std::string& text) {
    const auto wanted = matrix_.Read(text);
    if (!wanted) {
        return false;
    }
    const logic::RoutingMatrix before = matrix_;
    for (const bool isOn : {false, true}) { // what goes, goes first
        for (std::size_t number = 0; number < wanted->size(); ++number) {
            const Crosspoint place = before.PlaceOf(number);
            const bool isOther = before.IsOn(place) != isOn || before[place] == CrosspointState::Missing;
            if ((*wanted)[number] == isOn && isOther && !Switch(place, isOn)) {
                return true;
            }
        }
    }
    TellOfValue();
    return true;
}

namespace {

LRESULT CALLBACK RoutingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = ViewProc(window, message, wParam, lParam);
    auto* view = PropertiesOf<MINIROUTINGPROPERTIES>(window);
    if ((message == WM_SETFOCUS || message == WM_KILLFOCUS) && view != nullptr) {
        view->RedrawCursor();
    }
    return result;
}

} // namespace

extern const ControlImplementation miniRoutingControl{
    .create = CreateProperties<MINIROUTINGPROPERTIES>,
    .procedure = RoutingProc,
    .purpose = "A matrix of crosspoints between inputs and outputs. A click sets one and a drag paints them; "
               "arrow keys and Space work it as well. A large one can be scrolled.",
    .dialog = LAID_OUT,
    .share = SharePicture<>};
