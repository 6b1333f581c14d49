// BRADIOBUTTON: one button of several, lit while the value is its own number, which a click sends. Those that
// are bound to nothing share the value with all others of their parent and group; a bound one follows what it
// is bound to. Values are whole numbers, the interval is in milliseconds, geometry in pixels.

#include "Controls/families/Question.h"
#include "Controls/families/TwoStateButton.h"
#include "base/Gdi.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/drawing/PanelColours.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace {

enum class Style { Dot, Button }; // in the order of the words

} // namespace

class RADIOBUTTONPROPERTIES : public TWOSTATEPROPERTIES {
public:
    RADIOBUTTONPROPERTIES();
    ~RADIOBUTTONPROPERTIES() override;
    KeywordList Keywords() const override;
    bool IsSavedNow(const char* keyword) const override {
        return !IsBound() || keyword != std::string_view("value");
    }
    void SetDefaults() override;
    void Created() override { Join(); }
    void BindingsChanged() override { Join(); }
    void Poll() override;
    bool IsOn() const override { return value == onValue; }
    void Draw(HDC dc, const RECT& client) const override;
    bool DrawsNotEqual(const RECT& client) const override {
        return HasFace() && TWOSTATEPROPERTIES::DrawsNotEqual(client);
    }
    bool HasFace() const { return style == Style::Button || face.Get() != nullptr; } // else a mark
    void Released() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(value); }

    int Value() const { return value; }
    bool SetValue(int number);
    // Takes the value of its group, if there are others.
    void Join();
    // Its number becomes the value and is sent.
    void Choose();
    // The focus goes to the next one of the group (1) or the one before (-1), which is chosen unless it asks.
    void Move(int direction) const;

    int value = 0;
    std::string group;
    std::string confirmText; // question before it is chosen; empty for none
    Style style = Style::Dot;

private:
    bool IsBound() const { return !functions.empty() || !connections.empty(); }
    // Whether both are in one group, and bound to the same things or to nothing.
    bool IsPeer(const RADIOBUTTONPROPERTIES& other) const;
    void Take(int number);
    void TakeInGroup(int number);
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Property<&RADIOBUTTONPROPERTIES::Value, &RADIOBUTTONPROPERTIES::SetValue>("value").Says(
        "The number of the one that is lit, also of one that is not. Set, it is that of the whole group or, "
        "of "
        "a bound one, sent unless it is the old one. Saved of those that are bound to nothing.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    STATE_BITMAP,
    BUTTON_CAPTION.Says("Text on the button and title of its question."),
    Text<&RADIOBUTTONPROPERTIES::confirmText>("confirm")
        .Saved()
        .Label("Ask before")
        .Items(IDC_CONFIRM)
        .Preview(logic::QuestionText, IDC_CONFIRM_PREVIEW)
        .Says(
            "Question that is asked before it is chosen; empty for none. `\\n` and `\\t` in it are line feed "
            "and tab. Arrow keys then only move the focus here."),
    CONNECTION_KEYWORD,
    BUTTON_FONT,
    FUNCTION_KEYWORD,
    Text<&RADIOBUTTONPROPERTIES::group, TEXT_SIZE - 1, &RADIOBUTTONPROPERTIES::Join>("group")
        .Saved()
        .Label("Group")
        .Says(
            "Name of its group. Those of one parent and group that are bound to nothing exclude each other, "
            "those without a name too; arrow keys move within the group."),
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Integer<&RADIOBUTTONPROPERTIES::onValue, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
            &RADIOBUTTONPROPERTIES::Redraw>("onvalue")
        .Saved()
        .Label("Its number")
        .Items(IDC_ON_VALUE)
        .Says("Whole number that it sends; it is lit while the value is the same."),
    Words<"dot,button", &RADIOBUTTONPROPERTIES::style, &RADIOBUTTONPROPERTIES::Redraw>("style")
        .Saved()
        .Label("Style")
        .Says(
            "`dot`: a round mark and the caption; `button`: a face with the caption on it, as it has with a "
            "bitmap in any case."),
    STATE_COLOURS,
    STATE_COLOUR_ON,
    STATE_COLOUR_OFF,
    VALUE.Saved(),
});

} // namespace

KeywordList RADIOBUTTONPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void RADIOBUTTONPROPERTIES::SetDefaults() {
    TWOSTATEPROPERTIES::SetDefaults();
    interval = 250;
}

bool RADIOBUTTONPROPERTIES::SetValue(int number) {
    const bool isNew = number != value;
    if (!IsBound()) {
        TakeInGroup(number);
    } else if (isNew) {
        Take(number);
        Send(number);
    }
    return true;
}

// Group

namespace {

using RadioButtons = std::vector<RADIOBUTTONPROPERTIES*>;
// All that live on this thread, in order of creation; null when there is none. A plain pointer, because an
// object would have a destructor, and with it would keep the library loaded until the thread ends.
thread_local RadioButtons* radioButtons = nullptr;

} // namespace

RADIOBUTTONPROPERTIES::RADIOBUTTONPROPERTIES() {
    onValue = 1;
    if (radioButtons == nullptr) {
        radioButtons = new RadioButtons;
    }
    radioButtons->push_back(this);
}

RADIOBUTTONPROPERTIES::~RADIOBUTTONPROPERTIES() {
    std::erase(*radioButtons, this);
    if (radioButtons->empty()) {
        delete std::exchange(radioButtons, nullptr);
    }
}

bool RADIOBUTTONPROPERTIES::IsPeer(const RADIOBUTTONPROPERTIES& other) const {
    return parent != nullptr && other.parent == parent && other.group == group &&
           other.functions == functions && other.connections == connections;
}

void RADIOBUTTONPROPERTIES::Take(int number) {
    if (number != value) {
        value = number;
        Redraw();
    }
}

void RADIOBUTTONPROPERTIES::TakeInGroup(int number) {
    Take(number);
    for (RADIOBUTTONPROPERTIES* other : *radioButtons) {
        if (IsPeer(*other)) {
            other->Take(number);
        }
    }
}

void RADIOBUTTONPROPERTIES::Join() {
    const auto& all = *radioButtons;
    const auto other =
        std::find_if(all.begin(), all.end(), [this](const auto* one) { return one != this && IsPeer(*one); });
    if (!IsBound() && other != all.end()) {
        Take((*other)->value);
    }
}

void RADIOBUTTONPROPERTIES::Choose() {
    const int number = onValue;
    if (!IsBound()) {
        TakeInGroup(number);
        return;
    }
    Take(number);
    const DWORD now = GetTickCount();
    for (RADIOBUTTONPROPERTIES* other : *radioButtons) {
        if (other != this && IsPeer(*other)) {
            other->lastPoll =
                now - static_cast<DWORD>(other->interval) - 1; // so that two are not lit for long
        }
    }
    Send(number);
}

// What it is bound to

void RADIOBUTTONPROPERTIES::Poll() {
    int polled = value;
    const int result = Ask(requests, DATATYPE_INTEGER, &polled);
    if (result == REQUEST_DELIVERED) {
        Take(polled);
    }
    ShowPollResult(result);
}

// Drawing

namespace {

constexpr int MARK_MARGIN = 3;
constexpr int LARGEST_MARK = 15;

// The place of the mark: at the left, half way down.
RECT MarkIn(const RECT& client) {
    const int size = std::max(std::min<int>(client.bottom - 2 * MARK_MARGIN, LARGEST_MARK), 1);
    const int top = (client.bottom - size) / 2;
    return {MARK_MARGIN, top, MARK_MARGIN + size, top + size};
}

void DrawMark(HDC dc, const RECT& place, bool isOn, bool isHeld) {
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(DC_PEN));
    const auto disc = [&](int inset, COLORREF rim, COLORREF colour) {
        SetDCPenColor(dc, rim);
        SetDCBrushColor(dc, colour);
        Ellipse(dc, place.left + inset, place.top + inset, place.right - inset, place.bottom - inset);
    };
    disc(0, logic::PANEL_EDGE, isHeld ? logic::PANEL_PLATE : logic::PANEL_WELL);
    if (isOn) {
        disc(std::max<int>((place.right - place.left) / 4, 2), logic::PANEL_BLUE, logic::PANEL_BLUE);
    }
}

} // namespace

void RADIOBUTTONPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (HasFace()) {
        TWOSTATEPROPERTIES::Draw(dc, client);
        return;
    }
    const RECT mark = MarkIn(client);
    DrawMark(dc, mark, IsOn(), heldDown);
    if (!caption.empty()) {
        RECT text = client;
        text.left = mark.right + 2 * MARK_MARGIN;
        SelectObject(dc, font.Get());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, IsOn() ? textColorPressed : textColorReleased);
        DrawTextA(dc, caption.c_str(), -1, &text,
                  DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
    }
}

// Input

void RADIOBUTTONPROPERTIES::Released() {
    if (!IsHeldDown()) { // the cursor left the button
        return;
    }
    const bool isChosen = IsConfirmed(*this, confirmText, caption);
    ShowHeldDown(false);
    if (isChosen) {
        Choose();
    }
}

void RADIOBUTTONPROPERTIES::Move(int direction) const {
    std::vector<RADIOBUTTONPROPERTIES*> peers;
    for (HOSTINFO* object : a_ListHostinfos(a_FindRootHostinfo(parent))) {
        auto* other = dynamic_cast<RADIOBUTTONPROPERTIES*>(object);
        if (other != nullptr && IsPeer(*other) && IsWindowVisible(other->window) != FALSE &&
            IsWindowEnabled(other->window) != FALSE) {
            peers.push_back(other);
        }
    }
    const auto own = std::find(peers.begin(), peers.end(), this);
    if (own == peers.end() || peers.size() == 1) {
        return;
    }
    const auto count = static_cast<std::ptrdiff_t>(peers.size());
    RADIOBUTTONPROPERTIES* next =
        peers[static_cast<std::size_t>((own - peers.begin() + direction + count) % count)];
    const HWND target = next->window;
    SetFocus(target);
    if (a_FromWindow(target) == next && GetFocus() == target && next->confirmText.empty()) {
        next->Choose();
    }
}

namespace {

LRESULT CALLBACK RadioButtonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto& button = *PropertiesOf<RADIOBUTTONPROPERTIES>(window);
    if (message == WM_KEYDOWN && wParam >= VK_LEFT && wParam <= VK_DOWN) {
        if (!PassInput(button, message, wParam, lParam) && !button.dragging) {
            button.Move(wParam == VK_LEFT || wParam == VK_UP ? -1 : 1);
        }
        return 0;
    }
    return ButtonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation radioButtonControl = Implement<RADIOBUTTONPROPERTIES>(
    RadioButtonProc, LAID_OUT, "One of several buttons, of which the one whose number is the value is lit.");
