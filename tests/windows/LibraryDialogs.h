#pragma once

#include "Panelhost/Dialogs.h"
#include "Panelhost/dialogs/resource.h"
#include "tests/windows/FormPanels.h"
#include "tests/windows/ListRows.h"

#include <functional>

// What the tests of the library's own dialogs share.

void Command(HWND dialog, int id);

// The generic dialog of an object.
struct PropertyDialog {
    explicit PropertyDialog(HOSTINFO& object)
        : window(a_PropertyDlg(1, object.parent, &object)), list(GetDlgItem(window, IDC_PROPERTY_LIST)) {}

    HWND Edit() const { return FindWindowExA(list, nullptr, "EDIT", nullptr); }
    std::string Value(const std::string& keyword) const { return Cell(list, RowOf(list, keyword), 1); }
    std::string Note(const std::string& keyword) const { return Cell(list, RowOf(list, keyword), 2); }
    void Type(const std::string& keyword, const std::string& text) const {
        SelectRow(list, RowOf(list, keyword));
        Press(list, VK_F2);
        REQUIRE(Edit() != nullptr);
        SetWindowTextA(Edit(), text.c_str());
    }

    HWND window;
    HWND list;
};

struct ConnectionDialog {
    explicit ConnectionDialog(HOSTINFO& object)
        : window(a_ConnectionDlg(1, object.window, &object)),
          tree(GetDlgItem(window, IDC_AVAILABLE)),
          functions(GetDlgItem(window, IDC_FUNCTIONS)),
          connections(GetDlgItem(window, IDC_CONNECTIONS)) {}

    // What the tree shows from an item on, owners before what they hold, each followed by "|", by "!|" when
    // it is bound.
    std::string Tree(HTREEITEM item) const {
        if (item == nullptr) {
            return {};
        }
        char text[128] = "";
        TVITEMA entry{};
        entry.mask = TVIF_TEXT | TVIF_STATE;
        entry.stateMask = TVIS_BOLD;
        entry.hItem = item;
        entry.pszText = text;
        entry.cchTextMax = sizeof text;
        TreeView_GetItem(tree, &entry);
        std::string shown = text;
        shown += (entry.state & TVIS_BOLD) != 0 ? "!|" : "|";
        shown += Tree(TreeView_GetChild(tree, item));
        return shown + Tree(TreeView_GetNextSibling(tree, item));
    }
    std::string Tree() const { return Tree(TreeView_GetRoot(tree)); }
    void Search(const char* text) const { SetDlgItemTextA(window, IDC_SEARCH, text); }
    std::string Status() const { return TextOf(GetDlgItem(window, IDC_STATUS)); }

    HWND window;
    HWND tree;
    HWND functions;
    HWND connections;
};

// Devices with two parameters, and a panel of knobs of which one holds another.
struct Scene {
    Scene() {
        panel.Declare(
            "AMP1*device=simulated\nAMP1*gain1=float,-80,18,-20,dB\nAMP1*gain2=float,-80,18,-20,dB\n");
        knob = panel.Create("KNOB", "Knob");
        panel.Create("KNOB", "Other");
        HWND outer = panel.Create("KNOB", "Outer");
        CreateControl("KNOB", "Inner", outer, &ObjectOf(outer));
    }
    HOSTINFO& Object() const { return ObjectOf(knob); }
    std::string Connections() const { return a_BuildString(Object().connections); }

    TestPanel panel{TestPanel::Visible};
    HWND knob;
};

// Answers the picture dialog once all of its pictures are there; the file that was chosen.
std::string ChoosePicture(const std::string& folder, const char* prefix, int expected,
                          const std::function<void(HWND dialog, HWND list)>& answer);
