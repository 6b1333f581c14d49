// XIPCHECK: asks hosts on the network once an interval whether they are there. Its value is how many are. It
// can be a lamp with a text in an operated panel. Times in milliseconds.

#include "Controls/interfaces/network/HostProbe.h"

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/Lamp.h"
#include "Controls/families/ClickTemplate.h"
#include "Controls/families/InterfaceControl.h"
#include "Controls/framework/Keywords.h"
#include "Panelhost/Trace.h"
#include "base/Gdi.h"
#include "logic/drawing/PanelColours.h"

namespace {

constexpr DWORD THREAD_EXIT_CODE = 17;
constexpr int LAMP_SIZE = 16; // pixels
constexpr int MARGIN = 4;
constexpr LampColours ALL_ANSWER{logic::PANEL_GREEN, logic::PANEL_WELL};
constexpr LampColours SOME_ANSWER{logic::PANEL_YELLOW, logic::PANEL_WELL};
constexpr LampColours NONE_ANSWERS{logic::PANEL_RED, logic::PANEL_WELL};

} // namespace

class IPCHECKPROPERTIES : public INTERFACEPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    // Whether it is seen says the keyword.
    DWORD StyleToSave(DWORD style) const override { return style | WS_VISIBLE; }
    void Poll() override;
    void Destroying() override { probe_.reset(); }
    void ServeCalls() override;
    void Draw(HDC dc, const RECT& client) const override;

    int Value() const { return value; }
    std::string Hosts() const { return host; }
    bool SetHosts(const std::string& text);
    std::string StateText() const { return states_.Text(); }
    int Time() const { return states_.LastTime(); }
    int Visible() const { return IsSeenInEditingOnly() ? 0 : 1; }
    bool SetVisible(int visible);
    bool IsSeenInEditingOnly() const { return (flags & FLAG_EDIT_ONLY) != 0; }
    void Click() { SendClickTemplate(*this, click, caption.c_str()); }

    int value = 0;
    std::string host; // as it was set
    int timeout = 1000;
    int tries = 2;
    std::string caption;
    std::string click;

private:
    // Shows what is known, and sends the value where it is another one.
    void Changed(logic::HostStates states);
    std::string ShownText() const;

    std::vector<std::string> hosts_;
    logic::HostStates states_;
    std::unique_ptr<Worker<HostProbe>> probe_; // from the first question on
    FontProperty font_;
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&IPCHECKPROPERTIES::Value, nullptr>("value").Says(
    "How many of the hosts answer. It is sent to all it is bound to when it changes, and can only be read.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    Text<&IPCHECKPROPERTIES::caption, TEXT_SIZE - 1, &IPCHECKPROPERTIES::Redraw>("caption")
        .Saved()
        .Label("Caption")
        .Says("Text beside the lamp; empty for how many hosts answer."),
    Line<&IPCHECKPROPERTIES::click>("click")
        .Saved()
        .Label("Click template")
        .Says(
            "Property line that a click on the visible lamp sends; empty for none. `%c` in it stands for the "
            "connections, `%n` for the full name, `%l` for the caption."),
    CONNECTION_KEYWORD,
    FUNCTION_KEYWORD,
    Property<&IPCHECKPROPERTIES::Hosts, &IPCHECKPROPERTIES::SetHosts>("host")
        .Saved()
        .Flagged(KEYWORD_CLOSED)
        .Label("Hosts")
        .Says(
            "Names or IPv4 addresses of hosts, joined by `;`, at most 64. A blank or `=` in one is refused."),
    INTERVAL_KEYWORD.Says("Milliseconds from one question to all hosts to the next. At the same time it is "
                          "compared with what it is bound to."),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Property<&IPCHECKPROPERTIES::StateText, nullptr>("state").Says(
        "What is known of each host, joined by `;`: `name=ok`, `name=gone`, `name=unknown`. It can only be "
        "read."),
    Property<&IPCHECKPROPERTIES::Time, nullptr>("time").Unit("ms").Says(
        "Milliseconds that the last answer took, -1 while no host answers. It can only be read."),
    Limited<&IPCHECKPROPERTIES::timeout, 10, 60000>("timeout")
        .Saved()
        .Unit("ms")
        .Label("Answer within ms")
        .Says("Milliseconds that an answer is waited for, 10 to 60000."),
    Limited<&IPCHECKPROPERTIES::tries, 1, 100>("tries")
        .Saved()
        .Label("Gone after lost answers")
        .Says("Answers in a row that must be missing before a host counts as gone, 1 to 100."),
    VALUE,
    Property<&IPCHECKPROPERTIES::Visible, &IPCHECKPROPERTIES::SetVisible>("visible")
        .Saved()
        .Limits(0, 1)
        .Label("Visible in the operated panel")
        .Says(
            "1: it is seen in the operated panel too, as a lamp with its text: green while all hosts answer, "
            "yellow while some do, red while none does, dark while that is not known."),
});

} // namespace

KeywordList IPCHECKPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void IPCHECKPROPERTIES::SetDefaults() {
    interval = 5000;
    flags |= FLAG_EDIT_ONLY;
    font_.Load("Tahoma,8");
}

bool IPCHECKPROPERTIES::SetHosts(const std::string& text) {
    auto parsed = logic::ParseHosts(text);
    if (!parsed) {
        EDITTRACE(parent, "These hosts cannot be asked: %s", text.c_str());
        return false;
    }
    host = text;
    if (*parsed != hosts_) {
        hosts_ = std::move(*parsed);
        lastPoll = GetTickCount() - static_cast<DWORD>(interval) - 1; // they are asked at the next tick
        Changed(logic::HostStates(hosts_));
    }
    return true;
}

bool IPCHECKPROPERTIES::SetVisible(int visible) {
    if (visible < 0 || visible > 1) {
        return false;
    }
    flags = static_cast<WORD>(visible != 0 ? flags & ~FLAG_EDIT_ONLY : flags | FLAG_EDIT_ONLY);
    if (visible != 0 && layers == 0) { // nothing else would show it
        ShowWindow(window, SW_SHOWNA);
    }
    a_ApplyVisibility(this);
    return true;
}

// Values

void IPCHECKPROPERTIES::Poll() {
    if (!probe_ && !hosts_.empty()) {
        probe_ = std::make_unique<Worker<HostProbe>>(window, [this] {
            if (auto states = (*probe_)->States(); states.IsOf(hosts_)) {
                Changed(std::move(states));
            }
        });
        if (!probe_->Start(THREAD_EXIT_CODE)) {
            TRACE("IPCheck: no thread can be started\n");
            probe_.reset();
        }
    }
    if (probe_ && !hosts_.empty()) {
        (*probe_)->Ask({hosts_, timeout, tries});
    }
    int held = value;
    const int result = Ask(requests, DATATYPE_INTEGER, &held);
    ShowPollResult(result == REQUEST_DELIVERED ? REQUEST_DISAGREE : result);
}

void IPCHECKPROPERTIES::Changed(logic::HostStates states) {
    const bool isSame = states.Text() == states_.Text();
    states_ = std::move(states);
    if (!isSame) {
        Redraw();
    }
    int answering = states_.Answering();
    if (answering != value) {
        value = answering;
        a_SendRequest(requests, COMMAND_SET, DATATYPE_INTEGER, &answering, nullptr);
    }
}

void IPCHECKPROPERTIES::ServeCalls() {
    if (probe_) {
        (*probe_)->ServeCalls();
    }
}

// Drawing

std::string IPCHECKPROPERTIES::ShownText() const {
    return !caption.empty() ? caption : std::to_string(value) + " of " + std::to_string(states_.Size());
}

void IPCHECKPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (StaysHidden()) {
        return;
    }
    if (IsSeenInEditingOnly()) { // seen only now
        const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
        SetDCBrushColor(dc, logic::PANEL_PLATE);
        FillRect(dc, &client, brush);
        SetDCBrushColor(dc, logic::PANEL_EDGE);
        FrameRect(dc, &client, brush);
    }
    const int top = (client.bottom - LAMP_SIZE) / 2;
    const RECT lamp{MARGIN, top, MARGIN + LAMP_SIZE, top + LAMP_SIZE};
    const int size = static_cast<int>(states_.Size());
    const bool isKnown = size > 0 && !states_.IsUnknown();
    DrawLamp(dc, lamp, isKnown ? 1 : 0, 2,
             value == size ? ALL_ANSWER
             : value > 0   ? SOME_ANSWER
                           : NONE_ANSWERS);
    const Selected font(dc, font_.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, logic::PANEL_TEXT);
    RECT place{lamp.right + MARGIN, 0, client.right - MARGIN, client.bottom};
    DrawTextA(dc, ShownText().c_str(), -1, &place,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

// Input and registration

namespace {

LRESULT CALLBACK HostCheckProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* check = PropertiesOf<IPCHECKPROPERTIES>(window);
    if (message == WM_LBUTTONDOWN && check != nullptr && !IsPanelClick(*check, wParam)) {
        check->Click();
        return 0;
    }
    return InterfaceProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation hostCheckControl = Implement<IPCHECKPROPERTIES>(
    HostCheckProc, LAID_OUT,
    "Checks whether [hosts on the network](interface-controls.md#host-check) answer.", ShareTooltip);
