#pragma once

#include <string>
#include <vector>

class HOSTINFO;

// A line of the panel file that could not be read, and is kept.
struct UnreadLine {
    std::string object; // empty for the panel
    std::string text;
    int number = 0; // in the file
    int reason = 0; // PH_UNREAD_...
};

std::vector<UnreadLine> UnreadLines(HOSTINFO* root);
// Why it could not be read, in a few words.
std::string ReasonText(int reason);
// How many lines of the file could not be read, why, and what becomes of them; empty for none.
std::string UnreadSummary(const std::vector<UnreadLine>& lines);
