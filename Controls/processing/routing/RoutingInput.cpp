// How a matrix of crosspoints is operated, and what is told of it under the mouse and the keys.
#include "Controls/processing/routing/MiniRouting.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

using logic::Crosspoint;
using logic::CrosspointState;
using logic::RoutingLayout;

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
