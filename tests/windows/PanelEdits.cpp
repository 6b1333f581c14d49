// The texts of objects in memory, and what of the changes to a panel goes into its undo history.

#include "Panel/editing/PanelEdits.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Root.h"
#include "tests/windows/OwnControl.h"
#include "tests/windows/PanelProgram.h"

namespace {

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
    HOSTINFO* knob = &ObjectOf(panel.Create("KNOB", "Knob"));
    const OwnControl registered(OwnControl::Saves);
    HOSTINFO* own = &ObjectOf(panel.Create(OwnControl::CLASS, "F"));
    const std::string header = "control=0x00000000 OWNCONTROL \"F\" 0x40000000 0,0,10,10\r\n";
    std::string text;
    for (const DWORD bytes : {1U, 65535U, 65536U, 65537U, 3000000U}) {
        CAPTURE(bytes);
        const OwnControl writing(OwnControl::Saves, bytes);
        REQUIRE(a_ObjectText(own, &text) == 1);
        CHECK(text == header + std::string(bytes, 'x') + "=\r\nF*connection=\r\n");
    }
    ph_RegisterControlClass(OwnControl::CLASS);
    std::vector<std::string> texts;
    REQUIRE(a_ObjectTexts({own, knob}, &texts) == 1);
    CHECK(texts[0] == header + "F*connection=\r\n");
    CHECK(Contains(texts[1], "KNOB \"Knob\""));
    CHECK(Contains(texts[1], "Knob*connection=\r\n"));

    std::string pieces;
    for (const auto& [first, made] : {std::pair(0, 2), {2, 1}, {3, 0}}) { // the root and the first control
        CHECK(a_PanelText(panel.Root(), first, 2, &pieces) == made);
    }
    const TestFolder folder;
    REQUIRE(ph_SavePanel(panel.Root(), folder.Path("saved").c_str()) == 1);
    CHECK(pieces == ReadBytes(folder.Path("saved")));

    const OwnControl failing(OwnControl::Refuses);
    CHECK(a_ObjectText(own, &text) == 0);
    CHECK(text.empty());
    CHECK(a_ObjectTexts({own, knob}, &texts) == 0);
    CHECK(texts.empty());
    CHECK(a_PanelText(panel.Root(), 0, 9, &pieces) == -1);
    CHECK(a_ObjectText(knob, &text) == 1); // the failure was the other's
    CHECK(a_ObjectText(nullptr, &text) == 0);

    // What cannot be kept for an undo is not done, and the user is told.
    Edits user(panel);
    ph_SetMode(panel.Root(), 1);
    user.edits.Delete({knob, own});
    CHECK(panel.Find("Knob") != nullptr);
    CHECK(user.told.size() == 1);
    CHECK(a_ApplyEdit(own, "interval=1") == 0);
    CHECK(user.told.size() == 2);
    CHECK_FALSE(user.edits.History().CanUndo());
    CHECK_FALSE(a_IsChanged(panel.Root()));
    user.edits.Delete({knob});
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
    Load(knob, "interval=6");
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
