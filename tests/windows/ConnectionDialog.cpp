// The dialog in which controls are bound: its search, and what it adds, moves and removes.

#include "tests/windows/LibraryDialogs.h"

TEST_SUITE_BEGIN("dialogs");

TEST_CASE("the search shows what leads to a match") {
    const Scene scene;
    const ConnectionDialog dialog(scene.Object());
    const std::pair<const char*, const char*> rows[] = {
        {"", "Devices|AMP1|Controls|Other|Outer|"},
        {"GAIN2", "Devices|AMP1|gain2|Controls|"},
        {"amp1 1", "Devices|AMP1|Controls|"},
        {"inner", "Devices|Controls|Outer|Inner|"},
        {"outer resol", "Devices|Controls|Outer|Inner|resolution|resolution|"},
        {"knob", "Devices|Controls|"}, // nobody is connected to himself
        {"", "Devices|AMP1|Controls|Other|Outer|"},
    };
    for (const auto& [search, shown] : rows) {
        INFO(search);
        dialog.Search(search);
        CHECK(dialog.Tree() == shown);
    }
    const auto amp = [&] { return TreeView_GetChild(dialog.tree, TreeView_GetRoot(dialog.tree)); };
    TreeView_Expand(dialog.tree, amp(), TVE_EXPAND); // what the user opened is open again behind a search
    dialog.Search("knob");
    CHECK(dialog.Status() == "Nothing found.");
    dialog.Search("");
    CHECK(dialog.Status().empty());
    CHECK(dialog.Tree() == "Devices|AMP1|online|gain1|gain2|Controls|Other|Outer|");
    TreeView_SelectItem(dialog.tree, amp());
    Press(dialog.tree, VK_LEFT);
    dialog.Search("knob");
    scene.panel.Create("KNOB", "New");
    dialog.Search("");
    SendMessageA(dialog.window, CWM_ATTACHDIALOG, 0, 0);
    CHECK(dialog.Tree() == "Devices|AMP1|Controls|Other|Outer|New|");

    HOSTINFO& outer = ObjectOf(scene.panel.Find("Outer"));
    const ConnectionDialog ofOuter(outer);
    CHECK(ofOuter.Tree() == "Devices|AMP1|Controls|Knob|Other|Outer|New|");
    ofOuter.Search("outer"); // holds somebody, yet is nobody's partner itself
    CHECK(ofOuter.Tree() == "Devices|Controls|Outer|");
    Press(ofOuter.tree, VK_DOWN);
    Press(ofOuter.tree, VK_DOWN);
    CHECK(!IsWindowEnabled(GetDlgItem(ofOuter.window, IDC_ADD)));
    Press(ofOuter.tree, VK_RETURN);
    CHECK(outer.connections.empty());
}

TEST_CASE("bindings are added, moved and removed by property lines") {
    const Scene scene;
    const ConnectionDialog dialog(scene.Object());
    const std::tuple<const char*, const char*, const char*, const char*, const char*> rows[] = {
        {"gain2", "AMP1*gain2", "", "AMP1*gain2 was added to the functions.",
         "Devices|AMP1|gain2!|Controls|"},
        {"gain2", "AMP1*gain2", "", "AMP1*gain2 is among the functions already.",
         "Devices|AMP1|gain2!|Controls|"},
        {"other", "AMP1*gain2", "Other", "Other was added to the connections.", "Devices|Controls|Other!|"},
        {"outer inner", "AMP1*gain2", "Other;Outer*Inner", "Outer*Inner was added to the connections.",
         "Devices|Controls|Outer|Inner!|"},
    };
    for (const auto& [search, functions, connections, status, tree] : rows) {
        INFO(search);
        dialog.Search(search);
        Press(dialog.tree, VK_RETURN);
        CHECK(a_BuildString(scene.Object().functions) == functions);
        CHECK(scene.Connections() == connections);
        CHECK(dialog.Status() == status);
        CHECK(dialog.Tree() == tree);
    }
    CHECK(SelectedRow(dialog.connections) == 1);
    const HTREEITEM shown = TreeView_GetSelection(dialog.tree);
    TreeView_Expand(dialog.tree, shown, TVE_EXPAND);
    RECT place{};
    TreeView_GetItemRect(dialog.tree, TreeView_GetChild(dialog.tree, shown), &place, TRUE);
    SendMessageA(dialog.tree, WM_LBUTTONDBLCLK, MK_LBUTTON, At(place.left + 1, place.top + 1));
    CHECK(scene.Connections() == "Other;Outer*Inner;Outer*Inner*bitmap");

    Load(scene.knob, "connection=Other;Outer*Inner*resolution;Gone");
    PumpAll();
    CHECK(IsChanged(scene.knob));
    CHECK(ListView_GetItemCount(dialog.connections) == 3);
    CHECK(Cell(dialog.connections, 2, 0) == "Gone  (not reachable)");

    const auto enabled = [&] { // Add, Remove, Up and Down
        std::string letters;
        for (const auto& [id, letter] :
             {std::pair(IDC_ADD, 'A'), {IDC_REMOVE, 'R'}, {IDC_UP, 'U'}, {IDC_DOWN, 'D'}}) {
            letters += IsWindowEnabled(GetDlgItem(dialog.window, id)) ? letter : ' ';
        }
        return letters;
    };
    SelectRow(dialog.connections, 2);
    CHECK(enabled() == "ARU ");
    Command(dialog.window, IDC_UP);
    CHECK(scene.Connections() == "Other;Gone;Outer*Inner*resolution");
    CHECK(dialog.Status() == "Gone was moved up.");
    CHECK(enabled() == "ARUD");
    Command(dialog.window, IDC_DOWN);
    CHECK(scene.Connections() == "Other;Outer*Inner*resolution;Gone");
    CHECK(dialog.Status() == "Gone was moved down.");
    CHECK(SelectedRow(dialog.connections) == 2);
    SelectRow(dialog.connections, 0);
    CHECK(enabled() == "AR D");
    SelectRow(dialog.functions, 0);
    CHECK(SelectedRow(dialog.connections) == -1);
    CHECK(enabled() == "AR  ");
    SelectRow(dialog.connections, 0);
    Command(dialog.window, IDC_REMOVE);
    CHECK(scene.Connections() == "Outer*Inner*resolution;Gone");
    CHECK(dialog.Status() == "Other was removed from the connections.");
    CHECK(ListView_GetItemCount(dialog.connections) == 2);

    ph_SetParameter(scene.panel.Root(), "AMP1*online", "0");
    SendMessageA(dialog.window, CWM_ATTACHDIALOG, 0, 0);
    dialog.Search("");
    CHECK(Cell(dialog.functions, 0, 0) == "AMP1*gain2  (not reachable)");
    CHECK(dialog.Tree() == "Devices|AMP1  (not reachable)|Controls|Other|Outer|");
}

TEST_SUITE_END();
