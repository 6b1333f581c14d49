#include "Controls/families/CurveView.h"

#include "logic/controls/FilterValues.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double POINT_RADIUS = 7;
constexpr double SMALL_POINT_RADIUS = 4;
constexpr double REACH = 10; // of the mouse
constexpr int GRID_DISTANCE = 22;
constexpr int LABEL_HEIGHT = 13;
constexpr int LABEL_WIDTH = 28;
constexpr int MISSING_SIZE = 15;

std::string FrequencyLabel(int hertz) {
    return hertz < 1000 ? std::to_string(hertz) : std::to_string(hertz / 1000) + "k";
}

} // namespace

void CURVEVIEWPROPERTIES::Redraw() const {
    discs_.Forget(); // in another font
    VIEWPROPERTIES::Redraw();
}

void CURVEVIEWPROPERTIES::BindingsChanged() {
    held_ = hovered_ = selected_ = -1;
    VIEWPROPERTIES::BindingsChanged();
}

// Of the point that is operated; all of them would leave no room for anything else.
std::string CURVEVIEWPROPERTIES::StatusText() {
    const int active = ActivePoint();
    return active >= 0 && Points()[static_cast<std::size_t>(active)] ? PointText(active) : "";
}

// Layout

CURVEVIEWPROPERTIES::Detail CURVEVIEWPROPERTIES::DetailOf(const RECT& area) {
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    return width <= 80 || height <= 40  ? Detail::Curves
           : width < 180 || height < 90 ? Detail::Points
                                        : Detail::All;
}

logic::CurvePlot CURVEVIEWPROPERTIES::PlotIn(const RECT& area) const {
    return {static_cast<double>(area.left), static_cast<double>(area.top),
            std::max<int>(area.right - area.left, 0), std::max<int>(area.bottom - area.top, 0), range};
}

const logic::FrequencyGrid& CURVEVIEWPROPERTIES::GridOf(const logic::CurvePlot& plot) const {
    if (!grid_ || grid_->Count() != plot.width || grid_->SampleRate() != sampleRate) {
        grid_.emplace(plot.width, sampleRate);
    }
    return *grid_;
}

std::vector<std::optional<logic::Spot>> CURVEVIEWPROPERTIES::Places(const logic::CurvePlot& plot) const {
    std::vector<std::optional<logic::Spot>> places;
    for (const std::optional<Point>& point : Points()) {
        places.emplace_back();
        if (point) {
            const double limited = std::clamp<double>(point->decibels, -plot.range, plot.range);
            places.back() = {plot.X(point->hertz), plot.Y(limited)};
        }
    }
    return places;
}

std::optional<int> CURVEVIEWPROPERTIES::PointAt(POINT point) const {
    return logic::NearestPoint(Places(PlotIn(ViewArea())),
                               {static_cast<double>(point.x) + 0.5, static_cast<double>(point.y) + 0.5},
                               REACH, selected_);
}

int CURVEVIEWPROPERTIES::ActivePoint() const {
    const int active = held_ >= 0 ? held_ : hovered_ >= 0 ? hovered_ : HasFocus() ? selected_ : -1;
    return active < static_cast<int>(Points().size()) ? active : -1;
}

// Drawing

void CURVEVIEWPROPERTIES::DrawGround(Canvas& canvas) const {
    const RECT& area = canvas.Area();
    const Detail detail = DetailOf(area);
    if (detail == Detail::Curves) {
        return;
    }
    const logic::CurvePlot plot = PlotIn(area);
    const COLORREF faint = Shade(textColour, 0.1);
    const COLORREF clear = Shade(textColour, 0.2);
    for (const auto& [hertz, isNumbered] : logic::GridFrequencies()) {
        const auto x = static_cast<LONG>(plot.X(hertz));
        if (isNumbered || detail == Detail::All) {
            canvas.Box({x, area.top, x + 1, area.bottom}, isNumbered ? clear : faint);
        }
    }
    const std::vector<int> gains = plot.GridGains(GRID_DISTANCE);
    for (const int gain : gains) {
        const auto y = static_cast<LONG>(plot.Y(gain));
        canvas.Box({area.left, y, area.right, y + 1}, gain == 0 ? Shade(textColour, 0.4) : clear);
    }
    if (detail != Detail::All) {
        return;
    }
    const COLORREF colour = Shade(textColour, 0.72);
    const bool isWide = area.right - area.left > 9 * LABEL_WIDTH;
    for (const auto& [hertz, isNumbered] : logic::GridFrequencies()) {
        const bool isDecade = hertz == 100 || hertz == 1000 || hertz == 10000;
        if (isNumbered && (isWide || isDecade)) {
            const auto x = static_cast<LONG>(plot.X(hertz));
            canvas.Text(
                FrequencyLabel(hertz),
                {x - LABEL_WIDTH / 2, area.bottom - LABEL_HEIGHT - 1, x + LABEL_WIDTH / 2, area.bottom - 1},
                font.Get(), colour, DT_CENTER | DT_BOTTOM);
        }
    }
    for (const int gain : gains) {
        const auto y = static_cast<LONG>(plot.Y(gain));
        if (y - LABEL_HEIGHT > area.top && y < area.bottom - 2 * LABEL_HEIGHT) {
            canvas.Text((gain > 0 ? "+" : "") + std::to_string(gain),
                        {area.left + 3, y - LABEL_HEIGHT, area.left + 3 + LABEL_WIDTH, y}, font.Get(), colour,
                        DT_LEFT | DT_BOTTOM);
        }
    }
}

void CURVEVIEWPROPERTIES::DrawView(Canvas& canvas) const {
    const RECT& area = canvas.Area();
    const Detail detail = DetailOf(area);
    const logic::CurvePlot plot = PlotIn(area);
    DrawCurves(canvas, plot);
    if (detail == Detail::Curves) {
        return;
    }
    const bool isLabelled = detail == Detail::All;
    const int active = ActivePoint();
    const std::vector<std::optional<Point>> points = Points();
    const std::vector<std::optional<logic::Spot>> places = Places(plot);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (points[i] && static_cast<int>(i) != active) {
            DrawPoint(canvas, *points[i], *places[i], false, isLabelled);
        }
    }
    DrawMissing(canvas, isLabelled);
    if (active < 0) {
        return;
    }
    if (const auto number = static_cast<std::size_t>(active); points[number]) {
        DrawPoint(canvas, *points[number], *places[number], true, isLabelled);
        if (isLabelled) {
            canvas.Text(PointText(active),
                        {area.left + 4, area.top + 3, area.right - 4, area.top + 3 + LABEL_HEIGHT},
                        font.Get(), textColour, DT_RIGHT | DT_TOP);
        }
    }
}

void CURVEVIEWPROPERTIES::DrawPoint(Canvas& canvas, const Point& point, logic::Spot place, bool isActive,
                                    bool isLabelled) const {
    const auto whenSo = [](bool condition, COLORREF colour) {
        return condition ? std::optional(colour) : std::nullopt;
    };
    const Discs::Look look{isLabelled ? POINT_RADIUS : SMALL_POINT_RADIUS,
                           point.colour,
                           whenSo(point.isBypassed, backgroundColour),
                           whenSo(isActive, textColour),
                           isLabelled ? point.label : "",
                           point.isBypassed ? point.colour : backgroundColour};
    canvas.Put(discs_.Get(look, font.Get()), {static_cast<LONG>(place.x), static_cast<LONG>(place.y)});
}

// Numbers that are crossed out, in the lower left corner.
void CURVEVIEWPROPERTIES::DrawMissing(Canvas& canvas, bool isLabelled) const {
    const RECT& area = canvas.Area();
    LONG x = area.left + 3;
    const LONG bottom = area.bottom - (isLabelled ? LABEL_HEIGHT + 3 : 3);
    for (const int number : Missing()) {
        const RECT box{x, bottom - MISSING_SIZE, x + MISSING_SIZE, bottom};
        canvas.Box(box, Shade(logic::PANEL_RED, 0.35));
        if (isLabelled) {
            canvas.Text(std::to_string(number), box, font.Get(), textColour, DT_CENTER | DT_VCENTER);
        }
        const logic::Spot stroke[] = {{static_cast<double>(box.left), static_cast<double>(box.bottom)},
                                      {static_cast<double>(box.right), static_cast<double>(box.top)}};
        canvas.Line(stroke, 1.6, logic::PANEL_RED);
        x += MISSING_SIZE + 3;
    }
}

// Input

void CURVEVIEWPROPERTIES::Select(int point) {
    if (std::exchange(selected_, point) != point) {
        RedrawView();
    }
}

bool CURVEVIEWPROPERTIES::BeginViewDrag(POINT point) {
    const auto found = IsOperated() ? PointAt(point) : std::nullopt;
    if (!found) {
        return false;
    }
    held_ = *found;
    pressed_ = point;
    const logic::Spot place = Places(PlotIn(ViewArea()))[static_cast<std::size_t>(held_)].value();
    gripX_ = place.x - point.x;
    gripY_ = place.y - point.y;
    Select(held_);
    RedrawView();
    return true;
}

void CURVEVIEWPROPERTIES::MoveViewDrag(POINT point) {
    const logic::CurvePlot plot = PlotIn(ViewArea());
    const bool isAside = point.x != pressed_.x;
    const bool isAcross = point.y != pressed_.y;
    pressed_ = point;
    if (held_ < 0 || !(isAside || isAcross)) {
        return;
    }
    // What stays at its pixel keeps its number, which may be one between two pixels.
    std::optional<float> hertz;
    std::optional<float> decibels;
    if (isAside) {
        hertz = logic::StepFrequency(static_cast<float>(plot.HertzAt(point.x + gripX_)), 0);
    }
    if (isAcross) {
        decibels = static_cast<float>(std::round(plot.DecibelsAt(point.y + gripY_) * 10) / 10);
    }
    MovePoint(held_, hertz, decibels);
    UpdateWindow(window);
}

void CURVEVIEWPROPERTIES::CancelViewDrag() {
    if (std::exchange(held_, -1) >= 0) {
        RedrawView();
    }
}

bool CURVEVIEWPROPERTIES::DoubleClicked(POINT point) {
    const auto found = IsOperated() ? PointAt(point) : std::nullopt;
    if (found) {
        SetFocus(window);
        if (parent != nullptr) {
            Select(*found);
            TogglePoint(*found);
        }
    }
    return found.has_value();
}

bool CURVEVIEWPROPERTIES::TakesTab(bool backwards) const {
    return IsOperated() && logic::NextPoint(Places(PlotIn(ViewArea())), selected_, backwards) >= 0;
}

bool CURVEVIEWPROPERTIES::KeyDown(WPARAM key) {
    const bool isShifted = GetKeyState(VK_SHIFT) < 0;
    if (key == VK_TAB) {
        Select(logic::NextPoint(Places(PlotIn(ViewArea())), selected_, isShifted));
        return true;
    }
    const bool isThere = selected_ >= 0 && selected_ < static_cast<int>(Points().size());
    if (!IsOperated() || !isThere || dragging) {
        return false;
    }
    switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
        StepPoint(selected_, Field::Frequency, key == VK_RIGHT ? 1 : -1, isShifted);
        return true;
    case VK_UP:
    case VK_DOWN:
        StepPoint(selected_, Field::Gain, key == VK_UP ? 1 : -1, isShifted);
        return true;
    case VK_PRIOR:
    case VK_NEXT:
        StepPoint(selected_, Field::Q, key == VK_PRIOR ? 1 : -1, isShifted);
        return true;
    case VK_SPACE:
        TogglePoint(selected_);
        return true;
    default:
        return false;
    }
}

void CURVEVIEWPROPERTIES::Wheel(int notches, bool fine, POINT point) {
    if (!IsOperated()) {
        return;
    }
    const int turned = PointAt(point).value_or(HasFocus() ? selected_ : -1);
    if (turned >= 0 && turned < static_cast<int>(Points().size())) {
        StepPoint(turned, Field::Q, notches, fine);
    }
}

void CURVEVIEWPROPERTIES::Hovered(const POINT* point) {
    const bool isThere = point != nullptr && IsBound() && DetailOf(ViewArea()) != Detail::Curves;
    const int found = isThere ? PointAt(*point).value_or(-1) : -1;
    if (std::exchange(hovered_, found) != found) {
        RedrawView();
    }
}

void CURVEVIEWPROPERTIES::FocusLost() {
    Select(-1);
}
