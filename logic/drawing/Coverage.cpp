#include "logic/drawing/Coverage.h"

#include "logic/drawing/Graph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace logic {

namespace {

Spot Between(Spot from, Spot to, double way) {
    return {from.x + (to.x - from.x) * way, from.y + (to.y - from.y) * way};
}

bool IsNumber(Spot spot) {
    return std::isfinite(spot.x) && std::isfinite(spot.y);
}

constexpr double LEAST_TURN = 0.02; // square pixels of a gap that nobody sees

// What a line of that width reaches to the left of its way.
Spot SideOf(Spot from, Spot to, double width) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double reach = length > 0 ? width / 2 / length : 0;
    return {(to.y - from.y) * reach, (from.x - to.x) * reach};
}

} // namespace

Coverage::Coverage(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      rowSize_(static_cast<std::size_t>(width_) + 2),
      cells_(rowSize_ * ROWS),
      top_(height_),
      bottom_(0) {}

void Coverage::AddOutline(std::span<const Spot> outline) {
    if (!std::all_of(outline.begin(), outline.end(), IsNumber)) {
        return;
    }
    for (std::size_t i = 0; i < outline.size(); ++i) {
        AddEdge(outline[i], outline[(i + 1) % outline.size()]);
    }
}

void Coverage::AddEdge(Spot from, Spot to) {
    const bool isDown = to.y > from.y;
    const Spot& upper = isDown ? from : to;
    const Spot& lower = isDown ? to : from;
    if (upper.y >= height_ || lower.y <= 0 || upper.y == lower.y) {
        return;
    }
    edges_.push_back({upper, lower, isDown ? 1.0F : -1.0F});
    top_ = std::min(top_, upper.y);
    bottom_ = std::max(bottom_, lower.y);
}

// Cuts an edge off at the borders of the rows. What lies to the left of the picture covers all of them.
void Coverage::Cover(const Edge& edge, int top) {
    const Spot from{edge.upper.x, edge.upper.y - top};
    const Spot to{edge.lower.x, edge.lower.y - top};
    const double height = to.y - from.y;
    const Spot upper = from.y < 0 ? Between(from, to, -from.y / height) : from;
    const Spot lower = to.y > ROWS ? Between(from, to, (ROWS - from.y) / height) : to;
    const auto [left, right] = std::minmax({upper.x, lower.x});
    if (left >= 0 && right <= width_) {
        CoverInside(upper, lower, edge.direction);
        return;
    }
    const auto cut = [&](double border) {
        const double way = (border - upper.x) / (lower.x - upper.x);
        return way > 0 ? std::min(way, 1.0) : 0.0;
    };
    const auto [first, second] = std::minmax({cut(0), cut(width_)});
    const double ways[] = {0, first, second, 1};
    for (int i = 0; i < 3; ++i) {
        Spot start = Between(upper, lower, ways[i]);
        Spot end = Between(upper, lower, ways[i + 1]);
        const double middle = (start.x + end.x) / 2;
        if (middle >= width_) {
            right_ = width_; // nothing there ends what is covered
            continue;
        }
        for (Spot* spot : {&start, &end}) {
            spot->x = middle < 0 ? 0 : std::clamp(spot->x, 0.0, static_cast<double>(width_));
        }
        CoverInside(start, end, edge.direction);
    }
}

void Coverage::CoverInside(Spot upper, Spot lower, float direction) {
    const int first = std::max(static_cast<int>(upper.y), 0);
    const int last = std::min(static_cast<int>(std::ceil(lower.y)), ROWS);
    const double slope = lower.y > upper.y ? (lower.x - upper.x) / (lower.y - upper.y) : 0;
    const auto [least, most] = std::minmax({upper.x, lower.x});
    left_ = std::min(left_, static_cast<int>(least));
    right_ = std::max(right_, std::min(static_cast<int>(most) + 2, width_));
    for (int row = first; row < last; ++row) {
        const double above = std::max(upper.y, static_cast<double>(row));
        const double below = std::min(lower.y, row + 1.0);
        if (below <= above) {
            continue;
        }
        const auto height = static_cast<float>(below - above) * direction;
        auto [left, right] =
            std::minmax({upper.x + slope * (above - upper.y), upper.x + slope * (below - upper.y)});
        left = std::clamp(left, least, most);
        right = std::clamp(right, left, most);
        const int start = static_cast<int>(left);
        const int end = static_cast<int>(right);
        if (start == end) { // within one pixel: the part of it that lies to the right of the edge
            const auto covered = static_cast<float>(start + 1 - (left + right) / 2);
            Cell(start, row) += height * covered;
            Cell(start + 1, row) += height * (1 - covered);
            continue;
        }
        // A triangle in the first pixel, trapezoids in those between, and all but a triangle in the last.
        const double each = height / (right - left);
        double before = 0;
        for (int x = start; x <= end; ++x) {
            const double begin = std::max(left, static_cast<double>(x));
            const double finish = std::min(right, x + 1.0);
            const double here = each * (finish - begin);
            const double covered = before + here * (x + 1 - (begin + finish) / 2);
            // Up to here the row has been covered by what the pixels on the left have added.
            Cell(x, row) += static_cast<float>(covered - before);
            Cell(x + 1, row) += static_cast<float>(before + here - covered);
            before += here;
        }
    }
}

void Coverage::AddLine(std::span<const Spot> spots, double width) {
    const Spot* before = nullptr;
    Spot sideBefore;
    for (std::size_t i = 0; i + 1 < spots.size(); ++i) {
        const Spot& from = spots[i];
        const Spot& to = spots[i + 1];
        if (!IsNumber(from) || !IsNumber(to) || (from.x == to.x && from.y == to.y)) {
            before = nullptr;
            continue;
        }
        const Spot side = SideOf(from, to, width);
        const Spot piece[] = {{from.x + side.x, from.y + side.y},
                              {to.x + side.x, to.y + side.y},
                              {to.x - side.x, to.y - side.y},
                              {from.x - side.x, from.y - side.y}};
        AddOutline(piece);
        const double turn = sideBefore.x * side.y - sideBefore.y * side.x;
        if (before != nullptr && std::abs(turn) > LEAST_TURN) { // fills the gap on the outer side of the bend
            const double outer = turn > 0 ? 1 : -1;
            const Spot one{from.x + sideBefore.x * outer, from.y + sideBefore.y * outer};
            const Spot other{from.x + side.x * outer, from.y + side.y * outer};
            const Spot wedge[] = {from, turn > 0 ? one : other, turn > 0 ? other : one};
            AddOutline(wedge);
        }
        before = &from;
        sideBefore = side;
    }
}

void Coverage::AddCircle(Spot centre, double radius) {
    constexpr int CORNERS = 32;
    Spot outline[CORNERS];
    for (int i = 0; i < CORNERS; ++i) {
        const double angle = 2 * std::numbers::pi * i / CORNERS;
        outline[i] = {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
    }
    AddOutline(outline);
}

void Coverage::Blend(std::uint32_t* pixels, int rowLength, std::uint32_t colour, double opacity) {
    const auto whole = static_cast<float>(opacity * 256);
    const int bottom = std::min(static_cast<int>(std::ceil(bottom_)), height_);
    for (int top = std::max(static_cast<int>(top_), 0); top < bottom; top += ROWS) {
        left_ = width_;
        right_ = 0;
        for (const Edge& edge : edges_) {
            if (edge.upper.y < top + ROWS && edge.lower.y > top) {
                Cover(edge, top);
            }
        }
        const int rows = std::min(ROWS, bottom - top);
        for (int row = 0; row < ROWS; ++row) {
            float covered = 0;
            float* cells = &Cell(0, row);
            std::uint32_t* line = pixels + static_cast<std::ptrdiff_t>(top + row) * rowLength;
            for (int x = left_; x < right_; ++x) {
                covered += std::exchange(cells[x], 0.0F);
                const auto share =
                    static_cast<std::uint32_t>(std::min(std::abs(covered), 1.0F) * whole + 0.5F);
                if (share != 0 && row < rows) {
                    line[x] = MixedPixel(line[x], colour, share);
                }
            }
            cells[right_] = 0;
            cells[right_ + 1] = 0;
        }
    }
    edges_.clear();
    top_ = height_;
    bottom_ = 0;
}

std::vector<std::vector<Spot>> Dashes(std::span<const Spot> spots, double length, double gap) {
    std::vector<std::vector<Spot>> pieces;
    double left = length; // of the dash, or below 0 of the gap
    bool isDash = true;
    for (std::size_t i = 0; i + 1 < spots.size(); ++i) {
        const double whole = std::hypot(spots[i + 1].x - spots[i].x, spots[i + 1].y - spots[i].y);
        if (!std::isfinite(whole)) {
            continue;
        }
        double done = 0;
        if (isDash && (pieces.empty() || i == 0)) {
            pieces.push_back({spots[i]});
        }
        while (whole - done > left) {
            done += left;
            const Spot edge = Between(spots[i], spots[i + 1], done / whole);
            if (isDash) {
                pieces.back().push_back(edge);
            } else {
                pieces.push_back({edge});
            }
            isDash = !isDash;
            left = isDash ? length : gap;
        }
        left -= whole - done;
        if (isDash) {
            pieces.back().push_back(spots[i + 1]);
        }
    }
    return pieces;
}

} // namespace logic
