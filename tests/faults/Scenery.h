#pragma once

#include "tests/faults/Campaign.h"
#include "tests/windows/ControlClasses.h"

// Panels of random controls that are bound to each other and to simulated devices.

class Scenery {
public:
    // That many controls of random classes, called C0, C1 and so on or by another letter, which nothing is
    // bound to then.
    Scenery(Random& random, int count, char letter = 'C');

    TestPanel panel;

    // A control that is there, a strip's children included; null when there is none any more.
    HWND Control(Random& random) const;
    // A line that a control may take, refuse or cut, for a keyword of its own or for none.
    static std::string Line(Random& random, HWND control);
    // Gives it one.
    static void LoadLine(Random& random, HWND control, WPARAM mode);
};

// Class and name of a control.
std::string Described(HWND control);
// What a keyword may be set to: sensible, extreme, long, empty or bytes.
std::string RandomValue(Random& random, const std::string& present);
