// Arithmetic of editing a panel: grasping, moving, sizing, snapping, aligning. Pixels; right and bottom edges
// are exclusive, rectangles are not reversed.
#pragma once

#include "logic/text/PropertyLine.h"

#include <cstdint>
#include <span>
#include <vector>

namespace logic {

struct Offset {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const Offset&) const = default;
};

inline bool operator==(const Rectangle& a, const Rectangle& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

Rectangle Moved(const Rectangle& rectangle, Offset by);
// What lies between two corners, in whichever order they are given.
Rectangle Spanned(Offset corner, Offset opposite);
// Whether a rubber band touches a rectangle: sharing one pixel is enough.
bool Touches(const Rectangle& band, const Rectangle& rectangle);
// The smallest rectangle around all; all 0 for none.
Rectangle Bounds(std::span<const Rectangle> rectangles);

enum class Handle { None, TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };

// The handle of a selection frame at a point. The handles shrink with the frame, so that the middle third of
// even a small control can be grasped to move it.
Handle HandleAt(const Rectangle& frame, Offset point);
bool MovesLeft(Handle handle);
bool MovesTop(Handle handle);
bool MovesRight(Handle handle);
bool MovesBottom(Handle handle);
// The rectangle with the edges of the handle moved; an edge stops where the size would fall below the
// minimum.
Rectangle Sized(const Rectangle& rectangle, Handle handle, Offset by, std::int32_t minimum);

// A line that shows what something has snapped to.
struct Guide {
    bool vertical = false;
    std::int32_t position = 0; // x of a vertical, y of a horizontal one
    std::int32_t from = 0;
    std::int32_t to = 0;
};

struct SnapSettings {
    std::int32_t grid = 0; // spacing; 0: no grid
    std::int32_t distance =
        0; // how near an edge or centre of another control has to be; 0: they do not attract
};

struct Snap {
    Offset by; // to be added
    std::vector<Guide> guides;
};

// Moves a rectangle onto an edge or centre of one of the others that is near, else its left and top edge onto
// the grid; each axis on its own.
Snap SnapMove(const Rectangle& rectangle, std::span<const Rectangle> others, const SnapSettings& settings);
// The same for the edges that a handle moves.
Snap SnapSize(const Rectangle& rectangle, Handle handle, std::span<const Rectangle> others,
              const SnapSettings& settings);

// The part of a movement after which some of every rectangle is still inside the panel, or no less than
// before.
Offset ReachableMove(Offset by, std::span<const Rectangle> rectangles, std::int32_t width,
                     std::int32_t height);

enum class Alignment { Left, Top, Right, Bottom, CentreAcross, CentreDown };

// Lines all up with the first one.
void Align(Alignment alignment, std::span<Rectangle> rectangles);
// Which of width and height all take over from the first one.
enum class SameSize { Width, Height, Both };

// Their left and top edges stay.
void GiveSameSize(SameSize what, std::span<Rectangle> rectangles);
// Makes the gaps between neighbours equal to within a pixel; the outermost stay. Fewer than three stay as
// they are.
void DistributeAcross(std::span<Rectangle> rectangles);
void DistributeDown(std::span<Rectangle> rectangles);

} // namespace logic
