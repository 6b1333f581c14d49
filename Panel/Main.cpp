// Panel.exe: opens, operates and saves panels of controls.

#include "Panel/ControlLibrary.h"
#include "Panel/FrameWindow.h"
#include "Panel/MessageLoop.h"
#include "Panel/common/CommandLine.h"
#include "Panel/common/Report.h"
#include "Panel/common/VersionText.h"
#include "Panel/lists/TraceLog.h"
#include "Panel/operating/Watch.h"
#include "Panelhost/PanelCheck.h"
#include "Panelhost/Trace.h"
#include "base/FileNames.h"

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include <cstdlib>
#include <exception>
#include <memory>

namespace {

struct LocalFreer {
    void operator()(wchar_t** memory) const { LocalFree(memory); }
};

int ReportCheck(const std::list<PANELFINDING>& findings) {
    const std::string report = findings.empty() ? "Nothing was found.\r\n" : a_FindingsText(findings);
    const bool isWritten = WriteStandard(STD_OUTPUT_HANDLE, report);
    return !isWritten ? EXIT_NOT_DONE : findings.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

int Run(const CommandLine& commandLine, const Reporter& reporter, int showCommand) {
    const INITCOMMONCONTROLSEX classes{sizeof classes,
                                       ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&classes);

    // Goes last: it keeps lines that are traced while everything else goes.
    TraceLog log;
    if (!commandLine.traceFile.empty() && a_SetTraceFile(commandLine.traceFile.c_str()) == 0) {
        reporter.Fail("cannot write the trace file " + commandLine.traceFile);
        return EXIT_NOT_DONE;
    }

    std::string error;
    ControlLibrary library; // must outlive every control
    if (!library.Load(error)) {
        reporter.Fail(error);
        return EXIT_NOT_DONE;
    }

    library.LoadFurther(WideFileName(ModuleFolder(nullptr)) + L"Libraries\\");

    FrameWindow frame(commandLine, reporter, library, log);
    const bool mayRecover = !commandLine.check; // the file is meant
    if (!frame.Create(error) ||
        (!(mayRecover && frame.Recover()) && !frame.OpenPanel(commandLine.panelFile, error))) {
        reporter.Fail(error);
        return EXIT_NOT_DONE;
    }
    if (commandLine.check) {
        return ReportCheck(frame.Check());
    }
    frame.Start(showCommand);
    return RunMessageLoop(frame);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int showCommand) {
    Reporter reporter(true);
    try {
        CommandLine commandLine;
        std::string error;
        // Names in the file system have characters that the C library's arguments lack.
        int count = 0;
        const std::unique_ptr<wchar_t*, LocalFreer> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
        const bool understood =
            arguments && ParseCommandLine(count - 1, arguments.get() + 1, commandLine, error);
        reporter = Reporter(commandLine.unattended);
        if (!understood) {
            reporter.Fail(error);
            return EXIT_NOT_DONE;
        }
        if (commandLine.help || commandLine.version) {
            const std::string text = commandLine.help ? USAGE : "Panel " + VersionText();
            return WriteStandard(STD_OUTPUT_HANDLE, text + "\r\n") ? EXIT_SUCCESS : EXIT_NOT_DONE;
        }
        if (commandLine.watch) {
            return Watch(commandLine, count - 1, arguments.get() + 1, reporter);
        }
        if (IsWatched()) {
            _set_error_mode(_OUT_TO_STDERR); // no message box of the C library
        }
        const int exitCode = Run(commandLine, reporter, showCommand);
        a_SetTraceFile(nullptr);
        return exitCode;
    } catch (const std::exception& failure) {
        reporter.Fail(failure.what());
        return EXIT_NOT_DONE;
    }
}
