#include "Panel/common/CommandLine.h"

#include "Panel/common/Paths.h"
#include "base/FileNames.h"

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
    "  --export-png FILE  write a picture of the panel, without a window, and end likewise\r\n"
    "  --export-list FILE the same with a list of its controls and bindings (HTML)\r\n"
    "  --trace FILE       append every trace line to that file\r\n"
    "  --recovery FOLDER  keep the copies there that bring back unsaved changes after a\r\n"
    "                     crash (default: in the user's application data)\r\n"
    "  --settings FOLDER  keep the list of recent panels, the window's place and the theme\r\n"
    "                     there (default: in the user's application data)\r\n"
    "  --check            report on standard output what is wrong with the panel, once its\r\n"
    "                     devices had up to 5 s to answer, and end without a window\r\n"
    "  --edit             begin in edit mode\r\n"
    "  --operate          the panel alone: no menus and dialogs, no edit mode unless the\r\n"
    "                     panel has a PIN for it (F5)\r\n"
    "  --full-screen      with --operate: without a frame, over the whole screen\r\n"
    "  --watch            start the program again after a crash\r\n"
    "  --follow           send nothing to devices at the start, even where the panel says so\r\n"
    "  --theme THEME      light, dark or system, for this run\r\n"
    "  --exit-after MS    end after that many milliseconds, unsaved changes are dropped\r\n"
    "  --version          print the version and the commit it was built from\r\n"
    "  --help             print this text\r\n"
    "\r\n"
    "The exit code is 0, or 2 when something asked for here could not be done; of --check\r\n"
    "it is 1 when something is wrong with the panel.";

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

// The option that has no value of its own; null for any other.
bool* Switch(const std::string& argument, CommandLine& commandLine) {
    return argument == "--check"         ? &commandLine.check
           : argument == "--edit"        ? &commandLine.edit
           : argument == "--operate"     ? &commandLine.operate
           : argument == "--full-screen" ? &commandLine.fullScreen
           : argument == "--watch"       ? &commandLine.watch
           : argument == "--follow"      ? &commandLine.follow
                                         : nullptr;
}

// What is wrong with the options together; empty when nothing is.
std::string Objection(const CommandLine& commandLine) {
    if (commandLine.operate && commandLine.edit) {
        return "--operate and --edit exclude each other";
    }
    if (commandLine.operate && commandLine.panelFile.empty()) {
        return "--operate needs a panel file";
    }
    if (commandLine.check && commandLine.panelFile.empty()) {
        return "--check needs a panel file";
    }
    if (commandLine.check && (commandLine.operate || commandLine.watch)) {
        return "--check excludes --operate and --watch";
    }
    if (IsHidden(commandLine) && commandLine.panelFile.empty()) {
        return "what is exported needs a panel file";
    }
    return commandLine.fullScreen && !commandLine.operate ? "--full-screen needs --operate" : "";
}

bool ReadFileName(const wchar_t* name, std::string& result, std::string& error) {
    const auto path = AbsolutePath(name);
    if (!path) {
        error = NarrowText(name) + ": " + NO_NARROW_NAME;
        return false;
    }
    result = *path;
    return true;
}

} // namespace

bool ParseCommandLine(int count, wchar_t** arguments, CommandLine& result, std::string& error) {
    result = CommandLine{};
    result.unattended = std::any_of(arguments, arguments + count, [](std::wstring_view argument) {
        return argument == L"--exit-after" || argument == L"--screenshot" || argument == L"--export-png" ||
               argument == L"--export-list" || argument == L"--check";
    });
    CommandLine parsed = result;
    for (int i = 0; i < count; ++i) {
        const std::string argument = NarrowText(arguments[i]);
        if (argument == "--help" || argument == "-h" || argument == "/?") {
            result.help = true;
            return true;
        }
        if (argument == "--version") {
            result.version = true;
            return true;
        }
        if (!argument.starts_with('-')) {
            if (argument.empty() || !parsed.panelFile.empty()) {
                error = argument.empty() ? "the name of the panel file is empty"
                                         : "only one panel file can be opened: " + argument;
                return false;
            }
            if (!ReadFileName(arguments[i], parsed.panelFile, error)) {
                return false;
            }
            continue;
        }

        if (bool* const given = Switch(argument, parsed)) {
            *given = true;
            continue;
        }
        std::string* file = argument == "--devices"       ? &parsed.deviceFile
                            : argument == "--screenshot"  ? &parsed.screenshotFile
                            : argument == "--export-png"  ? &parsed.pictureFile
                            : argument == "--export-list" ? &parsed.listFile
                            : argument == "--trace"       ? &parsed.traceFile
                            : argument == "--recovery"    ? &parsed.recoveryFolder
                            : argument == "--settings"    ? &parsed.settingsFolder
                                                          : nullptr;
        if (!file && argument != "--exit-after" && argument != "--theme") {
            error = "unknown option " + argument + " (--help lists them)";
            return false;
        }
        const std::string value = i + 1 < count ? NarrowText(arguments[i + 1]) : "";
        if (value.empty() || value.starts_with("--")) {
            error = argument + " needs a value";
            return false;
        }
        ++i;
        if (file) {
            if (!ReadFileName(arguments[i], *file, error)) {
                return false;
            }
        } else if (argument == "--theme") {
            if (value != "light" && value != "dark" && value != "system") {
                error = "--theme needs light, dark or system, not \"" + value + "\"";
                return false;
            }
            parsed.theme = value;
        } else if (!ReadMilliseconds(value, parsed.exitAfter)) {
            error = "--exit-after needs a number of milliseconds, not \"" + value + "\"";
            return false;
        }
    }
    error = Objection(parsed);
    if (!error.empty()) {
        return false;
    }
    parsed.follow = parsed.follow || parsed.check; // a check moves nothing
    if ((!parsed.screenshotFile.empty() || IsHidden(parsed)) && !parsed.exitAfter) {
        parsed.exitAfter = SCREENSHOT_AFTER;
    }
    result = parsed;
    return true;
}
