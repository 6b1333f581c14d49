#include "Panel/editing/PanelEdits.h"

#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Renaming.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "logic/editing/ComponentText.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <unordered_set>
#include <utility>

namespace {

class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag), previous_(std::exchange(flag, true)) {}
    ~Raised() { flag_ = previous_; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& flag_;
    bool previous_;
};

std::string KeyOf(const HOSTINFO* object) {
    return object->kind == KIND_ROOT ? "" : object->name;
}

std::vector<std::string> KeysOf(const std::vector<HOSTINFO*>& objects) {
    std::vector<std::string> keys;
    for (const HOSTINFO* object : objects) {
        keys.push_back(KeyOf(object));
    }
    return keys;
}

// While it lives objects are edited, which marks none of them as changed by others.
class KeptMarks {
public:
    explicit KeptMarks(const std::vector<HOSTINFO*>& objects) {
        std::copy_if(objects.begin(), objects.end(), std::back_inserter(unmarked_),
                     [](const HOSTINFO* object) { return (object->flags & FLAG_CHANGED) == 0; });
    }
    ~KeptMarks() {
        for (HOSTINFO* object : unmarked_) {
            if (a_IsAlive(object) && object->kind != KIND_ROOT) {
                object->flags = static_cast<WORD>(object->flags & ~FLAG_CHANGED);
            }
        }
    }
    KeptMarks(const KeptMarks&) = delete;
    KeptMarks& operator=(const KeptMarks&) = delete;

private:
    std::vector<HOSTINFO*> unmarked_;
};

void Destroy(const std::vector<HOSTINFO*>& objects) {
    for (const HOSTINFO* object : objects) {
        if (a_IsAlive(object)) { // not when it went with what it was inside
            DestroyWindow(object->window);
        }
    }
}

} // namespace

// Edits.

PanelEdits::PanelEdits(HOSTINFO* root, Warning warn) : root_(root), warn_(std::move(warn)), target_(root) {
    a_SetEditListener(root, Listen, this);
    a_SetRenameListener(root, CarryOut, this);
}

PanelEdits::~PanelEdits() {
    a_SetEditListener(root_, nullptr, nullptr);
    a_SetRenameListener(root_, nullptr, nullptr);
}

void PanelEdits::Do(const std::string& label, const std::vector<HOSTINFO*>& touched, const Action& action) {
    NoticeOthers();
    const Raised raised(applying_);
    Recording recording(target_);
    try {
        recording.Touch(KeysOf(touched));
    } catch (const TextLost& lost) {
        warn_(label + " was not done, because it could not be undone: " + lost.what() + ".");
        return;
    }
    const std::vector<HOSTINFO*> placed = action();
    try {
        recording.Created(KeysOf(placed));
        ClipOverlaps(placed, recording);
        Commit(recording.Finish(), label);
    } catch (const std::exception& failure) {
        NotUndoable(label, failure);
    }
    ShowChanged();
}

void PanelEdits::Delete(const std::vector<HOSTINFO*>& objects) {
    if (root_->mode == 0) { // by a dialog that was left open
        Destroy(objects);
        history_.ForgetSaved();
        return ShowChanged();
    }
    Do("Delete", objects, [&] {
        Destroy(objects);
        return std::vector<HOSTINFO*>{};
    });
}

int PanelEdits::Apply(const std::string& label, const std::vector<Line>& lines) {
    std::vector<HOSTINFO*> objects;
    std::unordered_set<const HOSTINFO*> known;
    for (const Line& line : lines) {
        if (a_IsAlive(line.object) && known.insert(line.object).second) {
            objects.push_back(line.object);
        }
    }
    int taken = 0;
    Do(label, objects, [&] {
        const KeptMarks marks(objects);
        for (const Line& line : lines) {
            taken += a_ApplyEdit(line.object, line.text.c_str());
        }
        return std::vector<HOSTINFO*>{};
    });
    return taken;
}

bool PanelEdits::Rename(const RENAMING& renaming) {
    NoticeOthers();
    const Raised raised(applying_);
    std::vector<HOSTINFO*> changed;
    for (const RENAMEDTEXT& text : renaming.texts) {
        changed.push_back(text.object);
    }
    std::vector<HOSTINFO*> marked = changed;
    marked.push_back(renaming.object);
    const KeptMarks marks(marked);
    const std::string label = "Rename";
    if (a_GiveName(renaming.object, renaming.to.c_str() + renaming.to.rfind('*') + 1) == 0) {
        return false;
    }
    Recording recording(target_);
    try {
        recording.Touch(KeysOf(changed));
    } catch (const TextLost& lost) {
        a_GiveName(renaming.object, renaming.from.c_str() + renaming.from.rfind('*') + 1);
        warn_(label + " was not done, because it could not be undone: " + lost.what() + ".");
        return false;
    }
    a_SetRenamedTexts(renaming);
    try {
        logic::EditStep step = recording.Finish();
        step.names.push_back({renaming.from, renaming.to});
        Commit(std::move(step), label);
    } catch (const std::exception& failure) {
        NotUndoable(label, failure);
    }
    ShowChanged();
    return true;
}

std::vector<HOSTINFO*> PanelEdits::ApplyAll(const std::string& label, const std::vector<Line>& lines,
                                            int key) {
    NoticeOthers();
    const Raised raised(applying_);
    std::vector<HOSTINFO*> objects;
    for (const Line& line : lines) {
        objects.push_back(line.object);
    }
    Recording recording(target_);
    try {
        recording.Touch(KeysOf(objects));
    } catch (const TextLost& lost) {
        warn_(label + " was not done, because it could not be undone: " + lost.what() + ".");
        return objects;
    }
    const KeptMarks marks(objects);
    std::vector<HOSTINFO*> refused;
    for (const Line& line : lines) {
        if (a_ApplyEdit(line.object, line.text.c_str()) == 0 && a_IsAlive(line.object)) {
            refused.push_back(line.object);
        }
    }
    try {
        logic::EditStep step = recording.Finish();
        if (refused.empty()) {
            Commit(std::move(step), label, key);
        } else if (!step.IsEmpty()) {
            logic::ApplyStep(step.Reversed(), target_);
        }
    } catch (const TextLost& lost) {
        NotUndoable(label, lost);
    }
    ShowChanged();
    return refused;
}

void PanelEdits::CommitPlaces(const std::string& label, const std::vector<Placement>& before, int key) {
    NoticeOthers();
    const Raised raised(applying_);
    std::vector<logic::EditStep::Place> places;
    std::vector<HOSTINFO*> moved;
    for (const auto& [object, place] : before) {
        if (a_IsAlive(object) && !(PlaceOf(*object) == place)) {
            places.push_back({object->name, place, PlaceOf(*object)});
            moved.push_back(object);
        }
    }
    logic::EditStep step;
    try {
        Recording recording(target_);
        ClipOverlaps(moved, recording);
        step = recording.Finish();
    } catch (const TextLost&) {
        step = {}; // how the neighbours are painted is not worth more
    }
    step.places = std::move(places);
    Commit(std::move(step), label, key);
    ShowChanged();
}

// Overlapping controls paint over each other unless each leaves out what is above it.
void PanelEdits::ClipOverlaps(const std::vector<HOSTINFO*>& objects, Recording& recording) {
    std::unordered_set<const HOSTINFO*> overlapping;
    for (const HOSTINFO* other : a_ListHostinfos(root_)) {
        for (const HOSTINFO* object : objects) {
            if (other != object && other->kind == KIND_CONTROL && other->parent == object->parent &&
                logic::Touches(PlaceOf(*other), PlaceOf(*object))) {
                overlapping.insert(other);
                overlapping.insert(object);
            }
        }
    }
    std::vector<std::string> names;
    for (const HOSTINFO* object : overlapping) {
        if ((GetWindowLongA(object->window, GWL_STYLE) & WS_CLIPSIBLINGS) == 0) {
            names.push_back(object->name);
        }
    }
    recording.Touch(names);
    for (const std::string& name : names) {
        target_.SetStyle(name, WS_CLIPSIBLINGS, WS_CLIPSIBLINGS);
    }
}

std::optional<std::vector<std::string>> PanelEdits::Undo() {
    NoticeOthers();
    return Apply(history_.Undo(), -1);
}

std::optional<std::vector<std::string>> PanelEdits::Redo() {
    NoticeOthers();
    return Apply(history_.Redo(), 1);
}

std::optional<std::vector<std::string>> PanelEdits::Apply(const std::optional<logic::EditStep>& step,
                                                          int direction) {
    if (!step) {
        return std::nullopt;
    }
    ++serial_;
    steps_ += direction;
    edited_ = true;
    try {
        const Raised raised(applying_);
        logic::ApplyStep(*step, target_);
    } catch (const TextLost& lost) {
        history_.ForgetSaved();
        warn_(std::string(direction < 0 ? "Undo" : "Redo") + " could not be finished: " + lost.what() + ".");
    }
    ShowChanged();
    std::vector<std::string> names;
    for (const auto& name : step->names) {
        names.push_back(name.after);
    }
    if (!names.empty()) { // the texts are those that followed
        return names;
    }
    for (const auto& text : step->texts) {
        // One that has a new header alone was touched to clip its neighbours, and is not what the user
        // edited.
        if (text.before.empty() || text.after.empty() ||
            !logic::ChangedLines(text.before, text.after).empty()) {
            names.push_back(text.name);
        }
    }
    for (const auto& place : step->places) {
        names.push_back(place.name);
    }
    return names;
}

void PanelEdits::Commit(logic::EditStep step, const std::string& label, int key) {
    if (step.IsEmpty()) {
        return;
    }
    ++serial_;
    edited_ = true;
    if (history_.CommitRun(std::move(step), label, key, GetTickCount64())) {
        ++steps_;
    }
}

void PanelEdits::NotUndoable(const std::string& label, const std::exception& failure) {
    history_.ForgetSaved();
    ++serial_;
    edited_ = true;
    warn_(label + " cannot be undone: " + failure.what() + ".");
}

void PanelEdits::MarkSaved() {
    history_.MarkSaved();
    edited_ = false;
    steps_ = 0;
    ++serial_;
    a_SetChanged(root_, false);
}

void PanelEdits::MarkUnsaved(int changes) {
    history_.ForgetSaved();
    edited_ = true;
    steps_ = changes;
    ++serial_;
    a_SetChanged(root_, true);
}

int PanelEdits::UnsavedChanges() const {
    return history_.IsSaved() || !edited_ ? 0 : std::max(1, std::abs(steps_));
}

// What others have changed (a terminal, a dialog while the panel was operated) is not in the history, so that
// no undo leads back to the file. An edit marks the root alone as changed; every other mark is of theirs.
void PanelEdits::NoticeOthers() {
    const std::list<HOSTINFO*> objects = a_ListHostinfos(root_);
    if ((history_.IsSaved() && a_IsChanged(root_)) ||
        std::any_of(objects.begin(), objects.end(), [](const HOSTINFO* object) {
            return object->kind == KIND_CONTROL && (object->flags & FLAG_CHANGED) != 0;
        })) {
        history_.ForgetSaved();
    }
}

void PanelEdits::ShowChanged() {
    a_SetChanged(root_, !history_.IsSaved());
}

// Dialogs.

int PanelEdits::Listen(int event, HOSTINFO* object, void* context) noexcept {
    auto& edits = *static_cast<PanelEdits*>(context);
    try {
        return edits.OnEdit(event, object);
    } catch (const std::exception& failure) {
        TRACE("Panel: an edit failed: %s\n", failure.what());
        return 0;
    }
}

int PanelEdits::CarryOut(const RENAMING& renaming, void* context) noexcept {
    try {
        return static_cast<PanelEdits*>(context)->Rename(renaming) ? 1 : 0;
    } catch (const std::exception& failure) {
        TRACE("Panel: a renaming failed: %s\n", failure.what());
        return 0;
    }
}

int PanelEdits::OnEdit(int event, HOSTINFO* object) {
    if (applying_) {
        return 1;
    }
    switch (event) {
    case EDIT_CHANGING:
        if (dialogDepth_ == 0 && root_->mode != 0) {
            try {
                BeginDialogEdit(object);
            } catch (const TextLost& lost) {
                dialogEdit_.reset();
                warn_(std::string("The property was not changed, because that could not be undone: ") +
                      lost.what() + ".");
                return 0;
            }
        }
        ++dialogDepth_;
        return 1;
    case EDIT_CHANGED:
        if (dialogDepth_ > 0 && --dialogDepth_ == 0) {
            EndDialogEdit(object);
        }
        return 1;
    case EDIT_DELETE:
        Delete({object});
        return 1;
    default:
        return 1;
    }
}

void PanelEdits::BeginDialogEdit(HOSTINFO* object) {
    NoticeOthers();
    dialogEdit_.emplace(target_);
    dialogEdit_->Touch({KeyOf(object)});
    wasFlagged_ = (object->flags & FLAG_CHANGED) != 0;
}

void PanelEdits::EndDialogEdit(HOSTINFO* object) {
    if (!dialogEdit_) {
        if (object == root_) { // its mark cannot be told from that of an edit
            history_.ForgetSaved();
        }
        return;
    }
    const std::string label = "Change of property";
    Recording recording = *std::exchange(dialogEdit_, std::nullopt);
    if (object && object != root_ && !wasFlagged_) {
        object->flags = static_cast<WORD>(object->flags & ~FLAG_CHANGED);
    }
    try {
        Commit(recording.Finish(), label);
    } catch (const TextLost& lost) {
        NotUndoable(label, lost);
    }
    NoticeOthers(); // further lines that the one led to
    ShowChanged();
}
