// A matrix of crosspoints as it is shown and worked: which are on, where they lie, and what keys do. Inputs
// are rows and outputs columns, both from 0 on; in texts they are counted from 1. Geometry in pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

constexpr int MOST_ROUTED = 64; // inputs, and outputs

struct Crosspoint {
    int input = 0;
    int output = 0;

    bool operator==(const Crosspoint&) const = default;
};

enum class CrosspointState : std::uint8_t { Missing, Off, On };

class RoutingMatrix {
public:
    RoutingMatrix(int inputs, int outputs); // 1 to MOST_ROUTED each

    int Inputs() const { return inputs_; }
    int Outputs() const { return outputs_; }
    std::size_t Size() const { return states_.size(); }
    // All outputs of the first input come first.
    std::size_t NumberOf(Crosspoint place) const {
        return static_cast<std::size_t>(place.input) * static_cast<std::size_t>(outputs_) +
               static_cast<std::size_t>(place.output);
    }
    Crosspoint PlaceOf(std::size_t number) const;
    bool Has(Crosspoint place) const {
        return place.input >= 0 && place.input < inputs_ && place.output >= 0 && place.output < outputs_;
    }
    CrosspointState operator[](Crosspoint place) const { return states_[NumberOf(place)]; }
    bool IsOn(Crosspoint place) const { return (*this)[place] == CrosspointState::On; }
    // Whether it was another one.
    bool Set(Crosspoint place, CrosspointState state);
    // Where the output has other inputs.
    std::vector<Crosspoint> OthersOn(Crosspoint place) const;

    // Those that are on, "1_2;3_4": the input, then the output.
    std::string Text() const;
    // For each, in order, whether it is on in such a text. Nothing when any of it is no crosspoint.
    std::optional<std::vector<bool>> Read(std::string_view text) const;

private:
    int inputs_, outputs_;
    std::vector<CrosspointState> states_;
};

// The places on the way from one to another, without the first, so that a fast drag leaves none out.
std::vector<Crosspoint> CrosspointsTo(Crosspoint from, Crosspoint to);

enum class RoutingKey { Left, Right, Up, Down, Home, End, FirstRow, LastRow, PageUp, PageDown };
// Where the keys go to from there; page: rows that are seen.
Crosspoint MoveBy(RoutingKey key, Crosspoint from, const RoutingMatrix& matrix, int page);

struct RoutingSpace {
    int width, height;   // of the area
    int inputs, outputs; // of the matrix
    int rowNames;        // width that the names of the inputs would like
    int columnNames;     // height that those of the outputs would like
};

// Where everything lies. Names get a third of the space at most, and none in an area where hardly anything
// would be left. Where the cells would be smaller than SMALLEST_CELL, they become SCROLLED_CELL and can be
// scrolled, with bars at the right and lower edge.
class RoutingLayout {
public:
    static constexpr int SMALLEST_CELL = 8;
    static constexpr int SCROLLED_CELL = 14;
    static constexpr int LARGEST_CELL = 32;
    static constexpr int BAR = 7;

    explicit RoutingLayout(const RoutingSpace& space);

    struct Box {
        int left, top, right, bottom;
    };

    // Where the first of the cells that are seen is, for it to be as near as can be to where it is wanted,
    // and for the other place to be seen.
    Crosspoint Limited(Crosspoint first) const;
    Crosspoint Showing(Crosspoint first, Crosspoint place) const;

    // Relative to the area. first: as Limited gives it.
    Box CellBox(Crosspoint place, Crosspoint first) const;
    bool IsSeen(Crosspoint place, Crosspoint first) const;
    std::optional<Crosspoint> CellAt(int x, int y, Crosspoint first) const;
    // The nearest cell, also of a point outside: one step beyond what is seen, where there is one.
    Crosspoint NearestCell(int x, int y, Crosspoint first) const;

    bool HasHorizontalBar() const { return columns < space_.outputs; }
    bool HasVerticalBar() const { return rows < space_.inputs; }
    // The tracks of the bars and the thumbs in them.
    Box HorizontalTrack() const;
    Box VerticalTrack() const;
    Box HorizontalThumb(Crosspoint first) const;
    Box VerticalThumb(Crosspoint first) const;
    // The first cell for a thumb that begins there.
    int FirstColumnAt(int thumbLeft) const;
    int FirstRowAt(int thumbTop) const;

    int cell = 0;              // width and height
    int left = 0, top = 0;     // of the cells; in front of them are the names
    int columns = 0, rows = 0; // that are seen

private:
    RoutingSpace space_;
};

} // namespace logic
