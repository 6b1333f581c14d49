#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

// A small picture, 0xaarrggbb from the top down, as wide as it is high: an odd number of pixels.
struct Stamp {
    int size = 0;
    std::vector<std::uint32_t> pixels;
};

// Round points with a label, of which a picture has many: each look is drawn once.
class Discs {
public:
    struct Look {
        double radius;
        COLORREF colour;
        std::optional<COLORREF> inside; // of a ring
        std::optional<COLORREF> halo;   // around it
        std::string label;
        COLORREF labelColour;
    };
    // The font is the same until Forget.
    const Stamp& Get(const Look& look, HFONT font);
    void Forget() { drawn_.clear(); }

private:
    using Key =
        std::tuple<double, COLORREF, std::optional<COLORREF>, std::optional<COLORREF>, std::string, COLORREF>;
    static Stamp Draw(const Look& look, HFONT font);

    std::map<Key, Stamp> drawn_;
};
