#pragma once

#include "Controls/drawing/Disc.h"
#include "logic/drawing/Coverage.h"
#include "logic/drawing/Graph.h"

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

// A part of a picture in memory, to be painted on with smooth shapes and with GDI. Both count pixels from the
// top left corner of the picture, and what lies outside of the part is cut off. Shapes are smoothed here and
// not by GDI+, which draws them with steps on some systems, and takes longer.
class Canvas {
public:
    // top: how many rows of the whole lie above the pixels, which are a picture of that width.
    Canvas(HDC dc, std::uint32_t* pixels, int width, int top, const RECT& area);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // For texts and whatever else needs none.
    HDC Dc() const { return dc_; }
    const RECT& Area() const { return area_; }

    void Box(const RECT& box, COLORREF colour) const;
    // In the middle of the box; format: of DrawText.
    void Text(const std::string& text, RECT box, HFONT font, COLORREF colour, UINT format) const;
    void Shape(std::span<const logic::Spot> outline, COLORREF colour, double opacity = 1);
    void Line(std::span<const logic::Spot> spots, double width, COLORREF colour, double opacity = 1);
    void Circle(logic::Spot centre, double radius, COLORREF colour, double opacity = 1);
    // A line through the middles of the columns of the area from its left edge on, at those heights, and what
    // lies between it and a height of its own. Faster than shapes.
    void Graph(std::span<const double> heights, const logic::GraphStyle& style) const;
    void UnderGraph(std::span<const double> heights, double base, COLORREF colour, double opacity) const;
    // With its middle there.
    void Put(const Stamp& stamp, POINT middle) const;
    // A round lamp in its rim.
    void Lamp(logic::Spot centre, double radius, bool isLit);

private:
    std::vector<logic::Spot> Moved(std::span<const logic::Spot> spots) const;
    void Show(COLORREF colour, double opacity);
    logic::PixelArea Pixels() const;
    std::vector<double> MovedHeights(std::span<const double> heights) const;

    HDC dc_;
    std::uint32_t* pixels_;
    int width_;
    int top_;
    RECT area_;
    int saved_;
    RECT covered_; // of the area, what there are pixels of
    logic::Coverage coverage_;
};
