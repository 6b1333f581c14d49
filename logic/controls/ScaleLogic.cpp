#include "logic/controls/ScaleLogic.h"

#include <algorithm>
#include <cmath>

namespace logic {

namespace {

constexpr double SLACK = 1e-6; // of a step: what a range ends with is part of it

// Main values of a scale in rising order, with one more beyond either end of the range where the steps go on.
using Values = std::vector<double>;

Values Multiples(const TravelRange& range, double step) {
    Values values;
    const double first = std::floor(range.Lower() / step + SLACK);
    const double last = std::ceil(range.Upper() / step - SLACK);
    for (double number = first; number <= last; ++number) {
        values.push_back(number * step);
    }
    return values;
}

// These digits of every so many decades.
Values Decades(const TravelRange& range, const std::vector<int>& digits, int every) {
    Values values;
    const int first = static_cast<int>(std::floor(std::log10(range.Lower()) + SLACK));
    const int last = static_cast<int>(std::ceil(std::log10(range.Upper()) - SLACK));
    for (int decade = first; decade <= last; ++decade) {
        for (const int digit : digits) {
            if ((decade - first) % every == 0) {
                values.push_back(digit * std::pow(10.0, decade));
            }
        }
    }
    const auto isBelow = [&](double value) { return value < range.Lower() * (1 - SLACK); };
    const auto isAbove = [&](double value) { return value > range.Upper() * (1 + SLACK); };
    while (values.size() > 1 && isBelow(values[1])) {
        values.erase(values.begin());
    }
    while (values.size() > 1 && isAbove(values[values.size() - 2])) {
        values.pop_back();
    }
    return values;
}

class Layout {
public:
    Layout(const Travel& travel, std::int32_t offset, const NumberRoom& room)
        : travel_(travel), offset_(offset), room_(room) {}

    bool IsInside(double value) const {
        const auto number = static_cast<float>(value);
        return number >= travel_.range.Lower() && number <= travel_.range.Upper();
    }
    ScaleMark MarkOf(double value, bool isMain) const {
        const float number = static_cast<float>(value) + 0.0F; // no negative zero
        return {number, travel_.PlaceOf(number) + offset_, isMain, isMain};
    }
    std::vector<ScaleMark> MainMarks(const Values& values) const {
        std::vector<ScaleMark> marks;
        for (const double value : values) {
            if (IsInside(value)) {
                marks.push_back(MarkOf(value, true));
            }
        }
        return marks;
    }
    bool Touch(const ScaleMark& one, const ScaleMark& other) const {
        const auto first = room_.PlaceOf(one);
        const auto second = room_.PlaceOf(other);
        return first.first < second.last + room_.gap && second.first < first.last + room_.gap;
    }
    bool HasRoom(const Values& values) const {
        const std::vector<ScaleMark> marks = MainMarks(values);
        return std::ranges::adjacent_find(marks, [this](const ScaleMark& one, const ScaleMark& next) {
                   return Touch(one, next);
               }) == marks.end();
    }

    Values Chosen() const {
        const TravelRange& range = travel_.range;
        if (range.law == Law::Logarithmic && range.Lower() > 0 && range.Upper() / range.Lower() >= 10) {
            Values values = Decades(range, {1, 2, 5}, 1);
            for (int every = 1; !HasRoom(values); ++every) {
                values = Decades(range, {1}, every);
            }
            return values;
        }
        const double span = static_cast<double>(range.Upper()) - range.Lower();
        constexpr double smallestNumber = 4; // pixels
        const double least = span * smallestNumber / std::max(travel_.length, 1);
        for (int power = static_cast<int>(std::floor(std::log10(least)));; ++power) {
            for (const int digit : {1, 2, 5}) {
                const double step = digit * std::pow(10.0, power);
                const Values values = Multiples(range, step);
                if (step >= least && (MainMarks(values).size() < 2 || HasRoom(values))) {
                    return values;
                }
            }
        }
    }

    // From the upper value down: that is what levels are read by.
    void LeaveOutNumbers(std::vector<ScaleMark>& marks) const {
        const ScaleMark* kept = nullptr;
        for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
            mark->hasNumber = kept == nullptr || !Touch(*mark, *kept);
            kept = mark->hasNumber ? &*mark : kept;
        }
    }

    void AddSmallMarks(const Values& values, int count, std::vector<ScaleMark>& marks) const {
        for (std::size_t next = 1; next < values.size(); ++next) {
            const double from = values[next - 1];
            const double distance = values[next] - from;
            std::vector<ScaleMark> between;
            std::int32_t nearest = travel_.length;
            std::optional<std::int32_t> before;
            for (int part = 0; part <= count + 1; ++part) {
                const double value = from + distance * part / (count + 1);
                if (!IsInside(value)) {
                    before.reset();
                    continue;
                }
                const ScaleMark mark = MarkOf(value, false);
                if (part > 0 && part <= count) {
                    between.push_back(mark);
                }
                nearest = before ? std::min(nearest, std::abs(mark.place - *before)) : nearest;
                before = mark.place;
            }
            constexpr std::int32_t enough = 3;
            if (nearest >= enough) {
                marks.insert(marks.end(), between.begin(), between.end());
            }
        }
    }

private:
    const Travel& travel_;
    std::int32_t offset_;
    const NumberRoom& room_;
};

} // namespace

Travel OwnTravel(const TravelRange& range, std::int32_t length, std::int32_t margin, bool isHorizontal) {
    const std::int32_t last = std::max(length - 1, 0);
    const std::int32_t free = std::clamp(margin, 0, last / 2);
    return {.range = range,
            .begin = isHorizontal ? free : last - free,
            .length = last - 2 * free,
            .isHorizontal = isHorizontal,
            .isBackwards = !isHorizontal};
}

NumberRoom::Place NumberRoom::PlaceOf(const ScaleMark& mark) const {
    const std::int32_t size = extent(mark.value);
    const std::int32_t first = std::clamp(mark.place - size / 2, 0, std::max(length - size, 0));
    return {first, first + size};
}

std::vector<ScaleMark> ScaleMarks(const Travel& travel, std::int32_t offset, const ScaleGrid& grid,
                                  const NumberRoom& room) {
    const Layout layout(travel, offset, room);
    const TravelRange& range = travel.range;
    const double span = static_cast<double>(range.Upper()) - range.Lower();
    Values values(grid.listed.begin(), grid.listed.end());
    if (!values.empty()) {
        std::ranges::sort(values);
        values.erase(std::unique(values.begin(), values.end()), values.end());
    } else if (span <= 0) {
        values.push_back(range.Lower());
    } else if (grid.step > 0 && span / grid.step <= std::max(travel.length, 2) / 2) {
        values = Multiples(range, grid.step);
    } else {
        values = layout.Chosen();
    }
    std::vector<ScaleMark> marks = layout.MainMarks(values);
    if (marks.empty() && grid.listed.empty()) {
        values = {range.Upper()};
        marks = layout.MainMarks(values);
    }
    layout.LeaveOutNumbers(marks);
    layout.AddSmallMarks(values, grid.minor, marks);
    std::ranges::stable_sort(marks, {}, &ScaleMark::value);
    // An end that stands in for main marks may be a small one, too.
    const auto isSame = [](const ScaleMark& one, const ScaleMark& next) { return one.value == next.value; };
    marks.erase(std::unique(marks.begin(), marks.end(), isSame), marks.end());
    return marks;
}

} // namespace logic
