// MINIDYNAMICS: the curve of a compressor, limiter, gate or expander, from input (to the right) to output
// (upwards), -80 to 0 dB each. The level that comes in moves along the curve as a point, the gain reduction
// is a bar that hangs at the right edge. Threshold and ratio are dragged, and stepped by keys and wheel.

#include "Controls/families/FunctionList.h"
#include "Controls/families/View.h"
#include "base/Gdi.h"
#include "logic/controls/DynamicsCurve.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

using logic::CurvePoint;
using logic::DynamicsCurve;
using logic::DynamicsMode;

namespace {

constexpr int SMALLEST_WIDTH = 61; // of an area with more than the curve
constexpr int SMALLEST_HEIGHT = 31;
constexpr int BAR_WIDTH = 6;
constexpr int HANDLE_REACH = 8; // from its middle to where it can still be taken
constexpr double HANDLE_RADIUS = 4;
constexpr int POINT_REACH = 5; // from the middle of the moving point to its edge
constexpr int GRID = 20;       // dB
constexpr int PAGE = 10;       // steps

} // namespace

class MINIDYNAMICSPROPERTIES : public VIEWPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    int ValueDatatype() const override { return DATATYPE_FLOAT; }
    bool IsBound() const override;
    void Poll() override;
    void DrawGround(Canvas& canvas) const override;
    void DrawView(Canvas& canvas) const override;
    bool BeginViewDrag(POINT point) override;
    void MoveViewDrag(POINT point) override;
    void EndViewDrag() override { held_ = Handle::None; }
    void CancelViewDrag() override { held_ = Handle::None; }
    bool DoubleClicked(POINT point) override;
    bool KeyDown(WPARAM key) override;
    void Wheel(int notches, bool fine, POINT point) override;

    float Threshold() const { return curve.threshold; }
    bool SetThreshold(float decibels);
    int Mode() const { return static_cast<int>(curve.mode); }
    bool SetMode(int number);

    DynamicsCurve curve;
    FunctionList ratios;
    FunctionList knees;
    FunctionList gains;
    FunctionList levels;
    FunctionList reductions;
    FunctionList switches;

private:
    enum class Handle { None, Threshold, Ratio };

    // Where the curve lies in the area.
    struct Plot {
        explicit Plot(const RECT& area);
        logic::Spot At(const CurvePoint& point) const;
        CurvePoint PointAt(logic::Spot spot) const;

        RECT curve;
        RECT bar; // that the reduction hangs in
        bool isRoomy;
    };
    Plot PlotNow() const { return Plot(ViewArea()); }

    template <class Value>
    int AskFor(FunctionList& list, int datatype, Value& held);
    bool Learn();
    bool SetRatio(float ratio);
    void SwitchOver();
    void StepThreshold(int steps, bool isSmall);
    void StepRatio(int steps, bool isSmall);
    RECT PointBox() const;
    RECT ReductionBox() const;
    void RedrawMoved(const RECT& from, const RECT& to) const;
    void DrawCurve(Canvas& canvas, const Plot& plot) const;
    void DrawHandles(Canvas& canvas, const Plot& plot) const;

    float level_ = static_cast<float>(logic::LOWEST_LEVEL);
    float reduction_ = 0;
    int isOn_ = 1;
    Handle held_ = Handle::None;
    logic::Spot grip_; // from the mouse to the middle of the handle
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Property<&MINIDYNAMICSPROPERTIES::Threshold, &MINIDYNAMICSPROPERTIES::SetThreshold>("value")
        .Unit("dB")
        .Says(
            "The threshold in dB, limited to -80 to 0. Set, it is shown and, unless it is the old one, sent "
            "to everything the view is bound to.");

template <auto List>
constexpr Keyword ListOf(const char* name, const char* label, const char* sentence) {
    return Functions<List>(name).Label(label).Says(sentence);
}

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    VIEW_BACKGROUND,
    VIEW_CAPTION,
    VIEW_CLICK,
    CONNECTION_KEYWORD,
    VIEW_FONT,
    FUNCTION_KEYWORD.Label("Function of the threshold")
        .Says("Device parameters that hold the threshold in dB, joined by `;`."),
    ListOf<&MINIDYNAMICSPROPERTIES::ratios>(
        "function1", "Function of the ratio",
        "Device parameters that hold the ratio, joined by `;`; without any it is 4. It does not count for a "
        "limiter and a gate."),
    ListOf<&MINIDYNAMICSPROPERTIES::knees>(
        "function2", "Function of the knee",
        "Device parameters that hold the width of the knee in dB, joined by `;`; without any it is 0."),
    ListOf<&MINIDYNAMICSPROPERTIES::gains>(
        "function3", "Function of the make-up gain",
        "Device parameters that hold the make-up gain in dB, joined by `;`; without any it is 0."),
    ListOf<&MINIDYNAMICSPROPERTIES::levels>(
        "function4", "Function of the input level",
        "Device parameters that hold the level that comes in, in dB, joined by `;`. It is a point on the "
        "curve."),
    ListOf<&MINIDYNAMICSPROPERTIES::reductions>(
        "function5", "Function of the gain reduction",
        "Device parameters that hold the gain reduction in dB, 0 or less, joined by `;`. It is a bar that "
        "hangs at the right edge."),
    ListOf<&MINIDYNAMICSPROPERTIES::switches>(
        "function6", "Function of on and off",
        "Device parameters that are not 0 while the block is at work, joined by `;`; without any it is."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    VIEW_LINE_COLOUR.Says("Colour of the curve, `0x00bbggrr`."),
    WordsProperty<"compressor,limiter,gate,expander", &MINIDYNAMICSPROPERTIES::Mode,
                  &MINIDYNAMICSPROPERTIES::SetMode>("mode")
        .Saved()
        .Label("Mode")
        .Says("What the curve is that of: `compressor`, `limiter`, `gate` or `expander`."),
    VIEW_TEXT_COLOUR,
    VALUE,
});

} // namespace

KeywordList MINIDYNAMICSPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

void MINIDYNAMICSPROPERTIES::SetDefaults() {
    VIEWPROPERTIES::SetDefaults();
    interval = 100;
    for (FunctionList* list : {&ratios, &knees, &gains, &levels, &reductions, &switches}) {
        list->Attach(*this);
    }
}

bool MINIDYNAMICSPROPERTIES::IsBound() const {
    const FunctionList* lists[] = {&ratios, &knees, &gains, &levels, &reductions, &switches};
    return VIEWPROPERTIES::IsBound() || std::any_of(std::begin(lists), std::end(lists), [](const auto* list) {
               return !list->Requests().empty();
           });
}

// Values

// What the list holds, or what is held already.
template <class Value>
int MINIDYNAMICSPROPERTIES::AskFor(FunctionList& list, int datatype, Value& held) {
    Value answer = held;
    const int result = Ask(list.Requests(), datatype, &answer);
    if (result == REQUEST_DELIVERED) {
        held = answer;
    }
    return result;
}

void MINIDYNAMICSPROPERTIES::Poll() {
    DynamicsCurve next = curve;
    int isOn = isOn_;
    float level = level_;
    float reduction = reduction_;
    float threshold = next.threshold;
    const int main = Ask(requests, DATATYPE_FLOAT, &threshold);
    if (main == REQUEST_DELIVERED) {
        next.threshold = threshold;
    }
    const int worst =
        std::max({main, AskFor(ratios, DATATYPE_FLOAT, next.ratio), AskFor(knees, DATATYPE_FLOAT, next.knee),
                  AskFor(gains, DATATYPE_FLOAT, next.gain), AskFor(levels, DATATYPE_FLOAT, level),
                  AskFor(reductions, DATATYPE_FLOAT, reduction), AskFor(switches, DATATYPE_INTEGER, isOn)});
    if (next != curve || isOn != isOn_) {
        curve = next;
        isOn_ = isOn;
        level_ = level;
        reduction_ = reduction;
        RedrawView();
    } else if (level != level_ || reduction != reduction_) {
        const RECT point = PointBox();
        const RECT bar = ReductionBox();
        level_ = level;
        reduction_ = reduction;
        RedrawMoved(point, PointBox());
        RedrawMoved(bar, ReductionBox());
    }
    ShowPollResult(logic::IsSound(curve) ? worst : std::max(worst, REQUEST_DISAGREE));
}

// Before something is changed: the devices may hold other values by now. False when the control has ended.
bool MINIDYNAMICSPROPERTIES::Learn() {
    Poll();
    return parent != nullptr;
}

bool MINIDYNAMICSPROPERTIES::SetThreshold(float decibels) {
    float limited = logic::Clamp(decibels, static_cast<float>(logic::LOWEST_LEVEL),
                                 static_cast<float>(logic::HIGHEST_LEVEL));
    if (limited != curve.threshold) {
        curve.threshold = limited;
        RedrawView();
        a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &limited, nullptr);
    }
    return true;
}

bool MINIDYNAMICSPROPERTIES::SetMode(int number) {
    curve.mode = static_cast<DynamicsMode>(number);
    Redraw();
    return true;
}

bool MINIDYNAMICSPROPERTIES::SetRatio(float ratio) {
    if (ratio == curve.ratio) {
        return false;
    }
    curve.ratio = ratio;
    RedrawView();
    a_SendRequest(ratios.Requests(), COMMAND_SET, DATATYPE_FLOAT, &ratio, nullptr);
    return true;
}

void MINIDYNAMICSPROPERTIES::SwitchOver() {
    if (switches.Requests().empty() || !Learn()) {
        return;
    }
    int isOn = isOn_ != 0 ? 0 : 1;
    isOn_ = isOn;
    RedrawView();
    a_SendRequest(switches.Requests(), COMMAND_SET, DATATYPE_INTEGER, &isOn, nullptr);
}

void MINIDYNAMICSPROPERTIES::StepThreshold(int steps, bool isSmall) {
    if (Learn()) {
        const float step = isSmall ? 0.1F : 1.0F;
        SetThreshold(logic::RoundToStep(curve.threshold + static_cast<float>(steps) * step, step));
    }
}

void MINIDYNAMICSPROPERTIES::StepRatio(int steps, bool isSmall) {
    if (logic::HasRatio(curve.mode) && !ratios.Requests().empty() && Learn()) {
        SetRatio(logic::StepRatio(curve.ratio, steps, isSmall));
    }
}

// Layout

MINIDYNAMICSPROPERTIES::Plot::Plot(const RECT& area)
    : curve(area),
      bar{area.right, area.top, area.right, area.bottom},
      isRoomy(area.right - area.left >= SMALLEST_WIDTH && area.bottom - area.top >= SMALLEST_HEIGHT) {
    if (isRoomy) {
        bar.left = area.right - BAR_WIDTH - 2;
        bar.right = area.right - 2;
        curve.right = bar.left - 2;
    }
}

logic::Spot MINIDYNAMICSPROPERTIES::Plot::At(const CurvePoint& point) const {
    const auto way = [](double level) {
        return (std::clamp(level, -1000.0, 1000.0) - logic::LOWEST_LEVEL) /
               (logic::HIGHEST_LEVEL - logic::LOWEST_LEVEL);
    };
    return {curve.left + way(point.input) * (curve.right - curve.left),
            curve.bottom - way(point.output) * (curve.bottom - curve.top)};
}

CurvePoint MINIDYNAMICSPROPERTIES::Plot::PointAt(logic::Spot spot) const {
    const auto level = [](double way, int length) {
        return logic::LOWEST_LEVEL + way * (logic::HIGHEST_LEVEL - logic::LOWEST_LEVEL) / std::max(length, 1);
    };
    return {level(spot.x - curve.left, curve.right - curve.left),
            level(curve.bottom - spot.y, curve.bottom - curve.top)};
}

// Of the moving point; empty where there is none.
RECT MINIDYNAMICSPROPERTIES::PointBox() const {
    if (levels.Requests().empty() || !logic::IsSound(curve) || !std::isfinite(level_)) {
        return {};
    }
    const double input = std::clamp<double>(level_, logic::LOWEST_LEVEL, logic::HIGHEST_LEVEL);
    const logic::Spot middle = PlotNow().At({input, logic::OutputLevel(curve, input)});
    const int x = static_cast<int>(std::floor(middle.x));
    const int y = static_cast<int>(std::floor(middle.y));
    return {x - POINT_REACH, y - POINT_REACH, x + POINT_REACH + 1, y + POINT_REACH + 1};
}

RECT MINIDYNAMICSPROPERTIES::ReductionBox() const {
    RECT box = PlotNow().bar;
    const double share =
        std::isfinite(reduction_) ? std::clamp(reduction_ / logic::LOWEST_LEVEL, 0.0, 1.0) : 0;
    box.bottom = box.top + static_cast<int>(std::lround(share * (box.bottom - box.top)));
    return box;
}

void MINIDYNAMICSPROPERTIES::RedrawMoved(const RECT& from, const RECT& to) const {
    if (EqualRect(&from, &to) == FALSE) {
        RedrawPart(from);
        RedrawPart(to);
    }
}

// Drawing

void MINIDYNAMICSPROPERTIES::DrawGround(Canvas& canvas) const {
    const Plot plot(canvas.Area());
    if (!plot.isRoomy) {
        return;
    }
    for (int level = static_cast<int>(logic::LOWEST_LEVEL) + GRID; level < 0; level += GRID) {
        const logic::Spot place = plot.At({static_cast<double>(level), static_cast<double>(level)});
        const int x = static_cast<int>(std::lround(place.x));
        const int y = static_cast<int>(std::lround(place.y));
        canvas.Box({x, plot.curve.top, x + 1, plot.curve.bottom}, Shade(textColour, 0.13));
        canvas.Box({plot.curve.left, y, plot.curve.right, y + 1}, Shade(textColour, 0.13));
    }
    const logic::Spot unity[] = {plot.At({logic::LOWEST_LEVEL, logic::LOWEST_LEVEL}),
                                 plot.At({logic::HIGHEST_LEVEL, logic::HIGHEST_LEVEL})};
    canvas.Line(unity, 1, Shade(textColour, 0.25));
    canvas.Box(plot.bar, Shade(textColour, 0.13));
}

void MINIDYNAMICSPROPERTIES::DrawCurve(Canvas& canvas, const Plot& plot) const {
    const COLORREF colour = isOn_ != 0 ? lineColour : Shade(textColour, 0.4);
    std::vector<logic::Spot> spots;
    const double step = (logic::HIGHEST_LEVEL - logic::LOWEST_LEVEL) /
                        std::max<double>(plot.curve.right - plot.curve.left, 1);
    for (double input = logic::LOWEST_LEVEL; input < logic::HIGHEST_LEVEL + step / 2; input += step) {
        spots.push_back(plot.At({input, logic::OutputLevel(curve, input)}));
    }
    std::vector<logic::Spot> filled = spots;
    filled.push_back(plot.At({logic::HIGHEST_LEVEL, logic::LOWEST_LEVEL}));
    filled.push_back(plot.At({logic::LOWEST_LEVEL, logic::LOWEST_LEVEL}));
    canvas.Shape(filled, colour, 0.16);
    canvas.Line(spots, plot.isRoomy ? 2 : 1.3, colour);
}

void MINIDYNAMICSPROPERTIES::DrawHandles(Canvas& canvas, const Plot& plot) const {
    const auto handle = [&](const CurvePoint& place) {
        canvas.Circle(plot.At(place), HANDLE_RADIUS + 1, backgroundColour);
        canvas.Circle(plot.At(place), HANDLE_RADIUS, textColour);
    };
    const logic::Spot ends[] = {plot.At({curve.threshold, logic::LOWEST_LEVEL}),
                                plot.At({curve.threshold, logic::HIGHEST_LEVEL})};
    for (const auto& dash : logic::Dashes(ends, 2, 3)) {
        canvas.Line(dash, 1, Shade(textColour, 0.55));
    }
    handle(logic::ThresholdHandle(curve));
    if (const auto ratio = logic::RatioHandle(curve)) {
        canvas.Circle(plot.At(*ratio), HANDLE_RADIUS + 1, backgroundColour);
        canvas.Circle(plot.At(*ratio), HANDLE_RADIUS, textColour);
        canvas.Circle(plot.At(*ratio), HANDLE_RADIUS - 1.5, backgroundColour);
    }
}

void MINIDYNAMICSPROPERTIES::DrawView(Canvas& canvas) const {
    const Plot plot = PlotNow();
    if (logic::IsSound(curve)) {
        DrawCurve(canvas, plot);
        if (plot.isRoomy) {
            DrawHandles(canvas, plot);
        }
    }
    if (!plot.isRoomy) {
        return;
    }
    canvas.Box(ReductionBox(), logic::PANEL_YELLOW);
    if (const RECT point = PointBox(); !IsRectEmpty(&point)) {
        const logic::Spot middle{(point.left + point.right) / 2.0, (point.top + point.bottom) / 2.0};
        canvas.Circle(middle, POINT_REACH, backgroundColour);
        canvas.Circle(middle, POINT_REACH - 1.5, logic::PANEL_GREEN);
    }
}

// Input

bool MINIDYNAMICSPROPERTIES::BeginViewDrag(POINT point) {
    const Plot plot = PlotNow();
    if (!IsBound() || !plot.isRoomy || !Learn() || !logic::IsSound(curve)) {
        return false;
    }
    const auto reach = [&](const CurvePoint& place) {
        const logic::Spot spot = plot.At(place);
        return std::hypot(spot.x - point.x, spot.y - point.y);
    };
    const auto ratio = ratios.Requests().empty() ? std::nullopt : logic::RatioHandle(curve);
    const CurvePoint threshold = logic::ThresholdHandle(curve);
    const bool isRatio = ratio && reach(*ratio) < reach(threshold);
    const CurvePoint place = isRatio ? *ratio : threshold;
    if (requests.empty() && !isRatio) {
        return false;
    }
    const logic::Spot spot = plot.At(place);
    const bool isOnLine = std::abs(plot.At(threshold).x - point.x) <= HANDLE_REACH / 2;
    if (reach(place) > HANDLE_REACH && (isRatio || !isOnLine)) {
        return false;
    }
    held_ = isRatio ? Handle::Ratio : Handle::Threshold;
    grip_ = {spot.x - point.x, spot.y - point.y};
    return true;
}

void MINIDYNAMICSPROPERTIES::MoveViewDrag(POINT point) {
    const CurvePoint place = PlotNow().PointAt({point.x + grip_.x, point.y + grip_.y});
    if (held_ == Handle::Threshold) {
        SetThreshold(logic::ThresholdAt(place));
    } else if (held_ == Handle::Ratio) {
        SetRatio(logic::RatioAt(curve, place));
    }
    UpdateWindow(window);
}

bool MINIDYNAMICSPROPERTIES::DoubleClicked(POINT) {
    SwitchOver();
    return true;
}

bool MINIDYNAMICSPROPERTIES::KeyDown(WPARAM key) {
    const bool isSmall = GetKeyState(VK_SHIFT) < 0;
    switch (key) {
    case VK_SPACE:
        SwitchOver();
        return true;
    case VK_RIGHT:
        StepThreshold(1, isSmall);
        return true;
    case VK_LEFT:
        StepThreshold(-1, isSmall);
        return true;
    case VK_UP:
        StepRatio(1, isSmall);
        return true;
    case VK_DOWN:
        StepRatio(-1, isSmall);
        return true;
    case VK_PRIOR:
        StepThreshold(PAGE, isSmall);
        return true;
    case VK_NEXT:
        StepThreshold(-PAGE, isSmall);
        return true;
    default:
        return false;
    }
}

void MINIDYNAMICSPROPERTIES::Wheel(int notches, bool fine, POINT) {
    if (IsBound()) {
        StepThreshold(notches, fine);
    }
}

extern const ControlImplementation miniDynamicsControl{
    .create = CreateProperties<MINIDYNAMICSPROPERTIES>,
    .procedure = ViewProc,
    .purpose =
        "The curve of a compressor, limiter, gate or expander, with the level that moves along it and the "
        "gain reduction. Threshold and ratio are dragged; a double click or Space switches it off and on.",
    .dialog = LAID_OUT,
    .share = SharePicture<>};
