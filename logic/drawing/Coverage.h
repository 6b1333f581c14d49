// Smooth shapes in a picture: how much of each pixel they cover, exactly, and the picture that follows.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace logic {

// In pixels; the pixel with the number n reaches from n to n + 1.
struct Spot {
    double x = 0;
    double y = 0;
};

// The covered part of each pixel of a picture of that size. What lies outside of it, or is no number, is cut
// off.
class Coverage {
public:
    Coverage(int width, int height);

    // Adds a closed outline. Outlines of the same direction that overlap cover a pixel once.
    void AddOutline(std::span<const Spot> outline);
    // Adds a line of that width through the spots, without caps, with its joins bevelled.
    void AddLine(std::span<const Spot> spots, double width);
    void AddCircle(Spot centre, double radius);

    // Lays the colour over what is covered, and starts anew. pixels: the first of the picture, which may be a
    // part of a wider one of that many pixels a row.
    void Blend(std::uint32_t* pixels, int rowLength, std::uint32_t colour, double opacity);

private:
    struct Edge {
        Spot upper;
        Spot lower;
        float direction; // 1 or -1
    };

    void AddEdge(Spot from, Spot to);
    void Cover(const Edge& edge, int top);
    void CoverInside(Spot upper, Spot lower, float direction);
    float& Cell(int x, int row) { return cells_[static_cast<std::size_t>(row) * rowSize_ + x]; }

    // Shapes are turned into pixels a few rows at a time: all rows of a large picture would not fit into a
    // cache.
    static constexpr int ROWS = 16;

    int width_;
    int height_;
    std::size_t rowSize_;
    std::vector<Edge> edges_;
    // What each pixel of some rows covers more than the one on its left.
    std::vector<float> cells_;
    double top_; // of all edges
    double bottom_;
    int left_ = 0; // of the cells that hold anything
    int right_ = 0;
};

// Pieces of a line through the spots, each so many pixels long and that far from the next.
std::vector<std::vector<Spot>> Dashes(std::span<const Spot> spots, double length, double gap);

} // namespace logic
