#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/ListRows.h"
#include "Controls/framework/Control.h"
#include "logic/controls/ListLogic.h"

#include <optional>
#include <string>
#include <vector>

// Base of a control with windows for the rows of a list: of each its button, of the class LSBBUTTON, and in
// front of it its number, of the class LSBSTATIC. They have no object. They only say where a row is and what
// it is called: the control paints all of them at once, and takes their input. Here is where rows lie and
// which entries are seen in them; what the entries are, the control says.
class LISTROWSPROPERTIES : public CONTROLPROPERTIES {
public:
    LISTROWSPROPERTIES() { font.Load("Tahoma,8"); }
    void SetDefaults() override;
    // What the window of a row says that it is called, the uppermost being 0.
    virtual std::string RowText(int row, bool isNumber) const = 0;

    void FontChanged();
    // Places the rows in the window, makes those that are missing and destroys those that are too many.
    void Arrange();
    void Wheel(int delta);

    int rows = 0; // that share the height; 0: as many as have room
    int numbers = 1;
    FontProperty font;

protected:
    virtual int EntryCount() const = 0;
    virtual int LongestNumber() const = 0; // digits
    // The entry that is to be seen when the rows are arranged, or none.
    virtual std::optional<int> EntryToShow() const = 0;

    ListLayout LayoutOf(const RECT& client) const;
    ListLayout CurrentLayout() const;
    logic::ListScroll Scroll(const ListLayout& layout) const { return {EntryCount(), layout.rows}; }
    RECT ThumbArea(const ListLayout& layout) const;
    std::optional<int> EntryAt(const ListLayout& layout, POINT point) const;
    void ScrollTo(int entry);

    int top = 0;         // the entry in the uppermost row
    ListLetters letters; // measured with the first entries

private:
    // Has windows for so many rows, where they lie.
    void PlaceRows(const ListLayout& layout, int count);
    struct RowWindows {
        HWND number, button; // the number null without numbers
    };

    void MakeRows(std::size_t count, bool withNumbers);

    std::vector<RowWindows> windows_;
    std::vector<RECT> areas_; // where they stand: of each the number, then the button
    int wheel_ = 0;           // that is less than a row
};
