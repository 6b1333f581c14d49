// DANTECONTROL: which transmit channel of an audio network a receive channel listens to. A list of the
// channels that the device offers, in which another one can be typed as well, beside a lamp with the state of
// the subscription. What the network does is the device's affair. Interval in milliseconds, geometry in
// pixels.

#include "Controls/drawing/Lamp.h"
#include "Controls/families/ListValue.h"
#include "Controls/families/Question.h"
#include "Controls/families/Tooltip.h"
#include "Panelhost/Dialogs.h"
#include "logic/controls/ButtonLogic.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int LIST = 1; // id of the child
constexpr int QUESTION = 2;
constexpr int LAMP = 16;
constexpr int GAP = 4;
constexpr int RIM = 1; // for the frame of the control that has the focus
constexpr int NOT_REACHED = -1;

struct StateLook {
    const char* words;
    LampColours lamp;
    bool isLit;
};
// By state.
constexpr StateLook LOOKS[] = {{"No subscription", {}, false},
                               {"Subscribed", {}, true},
                               {"Resolving", {RGB(255, 190, 60), RGB(84, 56, 16)}, true},
                               {"Unresolved", {RGB(255, 84, 72), RGB(84, 24, 20)}, true},
                               {"Wrong format", {RGB(255, 84, 72), RGB(84, 24, 20)}, true}};

} // namespace

class DANTECONTROLPROPERTIES : public LISTPROPERTIES {
public:
    DANTECONTROLPROPERTIES() : LISTPROPERTIES(listWindow_) {}
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    bool DrawsNotEqual(const RECT&) const override { return true; } // in the field
    void LookChanged() override;
    void FontChanged() override;
    bool IsUndecided() const override { return isAsking_; }

    void Arrange();
    void FocusList() const;
    void Command(WPARAM wParam, LPARAM lParam);
    LRESULT HandleList(const ChildMessage& of);

    std::string question;
    FunctionList stateFunctions;
    Tooltip tooltip;

private:
    void TakeChosen(const std::string& chosen) override;
    void SendChosen() override;
    LRESULT ListDoes(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT TypingDoes(UINT message, WPARAM wParam, LPARAM lParam) override;

    void AskBefore();
    int PolledState();
    void ShowState(int state);
    RECT LampPlace() const;

    HWND listWindow_ = nullptr;
    HWND edit_ = nullptr;
    std::string before_;    // the value that was there before one was chosen
    bool isAsking_ = false; // whether what was chosen is to be sent
    int state_ = 0;         // number of the state, or NOT_REACHED
};

namespace {

LRESULT HandleDanteList(DANTECONTROLPROPERTIES& control, const ChildMessage& of) {
    return control.HandleList(of);
}
LRESULT HandleDanteTyping(DANTECONTROLPROPERTIES& control, const ChildMessage& of) {
    return control.list.HandleTyping(of);
}
using ListChild = SystemChild<HandleDanteList>;
using TypingChild = SystemChild<HandleDanteTyping, 2>;

// Keywords

constexpr Keyword VALUE =
    Handled<&DANTECONTROLPROPERTIES::ValueKeyword>("value", KeywordKind::Text)
        .Says(
            "The subscription, `channel@device`; empty for none. Set, it is shown and, unless it is the old "
            "one, sent to everything the control is bound to, without a question.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    GROUND_COLOUR_KEYWORD.Says("Colour of the list, `0x00bbggrr`; empty for the system's."),
    Text<&DANTECONTROLPROPERTIES::question>("confirm")
        .Saved()
        .Label("Ask before")
        .Items(IDC_CONFIRM)
        .Preview(logic::QuestionText, IDC_CONFIRM_PREVIEW)
        .Says(
            "Question that is asked before a choice is sent; empty for none. `\\n` and `\\t` in it are line "
            "feed and tab."),
    CONNECTION_KEYWORD,
    TEXT_FONT_KEYWORD,
    FUNCTION_KEYWORD,
    Functions<&DANTECONTROLPROPERTIES::stateFunctions>("function1")
        .Label("Function of the state")
        .Says("Device parameters with the state that the lamp shows, joined by `;`: 0 none, 1 subscribed, 2 "
              "resolving, 3 unresolved, 4 wrong format. Its words are in the tooltip."),
    TEXT_INTERVAL_KEYWORD,
    ItemsFunctionKeyword<&DANTECONTROLPROPERTIES::ItemsFunction, &DANTECONTROLPROPERTIES::SetItemsFunction>()
        .Says("Text parameters of devices that hold the channels to choose from, joined by `;`."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    TEXT_COLOUR_KEYWORD,
    VALUE,
});

} // namespace

KeywordList DANTECONTROLPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

// Value

void DANTECONTROLPROPERTIES::TakeChosen(const std::string& chosen) {
    if (!isAsking_) {
        before_ = value;
    }
    value = chosen;
}

// The question waits until the message is done with by which the choice was made: that may be the loss of the
// focus.
void DANTECONTROLPROPERTIES::SendChosen() {
    if (question.empty()) {
        Send();
    } else if (!isAsking_) {
        isAsking_ = true;
        PostFromChild(window, QUESTION, LIST_CHOSEN, 0);
    }
}

void DANTECONTROLPROPERTIES::AskBefore() {
    const bool isConfirmed = IsConfirmed(*this, question, a_OwnName(this));
    isAsking_ = false;
    if (isConfirmed) {
        Send();
    } else {
        value = before_;
        list.Show();
    }
}

void DANTECONTROLPROPERTIES::Command(WPARAM wParam, LPARAM lParam) {
    const bool isQuestion = LOWORD(wParam) == QUESTION && HIWORD(wParam) == LIST_CHOSEN;
    if (isQuestion && isAsking_) {
        AskBefore();
    } else if (!isQuestion) {
        list.Commanded(wParam, lParam);
    }
}

void DANTECONTROLPROPERTIES::ShowState(int state) {
    const bool isKnown = state >= 0 && state < static_cast<int>(std::size(LOOKS));
    state = isKnown ? state : NOT_REACHED;
    if (state != state_) {
        state_ = state;
        const RECT lamp = LampPlace();
        RedrawArea(&lamp);
        tooltip.Hover(lamp, isKnown ? LOOKS[state].words : "State not known");
    }
}

int DANTECONTROLPROPERTIES::PolledState() {
    if (stateFunctions.Requests().empty()) {
        return stateFunctions.Text().empty() ? 0 : NOT_REACHED;
    }
    int state = std::max(state_, 0);
    return Ask(stateFunctions.Requests(), DATATYPE_INTEGER, &state) > REQUEST_DELIVERED ? NOT_REACHED : state;
}

void DANTECONTROLPROPERTIES::Poll() {
    ShowState(PolledState());
    LISTPROPERTIES::Poll();
}

// Drawing

RECT DANTECONTROLPROPERTIES::LampPlace() const {
    RECT client{};
    GetClientRect(window, &client);
    const int top = std::max<int>((client.bottom - LAMP) / 2, 0);
    return {RIM, top, RIM + LAMP, top + LAMP};
}

void DANTECONTROLPROPERTIES::Draw(HDC dc, const RECT&) const {
    const RECT lamp = LampPlace();
    if (state_ == NOT_REACHED) {
        const int saved = SaveDC(dc);
        SetViewportOrgEx(dc, lamp.left, lamp.top, nullptr);
        DrawUnknownLamp(dc, {0, 0, LAMP, LAMP});
        RestoreDC(dc, saved);
    } else {
        const StateLook& look = LOOKS[state_];
        DrawLamp(dc, lamp, look.isLit ? 1 : 0, 2, look.lamp);
    }
}

void DANTECONTROLPROPERTIES::LookChanged() {
    list.LookChanged();
    if (IsWindowVisible(window)) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    }
}

// Window

void DANTECONTROLPROPERTIES::SetDefaults() {
    interval = 250;
    source.Attach(*this);
    stateFunctions.Attach(*this);
    tooltip.AttachRelayed(*this);
    tooltip.Hover(LampPlace(), LOOKS[state_].words);
    SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) | WS_CLIPCHILDREN);
    listWindow_ =
        CreateWindowExA(0, "COMBOBOX", "",
                        WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_AUTOHSCROLL | CBS_HASSTRINGS | CBS_DROPDOWN,
                        0, 0, 0, 0, window, reinterpret_cast<HMENU>(LIST), ModuleInstance(), nullptr);
    ListChild::Subclass(listWindow_);
    edit_ = list.Begin();
    TypingChild::Subclass(edit_);
    FontChanged();
}

void DANTECONTROLPROPERTIES::FontChanged() {
    TEXTLOOKPROPERTIES::FontChanged(listWindow_);
    Arrange();
}

void DANTECONTROLPROPERTIES::Arrange() {
    RECT client{};
    GetClientRect(window, &client);
    RECT closed{};
    GetWindowRect(listWindow_, &closed);
    const int height = closed.bottom - closed.top; // which the font gives it
    const int left = RIM + LAMP + GAP;
    SetWindowPos(listWindow_, nullptr, left, std::max<int>((client.bottom - height) / 2, 0),
                 std::max<int>(client.right - RIM - left, 0), height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void DANTECONTROLPROPERTIES::FocusList() const {
    if (mode == 0) {
        SetFocus(listWindow_);
    }
}

LRESULT DANTECONTROLPROPERTIES::ListDoes(UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcA(ListChild::system, listWindow_, message, wParam, lParam);
}

LRESULT DANTECONTROLPROPERTIES::TypingDoes(UINT message, WPARAM wParam, LPARAM lParam) {
    const ChildMessage of{edit_, TypingChild::system, message, wParam, lParam};
    if (message == WM_KILLFOCUS) {
        HandleAsPart(*this, of);
    }
    return of.SystemDoes();
}

LRESULT DANTECONTROLPROPERTIES::HandleList(const ChildMessage& of) {
    if (const auto answer = list.PaintDark(of.message, of.wParam)) {
        return *answer;
    }
    if (const auto answer = HandleAsPart(*this, of)) {
        return *answer;
    }
    if (const auto answer = list.Handle(of.message, of.wParam, of.lParam)) {
        return *answer;
    }
    const LRESULT result = of.SystemDoes();
    if (IsWindow(of.window)) {
        list.Handled(of.message, of.wParam, of.lParam);
    }
    return result;
}

namespace {

LRESULT CALLBACK DanteProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& control = *PropertiesOf<DANTECONTROLPROPERTIES>(window);
    control.tooltip.Relay(message, wParam, lParam);
    switch (message) {
    case WM_COMMAND:
        control.Command(wParam, lParam);
        return 0;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(control.list.Colours(reinterpret_cast<HDC>(wParam)));
    case WM_SETFOCUS: {
        const LRESULT result = CommonProc(window, message, wParam, lParam);
        control.FocusList();
        return result;
    }
    case WM_SIZE:
        control.Arrange();
        break;
    case WM_PAINT:
        RedrawEditedParts(control);
        break;
    default:
        break;
    }
    return CommonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation danteControl = Implement<DANTECONTROLPROPERTIES>(
    DanteProc, LAID_OUT,
    "Which transmit channel of an audio network a receive channel listens to: a list of the channels that "
    "the "
    "device offers, in which another one can be typed, and a lamp with the state of the subscription.",
    ShareTooltip);
