#pragma once

#include "logic/controls/ShownValue.h"

#include <windows.h>

// The left margin of a system edit control, which a control stands on or has inside: it aligns the text, and
// the not-equal sign can stand in it. The system's control keeps the alignment that it was created with, so
// the text stands on the left of a field whose left margin is as wide as needed.
class FieldMargin {
public:
    explicit FieldMargin(const HWND& field) : field_(field) {}

    // Whether a message gives the field another text, font or size: MakeRoom before, Handled behind it.
    static bool IsMovedBy(UINT message);
    // Gives the system's control room to write in before it changes the text, or it would scroll.
    void MakeRoom();
    void Handled(UINT message, logic::Alignment alignment);
    // Moves the text to its place.
    void Align(logic::Alignment alignment);

    bool IsMarked() const { return isMarked_; } // there is room for the not-equal sign
    void SetMarked(bool isMarked) { isMarked_ = isMarked; }
    // WM_PAINT and WM_PRINTCLIENT: has the window do them, and draws the sign.
    static bool IsPainting(UINT message) { return message == WM_PAINT || message == WM_PRINTCLIENT; }
    template <class WindowDoes>
    LRESULT Paint(UINT message, WPARAM wParam, WindowDoes windowDoes) const {
        const HDC printed = message == WM_PRINTCLIENT ? reinterpret_cast<HDC>(wParam) : nullptr;
        const int before = SaveDC(printed);
        const LRESULT result = windowDoes();
        RestoreDC(printed, before); // it may have been clipped to the text
        if (isMarked_) {
            DrawMark(printed);
        }
        return result;
    }

private:
    void DrawMark(HDC printed) const;
    int Least() const;
    void Set(int margin);

    static constexpr int UNKNOWN = -1;

    const HWND& field_;
    bool isMarked_ = false;
    int margin_ = UNKNOWN;
};
