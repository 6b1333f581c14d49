// The texts of objects in memory, and what of the changes to a panel goes into its undo history.

#include "Panel/editing/PanelEdits.h"
#include "Panelhost/Editing.h"
#include "Panelhost/PropertyTable.h"
#include "Panelhost/Root.h"
#include "tests/windows/PanelProgram.h"

namespace {

// A control of another maker, which writes its lines by itself: as many bytes of the handle as asked for,
// between two lines that go by a_WriteText.
struct Foreign : HOSTINFO {
    std::size_t bytes = 0;
    bool fails = false;

    void Save(HANDLE file) const {
        const std::string own = name + "*";
        const std::string lines(bytes, 'x');
        DWORD written = 0;
        a_WriteText(file, own.data(), own.size());
        WriteFile(file, lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
        a_WriteText(fails ? INVALID_HANDLE_VALUE : file, "=\r\n", 3);
    }
};

LRESULT CALLBACK ForeignProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* object = static_cast<Foreign*>(a_FromWindow(window));
    if (message == WM_CREATE) {
        object = new Foreign;
        a_InitializeHostinfo(window, object, reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        a_AddHostinfo(object->parent, object);
    } else if (message == CWM_SAVE && wParam == SAVE_PROPERTIES) {
        object->Save(reinterpret_cast<HANDLE>(lParam));
    } else if (message == WM_DESTROY) {
        delete object;
    }
    return message == CWM_SAVE ? 0 : DefWindowProcA(window, message, wParam, lParam);
}

Foreign& CreateForeign(const TestPanel& panel, const char* name) {
    WNDCLASSA foreign{};
    foreign.lpfnWndProc = ForeignProc;
    foreign.hInstance = GetModuleHandleA(nullptr);
    foreign.lpszClassName = "ForeignControl";
    RegisterClassA(&foreign); // refused from the second time on
    return static_cast<Foreign&>(*a_FromWindow(panel.Create("ForeignControl", name)));
}

// The edits of a panel, and what they told the user.
struct Edits {
    explicit Edits(const TestPanel& panel)
        : edits(panel.Root(), [this](const std::string& text) { told.push_back(text); }) {}

    std::vector<std::string> told;
    PanelEdits edits;
};

} // namespace

TEST_CASE("the text of an object is whole in memory, however and how much it writes, or there is none") {
    const TestPanel panel;
    panel.Create("KNOB", "Knob");
    Foreign& foreign = CreateForeign(panel, "F");
    std::string text;
    for (const std::size_t bytes : {0U, 1U, 65535U, 65536U, 65537U, 3000000U}) {
        CAPTURE(bytes);
        foreign.bytes = bytes;
        REQUIRE(a_ObjectText(&foreign, &text) == 1);
        CHECK(text == "F*" + std::string(bytes, 'x') + "=\r\n");
    }
    foreign.bytes = 5;
    const std::vector<HOSTINFO*> both{&foreign, &ObjectOf(panel.Find("Knob"))};
    std::vector<std::string> texts;
    REQUIRE(a_ObjectTexts(both, &texts) == 1);
    CHECK(texts[0] == "F*xxxxx=\r\n");
    CHECK(Contains(texts[1], "KNOB \"Knob\""));
    CHECK(Contains(texts[1], "Knob*connection=\r\n"));

    std::string pieces;
    CHECK(a_PanelText(panel.Root(), 0, 2, &pieces) == 2); // the root and the first control
    CHECK(a_PanelText(panel.Root(), 2, 2, &pieces) == 1);
    CHECK(a_PanelText(panel.Root(), 3, 2, &pieces) == 0);
    const TestFolder folder;
    REQUIRE(ph_SavePanel(panel.Root(), folder.Path("saved").c_str()) == 1);
    CHECK(pieces == ReadBytes(folder.Path("saved")));

    foreign.fails = true;
    CHECK(a_ObjectText(&foreign, &text) == 0);
    CHECK(text.empty());
    CHECK(a_ObjectTexts(both, &texts) == 0);
    CHECK(texts.empty());
    CHECK(a_PanelText(panel.Root(), 0, 9, &pieces) == -1);
    CHECK(a_ObjectText(&ObjectOf(panel.Find("Knob")), &text) == 1); // the failure was the other's
    CHECK(a_ObjectText(nullptr, &text) == 0);
}

TEST_CASE("what cannot be kept for an undo is not done, and the user is told") {
    const TestPanel panel;
    panel.Create("KNOB", "Knob");
    Foreign& foreign = CreateForeign(panel, "F");
    Edits user(panel);
    ph_SetMode(panel.Root(), 1);
    foreign.fails = true;
    user.edits.Delete({&ObjectOf(panel.Find("Knob")), &foreign});
    CHECK(panel.Find("Knob") != nullptr);
    CHECK(panel.Find("F") != nullptr);
    CHECK(user.told.size() == 1);
    CHECK(a_ApplyEdit(&foreign, "interval=1") == 0);
    CHECK(user.told.size() == 2);
    CHECK_FALSE(user.edits.History().CanUndo());
    CHECK_FALSE(a_IsChanged(panel.Root()));
    user.edits.Delete({&ObjectOf(panel.Find("Knob"))});
    CHECK(panel.Find("Knob") == nullptr);
    CHECK(user.edits.Undo());
    CHECK(panel.Find("Knob") != nullptr);
    CHECK(user.told.size() == 2);
}

TEST_CASE("the history holds what the user changes in the edit mode and nothing else") {
    const TestPanel panel;
    const HWND knob = panel.Create("KNOB", "Knob");
    HOSTINFO* object = &ObjectOf(knob);
    Edits user(panel);
    const logic::EditHistory& history = user.edits.History();
    const auto texts = [&] {
        std::string text;
        REQUIRE(a_PanelText(panel.Root(), 0, 9, &text) == 2);
        return text;
    };
    // While it is operated.
    for (int i = 0; i < 100; ++i) {
        Load(knob, "interval=" + std::to_string(i + 1));
        Load(panel.Window(), "title=" + std::to_string(i));
    }
    CHECK(a_ApplyEdit(object, "interval=7") == 1); // a dialog that was left open
    CHECK(Text(knob, "interval") == "7");
    CHECK(history.Bytes() == 0);
    CHECK(a_IsChanged(panel.Root()));
    CHECK(user.edits.UnsavedChanges() == 0);

    // While it is edited, by others and by the user.
    user.edits.MarkSaved();
    ph_SetMode(panel.Root(), 1);
    Load(knob, "interval=8");
    CHECK(history.Bytes() == 0);
    CHECK(a_IsChanged(panel.Root()));
    const std::string before = texts();
    CHECK(a_ApplyEdit(object, "interval=9") == 1);
    CHECK(a_ApplyEdit(panel.Root(), "title=new") == 1);
    CHECK(a_ApplyEdit(object, "interval=none") == 0);
    CHECK(user.edits.UnsavedChanges() == 2);
    CHECK(history.UndoLabel() == "Change of property");
    CHECK(user.edits.Undo());
    CHECK(user.edits.Undo());
    CHECK(texts() == before);
    CHECK_FALSE(history.CanUndo());
    CHECK(a_IsChanged(panel.Root())); // what another has set is not in the file

    // Without others the way back ends at what is saved.
    user.edits.MarkSaved();
    CHECK(a_ApplyEdit(object, "interval=10") == 1);
    CHECK(a_IsChanged(panel.Root()));
    CHECK(user.edits.Undo());
    CHECK_FALSE(a_IsChanged(panel.Root()));
    CHECK(user.edits.UnsavedChanges() == 0);
    CHECK(user.edits.Redo());
    Load(knob, "interval=11"); // by another, after an edit
    CHECK(user.edits.Undo());
    CHECK(a_IsChanged(panel.Root()));
}
