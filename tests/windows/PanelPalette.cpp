// Controls that come from the palette: their look, and what is shown of it beforehand.

#include "Panel/editing/Icons.h"
#include "Panel/editing/NewControls.h"
#include "Panel/editing/Preview.h"
#include "Panelhost/Editing.h"
#include "tests/windows/PanelProgram.h"
#include "tests/windows/Resources.h"

#include <commctrl.h>

#include <map>

TEST_SUITE_BEGIN("PanelPalette");

namespace {

// Of a panel with a ground of that colour.
std::string PanelOn(const char* ground) {
    return "size=600,400\r\nbackground=" + std::string(ground) + "\r\n";
}

// Puts the control of a class into the middle of the panel, as Enter in the palette does.
void Choose(const PanelHere& program, const std::string& className) {
    const HWND palette = program.Part("PanelPalette");
    const HWND tree = program.Below(palette, WC_TREEVIEWA);
    for (HTREEITEM group = TreeView_GetRoot(tree); group; group = TreeView_GetNextSibling(tree, group)) {
        for (HTREEITEM item = TreeView_GetChild(tree, group); item;
             item = TreeView_GetNextSibling(tree, item)) {
            TVITEMA found{};
            found.mask = TVIF_PARAM;
            found.hItem = item;
            SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&found));
            if (className == reinterpret_cast<const CatalogueEntry*>(found.lParam)->className) {
                TreeView_SelectItem(tree, item);
                NMHDR chosen{tree, static_cast<UINT_PTR>(GetDlgCtrlID(tree)), static_cast<UINT>(NM_RETURN)};
                SendMessageA(palette, WM_NOTIFY, chosen.idFrom, reinterpret_cast<LPARAM>(&chosen));
                return;
            }
        }
    }
    FAIL("the palette lacks ", className);
}

// The pictures that lines of a panel file name.
std::vector<std::string> PicturesIn(const std::string& text) {
    std::vector<std::string> names;
    for (std::size_t at = 0; (at = text.find("*bitmap=", at)) != std::string::npos; ++at) {
        if (const std::string name = text.substr(at + 8, text.find("\r\n", at) - at - 8); !name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace

TEST_CASE(
    "every control of the table has a picture in palette and list, and one that is none of ours has not") {
    const PanelHere program(PanelOn("0x0028221e")); // which has the library of the controls
    CHECK(Catalogue().size() >= 45);
    for (const CatalogueEntry& entry : Catalogue()) {
        CAPTURE(std::string(entry.className));
        CHECK(HasPicture(entry) == (std::string(entry.className) != "LAMP"));
    }
    CHECK_FALSE(HasPicture({CatalogueGroup::Discrete, "OTHER", "Other", "Ot", {16, 16}, false}));
}

TEST_CASE("new controls have art that suits the ground, which the file holds and one step takes back") {
    std::map<std::string, std::vector<std::string>> onDark;
    for (const char* ground : {"0x0028221e", "0x00e8e8e8"}) {
        const PanelHere program(PanelOn(ground));
        program.Command(CMD_EDIT_MODE);
        const std::string empty = program.Saved();
        for (const CatalogueEntry& entry : Catalogue()) {
            if (ArtFor(entry.className, RGB(0, 0, 0)).empty()) {
                continue;
            }
            CAPTURE(std::string(entry.className));
            Choose(program, entry.className);
            const std::string saved = program.Saved();
            const std::vector<std::string> pictures = PicturesIn(saved);
            for (const std::string& picture : pictures) {
                CHECK_FALSE(ReadBytes(picture).empty()); // in the folder of the application
            }
            Preview preview;
            const SIZE size = preview.Make(entry, program.Root());
            const HOSTINFO* created =
                a_FromWindow(FindWindowExA(program.Panel(), nullptr, entry.className, nullptr));
            REQUIRE(created != nullptr);
            RECT place;
            GetWindowRect(created->window, &place);
            CHECK(size.cx == place.right - place.left);
            CHECK(size.cy == place.bottom - place.top);
            program.Command(CMD_UNDO);
            CHECK(program.Saved() == empty);
            if (const auto [row, isFirst] = onDark.try_emplace(entry.className, pictures); !isFirst) {
                const std::string name = entry.className;
                const bool differs = name == "KNOB" || name == "FADER" || name == "METER" ||
                                     name == "BBUTTON" || name == "BTRISTATEBUTTON" || name == "LED";
                CHECK((!differs || row->second != pictures));
                CHECK(row->second.size() == pictures.size());
            }
        }
    }
    CHECK(onDark.size() > 10);
}

TEST_CASE("a preview shows the control where it would stand, and leaves nothing behind") {
    const PanelHere program(PanelOn("0x0028221e"));
    const std::string left = LeftBehind(2, [&] {
        for (const CatalogueEntry& entry : Catalogue()) {
            Preview preview;
            const SIZE size = preview.Make(entry, program.Root());
            preview.Show(program.Panel(), {20, 30});
            RECT place;
            GetWindowRect(preview.Handle(), &place);
            MapWindowPoints(nullptr, program.Panel(), reinterpret_cast<POINT*>(&place), 2);
            CHECK((place.left == 20 && place.top == 30 && place.right == 20 + size.cx));
            preview.Drop();
            CHECK(preview.Handle() == nullptr);
        }
    });
    CHECK(left == "");
    CHECK(a_ListHostinfos(program.Root()).empty());
}

TEST_SUITE_END();
