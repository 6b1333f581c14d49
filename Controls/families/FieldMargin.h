#pragma once

#include "Controls/framework/Control.h"
#include "logic/controls/ShownValue.h"

// The left margin of a control that stands on the system's edit control: it aligns the text, and the
// not-equal sign stands in it. The system's control keeps the alignment that it was created with, so the text
// stands on the left of a field whose left margin is as wide as needed.
class FieldMargin {
public:
    explicit FieldMargin(const CONTROLPROPERTIES& control) : control_(control) {}

    // Whether a message gives the field another text, font or size: MakeRoom before, Handled behind it.
    static bool IsMovedBy(UINT message);
    // Gives the system's control room to write in before it changes the text, or it would scroll.
    void MakeRoom();
    void Handled(UINT message, logic::Alignment alignment);
    // Moves the text to its place.
    void Align(logic::Alignment alignment);

    bool IsMarked() const { return isMarked_; } // there is room for the not-equal sign
    void SetMarked(bool isMarked) { isMarked_ = isMarked; }
    void DrawMark(HDC dc) const;

private:
    int Least() const;
    void Set(int margin);

    static constexpr int UNKNOWN = -1;

    const CONTROLPROPERTIES& control_;
    bool isMarked_ = false;
    int margin_ = UNKNOWN;
};
