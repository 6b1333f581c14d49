#pragma once

#include "Controls/drawing/ListRows.h"
#include "Controls/framework/Control.h"

#include <string>
#include <vector>

// Base of a control with windows for the rows of a list: of each its button, of the class LSBBUTTON, and in
// front of it its number, of the class LSBSTATIC. They have no object. They only say where a row is and what
// it is called: the control paints all of them at once, and takes their input.
class LISTROWSPROPERTIES : public CONTROLPROPERTIES {
public:
    void SetDefaults() override;
    // What the window of a row says that it is called, the uppermost being 0.
    virtual std::string RowText(int row, bool isNumber) const = 0;

protected:
    // Has windows for so many rows, where they lie.
    void PlaceRows(const ListLayout& layout, int count);
    bool HasRows() const { return !windows_.empty(); }

private:
    struct RowWindows {
        HWND number, button; // the number null without numbers
    };

    void MakeRows(std::size_t count, bool withNumbers);

    std::vector<RowWindows> windows_;
    std::vector<RECT> areas_; // where they stand: of each the number, then the button
};
