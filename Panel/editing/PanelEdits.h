#pragma once

#include "Panel/editing/PanelTarget.h"
#include "Panel/editing/Placement.h"
#include "logic/EditHistory.h"

#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

class HOSTINFO;

// What an action changes on a panel, found by comparing property texts before and after.
class Recording {
public:
    explicit Recording(PanelTarget& target);
    // The object, with all that is inside it, may change or go from now on.
    void Touch(const std::string& name);
    // The object has come. The step ends here.
    void Created(const std::string& name);
    logic::EditStep Finish();

private:
    void Add(const std::string& name, bool existed);

    PanelTarget& target_;
    logic::EditStep step_;
    std::vector<std::string> touched_;
    std::unordered_set<std::string> known_;
};

// All changes to a panel go through here and can be undone, those made in its dialogs included.
class PanelEdits {
public:
    explicit PanelEdits(HOSTINFO* root);
    ~PanelEdits();
    PanelEdits(const PanelEdits&) = delete;
    PanelEdits& operator=(const PanelEdits&) = delete;

    HOSTINFO* Root() const { return root_; }
    PanelTarget& Target() { return target_; }
    const logic::EditHistory& History() const { return history_; }

    // Runs an action that changes or destroys the objects and returns those that it created or put before
    // others; one step.
    using Action = std::function<std::vector<HOSTINFO*>()>;
    void Do(const std::string& label, const std::vector<HOSTINFO*>& touched, const Action& action);
    void Delete(const std::vector<HOSTINFO*>& objects);
    // The objects stand where they are to stand; where they stood before is given. Steps of the same key (not
    // 0) that follow each other quickly become one.
    void CommitPlaces(const std::string& label, const std::vector<Placement>& before, int key = 0);

    // The names of what is to be selected: what the step changed but for neighbours that it touched; nothing
    // when there was nothing to undo or redo.
    std::optional<std::vector<std::string>> Undo();
    std::optional<std::vector<std::string>> Redo();
    // The panel was written to its file.
    void MarkSaved();

private:
    static void Listen(int event, HOSTINFO* object, void* context) noexcept;
    void OnEdit(int event, HOSTINFO* object);
    void ClipOverlaps(const std::vector<HOSTINFO*>& objects, Recording& recording);
    std::optional<std::vector<std::string>> Apply(const std::optional<logic::EditStep>& step);
    void ShowChanged();

    HOSTINFO* root_;
    PanelTarget target_;
    logic::EditHistory history_;
    bool applying_ = false;               // what is reported meanwhile is part of a step already
    std::optional<Recording> dialogEdit_; // a property line is being applied
    int dialogDepth_ = 0;                 // such lines may lead to further ones
};
