#include "logic/editing/ReadingOrder.h"

#include "logic/editing/EditGeometry.h"

#include <algorithm>
#include <numeric>

namespace logic {

namespace {

std::int32_t MiddleOf(const Rectangle& rectangle) {
    return rectangle.top + (rectangle.bottom - rectangle.top) / 2;
}

std::vector<std::size_t> ByLines(std::span<const Rectangle> rectangles) {
    std::vector<std::size_t> order(rectangles.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return rectangles[one].top < rectangles[other].top;
    });
    for (auto line = order.begin(); line != order.end();) {
        const Rectangle& first = rectangles[*line];
        const auto end = std::stable_partition(line, order.end(), [&](std::size_t one) {
            return rectangles[one].top <= first.top || MiddleOf(rectangles[one]) < first.bottom;
        });
        std::stable_sort(line, end, [&](std::size_t one, std::size_t other) {
            return rectangles[one].left < rectangles[other].left;
        });
        line = end;
    }
    return order;
}

} // namespace

std::vector<std::size_t> ReadingOrder(std::span<const Rectangle> rectangles) {
    const std::vector<std::size_t> read = ByLines(rectangles);
    std::vector<std::vector<std::size_t>> inFront(rectangles.size()); // of each, in the order of reading
    for (const std::size_t one : read) {
        for (std::size_t other = one + 1; other < rectangles.size(); ++other) {
            if (Touches(rectangles[one], rectangles[other])) {
                inFront[other].push_back(one);
            }
        }
    }
    // Each where it is read, with all that are in front of it before it.
    std::vector<std::size_t> order;
    std::vector<bool> isDone(rectangles.size(), false);
    for (const std::size_t first : read) {
        std::vector<std::size_t> waiting{first};
        while (!waiting.empty()) {
            const std::size_t one = waiting.back();
            const auto next = std::find_if(inFront[one].begin(), inFront[one].end(),
                                           [&](std::size_t other) { return !isDone[other]; });
            if (!isDone[one] && next != inFront[one].end()) {
                waiting.push_back(*next);
                continue;
            }
            if (!isDone[one]) {
                isDone[one] = true;
                order.push_back(one);
            }
            waiting.pop_back();
        }
    }
    return order;
}

} // namespace logic
