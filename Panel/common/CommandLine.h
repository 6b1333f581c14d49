#pragma once

#include <cstdint>
#include <optional>
#include <string>

// What the command line asks for. File names are absolute; an empty one was not given.
struct CommandLine {
    std::string panelFile;
    std::string deviceFile;
    std::string screenshotFile;
    std::string pictureFile; // of the panel alone, without a window
    std::string listFile;
    std::string traceFile;
    std::string recoveryFolder;
    std::string theme; // "system", "light", "dark"; empty for the one that is kept
    std::string settingsFolder;
    std::optional<std::uint32_t> exitAfter; // milliseconds
    bool check = false;                     // report what is wrong with the panel, and end
    bool edit = false;
    bool operate = false; // and no more: no edit mode, dialogs and menus
    bool fullScreen = false;
    bool watch = false;
    bool follow = false; // the panel that is opened at the start sends nothing to devices
    bool help = false;
    bool version = false;
    bool unattended = false; // the program ends by itself: nobody is there to answer a question
};

// Reads the arguments after the program's name. On failure the error says what is wrong with them, and of the
// result only "unattended" is set.
bool ParseCommandLine(int count, wchar_t** arguments, CommandLine& result, std::string& error);

constexpr int EXIT_DONE = 0;
constexpr int EXIT_NOT_DONE = 2; // something that the command line asks for

constexpr const wchar_t* WATCH_OPTION = L"--watch";
constexpr const wchar_t* FOLLOW_OPTION = L"--follow";

// Whether nothing of the program is to be seen on the screen.
inline bool IsHidden(const CommandLine& commandLine) {
    return commandLine.screenshotFile.empty() &&
           !(commandLine.pictureFile.empty() && commandLine.listFile.empty());
}

// What --help prints, without the last line end.
extern const char* const USAGE;
