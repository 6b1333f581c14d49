#include "Panel/common/CommandLine.h"

#include "Panel/common/Paths.h"

#include <algorithm>
#include <charconv>
#include <string_view>

const char* const USAGE =
    "Usage: Panel.exe [panel file] [options]\r\n"
    "\r\n"
    "Opens a panel and operates it.\r\n"
    "\r\n"
    "  --devices FILE     device file (default: the one beside the panel file, with the\r\n"
    "                     extension .devices, if there is one)\r\n"
    "  --screenshot FILE  write a picture of the window (PNG) before the program ends;\r\n"
    "                     it ends after 1500 ms unless --exit-after says otherwise\r\n"
    "  --trace FILE       append every trace line to that file\r\n"
    "  --recovery FOLDER  keep the copies there that bring back unsaved changes after a\r\n"
    "                     crash (default: in the user's application data)\r\n"
    "  --exit-after MS    end after that many milliseconds, unsaved changes are dropped\r\n"
    "  --help             print this text\r\n"
    "\r\n"
    "The exit code is 0, or 2 when something asked for here could not be done.";

namespace {

constexpr std::uint32_t SCREENSHOT_AFTER = 1500;
// Longer spans do not fit the timers that count them.
constexpr std::uint32_t LONGEST_SPAN = 0x7FFFFFFF;

bool ReadMilliseconds(std::string_view text, std::optional<std::uint32_t>& result) {
    std::uint32_t value = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size() || value > LONGEST_SPAN) {
        return false;
    }
    result = value;
    return true;
}

} // namespace

bool ParseCommandLine(int count, char** arguments, CommandLine& result, std::string& error) {
    result = CommandLine{};
    result.unattended = std::any_of(arguments, arguments + count, [](std::string_view argument) {
        return argument == "--exit-after" || argument == "--screenshot";
    });
    CommandLine parsed = result;
    for (int i = 0; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help" || argument == "-h" || argument == "/?") {
            result.help = true;
            return true;
        }
        if (!argument.starts_with('-')) {
            if (argument.empty() || !parsed.panelFile.empty()) {
                error = argument.empty() ? "the name of the panel file is empty"
                                         : "only one panel file can be opened: " + std::string(argument);
                return false;
            }
            parsed.panelFile = AbsolutePath(arguments[i]);
            continue;
        }

        std::string* file = argument == "--devices"      ? &parsed.deviceFile
                            : argument == "--screenshot" ? &parsed.screenshotFile
                            : argument == "--trace"      ? &parsed.traceFile
                            : argument == "--recovery"   ? &parsed.recoveryFolder
                                                         : nullptr;
        if (!file && argument != "--exit-after") {
            error = "unknown option " + std::string(argument) + " (--help lists them)";
            return false;
        }
        const std::string_view value = i + 1 < count ? arguments[i + 1] : "";
        if (value.empty() || value.starts_with("--")) {
            error = std::string(argument) + " needs a value";
            return false;
        }
        ++i;
        if (file) {
            *file = AbsolutePath(arguments[i]);
        } else if (!ReadMilliseconds(value, parsed.exitAfter)) {
            error = "--exit-after needs a number of milliseconds, not \"" + std::string(value) + "\"";
            return false;
        }
    }
    if (!parsed.screenshotFile.empty() && !parsed.exitAfter) {
        parsed.exitAfter = SCREENSHOT_AFTER;
    }
    result = parsed;
    return true;
}
