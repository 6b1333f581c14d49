// SWITCH: a rocker with two or three positions, each of which is a number that it sends. Wider than high it
// lies, with its lower end on the left. It stays where it is put, or springs back when it is released. Values
// are whole numbers, the interval is in milliseconds, geometry in pixels.

#include "Controls/drawing/Ink.h"
#include "Controls/drawing/Shading.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/Button.h"
#include "Controls/families/Question.h"
#include "base/Gdi.h"
#include "logic/controls/ButtonLogic.h"
#include "logic/controls/RockerPositions.h"
#include "logic/drawing/PanelColours.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <windowsx.h>

class ROCKERSWITCHPROPERTIES : public BUTTONPROPERTIES {
public:
    ROCKERSWITCHPROPERTIES();
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;
    int FrameCount() const override { return positions.Count(); }
    bool IsHeldDown() const override { return heldDown; }
    void SetHeldDown(bool down) override { heldDown = down; }
    KeyUse UseOf(WPARAM key) const override;
    void Pressed() override;
    void Released() override;
    void CancelDrag() override;
    bool OffersApply() const override { return true; }
    void Apply() override { Send(value); }

    int Value() const { return value; }
    bool SetValue(int number);
    std::string PositionsText() const { return positions.Text(); }
    bool SetPositions(const std::string& text);

    bool IsMomentary() const { return momentary != 0; }
    // Sends that position, unless the rocker is there already, after the question where there is one.
    void MoveTo(int position);
    void SpringBack();
    std::string_view TextOf(int position) const;
    // The half on which a point of the client area is: 1 the upper (right) one, -1 the lower (left) one.
    int HalfAt(POINT point) const;

    logic::RockerPositions positions;
    int value = 0;
    bool isKnown = false; // the value was set or polled; until then the rocker rests
    int momentary = 0;
    std::string confirmText; // question before it moves; empty for none
    bool heldDown = false;   // the position that it is pressed to is shown
    int pressedHalf = 1;     // that the mouse is on

private:
    void Take(int number);
    void MarkUnknown();
    void DrawRocker(HDC dc, const RECT& client, std::optional<int> position) const;
    void DrawTexts(HDC dc, const RECT& client) const;
    void PlaceTexts(HDC dc, const RECT& client) const;
    // In which it is drawn; nothing when its value is none.
    std::optional<int> ShownPosition() const {
        return heldDown && !isPushed_ ? target_ : positions.PositionOf(value);
    }

    // What the texts were placed for.
    struct Kept {
        std::string caption, font;
        SIZE size;
        int count;

        bool operator==(const Kept& other) const {
            return caption == other.caption && font == other.font && size.cx == other.size.cx &&
                   size.cy == other.size.cy && count == other.count;
        }
    };
    mutable Kept kept_{};
    mutable Ink texts_;

    int target_ = 0;        // position that it is pressed to
    bool isPushed_ = false; // there, and to spring back
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Property<&ROCKERSWITCHPROPERTIES::Value, &ROCKERSWITCHPROPERTIES::SetValue>("value").Says(
        "The number. Set, it is shown and, unless it is the old one, sent to everything the rocker is bound "
        "to. "
        "One that is no position is marked by the not-equal sign.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    BUTTON_BITMAP.Pictures("ROCKER_").Says("Image file with one frame for each position side by side, the "
                                           "lower (left) end first, which gives the "
                                           "rocker its size; empty for a plain one."),
    BUTTON_CAPTION.Says("Texts of the positions joined by `;`, the lower (left) end first. That of the "
                        "position it is pressed to is the title of the question."),
    Text<&ROCKERSWITCHPROPERTIES::confirmText>("confirm")
        .Saved()
        .Label("Ask before")
        .Items(IDC_CONFIRM)
        .Preview(logic::QuestionText, IDC_CONFIRM_PREVIEW)
        .Says(
            "Question that is asked before it moves; empty for none. `\\n` and `\\t` in it are line feed and "
            "tab. A momentary one does not ask."),
    CONNECTION_KEYWORD,
    BUTTON_FONT,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Integer<&ROCKERSWITCHPROPERTIES::momentary, 0, 1>("momentary")
        .Saved()
        .OneOf("0,1")
        .Label("Springs back")
        .Says("1: it springs back to the first position, of three to the middle one, when it is released or "
              "taken from under the mouse. 0: it stays."),
    Property<&ROCKERSWITCHPROPERTIES::PositionsText, &ROCKERSWITCHPROPERTIES::SetPositions>(
        "positions", KeywordKind::Numbers)
        .Saved()
        .Label("Positions")
        .Says("Two or three different whole numbers from the lower (left) end to the upper, joined by `,`."),
    Colour<&ROCKERSWITCHPROPERTIES::textColorReleased>("textcolor")
        .Saved()
        .Label("Text colour")
        .Items(IDC_TEXT_COLOUR, IDC_CHOOSE_TEXT_COLOUR)
        .Says("Colour of the texts, `0x00bbggrr`."),
    VALUE,
});

} // namespace

ROCKERSWITCHPROPERTIES::ROCKERSWITCHPROPERTIES() {
    caption.clear();
    textColorReleased = logic::PANEL_TEXT;
}

KeywordList ROCKERSWITCHPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void ROCKERSWITCHPROPERTIES::SetDefaults() {
    BUTTONPROPERTIES::SetDefaults();
    interval = 250;
}

bool ROCKERSWITCHPROPERTIES::SetValue(int number) {
    if (number != value) {
        Take(number);
        Send(number);
    }
    isKnown = true;
    return true;
}

bool ROCKERSWITCHPROPERTIES::SetPositions(const std::string& text) {
    const auto read = logic::RockerPositions::Parse(text);
    if (!read) {
        return false;
    }
    EndHold(); // back in the old ones
    const bool hasOtherFrames = read->Count() != positions.Count();
    positions = *read;
    if (!isKnown) {
        value = positions.At(positions.Rest());
    }
    MarkUnknown();
    if (hasOtherFrames) {
        BitmapChanged();
    } else {
        Redraw();
    }
    return true;
}

// Value

void ROCKERSWITCHPROPERTIES::Take(int number) {
    isKnown = true;
    if (number != value) {
        value = number;
        Redraw();
    }
    MarkUnknown();
}

void ROCKERSWITCHPROPERTIES::MarkUnknown() {
    if (!positions.PositionOf(value)) {
        ShowPollResult(REQUEST_DISAGREE);
    } else if (lastPollResult == REQUEST_DISAGREE) {
        ShowPollResult(REQUEST_UNCHANGED);
    }
}

void ROCKERSWITCHPROPERTIES::Poll() {
    int polled = value;
    int result = Ask(requests, DATATYPE_INTEGER, &polled);
    if (result == REQUEST_DELIVERED) {
        Take(polled);
    }
    if (!positions.PositionOf(value)) {
        result = std::max(result, REQUEST_DISAGREE);
    }
    ShowPollResult(result);
}

void ROCKERSWITCHPROPERTIES::MoveTo(int position) {
    const int number = positions.At(position);
    if (number == value) {
        return;
    }
    const std::string text(TextOf(position));
    if (IsConfirmed(*this, confirmText, text.empty() ? a_OwnName(this) : text)) {
        Take(number);
        Send(number);
    }
}

// Held

ROCKERSWITCHPROPERTIES::KeyUse ROCKERSWITCHPROPERTIES::UseOf(WPARAM key) const {
    if (key >= VK_LEFT && key <= VK_DOWN) {
        return IsMomentary() ? KeyUse::Hold : KeyUse::Click;
    }
    return BUTTONPROPERTIES::UseOf(key);
}

void ROCKERSWITCHPROPERTIES::Pressed() {
    const bool isArrow = heldKey >= VK_LEFT && heldKey <= VK_DOWN;
    const int half = heldKey == 0 ? pressedHalf : (heldKey == VK_UP || heldKey == VK_RIGHT ? 1 : -1);
    target_ = heldKey == 0 || isArrow ? positions.Step(value, half) : positions.Next(value);
    Redraw();
    UpdateWindow(window);
    if (IsMomentary()) {
        isPushed_ = true;
        Take(positions.At(target_));
        Send(value);
    }
}

void ROCKERSWITCHPROPERTIES::Released() {
    if (!isPushed_ && IsHeldDown()) { // the cursor did not leave it
        MoveTo(target_);
    }
    ShowHeldDown(false);
    SpringBack();
}

void ROCKERSWITCHPROPERTIES::CancelDrag() {
    BUTTONPROPERTIES::CancelDrag();
    SpringBack();
}

void ROCKERSWITCHPROPERTIES::SpringBack() {
    if (std::exchange(isPushed_, false)) {
        Take(positions.At(positions.Rest()));
        Send(value);
    }
}

int ROCKERSWITCHPROPERTIES::HalfAt(POINT point) const {
    RECT client{};
    GetClientRect(window, &client);
    return client.right > client.bottom ? (2 * point.x < client.right ? -1 : 1)
                                        : (2 * point.y < client.bottom ? 1 : -1);
}

// Drawing

std::string_view ROCKERSWITCHPROPERTIES::TextOf(int position) const {
    const auto texts = logic::SplitFields(caption, ';');
    const auto place = static_cast<std::size_t>(position);
    return place < texts.size() ? texts[place] : std::string_view();
}

namespace {

constexpr COLORREF SUNK[] = {RGB(30, 33, 37), RGB(56, 60, 66)}; // from the end to the axis
constexpr COLORREF LEVEL[] = {RGB(82, 88, 95), RGB(72, 77, 84)};
constexpr COLORREF RAISED[] = {RGB(100, 107, 116), RGB(74, 80, 87)};
constexpr int BEZEL = 2;
constexpr int STRIPE = 3;

// A rocker from its upper (left) end on; in the middle it tilts.
struct RockerShape {
    explicit RockerShape(const RECT& client) : isLying(client.right > client.bottom), body(client) {
        InflateRect(&body, -BEZEL, -BEZEL);
    }
    // The part from one place to another, in so many pieces of the whole.
    RECT Part(int from, int to, int pieces) const {
        RECT part = body;
        if (isLying) {
            const int length = body.right - body.left;
            part.left = body.left + length * from / pieces;
            part.right = body.left + length * to / pieces;
        } else {
            const int length = body.bottom - body.top;
            part.top = body.top + length * from / pieces;
            part.bottom = body.top + length * to / pieces;
        }
        return part;
    }
    bool isLying;
    RECT body;
};

} // namespace

void ROCKERSWITCHPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const auto position = ShownPosition();
    if (face.Get() != nullptr) {
        const BitmapParts frames = Frames();
        frames.Draw(dc, position.value_or(positions.Rest()), {0, 0, frames.Width(), frames.Height()});
    } else {
        DrawRocker(dc, client, position);
    }
    DrawTexts(dc, client);
}

void ROCKERSWITCHPROPERTIES::DrawRocker(HDC dc, const RECT& client, std::optional<int> position) const {
    const RockerShape shape(client);
    FillGround(dc, logic::PANEL_WELL, client);
    // The end that is drawn first, the upper or left one, and the other one.
    const int last = positions.Count() - 1;
    const bool isAtLast = position == last;
    const bool isAtFirst = position == 0;
    const bool isFirstDown = shape.isLying ? isAtFirst : isAtLast;
    const bool isSecondDown = shape.isLying ? isAtLast : isAtFirst;
    const auto& one = isFirstDown ? SUNK : (isSecondDown ? RAISED : LEVEL);
    const auto& other = isSecondDown ? SUNK : (isFirstDown ? RAISED : LEVEL);
    const COLORREF colours[] = {one[0], one[1], other[1], other[0]};
    if (shape.isLying) {
        DrawGradientColumns(dc, shape.body, colours);
    } else {
        DrawGradientRows(dc, shape.body, colours);
    }
    // Off its rest the end that is down is lit.
    if ((isFirstDown || isSecondDown) && position != positions.Rest()) {
        RECT stripe = shape.body;
        if (shape.isLying) {
            (isFirstDown ? stripe.right : stripe.left) =
                isFirstDown ? stripe.left + STRIPE : stripe.right - STRIPE;
        } else {
            (isFirstDown ? stripe.bottom : stripe.top) =
                isFirstDown ? stripe.top + STRIPE : stripe.bottom - STRIPE;
        }
        FillGround(dc, logic::PANEL_BLUE, stripe);
    }
}

void ROCKERSWITCHPROPERTIES::DrawTexts(HDC dc, const RECT& client) const {
    if (caption.empty()) {
        return;
    }
    const Kept kept{caption, font.Text(), {client.right, client.bottom}, positions.Count()};
    if (kept != kept_) {
        kept_ = kept;
        PlaceTexts(dc, client);
    }
    texts_.Draw(dc, {kept.size, 0, textColorReleased, font.Get()});
}

// Each in the middle of its part of the rocker.
void ROCKERSWITCHPROPERTIES::PlaceTexts(HDC dc, const RECT& client) const {
    const RockerShape shape(client);
    const int count = positions.Count();
    const Selected selected(dc, font.Get());
    std::vector<Ink::Text> texts;
    for (int number = 0; number < count; ++number) {
        const std::string text(TextOf(number));
        const int place = shape.isLying ? number : count - 1 - number;
        const RECT part = shape.Part(place, place + 1, count);
        SIZE extent{};
        GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &extent);
        texts.push_back(
            {text, {(part.left + part.right - extent.cx) / 2, (part.top + part.bottom - extent.cy) / 2}});
    }
    texts_.Set({}, std::move(texts));
}

// Window procedure and registration

namespace {

LRESULT CALLBACK RockerSwitchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& rocker = *PropertiesOf<ROCKERSWITCHPROPERTIES>(window);
    if (message == WM_LBUTTONDOWN) {
        rocker.pressedHalf = rocker.HalfAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    } else if (message == WM_MOUSEWHEEL) {
        if (!PassInput(rocker, message, wParam, lParam) && !rocker.dragging && !rocker.IsMomentary()) {
            rocker.MoveTo(rocker.positions.Step(rocker.value, GET_WHEEL_DELTA_WPARAM(wParam) < 1 ? -1 : 1));
        }
        return 0;
    }
    return ButtonProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation rockerSwitchControl = Implement<ROCKERSWITCHPROPERTIES>(
    RockerSwitchProc, LAID_OUT,
    "A rocker with two or three positions that stays where it is put, or springs back. Wider than high it "
    "lies.");
