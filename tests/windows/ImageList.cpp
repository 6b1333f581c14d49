// What is particular to the image list.

#include "tests/windows/Buttons.h"
#include "tests/windows/PartedImage.h"

#include "Panelhost/Bitmap.h"

TEST_SUITE_BEGIN("ImageList");

namespace {

constexpr COLORREF PANEL = RGB(0x10, 0x20, 0x30);

// A panel in one colour with an image list over three files, 30 x 20 in red, green and blue.
struct Fixture {
    Fixture() {
        Load(panel.Window(), "background=0x00302010");
        files = folder.Write("r.bmp", BitmapFile(30, 20, 0xFF0000)) + ";" +
                folder.Write("g.bmp", BitmapFile(30, 20, 0x00FF00)) + ";" +
                folder.Write("b.bmp", BitmapFile(30, 20, 0x0000FF));
        list = panel.Create("BIMAGELIST", "List");
    }
    // The picture in the middle: r, g, b or - for none.
    char Shown() const {
        RECT client{};
        GetClientRect(list, &client);
        const COLORREF colour = Picture(list).At(client.right / 2, client.bottom / 2);
        return colour == RGB(255, 0, 0)   ? 'r'
               : colour == RGB(0, 255, 0) ? 'g'
               : colour == RGB(0, 0, 255) ? 'b'
               : colour == PANEL          ? '-'
                                          : '?';
    }

    TestPanel panel{TestPanel::Visible};
    TestFolder folder;
    std::string files;
    HWND list = nullptr;
};

} // namespace

TEST_CASE_FIXTURE(Fixture, "a number picks one of several files, or the picture for all others") {
    CHECK(Shown() == '-');
    CHECK(SizeText(list) == "100 x 40");
    REQUIRE(Load(list, "images=" + files) == 1);
    CHECK(SizeText(list) == "30 x 20");
    const struct {
        const char* line;
        char shown;
    } rows[] = {{"value=0", 'r'},   {"value=2", 'b'},    {"value=3", '-'},  {"value=-1", '-'},
                {"default=1", 'g'}, {"first=10", '-'},   {"value=10", 'r'}, {"default=12", 'r'},
                {"value=0", 'b'},   {"default=13", '-'}, {"default=", '-'}};
    for (const auto& row : rows) {
        INFO(std::string(row.line));
        CHECK(Load(list, row.line) == 1);
        CHECK(Shown() == row.shown);
    }
    TraceCapture trace;
    CHECK(Load(list, "images=" + files + ";.\\Controls\\Nothing.bmp") == 0);
    CHECK(trace.CountContaining("Nothing.bmp is no image") == 1);
    CHECK(Text(list, "images") == files);
    CHECK(Load(list, "images=") == 1);
}

TEST_CASE_FIXTURE(Fixture, "the frames of one file, sized by a frame or stretched") {
    REQUIRE(Load(list, "bitmap=" + folder.Write("two.bmp", PartedImage(60, 10, 0xFF0000, 0x00FF00))) == 1);
    CHECK(SizeText(list) == "60 x 10");
    REQUIRE(Load(list, "frames=2") == 1);
    CHECK(SizeText(list) == "30 x 10");
    CHECK(Shown() == 'r');
    Load(list, "value=1");
    CHECK(Shown() == 'g');
    REQUIRE(Load(list, "images=" + files) == 1); // these come first
    Load(list, "value=2");
    CHECK(Shown() == 'b');
    SetWindowPos(list, nullptr, 0, 0, 90, 80, SWP_NOMOVE | SWP_NOZORDER);
    CHECK(Picture(list).At(5, 5) == PANEL); // in the middle
    CHECK(Load(list, "stretch=1") == 1);
    CHECK(SizeText(list) == "90 x 80");
    CHECK(Picture(list).At(2, 77) == RGB(0, 0, 255));
    // A saved panel has the size that it was saved with.
    const TestPanel second;
    REQUIRE(second.Open(panel.Saved()) >= 0);
    CHECK(SizeText(second.Find("List")) == "90 x 80");
    CHECK(Load(list, "stretch=0") == 1);
    CHECK(SizeText(list) == "30 x 20");
    for (const auto& [width, height] : {std::pair(0, 0), {1, 1}, {4000, 1}, {1, 4000}}) {
        for (const char* stretch : {"stretch=1", "stretch=0"}) {
            Load(list, stretch);
            SetWindowPos(list, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
            const Picture picture(list);
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "the panel shows through a picture that is transparent, stretched or not") {
    // 32 bits a pixel, the left half clear and the right half white.
    std::string bytes = BitmapFile(1, 1, 0).substr(0, 54);
    bytes[18] = bytes[22] = 8;
    bytes[28] = 32;
    for (int pixel = 0; pixel < 64; ++pixel) {
        bytes += pixel % 8 < 4 ? std::string(4, '\0') : std::string(4, '\xFF');
    }
    for (const auto& [at, size] : {std::pair(std::size_t{2}, bytes.size()), {34, bytes.size() - 54}}) {
        bytes[at] = static_cast<char>(size & 255);
        bytes[at + 1] = static_cast<char>(size >> 8);
    }
    REQUIRE(Load(list, "bitmap=" + folder.Write("clear.bmp", bytes)) == 1);
    CHECK(SizeText(list) == "8 x 8");
    for (const char* stretch : {"stretch=0", "stretch=1"}) {
        INFO(std::string(stretch));
        Load(list, stretch);
        SetWindowPos(list, nullptr, 0, 0, stretch[8] == '1' ? 80 : 8, 8, SWP_NOMOVE | SWP_NOZORDER);
        const Picture picture(list);
        const int last = stretch[8] == '1' ? 79 : 7;
        CHECK(picture.At(0, 4) == PANEL);
        CHECK(picture.At(last, 4) == RGB(255, 255, 255));
    }
}

TEST_CASE_FIXTURE(Fixture, "a click sends the next number, with Shift the one before") {
    Recorder target{panel, "Target"};
    LoadLines(list, "interval=100000|connection=Target|images=" + files);
    Click(list); // it only shows
    CHECK(target.Take().empty());
    LoadLines(list, "step=1|first=1|value=1");
    target.Take();
    const auto click = [&](WPARAM keys, UINT down = WM_LBUTTONDOWN) {
        SendMessageA(list, down, MK_LBUTTON | keys, At(5, 5));
        SendMessageA(list, WM_LBUTTONUP, keys, At(5, 5));
        return target.Take() + " " + Shown();
    };
    CHECK(click(0) == "2 g");
    CHECK(click(0, WM_LBUTTONDBLCLK) == "3 b"); // the second of two quick ones
    CHECK(click(0) == "1 r");
    CHECK(click(MK_SHIFT) == "3 b");
    Load(list, "wrap=0");
    CHECK(click(0) == " b");
    CHECK(click(MK_SHIFT) == "2 g");
    SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
    SetCapture(panel.Window()); // taken away: nothing is sent
    ReleaseCapture();
    SendMessageA(list, WM_LBUTTONUP, 0, At(5, 5));
    CHECK(target.Take().empty());
    target.onSet = [&] { DestroyWindow(list); }; // by what its own press sends
    SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, At(5, 5));
    SendMessageA(list, WM_LBUTTONUP, 0, At(5, 5));
    CHECK_FALSE(IsWindow(list));
    CHECK(target.Take() == "3");
}

TEST_CASE_FIXTURE(Fixture, "a number that shows the same is not painted, and pictures are held once") {
    LoadLines(list, "images=" + files);
    UpdateWindow(list);
    for (const auto& [line, isPainted] :
         {std::pair("value=7", true), {"value=8", false}, {"value=8", false}, {"value=1", true}}) {
        Load(list, line);
        CHECK((GetUpdateRect(list, nullptr, FALSE) != 0) == isPainted);
        UpdateWindow(list);
    }
    const int before = a_BitmapCount();
    for (int i = 0; i < 200; ++i) {
        Load(panel.Create("BIMAGELIST", "More"), "images=" + files);
    }
    CHECK(a_BitmapCount() == before);
    for (HWND control : ChildrenOf(panel.Window())) {
        DestroyWindow(control);
    }
    CHECK(a_BitmapCount() == before - 3);
}

TEST_SUITE_END();
