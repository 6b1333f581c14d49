#pragma once

#include "Controls/drawing/KeptPicture.h"

#include <string>
#include <vector>

// Lines and texts that stay the same for many paintings, kept as one picture with transparency: a single call
// draws all of them over any ground.
class Ink {
public:
    struct Text {
        std::string text;
        POINT place; // top left
    };
    // Replaces all of them.
    void Set(std::vector<RECT> lines, std::vector<Text> texts);

    struct Look {
        SIZE size; // of the client area
        COLORREF lineColour;
        COLORREF textColour;
        HFONT font; // another one is seen after the next Set
    };
    void Draw(HDC dc, const Look& look);

private:
    void Render(const Look& look, HDC dc, std::uint32_t* pixels) const;
    void DrawTexts(HDC dc, const Look& look, COLORREF colour) const;

    std::vector<RECT> lines_;
    std::vector<Text> texts_;
    KeptPicture picture_{true};
    COLORREF lineColour_ = 0;
    COLORREF textColour_ = 0;
};
