// Libraries of controls beside that of the program: the example for their makers.

#include "Panel/editing/Catalogue.h"
#include "base/FileNames.h"
#include "tests/windows/PanelProgram.h"

#include <algorithm>

TEST_SUITE_BEGIN("PanelLibraries");

namespace {

constexpr const char* PANEL = "size=300,200\r\n"
                              "control=0x00000000 EXAMPLELAMP \"Lamp\" 0x50000000 10,10,34,34\r\n"
                              "Lamp*function=AMP1*gain\r\n"
                              "Lamp*interval=0\r\n"
                              "Lamp*threshold=3\r\n"
                              "Lamp*connection=\r\n"
                              "control=0x00000000 EXAMPLELAMP \"Alone\" 0x50000000 50,10,74,34\r\n"
                              "Alone*function=\r\n"
                              "Alone*interval=200\r\n"
                              "Alone*threshold=1\r\n"
                              "Alone*connection=Lamp\r\n";
constexpr COLORREF LIT = RGB(80, 220, 120);
constexpr COLORREF DARK = RGB(40, 60, 48);

std::wstring Examples() {
    return WideFileName(ProgramFolder()) + L"..\\examples\\";
}

COLORREF ColourOf(HWND lamp) {
    return Picture(lamp).At(12, 12);
}

} // namespace

TEST_CASE("the libraries of a folder are loaded in order, and one that is none is traced") {
    const TestFolder folder;
    folder.Write("Broken.dll", "no library");
    CopyFileW((Examples() + L"Lamp.dll").c_str(), WideFileName(folder.Path("Lamp.dll")).c_str(), TRUE);
    const TraceCapture trace;
    {
        ControlLibrary libraries;
        CHECK(libraries.LoadFurther(WideFileName(folder.Path(""))) == 1);
        CHECK(trace.CountContaining("Broken.dll was not loaded: ") == 1);
        CHECK(libraries.LoadFurther(WideFileName(folder.Path("nowhere\\"))) == 0);
        CHECK(GetModuleHandleA(folder.Path("Lamp.dll").c_str()) != nullptr);
        CHECK(ph_RegisterControlClass("EXAMPLELAMP") == 1);
        CHECK(ph_UnregisterControlClass("EXAMPLELAMP") == 1);
    }
    CHECK(GetModuleHandleA(folder.Path("Lamp.dll").c_str()) == nullptr);
    CHECK(ph_UnregisterControlClass("EXAMPLELAMP") == 0); // it has gone with its library
}

TEST_CASE("a control of another library stands in the palette, follows its device, and is edited and saved") {
    ControlLibrary libraries;
    REQUIRE(libraries.LoadFurther(Examples()) == 1);
    {
        PanelHere program("size=10,10\r\n");
        program.Folder().Write("lamp.devices", "AMP1*device=simulated\r\nAMP1*gain=float,0,10,2,dB\r\n");
        REQUIRE(program.Open(program.Folder().Write("lamp.panel", PANEL)));
        const auto all = Catalogue();
        CHECK(std::any_of(all.begin(), all.end(), [](const CatalogueEntry& entry) {
            return std::string(entry.className) == "EXAMPLELAMP" && entry.group == CatalogueGroup::Discrete &&
                   std::string(entry.name) == "Example lamp";
        }));
        const HWND lamp = ph_Find(program.Root(), "Lamp");
        REQUIRE(lamp != nullptr);
        program.Tick();
        CHECK(Value(lamp) == 2);
        CHECK(ColourOf(lamp) == DARK);
        ph_SetParameter(program.Root(), "AMP1*gain", "3");
        program.Tick();
        CHECK(ColourOf(lamp) == LIT);
        const HWND alone = ph_Find(program.Root(), "Alone");
        CHECK(Await([&] { return program.Tick(), Value(alone) == 3; }));
        CHECK(ColourOf(alone) == LIT);

        // What is refused changes nothing; from a file a keyword that it does not know changes nothing,
        // either.
        for (const char* line : {"threshold=high", "interval=-1", "interval=", "value=1 2"}) {
            CAPTURE(std::string(line));
            CHECK(Load(lamp, line) == 0);
        }
        CHECK(Load(lamp, "unknown=7", LOAD_FROM_FILE) == 0);
        CHECK(Value(lamp) == 3);
        CHECK(program.Saved() == PANEL);

        program.Command(CMD_EDIT_MODE);
        program.Drag({20, 20}, {120, 60});
        CHECK(Contains(program.Saved(), "EXAMPLELAMP \"Lamp\" 0x50000000 112,48,136,72\r\n"));
        CHECK(Load(lamp, "threshold=4") == 1);
        CHECK(IsChanged(lamp));
        CHECK(ColourOf(lamp) == DARK);
        program.Click({120, 60});
        program.Command(CMD_DELETE);
        CHECK(ph_Find(program.Root(), "Lamp") == nullptr);
        program.Command(CMD_UNDO);
        CHECK(Text(ph_Find(program.Root(), "Lamp"), "threshold") == "4");
    }
    CHECK(a_HostinfoCount() == 0);
}

TEST_SUITE_END();
