#include "logic/drawing/Coverage.h"

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

// What a line of that width reaches to the left of its way.
Spot SideOf(Spot from, Spot to, double width) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double reach = length > 0 ? width / 2 / length : 0;
    return {(to.y - from.y) * reach, (from.x - to.x) * reach};
}

std::uint32_t Mixed(std::uint32_t ground, std::uint32_t colour, std::uint32_t share) {
    const auto channel = [&](int shift) {
        const std::uint32_t from = ground >> shift & 0xFF;
        const std::uint32_t to = colour >> shift & 0xFF;
        return ((from * (256 - share) + to * share) >> 8) << shift;
    };
    return channel(16) | channel(8) | channel(0);
}

} // namespace

Coverage::Coverage(int width, int height)
    : width_(std::max(width, 0)),
      height_(std::max(height, 0)),
      rowSize_(static_cast<std::size_t>(width_) + 2),
      cells_(rowSize_ * static_cast<std::size_t>(height_)),
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

// Cuts an edge off at the borders. What lies to the left of the picture covers all of its rows.
void Coverage::AddEdge(Spot from, Spot to) {
    const double direction = to.y > from.y ? 1 : -1;
    if (to.y < from.y) {
        std::swap(from, to);
    }
    if (from.y >= height_ || to.y <= 0 || from.y == to.y) {
        return;
    }
    const double height = to.y - from.y;
    const Spot lower = Between(from, to, std::min(1.0, (height_ - from.y) / height));
    const Spot upper = Between(from, to, std::max(0.0, -from.y / height));
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
        if (middle < width_) {
            for (Spot* spot : {&start, &end}) {
                spot->x = middle < 0 ? 0 : std::clamp(spot->x, 0.0, static_cast<double>(width_));
                spot->y = std::clamp(spot->y, 0.0, static_cast<double>(height_));
            }
            AddInside(start, end, direction);
        }
    }
}

void Coverage::AddInside(Spot from, Spot to, double direction) {
    const int first = static_cast<int>(from.y);
    const int last = std::min(static_cast<int>(std::ceil(to.y)), height_);
    top_ = std::min(top_, first);
    bottom_ = std::max(bottom_, last);
    const double slope = to.y > from.y ? (to.x - from.x) / (to.y - from.y) : 0;
    for (int row = first; row < last; ++row) {
        const double upper = std::max(from.y, static_cast<double>(row));
        const double lower = std::min(to.y, row + 1.0);
        const double height = (lower - upper) * direction;
        if (lower <= upper) {
            continue;
        }
        auto [left, right] =
            std::minmax({from.x + slope * (upper - from.y), from.x + slope * (lower - from.y)});
        left = std::clamp(left, 0.0, static_cast<double>(width_));
        right = std::clamp(right, left, static_cast<double>(width_));
        const int start = static_cast<int>(left);
        const int end = static_cast<int>(right);
        if (start == end) { // within one pixel: the part of it that lies to the right of the edge
            const double covered = start + 1 - (left + right) / 2;
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
            Cell(x, row) += covered - before;
            Cell(x + 1, row) += before + here - covered;
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
        if (before != nullptr) { // fills the gap on the outer side of the bend
            const double turn = sideBefore.x * side.y - sideBefore.y * side.x;
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
    for (int y = top_; y < bottom_; ++y) {
        double covered = 0;
        std::uint32_t* row = pixels + static_cast<std::ptrdiff_t>(y) * rowLength;
        double* cells = &Cell(0, y);
        for (int x = 0; x < width_; ++x) {
            covered += std::exchange(cells[x], 0.0);
            const auto share =
                static_cast<std::uint32_t>(std::min(std::abs(covered), 1.0) * opacity * 256 + 0.5);
            if (share != 0) {
                row[x] = Mixed(row[x], colour, share);
            }
        }
        cells[width_] = 0;
        cells[width_ + 1] = 0;
    }
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
