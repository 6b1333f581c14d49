#pragma once

#include <string>

class OSMIRBitmap;

// Which of the forms that a picture may have is wanted, or was found.
struct Art {
    int percent = 100;
    std::string variant; // of its parts, such as another cap of a fader; empty for the picture as it is named
    bool operator==(const Art&) const = default;
};

// The picture of that name in the form that is wanted, or that comes nearest to it: those of a variant lie in
// a folder of its name beside the picture, larger ones in a folder "150" or "200" of that, with the same name
// or with the ending ".png". Null when there is none at all. Adds a reference, as a_GetBitmap does; `taken`
// becomes what was found.
OSMIRBitmap* FindArt(const std::string& name, const Art& wanted, Art& taken);
