#pragma once

#include "Panel/editing/PanelTarget.h"
#include "Panel/editing/Placement.h"
#include "Panel/editing/Recording.h"
#include "logic/editing/EditHistory.h"

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class HOSTINFO;
struct RENAMING;

// All changes that the user makes to a panel while it is edited go through here and can be undone, those made
// in its dialogs included. While it is operated nothing is recorded.
class PanelEdits {
public:
    // Tells the user something that went wrong. It returns at once.
    using Warning = std::function<void(const std::string& text)>;

    PanelEdits(HOSTINFO* root, Warning warn);
    ~PanelEdits();
    PanelEdits(const PanelEdits&) = delete;
    PanelEdits& operator=(const PanelEdits&) = delete;

    HOSTINFO* Root() const { return root_; }
    PanelTarget& Target() { return target_; }
    const logic::EditHistory& History() const { return history_; }

    // Runs an action that changes or destroys the objects and returns those that it created or put before
    // others; one step. When the objects' state before cannot be kept, the user is told and nothing is done.
    using Action = std::function<std::vector<HOSTINFO*>()>;
    void Do(const std::string& label, const std::vector<HOSTINFO*>& touched, const Action& action);
    void Delete(const std::vector<HOSTINFO*>& objects);
    // A property line, keyword=value, for an object.
    struct Line {
        HOSTINFO* object;
        std::string text;
    };
    // Applies the lines in order; one step. Number of lines that were taken; lines of objects that went
    // meanwhile are left out.
    int Apply(const std::string& label, const std::vector<Line>& lines);
    // Whether it was done. It is a step of its own even while the panel is operated, so that what can be
    // undone finds its objects.
    bool Rename(const RENAMING& renaming);
    // Applies the lines in order; one step, joined to the one before as those of CommitPlaces are. When any
    // of them is refused everything is as it was. The objects that refused theirs.
    std::vector<HOSTINFO*> ApplyAll(const std::string& label, const std::vector<Line>& lines, int key = 0);
    // The objects stand where they are to stand; where they stood before is given. Steps of the same key (not
    // 0) that follow each other quickly become one.
    void CommitPlaces(const std::string& label, const std::vector<Placement>& before, int key = 0);

    // The names of what is to be selected: what the step changed but for neighbours that it touched; nothing
    // when there was nothing to undo or redo.
    std::optional<std::vector<std::string>> Undo();
    std::optional<std::vector<std::string>> Redo();
    // The panel was written to its file.
    void MarkSaved();
    // The panel was opened with that many changes that its file does not hold.
    void MarkUnsaved(int changes);

    // Another number after each edit.
    unsigned Serial() const { return serial_; }
    // Number of steps that the file does not hold; 0 when the user has edited nothing since it was written.
    int UnsavedChanges() const;

private:
    static int Listen(int event, HOSTINFO* object, void* context) noexcept;
    static int CarryOut(const RENAMING& renaming, void* context) noexcept;
    int OnEdit(int event, HOSTINFO* object);
    void BeginDialogEdit(HOSTINFO* object);
    void EndDialogEdit(HOSTINFO* object);
    void ClipOverlaps(const std::vector<HOSTINFO*>& objects, Recording& recording);
    std::optional<std::vector<std::string>> Apply(const std::optional<logic::EditStep>& step, int direction);
    void Commit(logic::EditStep step, const std::string& label, int key = 0);
    void NotUndoable(const std::string& label, const std::exception& failure);
    void NoticeOthers();
    void ShowChanged();

    HOSTINFO* root_;
    Warning warn_;
    PanelTarget target_;
    logic::EditHistory history_;
    bool applying_ = false;               // what is reported meanwhile is part of a step already
    std::optional<Recording> dialogEdit_; // a property line is being applied
    int dialogDepth_ = 0;                 // such lines may lead to further ones
    bool wasFlagged_ = false;             // the object of that line, as changed
    unsigned serial_ = 0;
    int steps_ = 0;       // ahead of the file
    bool edited_ = false; // since the panel was written to its file
};
