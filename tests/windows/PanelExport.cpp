// What Panel.exe writes about a panel: its picture and the list of its controls.

#include "Panel/export/ControlList.h"
#include "Panel/export/PanelPicture.h"
#include "Panelhost/Bitmap.h"
#include "base/Gdi.h"
#include "base/Handles.h"
#include "tests/windows/Buttons.h"
#include "tests/windows/PanelProgram.h"

#include <algorithm>

TEST_SUITE_BEGIN("PanelExport");

namespace {

// One of each way to be drawn: by itself, by the system, of parts, with a frame.
constexpr const char* MANY =
    "size=620,420\r\nbackground=.\\Controls\\Panel_dark.png\r\n"
    "control=0x00000000 KNOB \"Knob\" 0x50010000 20,20,67,67\r\nKnob*properties=0,100,30\r\n"
    "control=0x00000000 FADER \"Fader\" 0x50010000 90,20,114,180\r\nFader*properties=-80,18,-20\r\n"
    "control=0x00000000 BSTATIC \"Text\" 0x50000000 130,20,230,44\r\nText*value=Text <&>\r\n"
    "control=0x00000000 BEDIT \"Edit\" 0x50810000 130,60,230,84\r\nEdit*value=typed\r\n"
    "control=0x00000000 BCOMBOBOX \"Combo\" 0x50010003 130,100,250,188\r\nCombo*function=Knob;NONE*gain\r\n"
    "control=0x00000000 EQ \"Band\" 0x50010000 270,20,395,190\r\n"
    "control=0x00000000 MIXER \"Strip\" 0x50010000 420,20,468,272\r\n"
    "control=0x00000000 LED \"Lamp\" 0x50010000 40,80,56,96\r\nLamp*connection=Knob\r\n";

std::string PixelsOf(HDC dc, const RECT& place) {
    std::string pixels;
    for (int y = place.top; y < place.bottom; ++y) {
        for (int x = place.left; x < place.right; ++x) {
            const COLORREF colour = GetPixel(dc, x, y);
            pixels.append(reinterpret_cast<const char*>(&colour), 3);
        }
    }
    return pixels;
}

} // namespace

TEST_CASE("the picture of a panel is what its window shows, on the screen or beyond it") {
    PanelHere program(MANY);
    const TestFolder& folder = program.Folder();
    const HWND panel = program.Panel();
    const std::string file = folder.Path("seen.png");
    const std::string hidden = folder.Path("beyond.png");
    SetFocus(nullptr); // what has it looks otherwise
    RedrawWindow(program.Frame(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    REQUIRE(SavePanelPicture(panel, {620, 420}, file));
    const OSMIRBitmap* picture = a_GetBitmap3(file.c_str());
    REQUIRE(picture != nullptr);
    CHECK(picture->Width() == 620);
    CHECK(picture->Height() == 420);
    const WindowDc screen(panel, 0); // with its children
    for (const HWND child : ChildrenOf(panel)) {
        RECT place;
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, panel, reinterpret_cast<POINT*>(&place), 2);
        if (!IsShown(child)) {
            continue;
        }
        CAPTURE(TextOf(child));
        const std::string shown = PixelsOf(screen.Get(), place);
        const std::string saved = PixelsOf(picture->Dc(), place);
        std::size_t same = 0;
        for (std::size_t i = 0; i < shown.size(); ++i) {
            same += shown[i] == saved[i] ? 1 : 0;
        }
        CHECK(same * 100 >= shown.size() * 97);
    }
    a_UnregisterBitmap3(file.c_str());

    SetWindowPos(program.Frame(), nullptr, GetSystemMetrics(SM_CXSCREEN) + 50, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    REQUIRE(SavePanelPicture(panel, {620, 420}, hidden));
    CHECK(ReadBytes(hidden) == ReadBytes(file));
    CHECK_FALSE(SavePanelPicture(panel, {620, 420}, folder.Path("nowhere\\a.png")));

    for (const SIZE room : {SIZE{310, 1000}, SIZE{1000, 210}, SIZE{1000, 1000}}) {
        const std::string small = folder.Path(std::to_string(room.cx + room.cy) + ".png");
        REQUIRE(SavePanelThumbnail(panel, {620, 420}, room, small));
        const OSMIRBitmap* image = a_GetBitmap3(small.c_str());
        REQUIRE(image != nullptr);
        CHECK(image->Width() == std::min<LONG>(620, room.cy == 1000 ? room.cx : 310));
        CHECK(image->Height() == (image->Width() == 310 ? 210 : 420));
        a_UnregisterBitmap3(small.c_str());
    }
}

TEST_CASE("the list of a panel has every control, and tells what leads nowhere") {
    PanelHere program(MANY);
    const std::string page = ControlList(program.Root(), {"Hall <1>", "C:\\a.panel", "now"});
    CHECK(page.starts_with("<!DOCTYPE html>\n"));
    for (const char* part :
         {"<h1>Hall &lt;1&gt;</h1>", "C:\\a.panel, now: ", "of which 1 to nothing that is there",
          "<td>Knob</td><td>KNOB</td><td>20,20,67,67</td><td></td>",
          "<td>Combo</td><td>BCOMBOBOX</td><td>130,100,250,188</td><td>function: Knob (live)<br>"
          "<span class=\"dead\">function: NONE*gain (",
          "<td>Lamp</td><td>LED</td><td>40,80,56,96</td><td>connection: Knob (live)</td>",
          "<td>Strip*Fader</td>"}) {
        CAPTURE(std::string(part));
        CHECK(Contains(page, part));
    }
    const std::string file = program.Folder().Path("list.html");
    CHECK(SaveControlList(program.Root(), {"Hall <1>", "C:\\a.panel", "now"}, file));
    CHECK(ReadBytes(file) == page);
    CHECK_FALSE(SaveControlList(program.Root(), {}, program.Folder().Path("nowhere\\list.html")));
}

TEST_SUITE_END();
