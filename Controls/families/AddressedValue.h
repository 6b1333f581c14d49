#pragma once

#include <windows.h>

#include <string>

// A value of the object of a window, addressed by its keyword from outside: by a terminal, on a telephone
// call, by a click. It is read and set by value records, as text.
class AddressedValue {
public:
    AddressedValue(HWND window, std::string keyword);

    // Whether the object answers to that name. A control does to any: one that it does not know, or none, is
    // its default value.
    bool IsAnswered() const { return isAnswered_; }
    // Whether it has a keyword of that name.
    bool IsKnown() const { return row_ != 0; }
    // Empty when there is none. Properties of controls that answer no records can be read all the same.
    std::string Text() const;
    void Set(const std::string& value) const;

private:
    HWND window_;
    std::string keyword_; // cut to the length of a text
    bool isAnswered_;
    int row_;
};

// Traces that a line was not carried out because it was too long.
void TraceRefusedLine(const char* terminal);
