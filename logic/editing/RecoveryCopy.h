// The copy of a panel with unsaved changes, as it lies on the disk for the case that the program does not end
// well.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace logic {

struct RecoveryCopy {
    std::string file;    // of the panel; empty while it has none
    std::string devices; // the device file the program was started with, or empty
    int changes = 0;     // that the panel's file does not hold
    std::string panel;   // the lines of a panel file
};

std::string RecoveryText(const RecoveryCopy& copy);
// Nothing when the text is none of these or not whole.
std::optional<RecoveryCopy> ParseRecoveryText(std::string_view text);

} // namespace logic
