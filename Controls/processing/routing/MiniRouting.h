#pragma once

#include "Controls/families/PatternList.h"
#include "Controls/families/View.h"
#include "base/Gdi.h"
#include "logic/controls/RoutingGrid.h"

#include <optional>
#include <string>
#include <vector>

// MINIROUTING: a matrix of crosspoints, inputs in rows and outputs in columns. A click sets one, a drag
// paints them; keys work it as well. What is seen of a large one can be scrolled. Geometry in pixels.
//
// MiniRouting.cpp has its keywords and what the devices hold, RoutingDrawing.cpp how it looks, and
// RoutingInput.cpp how it is operated.
class MINIROUTINGPROPERTIES : public VIEWPROPERTIES {
public:
    KeywordList Keywords() const override;
    void SetDefaults() override;
    LRESULT OnGetTooltip(WPARAM wParam, LPARAM text) override;
    bool IsBound() const override { return !routes_.Pattern().empty(); }
    void BindingsChanged() override {}
    void FontChanged() override;
    void Poll() override;
    void DrawView(Canvas& canvas) const override;
    bool BeginViewDrag(POINT point) override;
    void MoveViewDrag(POINT point) override;
    void EndViewDrag() override { held_ = Grip::None; }
    void CancelViewDrag() override { held_ = Grip::None; }
    bool KeyDown(WPARAM key) override;
    void Wheel(int notches, bool fine, POINT point) override;
    void Hovered(const POINT* point) override;

    void SizeChanged();
    std::string Routes() const { return routes_.Pattern(); }
    bool SetRoutes(const std::string& pattern);
    std::string InputNames() const { return inputNames_.Pattern(); }
    bool SetInputNames(const std::string& pattern);
    std::string OutputNames() const { return outputNames_.Pattern(); }
    bool SetOutputNames(const std::string& pattern);
    int ValueKeyword(VALUERECORD& record);
    // The focus came or went.
    void RedrawCursor() const { RedrawCell(cursor_); }

    int inputs = 8;
    int outputs = 8;
    int exclusive = 0;

private:
    enum class Grip { None, Cells, HorizontalBar, VerticalBar };

    void Measure() const;
    logic::RoutingLayout Layout() const;
    logic::Crosspoint First() const { return Layout().Limited(first_); }
    void Scroll(logic::Crosspoint first);
    void ScrollTo(logic::Crosspoint place);
    std::string NameOf(const std::vector<std::string>& names, int number) const;
    std::string RouteText(logic::Crosspoint place) const;

    // Asks the device, or tells it and shows what it took. False when the control has ended meanwhile.
    int AskFor(logic::Crosspoint place);
    bool AskNames(PatternList& list, std::vector<std::string>& names, int& worst);
    bool Tell(logic::Crosspoint place, bool isOn);
    bool Switch(logic::Crosspoint place, bool isOn);
    void Toggle(logic::Crosspoint place);
    void TellOfValue();
    void Take(logic::Crosspoint place, logic::CrosspointState state);
    bool Read(const std::string& text);

    RECT BoxOf(const logic::RoutingLayout::Box& box) const;
    RECT RowNameBox(int input) const;
    RECT ColumnNameBox(int output) const;
    std::optional<RECT> MarkBox() const;
    void RedrawCell(logic::Crosspoint place) const;
    void RedrawHover() const;
    void DrawCells(Canvas& canvas) const;
    void DrawCell(Canvas& canvas, const RECT& box, logic::CrosspointState state) const;
    void DrawNames(Canvas& canvas) const;
    void DrawColumnName(const Canvas& canvas, int output, COLORREF colour) const;
    void DrawBars(Canvas& canvas) const;
    bool IsMarked(int logic::Crosspoint::*side, int number) const {
        return hovered_ && (*hovered_).*side == number;
    }

    logic::RoutingMatrix matrix_{8, 8};
    PatternList routes_;
    PatternList inputNames_;
    PatternList outputNames_;
    std::vector<std::string> inputTexts_;
    std::vector<std::string> outputTexts_;
    // What follows from font and names.
    mutable bool isMeasured_ = false;
    mutable Font upright_; // the font, turned
    mutable int nameWidth_ = 0;
    mutable int nameHeight_ = 0; // of the longest name of an output, when it stands upright
    mutable int lineHeight_ = 0;

    logic::Crosspoint first_;  // the upper left one that is seen
    logic::Crosspoint cursor_; // that keys work on
    std::optional<logic::Crosspoint> hovered_;
    Grip held_ = Grip::None;
    logic::Crosspoint painted_; // the last one of the drag
    bool isPaintedOn_ = false;
    int grip_ = 0; // from the begin of the thumb to the mouse
};
