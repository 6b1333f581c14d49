#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

// Rows of a list as they lie in its window, and as they are drawn. Pixels.

// Of the letters that rows are written in.
struct ListLetters {
    explicit ListLetters(HFONT with = nullptr);

    HFONT font;
    int height = 1;
    int digit = 1;  // width
    int widest = 1; // of most
};

// Where the rows lie: a button each, with its number in front of it, and a scroll bar beside them.
struct ListLayout {
    // So many rows share the height of the client area, or with 0 as many as have room. The longest of the
    // numbers has that many digits; 0 without numbers.
    ListLayout(const RECT& client, const ListLetters& letters, int wantedRows, int digits);
    // Takes the room for a scroll bar from the rows.
    void AddBar();

    RECT Row(int row) const;
    RECT Button(int row) const;
    // The row at a point; there may be nothing in it.
    std::optional<int> RowAt(POINT point) const;
    int Track() const { return bar.bottom - bar.top; }

    int rowHeight;
    int rows; // that there is room for
    int numberWidth;
    RECT inside;
    RECT bar{}; // empty without one
};

struct ListColours {
    std::optional<COLORREF> text; // none: what can be read
    COLORREF row;
    COLORREF lit;
};

struct ListRowLook {
    std::string_view caption;
    std::string_view number; // empty for none
    bool isActive, isMarked, isDown;
};

void DrawListRow(HDC dc, const ListLayout& layout, int row, const ListRowLook& look,
                 const ListLetters& letters, const ListColours& colours);
void DrawListBar(HDC dc, const RECT& bar, const RECT& thumb);
