#pragma once

#include "Controls/drawing/Disc.h"
#include "Controls/families/View.h"
#include "logic/controls/CurvePlot.h"
#include "logic/controls/Response.h"

#include <optional>
#include <string>
#include <vector>

// Base of the views of filters: curves over a grid of frequencies and gains, with a point for each filter
// that is dragged, turned with the wheel, double-clicked, and reached with Tab and worked with the arrow
// keys. A view overrides what its points are and what becomes of them, and paints the curves. In a small view
// the points are left out, and with them all of the input; in a very small one there is nothing but the
// curves.
class CURVEVIEWPROPERTIES : public VIEWPROPERTIES {
public:
    static constexpr int MOST_CURVES = 16;

    struct Point {
        double hertz = 0;
        double decibels = 0;
        bool isBypassed = false;
        COLORREF colour = 0;
        std::string label;
    };
    enum class Field { Frequency, Gain, Q };

    // By their number; what is not there at present has none.
    virtual std::vector<std::optional<Point>> Points() const = 0;
    // Of what is in a list of functions and cannot be drawn: its number, from 1 on.
    virtual std::vector<int> Missing() const = 0;
    virtual void DrawCurves(Canvas& canvas, const logic::CurvePlot& plot) const = 0;
    // What is said of a point while it is operated.
    virtual std::string PointText(int point) const = 0;
    // Operate a point: put it somewhere (nothing: it stays in that direction), step it up or down, have it
    // bypassed or not. A fine step is a tenth.
    virtual void MovePoint(int point, std::optional<float> hertz, std::optional<float> decibels) = 0;
    virtual void StepPoint(int point, Field field, int steps, bool fine) = 0;
    virtual void TogglePoint(int point) = 0;

    void Redraw() const override;
    void BindingsChanged() override;
    std::string StatusText() override;
    void DrawGround(Canvas& canvas) const override;
    void DrawView(Canvas& canvas) const override;
    bool BeginViewDrag(POINT point) override;
    void MoveViewDrag(POINT point) override;
    void EndViewDrag() override { CancelViewDrag(); }
    void CancelViewDrag() override;
    bool DoubleClicked(POINT point) override;
    bool KeyDown(WPARAM key) override;
    bool TakesTab(bool backwards) const override;
    void Wheel(int notches, bool fine, POINT point) override;
    void Hovered(const POINT* point) override;
    void FocusLost() override;

    // The point under the mouse or the keys, -1 for none.
    int ActivePoint() const;
    // For all columns of a plot.
    const logic::FrequencyGrid& GridOf(const logic::CurvePlot& plot) const;

    float range = 18; // dB
    int sampleRate = 48000;
    int readOnly = 0;

private:
    enum class Detail { Curves, Points, All };
    static Detail DetailOf(const RECT& area);
    logic::CurvePlot PlotIn(const RECT& area) const;
    std::vector<std::optional<logic::Spot>> Places(const logic::CurvePlot& plot) const;
    std::optional<int> PointAt(POINT point) const;
    bool IsOperated() const { return readOnly == 0 && DetailOf(ViewArea()) != Detail::Curves && IsBound(); }
    void DrawPoint(Canvas& canvas, const Point& point, logic::Spot place, bool isActive,
                   bool isLabelled) const;
    void DrawMissing(Canvas& canvas, bool isLabelled) const;
    void Select(int point);

    mutable std::optional<logic::FrequencyGrid> grid_;
    mutable Discs discs_;
    int held_ = -1;
    int hovered_ = -1;
    int selected_ = -1; // with the keys
    POINT pressed_{};   // where the mouse was last
    double gripX_ = 0;  // from the mouse to the point
    double gripY_ = 0;
};

// Rows of these views.
inline constexpr Keyword CURVE_RANGE =
    Limited<&CURVEVIEWPROPERTIES::range, 1, 120, &CURVEVIEWPROPERTIES::Redraw>("range")
        .Saved()
        .Unit("dB")
        .Label("Range in dB")
        .Says("Gain at the upper edge, and without its sign at the lower one, 1 to 120 dB.");
inline constexpr Keyword CURVE_READ_ONLY =
    Integer<&CURVEVIEWPROPERTIES::readOnly, 0, 1, &CURVEVIEWPROPERTIES::Redraw>("readonly")
        .Saved()
        .OneOf("0,1")
        .Label("Only to look at")
        .Says("1: the view only shows, 0: it can be operated as well.");
inline constexpr Keyword CURVE_SAMPLE_RATE =
    Limited<&CURVEVIEWPROPERTIES::sampleRate, 8000, 768000, &CURVEVIEWPROPERTIES::Redraw>("samplerate")
        .Saved()
        .Unit("Hz")
        .Label("Sampling rate in Hz")
        .Says("Sampling rate that the filters work at, 8000 to 768000 Hz. Curves end at half of it.");
