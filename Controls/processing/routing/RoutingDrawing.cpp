// Where the parts of a matrix of crosspoints are, and how they look.
#include "Controls/processing/routing/MiniRouting.h"
#include "base/Handles.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using logic::Crosspoint;
using logic::CrosspointState;
using logic::RoutingLayout;

namespace {

constexpr int NAME_MARGIN = 4; // around a name
constexpr int MARK_MARGIN = 3; // around a name that is shown over the cells

} // namespace

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
