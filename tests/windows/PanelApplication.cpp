// The panel application as a program: what it prints, writes and answers.

#include "Panel/common/VersionText.h"
#include "Panel/editing/Palette.h"
#include "Panel/resource.h"
#include "Panelhost/Bitmap.h"
#include "Version.h"
#include "tests/windows/TestPanel.h"

#include <thread>

TEST_SUITE_BEGIN("PanelApplication");

namespace {

constexpr const char* GOOD_PANEL = "background=0x004080C0\r\n"
                                   "size=400,300\r\n"
                                   "control=0x00000000 KNOB \"Knob\" 0x50010000 10,10,57,57\r\n"
                                   "Knob*function=AMP1*gain\r\n";
constexpr DWORD LONGEST_RUN = 60000; // milliseconds

struct Run {
    DWORD exitCode = STILL_ACTIVE; // for too long
    std::string output;
    std::string errors;
};

HANDLE InheritableFile(const std::string& path) {
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS, 0, nullptr);
}

Run RunPanel(const std::string& arguments) {
    const TestFolder folder;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = InheritableFile(folder.Path("output"));
    start.hStdError = InheritableFile(folder.Path("errors"));
    std::string command = "\"" + ProgramFolder() + "Panel.exe\" " + arguments;
    PROCESS_INFORMATION process{};
    Run run;
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                       &process)) {
        WaitForSingleObject(process.hProcess, LONGEST_RUN);
        GetExitCodeProcess(process.hProcess, &run.exitCode);
        TerminateProcess(process.hProcess, 1);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(start.hStdOutput);
    CloseHandle(start.hStdError);
    run.output = ReadBytes(folder.Path("output"));
    run.errors = ReadBytes(folder.Path("errors"));
    return run;
}

std::string Quoted(const std::string& path) {
    return "\"" + path + "\"";
}

} // namespace

TEST_CASE("help is printed") {
    for (const char* option : {"--help", "/?"}) {
        const Run run = RunPanel(option);
        CHECK(run.exitCode == 0);
        CHECK(run.output.starts_with("Usage: Panel.exe [panel file] [options]\r\n"));
        CHECK(run.errors == "");
    }
}

TEST_CASE("the version is printed with the commit") {
    const Run run = RunPanel("--version");
    CHECK(run.exitCode == 0);
    CHECK(run.output == "Panel " + VersionText() + "\r\n");
    CHECK(VersionText().starts_with(PROJECT_VERSION_TEXT));
}

TEST_CASE("arguments and files that cannot be used are named and end the program with code 2 and one line") {
    const TestFolder folder;
    const std::string panel = Quoted(folder.Write("good.panel", GOOD_PANEL));
    const std::string garbage = folder.Write("garbage", "no panel\r\nat all\r\n");
    const std::pair<std::string, std::string> rows[] = {
        {"--nosuch", "unknown option --nosuch (--help lists them)\r\n"},
        {"--screenshot --exit-after 5", "--screenshot needs a value\r\n"},
        {"--exit-after soon", "--exit-after needs a number of milliseconds, not \"soon\"\r\n"},
        {"a.panel b.panel", "only one panel file can be opened: b.panel\r\n"},
        {"\"\"", "the name of the panel file is empty\r\n"},
        {"--export-png picture.png", "what is exported needs a panel file\r\n"},
        {"--theme green", "--theme needs light, dark or system, not \"green\"\r\n"},
        {panel + " --exit-after 50 --export-png " + Quoted(folder.Path("nowhere\\picture.png")),
         "cannot write the picture " + folder.Path("nowhere\\picture.png") + "\r\n"},
        {panel + " --exit-after 50 --export-list " + Quoted(folder.Path("nowhere\\list.html")),
         "cannot write the list " + folder.Path("nowhere\\list.html") + "\r\n"},
        {"--operate", "--operate needs a panel file\r\n"},
        {"a.panel --operate --edit", "--operate and --edit exclude each other\r\n"},
        {"a.panel --full-screen", "--full-screen needs --operate\r\n"},
        {"--watch --nosuch", "unknown option --nosuch (--help lists them)\r\n"},
        {"--watch --exit-after 50 " + Quoted(folder.Path("gone.panel")),
         "cannot open panel file " + folder.Path("gone.panel") + ": "},
        {"--check", "--check needs a panel file\r\n"},
        {Quoted(folder.Path("missing.panel")),
         "cannot open panel file " + folder.Path("missing.panel") + ": "},
        {Quoted(garbage), garbage + " is not a panel file\r\n"},
        {panel + " --trace " + Quoted(folder.Path("nowhere\\trace.txt")),
         "cannot write the trace file " + folder.Path("nowhere\\trace.txt") + "\r\n"},
        {panel + " --screenshot " + Quoted(folder.Path("nowhere\\shot.png")) + " --exit-after 100",
         "cannot write the picture " + folder.Path("nowhere\\shot.png") + "\r\n"},
    };
    for (const auto& [arguments, error] : rows) {
        INFO(arguments);
        const Run run = RunPanel(arguments);
        CHECK(run.exitCode == 2);
        CHECK(run.output == "");
        CHECK(run.errors.starts_with("Panel: " + error));
        CHECK(run.errors.find("\r\n") == run.errors.size() - 2);
    }
}

TEST_CASE("a panel runs for as long as it was told, takes a picture and traces what is damaged") {
    const TestFolder folder;
    const std::string panel = folder.Write("run.panel", GOOD_PANEL + std::string("Nobody*value=1\r\n"));
    folder.Write("run.devices", "AMP1*device=simulated\r\nAMP1*gain=float,0,100,50,\r\n");
    const std::string picture = folder.Path("picture.png");
    const std::string trace = folder.Write("trace.txt", "before\r\n");
    const DWORD begin = GetTickCount();
    const Run run = RunPanel(Quoted(panel) + " --exit-after 400 --screenshot " + Quoted(picture) +
                             " --trace " + Quoted(trace));
    CHECK(run.exitCode == 0);
    CHECK(run.errors == "");
    CHECK(GetTickCount() - begin >= 400);
    CHECK(ReadBytes(trace) == "before\r\nrun.panel(5): Object not found: Nobody*value=1\r\n");

    const std::string png = ReadBytes(picture);
    CHECK(png.substr(0, 8) == "\x89PNG\r\n\x1A\n");
    const OSMIRBitmap* image = a_GetBitmap3(picture.c_str());
    REQUIRE(image != nullptr);
    CHECK(image->Width() >= 400); // the panel and the frame around it
    CHECK(image->Width() < 1000);
    CHECK(image->Height() >= 300);
    int background = 0;
    for (int y = 0; y < image->Height(); y += 10) {
        for (int x = 0; x < image->Width(); x += 10) {
            background += GetPixel(image->Dc(), x, y) == 0x004080C0 ? 1 : 0;
        }
    }
    CHECK(background > 1000); // of 1200, less what the knob covers
    const std::string edited = folder.Path("edited.png");
    CHECK(RunPanel(Quoted(panel) + " --edit --exit-after 400 --screenshot " + Quoted(edited)).exitCode == 0);
    const OSMIRBitmap* withPalette = a_GetBitmap3(edited.c_str());
    REQUIRE(withPalette != nullptr);
    CHECK(withPalette->Width() > image->Width() + Palette::WIDTH); // and the properties
    a_UnregisterBitmap3(edited.c_str());
    a_UnregisterBitmap3(picture.c_str());
    CHECK(ReadBytes(panel) == GOOD_PANEL + std::string("Nobody*value=1\r\n")); // nothing was saved

    // Without a window there is the panel alone.
    const std::string list = folder.Path("list.html");
    const Run exported =
        RunPanel(Quoted(panel) + " --export-png " + Quoted(picture) + " --export-list " + Quoted(list));
    CHECK(exported.exitCode == 0);
    CHECK(exported.errors == "");
    const OSMIRBitmap* alone = a_GetBitmap3(picture.c_str());
    REQUIRE(alone != nullptr);
    CHECK(alone->Width() == 400);
    CHECK(alone->Height() == 300);
    CHECK(GetPixel(alone->Dc(), 399, 299) == 0x004080C0);
    CHECK(GetPixel(alone->Dc(), 33, 33) != 0x004080C0); // the knob
    a_UnregisterBitmap3(picture.c_str());
    CHECK(ReadBytes(list).find("<td>function: AMP1*gain (live)</td>") != std::string::npos);
    const Run empty = RunPanel("--exit-after 50");
    CHECK(empty.exitCode == 0);
    CHECK(empty.output + empty.errors == "");
}

// The window of a program other than that one, with that title; its process id.
static DWORD ProcessShowing(const std::string& title, DWORD other) {
    DWORD process = 0;
    for (HWND frame = nullptr; (frame = FindWindowExA(nullptr, frame, "PanelFrame", title.c_str()));) {
        GetWindowThreadProcessId(frame, &process);
        if (process != other && IsWindowVisible(frame)) {
            return process;
        }
    }
    return 0;
}

TEST_CASE("a program that is watched is started again after a crash, sends nothing, and not for ever") {
    const TestFolder folder;
    const std::string panel =
        folder.Write("watched.panel", "title=Watched here\r\nonopen=send\r\n"
                                      "control=0x00000000 KNOB \"Knob\" 0x50010000 10,10,57,57\r\n"
                                      "Knob*function=AMP1*gain\r\nKnob*properties=0,100,30\r\n");
    folder.Write("watched.devices", "AMP1*device=simulated\r\nAMP1*gain=float,0,100,50,\r\n");
    const std::string trace = folder.Path("trace.txt");
    Run run;
    std::thread watching([&] {
        run = RunPanel("--watch " + Quoted(panel) + " --recovery " + Quoted(folder.Path("copies")) +
                       " --trace " + Quoted(trace));
    });
    DWORD process = 0;
    int crashes = 0;
    while (run.exitCode == STILL_ACTIVE && crashes < 20) {
        const DWORD before = process;
        if (!Await([&] { return (process = ProcessShowing("Watched here - Panel", before)) != 0; }, 5000)) {
            process = before;
            continue;
        }
        ++crashes;
        const HWND frame = FindWindowA("PanelFrame", "Watched here - Panel");
        const std::string shown = crashes == 1 ? "0,100,30" : "0,100,50"; // sent, and held by the device
        CHECK(Await(
            [&] {
                SendMessageA(frame, WM_COMMAND, CMD_SAVE, 0);
                return ReadBytes(panel).find("Knob*properties=" + shown) != std::string::npos;
            },
            30000));
        const HANDLE running = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process);
        TerminateProcess(running, 0xC0000005);
        WaitForSingleObject(running, 30000);
        CloseHandle(running);
    }
    watching.join();
    CHECK(crashes >= 3); // three within a minute
    CHECK(run.exitCode == 2);
    CHECK(run.errors == "Panel: the program has crashed three times within a minute and is not started "
                        "again (last exit code 0xC0000005)\r\n");
    const std::string told = "Panel has ended with exit code 0xC0000005 and is started again\r\n";
    CHECK(ReadBytes(trace).find(told + told) != std::string::npos);
    CHECK(RunPanel("--watch --exit-after 50").exitCode == 0); // ended by itself
}

TEST_SUITE_END();

TEST_CASE("a panel is checked without a window: code 0, or 1 with a line for each finding") {
    const TestFolder folder;
    const std::string panel = folder.Write("checked.panel", GOOD_PANEL);
    const Run alone = RunPanel(Quoted(panel) + " --check");
    CHECK(alone.exitCode == 1);
    CHECK(alone.output == "binding, Knob: function AMP1*gain: no such parameter\r\n");
    folder.Write("checked.devices", "AMP1*device=simulated\nAMP1*gain=float,0,1,0\n");
    const Run whole = RunPanel("--check " + Quoted(panel));
    CHECK(whole.exitCode == 0);
    CHECK(whole.output == "Nothing was found.\r\n");
    folder.Write("checked.devices",
                 "AMP1*device=simulated\nAMP1*gain=float,0,1,0\nAMP1*online=integer,0,1,0\n");
    const Run lost = RunPanel(Quoted(panel) + " --check");
    CHECK(lost.exitCode == 1);
    CHECK(lost.output.starts_with("device, AMP1: nothing heard for 5 s"));
    CHECK(lost.errors == "");
}
