// MINIROUTING: a matrix of crosspoints, inputs in rows and outputs in columns. A click sets one, a drag
// paints them; keys work it as well. What is seen of a large one can be scrolled. Geometry in pixels.

#include "Controls/families/PatternList.h"
#include "Controls/families/View.h"
#include "base/Gdi.h"
#include "base/Handles.h"
#include "logic/controls/RoutingGrid.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

using logic::Crosspoint;
using logic::CrosspointState;
using logic::RoutingLayout;

namespace {

constexpr int NAME_MARGIN = 4; // around a name
constexpr int MARK_MARGIN = 3; // around a name that is shown over the cells
constexpr std::size_t LONGEST_NAME = 100;

// What the answer of a crosspoint says; status: as a_SendToItem answers.
CrosspointState StateOf(int status, int answer) {
    return status < 0 ? CrosspointState::Missing : answer != 0 ? CrosspointState::On : CrosspointState::Off;
}

} // namespace

class MINIROUTINGPROPERTIES : public VIEWPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    LRESULT OnGetTooltip(WPARAM wParam, LPARAM text) override;
    bool IsBound() const override { return !routes_.Pattern().empty(); }
    void BindingsChanged() override {}
    void FontChanged() override;
    void Poll() override;
    void DrawView(Canvas& canvas) const override;
    bool BeginViewDrag(POINT point) override;
    void MoveViewDrag(POINT point) override;
    void EndViewDrag() override { held_ = Grip::None; }
    void CancelViewDrag() override { held_ = Grip::None; }
    bool KeyDown(WPARAM key) override;
    void Wheel(int notches, bool fine, POINT point) override;
    void Hovered(const POINT* point) override;

    void SizeChanged();
    std::string Routes() const { return routes_.Pattern(); }
    bool SetRoutes(const std::string& pattern);
    std::string InputNames() const { return inputNames_.Pattern(); }
    bool SetInputNames(const std::string& pattern);
    std::string OutputNames() const { return outputNames_.Pattern(); }
    bool SetOutputNames(const std::string& pattern);
    int ValueKeyword(VALUERECORD& record);
    // The focus came or went.
    void RedrawCursor() const { RedrawCell(cursor_); }

    int inputs = 8;
    int outputs = 8;
    int exclusive = 0;

private:
    enum class Grip { None, Cells, HorizontalBar, VerticalBar };

    void Measure() const;
    RoutingLayout Layout() const;
    Crosspoint First() const { return Layout().Limited(first_); }
    void Scroll(Crosspoint first);
    void ScrollTo(Crosspoint place);
    std::string NameOf(const std::vector<std::string>& names, int number) const;
    std::string RouteText(Crosspoint place) const;

    // Asks the device, or tells it and shows what it took. False when the control has ended meanwhile.
    int AskFor(Crosspoint place);
    bool AskNames(PatternList& list, std::vector<std::string>& names, int& worst);
    bool Tell(Crosspoint place, bool isOn);
    bool Switch(Crosspoint place, bool isOn);
    void Toggle(Crosspoint place);
    void TellOfValue();
    void Take(Crosspoint place, CrosspointState state);
    bool Read(const std::string& text);

    RECT BoxOf(const RoutingLayout::Box& box) const;
    RECT RowNameBox(int input) const;
    RECT ColumnNameBox(int output) const;
    std::optional<RECT> MarkBox() const;
    void RedrawCell(Crosspoint place) const;
    void RedrawHover() const;
    void DrawCells(Canvas& canvas) const;
    void DrawCell(Canvas& canvas, const RECT& box, CrosspointState state) const;
    void DrawNames(Canvas& canvas) const;
    void DrawColumnName(const Canvas& canvas, int output, COLORREF colour) const;
    void DrawBars(Canvas& canvas) const;
    bool IsMarked(int Crosspoint::*side, int number) const { return hovered_ && (*hovered_).*side == number; }

    logic::RoutingMatrix matrix_{8, 8};
    PatternList routes_;
    PatternList inputNames_;
    PatternList outputNames_;
    std::vector<std::string> inputTexts_;
    std::vector<std::string> outputTexts_;
    // What follows from font and names.
    mutable bool isMeasured_ = false;
    mutable Font upright_; // the font, turned
    mutable int nameWidth_ = 0;
    mutable int nameHeight_ = 0; // of the longest name of an output, when it stands upright
    mutable int lineHeight_ = 0;

    Crosspoint first_;  // the upper left one that is seen
    Crosspoint cursor_; // that keys work on
    std::optional<Crosspoint> hovered_;
    Grip held_ = Grip::None;
    Crosspoint painted_; // the last one of the drag
    bool isPaintedOn_ = false;
    int grip_ = 0; // from the begin of the thumb to the mouse
};

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
        .Label("Names of the inputs")
        .Says("Address of the name of each input, in which `%i` is its number, counted from 1; empty for "
              "numbers. `%02i` has two digits."),
    SizeOf<&MINIROUTINGPROPERTIES::inputs>("inputs").Label("Inputs").Says("Number of rows, 1 to 64."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the crosspoints that are on, `0x00bbggrr`."),
    PatternOf<&MINIROUTINGPROPERTIES::OutputNames, &MINIROUTINGPROPERTIES::SetOutputNames>("outputnames")
        .Label("Names of the outputs")
        .Says("The same of each output, with `%o`."),
    SizeOf<&MINIROUTINGPROPERTIES::outputs>("outputs").Label("Outputs").Says("Number of columns, 1 to 64."),
    PatternOf<&MINIROUTINGPROPERTIES::Routes, &MINIROUTINGPROPERTIES::SetRoutes>("routes")
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

// Layout

void MINIROUTINGPROPERTIES::FontChanged() {
    isMeasured_ = false;
    Redraw();
}

// Only when it is seen: until then names and font can change several times.
void MINIROUTINGPROPERTIES::Measure() const {
    if (isMeasured_) {
        return;
    }
    isMeasured_ = true;
    LOGFONTA face{};
    GetObjectA(font.Get(), sizeof face, &face);
    face.lfEscapement = face.lfOrientation = 900;
    upright_.reset(CreateFontIndirectA(&face));
    const WindowDc dc(window, 0);
    const Selected selected(dc.Get(), font.Get());
    const auto longest = [&](const std::vector<std::string>& names, int count) {
        int width = 0;
        for (int number = 0; number < count; ++number) {
            const std::string text = NameOf(names, number);
            SIZE size{};
            GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
            width = std::max<int>(width, size.cx);
            lineHeight_ = size.cy;
        }
        return width + 2 * NAME_MARGIN;
    };
    nameWidth_ = longest(inputTexts_, inputs);
    nameHeight_ = longest(outputTexts_, outputs);
}

RoutingLayout MINIROUTINGPROPERTIES::Layout() const {
    Measure();
    const RECT area = ViewArea();
    logic::RoutingSpace space{static_cast<int>(area.right - area.left),
                              static_cast<int>(area.bottom - area.top),
                              inputs,
                              outputs,
                              nameWidth_,
                              nameHeight_};
    const RoutingLayout named(space);
    if (named.cell >= lineHeight_ - 1) {
        return named;
    }
    space.rowNames = space.columnNames = 0; // they could not be read
    return RoutingLayout(space);
}

std::string MINIROUTINGPROPERTIES::NameOf(const std::vector<std::string>& names, int number) const {
    const auto place = static_cast<std::size_t>(number);
    return place < names.size() && !names[place].empty() ? names[place] : std::to_string(number + 1);
}

std::string MINIROUTINGPROPERTIES::RouteText(Crosspoint place) const {
    return NameOf(inputTexts_, place.input) + " > " + NameOf(outputTexts_, place.output);
}

RECT MINIROUTINGPROPERTIES::BoxOf(const RoutingLayout::Box& box) const {
    const RECT area = ViewArea();
    return {area.left + box.left, area.top + box.top, area.left + box.right, area.top + box.bottom};
}

RECT MINIROUTINGPROPERTIES::RowNameBox(int input) const {
    const RoutingLayout layout = Layout();
    const auto cell = layout.CellBox({input, 0}, {First().input, 0});
    return BoxOf({0, cell.top, layout.left, cell.bottom});
}

RECT MINIROUTINGPROPERTIES::ColumnNameBox(int output) const {
    const RoutingLayout layout = Layout();
    const auto cell = layout.CellBox({0, output}, {0, First().output});
    return BoxOf({cell.left, 0, cell.right, layout.top});
}

// The names of what is under the mouse, where those of the cells have no room: in the corner that is farthest
// from it.
std::optional<RECT> MINIROUTINGPROPERTIES::MarkBox() const {
    const RoutingLayout layout = Layout();
    if (!hovered_ || layout.left > 0) {
        return std::nullopt;
    }
    const RECT area = ViewArea();
    const WindowDc dc(window, 0);
    const Selected selected(dc.Get(), font.Get());
    const std::string text = RouteText(*hovered_);
    SIZE size{};
    GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    const RECT cell = BoxOf(layout.CellBox(*hovered_, First()));
    const int width = std::min<int>(size.cx + 2 * MARK_MARGIN, area.right - area.left);
    const int height = std::min<int>(size.cy + 2 * MARK_MARGIN, area.bottom - area.top);
    const bool isRight = cell.left < (area.left + area.right) / 2;
    const bool isBelow = cell.top < (area.top + area.bottom) / 2;
    const int left = isRight ? area.right - width : area.left;
    const int top = isBelow ? area.bottom - height : area.top;
    return RECT{left, top, left + width, top + height};
}

void MINIROUTINGPROPERTIES::RedrawCell(Crosspoint place) const {
    if (const Crosspoint first = First(); Layout().IsSeen(place, first)) {
        RedrawPart(BoxOf(Layout().CellBox(place, first)));
    }
}

void MINIROUTINGPROPERTIES::RedrawHover() const {
    if (!hovered_) {
        return;
    }
    RedrawCell(*hovered_);
    RedrawPart(RowNameBox(hovered_->input));
    RedrawPart(ColumnNameBox(hovered_->output));
    if (const auto mark = MarkBox()) {
        RedrawPart(*mark);
    }
}

void MINIROUTINGPROPERTIES::Scroll(Crosspoint first) {
    const Crosspoint limited = Layout().Limited(first);
    if (limited != First()) {
        first_ = limited;
        Redraw();
    }
}

void MINIROUTINGPROPERTIES::ScrollTo(Crosspoint place) {
    Scroll(Layout().Showing(First(), place));
}

// Drawing

namespace {

// A box with round corners.
std::vector<logic::Spot> Rounded(double left, double top, double right, double bottom, double radius) {
    constexpr int STEPS = 4; // a corner
    const logic::Spot centres[] = {{right - radius, bottom - radius},
                                   {left + radius, bottom - radius},
                                   {left + radius, top + radius},
                                   {right - radius, top + radius}};
    std::vector<logic::Spot> outline;
    for (int corner = 0; corner < 4; ++corner) {
        for (int step = 0; step <= STEPS; ++step) {
            const double angle = (corner + static_cast<double>(step) / STEPS) * std::numbers::pi / 2;
            outline.push_back(
                {centres[corner].x + radius * std::cos(angle), centres[corner].y + radius * std::sin(angle)});
        }
    }
    return outline;
}

// What of the view is painted on.
RECT SeenOf(const Canvas& canvas) {
    RECT seen{};
    GetClipBox(canvas.Dc(), &seen);
    return seen;
}

// The cells, of so many, that a stretch of pixels touches.
struct Span {
    Span(int from, int to, int cell, int count)
        : first(std::clamp(from / cell, 0, count)), end(std::clamp((to + cell - 1) / cell, 0, count)) {}

    int first, end;
};

} // namespace

void MINIROUTINGPROPERTIES::DrawCell(Canvas& canvas, const RECT& box, CrosspointState state) const {
    const int size = box.right - box.left;
    const double gap = size >= 12 ? 1.5 : 1;
    const double radius = size / 6.0;
    const double left = box.left + gap;
    const double top = box.top + gap;
    const double right = box.right - gap;
    const double bottom = box.bottom - gap;
    if (state == CrosspointState::On) {
        canvas.Shape(Rounded(left, top, right, bottom, radius), lineColour);
        // Lit from above.
        canvas.Shape(Rounded(left + 1, top + 1, right - 1, (top + bottom) / 2, std::max(radius - 1, 0.5)),
                     RGB(255, 255, 255), 0.28);
        return;
    }
    canvas.Shape(Rounded(left, top, right, bottom, radius), Shade(textColour, 0.13));
    if (state == CrosspointState::Missing) {
        const double inset = size / 3.5;
        const logic::Spot falling[] = {{box.left + inset, box.top + inset},
                                       {box.right - inset, box.bottom - inset}};
        const logic::Spot rising[] = {{box.left + inset, box.bottom - inset},
                                      {box.right - inset, box.top + inset}};
        canvas.Line(falling, 1.2, Shade(textColour, 0.5));
        canvas.Line(rising, 1.2, Shade(textColour, 0.5));
    }
}

// Cells of a state look the same: the first one is drawn, and copied to where the others are.
void MINIROUTINGPROPERTIES::DrawCells(Canvas& canvas) const {
    const RoutingLayout layout = Layout();
    const Crosspoint first = First();
    const RECT area = ViewArea();
    const RECT seen = SeenOf(canvas);
    const Span rows(seen.top - area.top - layout.top, seen.bottom - area.top - layout.top, layout.cell,
                    layout.rows);
    const Span columns(seen.left - area.left - layout.left, seen.right - area.left - layout.left, layout.cell,
                       layout.columns);
    std::optional<RECT> drawn[3];
    for (int row = rows.first; row < rows.end; ++row) {
        for (int column = columns.first; column < columns.end; ++column) {
            const Crosspoint place{first.input + row, first.output + column};
            const auto cell = layout.CellBox(place, first);
            const RECT box{area.left + cell.left, area.top + cell.top, area.left + cell.right,
                           area.top + cell.bottom};
            auto& sample = drawn[static_cast<int>(matrix_[place])];
            if (sample) {
                BitBlt(canvas.Dc(), box.left, box.top, layout.cell, layout.cell, canvas.Dc(), sample->left,
                       sample->top, SRCCOPY);
                continue;
            }
            DrawCell(canvas, box, matrix_[place]);
            if (box.left >= seen.left && box.top >= seen.top && box.right <= seen.right &&
                box.bottom <= seen.bottom) {
                sample = box;
            }
        }
    }
    const auto frame = [&](Crosspoint place, COLORREF colour) {
        if (layout.IsSeen(place, first)) {
            const Brush brush(CreateSolidBrush(colour));
            const RECT box = BoxOf(layout.CellBox(place, first));
            FrameRect(canvas.Dc(), &box, brush.get());
        }
    };
    if (hovered_) {
        frame(*hovered_, textColour);
    }
    if (HasFocus()) {
        frame(cursor_, logic::PANEL_ACCENT);
    }
}

void MINIROUTINGPROPERTIES::DrawColumnName(const Canvas& canvas, int output, COLORREF colour) const {
    const RECT box = ColumnNameBox(output);
    std::string shown = NameOf(outputTexts_, output);
    const Selected selected(canvas.Dc(), font.Get());
    const int room = box.bottom - box.top - 2 * NAME_MARGIN;
    const auto width = [&](const std::string& text) {
        SIZE size{};
        GetTextExtentPoint32A(canvas.Dc(), text.c_str(), static_cast<int>(text.size()), &size);
        return size.cx;
    };
    if (width(shown) > room) {
        while (!shown.empty() && width(shown + "...") > room) {
            shown.pop_back();
        }
        shown += "...";
    }
    const Selected turned(canvas.Dc(), upright_.get());
    SetTextColor(canvas.Dc(), colour);
    ExtTextOutA(canvas.Dc(), (box.left + box.right - lineHeight_) / 2, box.bottom - NAME_MARGIN, ETO_CLIPPED,
                &box, shown.c_str(), static_cast<UINT>(shown.size()), nullptr);
}

void MINIROUTINGPROPERTIES::DrawNames(Canvas& canvas) const {
    const RoutingLayout layout = Layout();
    const Crosspoint first = First();
    const RECT area = ViewArea();
    const RECT seen = SeenOf(canvas);
    const Span rows(seen.top - area.top - layout.top, seen.bottom - area.top - layout.top, layout.cell,
                    layout.rows);
    const Span columns(seen.left - area.left - layout.left, seen.right - area.left - layout.left, layout.cell,
                       layout.columns);
    for (int row = rows.first; seen.left < area.left + layout.left && row < rows.end; ++row) {
        const int input = first.input + row;
        RECT box = RowNameBox(input);
        const bool isMarked = IsMarked(&Crosspoint::input, input);
        if (isMarked) {
            canvas.Box(box, Shade(textColour, 0.2));
        }
        InflateRect(&box, -NAME_MARGIN, 0);
        canvas.Text(NameOf(inputTexts_, input), box, font.Get(), Shade(textColour, isMarked ? 1 : 0.7),
                    DT_RIGHT | DT_VCENTER | DT_END_ELLIPSIS);
    }
    for (int column = columns.first; seen.top < area.top + layout.top && column < columns.end; ++column) {
        const int output = first.output + column;
        const bool isMarked = IsMarked(&Crosspoint::output, output);
        if (isMarked) {
            canvas.Box(ColumnNameBox(output), Shade(textColour, 0.2));
        }
        DrawColumnName(canvas, output, Shade(textColour, isMarked ? 1 : 0.7));
    }
}

void MINIROUTINGPROPERTIES::DrawBars(Canvas& canvas) const {
    const RoutingLayout layout = Layout();
    const auto bar = [&](const RoutingLayout::Box& track, const RoutingLayout::Box& thumb) {
        canvas.Box(BoxOf(track), Shade(textColour, 0.08));
        const RECT box = BoxOf(thumb);
        canvas.Shape(Rounded(box.left + 1, box.top + 1, box.right - 1, box.bottom - 1, 2),
                     Shade(textColour, 0.45));
    };
    if (layout.HasHorizontalBar()) {
        bar(layout.HorizontalTrack(), layout.HorizontalThumb(First()));
    }
    if (layout.HasVerticalBar()) {
        bar(layout.VerticalTrack(), layout.VerticalThumb(First()));
    }
}

void MINIROUTINGPROPERTIES::DrawView(Canvas& canvas) const {
    DrawCells(canvas);
    DrawNames(canvas);
    DrawBars(canvas);
    if (const auto mark = MarkBox()) {
        canvas.Box(*mark, Shade(textColour, 0.25));
        canvas.Text(RouteText(*hovered_), *mark, font.Get(), textColour,
                    DT_CENTER | DT_VCENTER | DT_END_ELLIPSIS);
    }
}

LRESULT MINIROUTINGPROPERTIES::OnGetTooltip(WPARAM wParam, LPARAM text) {
    if (!IsBound() || (!hovered_ && !HasFocus())) {
        return VIEWPROPERTIES::OnGetTooltip(wParam, text);
    }
    const Crosspoint place = hovered_.value_or(cursor_);
    const CrosspointState state = matrix_[place];
    std::snprintf(reinterpret_cast<char*>(text), TEXT_SIZE, "%s: %s   %s", name.c_str(),
                  RouteText(place).c_str(),
                  state == CrosspointState::On    ? "on"
                  : state == CrosspointState::Off ? "off"
                                                  : "(not reachable)");
    return 1;
}

// Input

bool MINIROUTINGPROPERTIES::BeginViewDrag(POINT point) {
    if (!IsBound()) {
        return false;
    }
    const RECT area = ViewArea();
    const RoutingLayout layout = Layout();
    const Crosspoint first = First();
    const auto isIn = [&](const RoutingLayout::Box& box) {
        const RECT placed = BoxOf(box);
        return PtInRect(&placed, point) != FALSE;
    };
    if (layout.HasHorizontalBar() && isIn(layout.HorizontalTrack())) {
        const RoutingLayout::Box thumb = layout.HorizontalThumb(first);
        held_ = Grip::HorizontalBar;
        grip_ = isIn(thumb) ? point.x - area.left - thumb.left : (thumb.right - thumb.left) / 2;
        MoveViewDrag(point);
    } else if (layout.HasVerticalBar() && isIn(layout.VerticalTrack())) {
        const RoutingLayout::Box thumb = layout.VerticalThumb(first);
        held_ = Grip::VerticalBar;
        grip_ = isIn(thumb) ? point.y - area.top - thumb.top : (thumb.bottom - thumb.top) / 2;
        MoveViewDrag(point);
    } else if (const auto place = layout.CellAt(point.x - area.left, point.y - area.top, first)) {
        held_ = Grip::Cells;
        painted_ = *place;
        const Crosspoint before = std::exchange(cursor_, *place);
        RedrawCell(before);
        RedrawCell(cursor_);
        if (AskFor(*place) < 0 || !matrix_.Has(*place)) {
            held_ = Grip::None;
            return false;
        }
        isPaintedOn_ = !matrix_.IsOn(*place);
        if (Switch(*place, isPaintedOn_)) {
            TellOfValue();
        }
        UpdateWindow(window);
    }
    return held_ != Grip::None && parent != nullptr;
}

void MINIROUTINGPROPERTIES::MoveViewDrag(POINT point) {
    const RECT area = ViewArea();
    const RoutingLayout layout = Layout();
    const Crosspoint first = First();
    const int x = point.x - area.left;
    const int y = point.y - area.top;
    if (held_ == Grip::HorizontalBar) {
        Scroll({first.input, layout.FirstColumnAt(x - grip_)});
    } else if (held_ == Grip::VerticalBar) {
        Scroll({layout.FirstRowAt(y - grip_), first.output});
    } else if (held_ == Grip::Cells) {
        const Crosspoint to = layout.NearestCell(x, y, first);
        bool isAnyNew = false;
        for (const Crosspoint place : logic::CrosspointsTo(painted_, to)) {
            if (matrix_.Has(place) && matrix_.IsOn(place) != isPaintedOn_) {
                if (!Switch(place, isPaintedOn_) || held_ == Grip::None) {
                    return;
                }
                isAnyNew = true;
            }
        }
        const Crosspoint before = std::exchange(cursor_, to);
        painted_ = to;
        RedrawCell(before);
        RedrawCell(cursor_);
        ScrollTo(to);
        if (isAnyNew) {
            TellOfValue();
        }
    }
    UpdateWindow(window);
}

bool MINIROUTINGPROPERTIES::KeyDown(WPARAM key) {
    if (!IsBound()) {
        return false;
    }
    if (key == VK_SPACE) {
        Toggle(cursor_);
        return true;
    }
    const bool isControl = GetKeyState(VK_CONTROL) < 0;
    const std::pair<WPARAM, logic::RoutingKey> keys[] = {
        {VK_LEFT, logic::RoutingKey::Left},
        {VK_RIGHT, logic::RoutingKey::Right},
        {VK_UP, logic::RoutingKey::Up},
        {VK_DOWN, logic::RoutingKey::Down},
        {VK_HOME, isControl ? logic::RoutingKey::FirstRow : logic::RoutingKey::Home},
        {VK_END, isControl ? logic::RoutingKey::LastRow : logic::RoutingKey::End},
        {VK_PRIOR, logic::RoutingKey::PageUp},
        {VK_NEXT, logic::RoutingKey::PageDown}};
    const auto found =
        std::find_if(std::begin(keys), std::end(keys), [key](const auto& row) { return row.first == key; });
    if (found == std::end(keys)) {
        return false;
    }
    const Crosspoint before = cursor_;
    cursor_ = logic::MoveBy(found->second, cursor_, matrix_, Layout().rows);
    RedrawCell(before);
    RedrawCell(cursor_);
    ScrollTo(cursor_);
    return true;
}

void MINIROUTINGPROPERTIES::Wheel(int notches, bool fine, POINT) {
    constexpr int STEP = 3;
    const RoutingLayout layout = Layout();
    const bool isAcross = layout.HasHorizontalBar() && (fine || !layout.HasVerticalBar());
    Crosspoint first = First();
    (isAcross ? first.output : first.input) -= notches * STEP;
    Scroll(first);
}

void MINIROUTINGPROPERTIES::Hovered(const POINT* point) {
    const RECT area = ViewArea();
    const auto place = point == nullptr || !IsBound()
                           ? std::nullopt
                           : Layout().CellAt(point->x - area.left, point->y - area.top, First());
    if (place != hovered_) {
        RedrawHover();
        hovered_ = place;
        RedrawHover();
    }
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
