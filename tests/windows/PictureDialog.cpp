// The dialog in which pictures are chosen, and pictures that are dropped.

#include "Panelhost/Bitmap.h"
#include "Panelhost/Dialogs.h"
#include "base/Gdi.h"
#include "tests/windows/LibraryDialogs.h"

namespace {

std::function<bool()> attempt; // made again and again while a dialog is open, until it succeeds

void CALLBACK Try(HWND, UINT, UINT_PTR timer, DWORD) {
    if (attempt()) {
        KillTimer(nullptr, timer);
    }
}

} // namespace

// Answers the dialog that opens next, when the pictures are there.
void AnswerWhenLoaded(int expected, const std::function<void(HWND, HWND)>& answer) {
    const DWORD start = GetTickCount();
    attempt = [=] {
        const HWND dialog = FindWindowA("#32770", "Select a Picture");
        const HWND list = GetDlgItem(dialog, IDC_PICTURES);
        if (list == nullptr || (ListView_GetItemCount(list) < expected && GetTickCount() - start < 30000)) {
            return false;
        }
        answer(dialog, list);
        return true;
    };
    SetTimer(nullptr, 0, 5, Try);
}

std::string ChoosePicture(const std::string& folder, const char* prefix, int expected,
                          const std::function<void(HWND, HWND)>& answer) {
    AnswerWhenLoaded(expected, answer);
    char name[MAX_PATH] = "untouched";
    const int chosen = a_PopupBitmapView(nullptr, folder.c_str(), prefix, name);
    CHECK((chosen == 1) == (*name != '\0'));
    return name;
}

TEST_SUITE_BEGIN("dialogs");

TEST_CASE("thumbnails show the whole picture, in its shape and over white") {
    const TestFolder folder;
    std::string two = BitmapFile(128, 128, 0x00FF00); // lower half green and black by turns, upper one blue
    for (std::size_t i = 0; i < 128 * 128; ++i) {
        two.replace(54 + 3 * i, 3,
                    i >= 64 * 128 ? std::string("\xFF\0\0", 3)
                    : i % 2 == 0  ? std::string(3, '\0')
                                  : std::string("\0\xFF\0", 3));
    }
    folder.Write("1.bmp", two);
    folder.Write("2.bmp", BitmapFile(200, 50, 0xFF0000));
    folder.Write("3.bmp", BitmapFile(3, 200, 0xFF0000));
    folder.Write("4.bmp", BitmapFile(20, 10, 0xFF0000));
    folder.Write("5.png", ReadBytes("Controls\\MiniEdit.png")); // its corners are round
    const std::tuple<int, int, int, COLORREF> rows[] = {
        {0, 0, 0, 0xFF0000},   {0, 63, 31, 0xFF0000}, {0, 0, 32, 0x007F00},  {0, 63, 63, 0x007F00},
        {1, 0, 24, 0x0000FF},  {1, 63, 39, 0x0000FF}, {1, 30, 23, 0xFFFFFF}, {1, 30, 40, 0xFFFFFF},
        {2, 31, 0, 0x0000FF},  {2, 31, 63, 0x0000FF}, {2, 30, 30, 0xFFFFFF}, {2, 32, 30, 0xFFFFFF},
        {3, 22, 27, 0x0000FF}, {3, 41, 36, 0x0000FF}, {3, 21, 30, 0xFFFFFF}, {3, 30, 37, 0xFFFFFF},
        {4, 8, 16, 0xFFFFFF},  {4, 9, 16, 0xE3DFDC},  {4, 32, 32, 0x171310}};
    const std::string base = folder.Path("");
    ChoosePicture(base, "", 5, [&](HWND dialog, HWND list) {
        const auto images =
            reinterpret_cast<HIMAGELIST>(SendMessageA(list, LVM_GETIMAGELIST, LVSIL_NORMAL, 0));
        std::uint32_t* bits = nullptr;
        const Bitmap bitmap(CreatePixels(64, 64, &bits));
        const MemoryDc dc(bitmap.get());
        for (const auto& [image, x, y, colour] : rows) {
            CAPTURE(image);
            CAPTURE(x);
            CAPTURE(y);
            ImageList_Draw(images, image, dc.Get(), 0, 0, ILD_NORMAL);
            CHECK(GetPixel(dc.Get(), x, y) == colour);
        }
        CHECK(TextOf(GetDlgItem(dialog, IDC_PICTURE_NAME)).ends_with("1.bmp   128 x 128 pixels"));
        Press(list, VK_DOWN);
        Press(list, VK_RIGHT);
        CHECK(SelectedRow(list) > 0);
        Command(dialog, IDCANCEL);
    });
}

TEST_CASE("pictures are chosen by key and double click") {
    const TestFolder folder;
    const std::string marine = folder.Write("A_marine.bmp", BitmapFile(3, 200, 0x203040));
    folder.Write("a_broken.bmp", "no picture");
    folder.Write("a_note.txt", "no picture");
    folder.Write("B_other.bmp", BitmapFile(2, 2, 0));
    folder.Write("A_Zinc.BMP", BitmapFile(20, 20, 0x808080));
    const std::string base = marine.substr(0, marine.rfind('\\'));
    const auto press = [](int id) { return [id](HWND dialog, HWND) { Command(dialog, id); }; };

    CHECK(ChoosePicture(base, "A_", 2, press(IDOK)) == marine);
    CHECK(ChoosePicture(base, "A_", 2, press(IDCANCEL)).empty());
    CHECK(ChoosePicture(base, "none", 0, press(IDCANCEL)).empty());
    CHECK(ChoosePicture("Controls", "KNOB_amber", 1, press(IDOK)) == ".\\Controls\\KNOB_amber.bmp");
    const std::string chosen = ChoosePicture(base, "a_", 2, [](HWND, HWND list) {
        CHECK(ListView_GetItemCount(list) == 2);
        Press(list, VK_RIGHT);
        Press(list, VK_RETURN);
    });
    CHECK(chosen == base + "\\A_Zinc.BMP");
    for (const std::string present : {".\\Controls\\KNOB_blue.bmp", ".\\controls\\knob_AMBER.bmp", ""}) {
        AnswerWhenLoaded(2, press(IDOK));
        const std::string kept = a_ChoosePicture(nullptr, "KNOB_", present);
        CHECK((present.empty() || lstrcmpiA(kept.c_str(), present.c_str()) == 0));
        CHECK(kept.starts_with(".\\Controls\\KNOB_"));
    }
    CHECK(a_BitmapCount() == 0);
    char name[MAX_PATH];
    CHECK(a_PopupBitmapView(nullptr, nullptr, "A_", name) == 0);
}

TEST_CASE("a dropped picture becomes the bitmap of a control that has one") {
    const TestPanel panel;
    const TestFolder folder;
    const std::string outside = folder.Write("face.bmp", BitmapFile(12, 12, 0x112233));
    const std::string inside = ProgramFolder() + "controls\\KNOB_blue.bmp";
    HOSTINFO* knob = &ObjectOf(panel.Create("KNOB", "Knob"));
    const auto drop = [](HOSTINFO* object, const std::string& file) {
        return a_DropBitmap(object, MakeDrop(file + '\0' + "second.bmp" + '\0'));
    };
    CHECK(drop(knob, outside) == 1);
    CHECK(Text(knob->window, "bitmap") == outside);
    CHECK(drop(knob, inside) == 1);
    CHECK(drop(knob, outside + "x") == 0);
    CHECK(drop(nullptr, outside) == 0);
    CHECK(drop(panel.Root(), outside) == 0);
    CHECK(a_DropBitmap(knob, nullptr) == 0);
    CHECK(Text(knob->window, "bitmap") == ".\\controls\\KNOB_blue.bmp");
}

TEST_SUITE_END();
