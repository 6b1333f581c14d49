// The codes by which terminals say more than letters.
#pragma once

namespace logic {

constexpr char ABANDON = 3; // Ctrl-C
constexpr char BACKSPACE = 8;
constexpr char LINE_FEED = 10;
constexpr char CARRIAGE_RETURN = 13;
constexpr char ESCAPE = 27;

} // namespace logic
