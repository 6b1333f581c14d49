// SCALE: marks and numbers, on their own or beside a control of the same panel whose value moves: there each
// mark stands, on the screen, on the pixel on which that control shows its value. A scale only shows: its own
// value is a small pointer, drawn while it is bound, and it never sends. Without such a control, one that is
// wider than high is horizontal. Interval in milliseconds, geometry in pixels.

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/Ink.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/families/DarkStrip.h"
#include "Controls/families/RangedNumber.h"
#include "Controls/families/TravelBeside.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/ScaleLogic.h"
#include "logic/drawing/PanelColours.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

enum class Side { Right, Left, Both, None }; // of the numbers, in the order of the words

constexpr int MAIN_LENGTH = 6; // of a mark
constexpr int SMALL_LENGTH = 3;
constexpr int NUMBER_GAP = 3;    // from mark to number
constexpr int POINTER_REACH = 3; // to either side of its place
constexpr int MOST_SMALL_MARKS = 9;
constexpr int WIDEST_MARGIN = 16384;
constexpr int WIDEST_STEP = 1000000000;

} // namespace

class SCALEPROPERTIES : public CONTROLPROPERTIES {
public:
    SCALEPROPERTIES() {
        font.Load("Tahoma,8");
        partFont_.Load("Tahoma,6");
    }
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void BindingsChanged() override { Redraw(); }
    void Poll() override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    DWORD DueIn(DWORD now) const noexcept override { return beside_.IsBehind(*this) ? 0 : UntilPoll(now); }
    void Draw(HDC dc, const RECT& client) const override;

    int Value() const { return value_; }
    bool SetValue(int number);
    std::string RangeText() const { return range_.Text(); }
    bool SetRange(const std::string& text);
    int LawNumber() const { return static_cast<int>(law_); }
    bool SetLaw(int number);
    std::string Marks() const { return logic::JoinFloats(listed_); }
    bool SetMarks(const std::string& text);
    std::string Format() const { return format_; }
    bool SetFormat(const std::string& text);
    std::string Beside() const { return beside_.Text(); }
    bool SetBeside(const std::string& text);
    void FontChanged() { LookChanged(); }
    void StyleChanged() override { LookChanged(); }
    void LookChanged();
    HFONT ShownFont() const { return IsStripFont(*this, font) ? partFont_.Get() : font.Get(); }
    // Lays out what is to be drawn, unless it is the same as before.
    void Prepare();

    float step = 0;     // 0: chosen
    int smallMarks = 1; // between two main ones
    int margin = 11;    // as much as the usual knob of a fader needs
    Side side = Side::Right;
    FontProperty font;
    std::optional<COLORREF> textColour; // none: what can be read
    std::optional<COLORREF> lineColour; // none: the same
    std::optional<COLORREF> backgroundColour;

private:
    logic::TravelRange OwnRange() const {
        return {static_cast<float>(range_.minimum), static_cast<float>(range_.maximum), law_};
    }
    int Limited(int number) const;
    void LayOut(HDC dc, const RECT& client);
    // Of what lies so far along and across the travel.
    RECT Area(int from, int to, int inner, int outer) const {
        return travel_.isHorizontal ? RECT{from, inner, to, outer} : RECT{inner, from, outer, to};
    }
    int Breadth(const RECT& client) const { return travel_.isHorizontal ? client.bottom : client.right; }
    RECT MarkArea(const logic::ScaleMark& mark, const RECT& client) const;
    RECT PointerPart(const RECT& client, int reach) const;
    void RedrawPointer() const;

    int value_ = 0;
    WholeRange range_{-80, 0};
    logic::Law law_ = logic::Law::Linear;
    std::vector<float> listed_;
    std::string format_ = "%g";
    TravelBeside beside_;

    bool isLaidOut_ = false;
    FontProperty partFont_; // of a strip's scale on a dark panel
    logic::Travel travel_;
    int offset_ = 0;
    mutable Ink ink_; // the marks and numbers; it keeps how they were drawn
};

// Keywords

namespace {

constexpr Keyword VALUE = Property<&SCALEPROPERTIES::Value, &SCALEPROPERTIES::SetValue>("value").Says(
    "Where the pointer stands, a whole number, which is limited to the range. It is drawn while the scale "
    "is bound, and never sent.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    OptionalColour<&SCALEPROPERTIES::backgroundColour>("backgroundcolor")
        .Saved()
        .Label("Background")
        .Says("Colour of the ground, `0x00bbggrr`; empty to show the panel behind it."),
    Property<&SCALEPROPERTIES::Beside, &SCALEPROPERTIES::SetBeside>("beside", KeywordKind::Addresses)
        .Holds(logic::AddressForm::Connections)
        .Saved()
        .Label("Beside")
        .Says("Fader, meter, bar graph, range or reverse meter whose range, law and travel the scale takes "
              "over "
              "and follows; empty for none. When that goes, what was taken over last stays."),
    CONNECTION_KEYWORD,
    Property<&SCALEPROPERTIES::Format, &SCALEPROPERTIES::SetFormat>("fmt")
        .Saved()
        .Label("Number format")
        .Says("`printf` format of the numbers, with one float conversion; empty for none."),
    FontOf<&SCALEPROPERTIES::font>("font").Saved().Label("Font").Says(
        "Font of the numbers: face, size in points, `bold` where it is."),
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    OptionalColour<&SCALEPROPERTIES::lineColour>("linecolor")
        .Saved()
        .Label("Line colour")
        .Says("Colour of the marks, `0x00bbggrr`; empty for black or white, whichever can be seen."),
    Limited<&SCALEPROPERTIES::margin, 0, WIDEST_MARGIN, &SCALEPROPERTIES::LookChanged>("margin")
        .Saved()
        .Unit("px")
        .Label("Margin in pixels")
        .Says(
            "Pixels from both ends of the window to the ends of the range, where it stands beside nothing."),
    Property<&SCALEPROPERTIES::Marks, &SCALEPROPERTIES::SetMarks>("marks", KeywordKind::Numbers)
        .Saved()
        .MayBeEmpty()
        .Label("Marks")
        .Says("The numbered marks, joined by `,`, at most 256, in place of `step`; empty for that. Those "
              "beyond the range are not drawn."),
    Limited<&SCALEPROPERTIES::smallMarks, 0, MOST_SMALL_MARKS, &SCALEPROPERTIES::LookChanged>("minor")
        .Saved()
        .Label("Small marks")
        .Says("Small marks between two numbered ones, 0 to 9. Where they would touch there are none."),
    Property<&SCALEPROPERTIES::RangeText, &SCALEPROPERTIES::SetRange>("properties", KeywordKind::Numbers)
        .Saved()
        .Parts(RANGE_PARTS<1, 1>)
        .Says("Minimum and maximum (whole numbers), joined by `,`; the maximum may be left out. Beside "
              "another control that one's are shown, and these kept. A logarithmic scale refuses ends that "
              "are not above 0."),
    // Behind the range, without which `log` would be refused.
    WordsProperty<"linear,log", &SCALEPROPERTIES::LawNumber, &SCALEPROPERTIES::SetLaw>("law")
        .Saved()
        .Label("Law")
        .Says("`linear`, or `log` for frequencies and times, which is refused unless both ends of the range "
              "are above 0."),
    Words<"right,left,both,none", &SCALEPROPERTIES::side, &SCALEPROPERTIES::LookChanged>("side")
        .Saved()
        .Label("Numbers")
        .Says("Where the numbers stand: `right` of the marks, `left`, on `both` sides, or `none`; on a "
              "horizontal scale `right` is below and `left` above."),
    Limited<&SCALEPROPERTIES::step, 0, WIDEST_STEP, &SCALEPROPERTIES::LookChanged>("step")
        .Saved()
        .Label("Step")
        .Says("From one numbered mark to the next; 0 for 1, 2 or 5 times a power of ten, so that numbers "
              "never touch. So is a step that is too small for the pixels there are. Of a greater one the "
              "numbers that would touch are left out."),
    OptionalColour<&SCALEPROPERTIES::textColour>("textcolor")
        .Saved()
        .Label("Text colour")
        .Says(
            "Colour of numbers and pointer, `0x00bbggrr`; empty for black or white, whichever can be read."),
    VALUE,
});

} // namespace

KeywordList SCALEPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

bool SCALEPROPERTIES::SetRange(const std::string& text) {
    WholeRange read = range_;
    if (!read.Load(text) || (law_ == logic::Law::Logarithmic && std::min(read.minimum, read.maximum) <= 0)) {
        return false;
    }
    range_ = read;
    value_ = Limited(value_);
    LookChanged();
    return true;
}

bool SCALEPROPERTIES::SetLaw(int number) {
    const auto wanted = static_cast<logic::Law>(number);
    if (wanted == logic::Law::Logarithmic && std::min(range_.minimum, range_.maximum) <= 0) {
        return false;
    }
    law_ = wanted;
    LookChanged();
    return true;
}

bool SCALEPROPERTIES::SetMarks(const std::string& text) {
    auto read = logic::ParseFloats(text);
    if (!read || read->size() > logic::MOST_LISTED_MARKS) {
        return false;
    }
    listed_ = std::move(*read);
    LookChanged();
    return true;
}

bool SCALEPROPERTIES::SetFormat(const std::string& text) {
    if (!MayBeFormat(text)) {
        return false;
    }
    format_ = text;
    LookChanged();
    return true;
}

bool SCALEPROPERTIES::SetBeside(const std::string& text) {
    if (!beside_.Load(*this, text)) {
        return false;
    }
    beside_.Follow(*this);
    LookChanged();
    return true;
}

void SCALEPROPERTIES::SetDefaults() {
    interval = 1000;
    beside_.Attach(*this);
}

void SCALEPROPERTIES::LookChanged() {
    isLaidOut_ = false;
    Redraw();
}

// Value

// Beside another control its range counts.
int SCALEPROPERTIES::Limited(int number) const {
    const logic::TravelRange shown = beside_.Travel() ? beside_.Travel()->range : OwnRange();
    return logic::TruncateToInteger(std::clamp(
        static_cast<double>(number), static_cast<double>(shown.Lower()), static_cast<double>(shown.Upper())));
}

bool SCALEPROPERTIES::SetValue(int number) {
    const int limited = Limited(number);
    if (limited == value_) {
        return false;
    }
    RedrawPointer();
    value_ = limited;
    RedrawPointer();
    return true;
}

void SCALEPROPERTIES::RedrawPointer() const {
    if (requests.empty()) {
        return;
    }
    RECT client{};
    GetClientRect(window, &client);
    const RECT tip = PointerPart(client, 0);
    const RECT foot = PointerPart(client, POINTER_REACH);
    RECT area{};
    UnionRect(&area, &tip, &foot);
    RedrawArea(&area);
}

void SCALEPROPERTIES::Poll() {
    int polled = value_;
    const int result = Ask(requests, DATATYPE_INTEGER, &polled);
    if (result == REQUEST_DELIVERED) {
        SetValue(polled);
    }
    ShowPollResult(result);
}

LRESULT SCALEPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    if (beside_.Follow(*this)) {
        LookChanged();
    }
    return CONTROLPROPERTIES::OnTimer(timer, lParam);
}

// Layout

void SCALEPROPERTIES::Prepare() {
    if (!beside_.Follow(*this) && isLaidOut_) {
        return;
    }
    RECT client{};
    GetClientRect(window, &client);
    const HDC dc = GetDC(window);
    {
        const Selected selected(dc, ShownFont());
        LayOut(dc, client);
    }
    ReleaseDC(window, dc);
    isLaidOut_ = true;
}

void SCALEPROPERTIES::LayOut(HDC dc, const RECT& client) {
    const bool isWide = client.right > client.bottom;
    const auto& others = beside_.Travel();
    offset_ = others ? beside_.Offset() : 0;
    travel_ = others ? *others
                     : logic::OwnTravel(OwnRange(), isWide ? client.right : client.bottom, margin, isWide);
    const bool isHorizontal = travel_.isHorizontal;
    const bool hasNumbers = side != Side::None && !format_.empty();
    const auto extentOf = [&](const std::string& text) {
        SIZE extent{};
        GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &extent);
        return extent;
    };
    const logic::NumberRoom room{.length = isHorizontal ? client.right : client.bottom,
                                 .gap = isHorizontal ? 2 * NUMBER_GAP : 0,
                                 .extent = [&](float value) -> int {
                                     const SIZE extent =
                                         extentOf(hasNumbers ? logic::FormatFloatAs(format_, value) : "0");
                                     return isHorizontal ? extent.cx : extent.cy;
                                 }};
    const auto marks = logic::ScaleMarks(travel_, offset_, {step, smallMarks, listed_}, room);
    std::vector<RECT> lines;
    std::vector<Ink::Text> numbers;
    const int breadth = Breadth(client);
    for (const logic::ScaleMark& mark : marks) {
        const RECT area = MarkArea(mark, client);
        lines.push_back(area);
        if (!hasNumbers || !mark.hasNumber) {
            continue;
        }
        const std::string text = logic::FormatFloatAs(format_, mark.value);
        const SIZE extent = extentOf(text);
        const int first = room.PlaceOf(mark).first;
        const int thickness = isHorizontal ? extent.cy : extent.cx;
        const int markEnd = isHorizontal ? area.bottom : area.right;
        const int markBegin = isHorizontal ? area.top : area.left;
        const auto put = [&](int across) {
            numbers.push_back({text, isHorizontal ? POINT{first, across} : POINT{across, first}});
        };
        if (side != Side::Left) {
            put(std::min(markEnd + NUMBER_GAP, std::max(breadth - thickness, markEnd)));
        }
        if (side != Side::Right) {
            put(markBegin - NUMBER_GAP - thickness);
        }
    }
    ink_.Set(std::move(lines), std::move(numbers));
}

RECT SCALEPROPERTIES::MarkArea(const logic::ScaleMark& mark, const RECT& client) const {
    const int breadth = Breadth(client);
    const int length = side == Side::None ? (mark.isMain ? breadth : breadth / 2)
                                          : (mark.isMain ? MAIN_LENGTH : SMALL_LENGTH);
    const int first =
        side == Side::Right ? 0 : (side == Side::Left ? breadth - length : (breadth - length) / 2);
    return Area(mark.place, mark.place + 1, first, first + length);
}

// What is drawn of the pointer up to that distance from its place. Its tip is away from the numbers.
RECT SCALEPROPERTIES::PointerPart(const RECT& client, int reach) const {
    const int place = travel_.PlaceOf(static_cast<float>(value_)) + offset_;
    const int breadth = Breadth(client);
    const int first = side == Side::Left   ? breadth - MAIN_LENGTH
                      : side == Side::Both ? (breadth - MAIN_LENGTH) / 2
                                           : 0;
    const int length = MAIN_LENGTH - reach;
    return side == Side::Left ? Area(place - reach, place + reach + 1, first, first + length)
                              : Area(place - reach, place + reach + 1, first + reach, first + MAIN_LENGTH);
}

// Drawing

void SCALEPROPERTIES::Draw(HDC dc, const RECT& client) const {
    FillGround(dc, backgroundColour, client);
    const COLORREF readable =
        textColour && lineColour ? 0 : ReadableOn(GetPixel(dc, client.right / 2, client.bottom / 2));
    const COLORREF text = ShownInk(*this, textColour, logic::PANEL_FAINT).value_or(readable);
    const COLORREF line = ShownInk(*this, lineColour, logic::PANEL_EDGE).value_or(readable);
    ink_.Draw(dc, {{client.right, client.bottom}, line, text, ShownFont()});
    for (int reach = 0; !requests.empty() && reach <= POINTER_REACH; ++reach) {
        FillGround(dc, text, PointerPart(client, reach));
    }
}

namespace {

LRESULT CALLBACK ScaleProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto& scale = *PropertiesOf<SCALEPROPERTIES>(window);
    if (message == WM_PAINT || message == WM_PRINTCLIENT) {
        scale.Prepare();
    } else if (message == WM_SIZE) {
        scale.LookChanged();
    }
    return IndicatorProc(window, message, wParam, lParam);
}

} // namespace

extern const ControlImplementation scaleControl =
    Implement<SCALEPROPERTIES>(ScaleProc, LAID_OUT,
                               "Marks and numbers, on their own or beside a fader, meter, bar graph, range "
                               "or reverse meter, whose range "
                               "and travel they follow.");
