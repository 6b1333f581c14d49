#include "Panel/editing/PanelEdits.h"

#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "logic/ComponentText.h"

#include <exception>
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

} // namespace

// Recording.

Recording::Recording(PanelTarget& target) : target_(target) {
    step_.orderBefore = target.Order();
}

void Recording::Touch(const std::string& name) {
    touched_.push_back(name);
    Add(name, true);
}

void Recording::Created(const std::string& name) {
    Add(name, false);
}

void Recording::Add(const std::string& name, bool existed) {
    const auto add = [&](const std::string& one) {
        if (known_.insert(one).second) {
            step_.texts.push_back({one, existed ? target_.Text(one) : "", ""});
        }
    };
    add(name);
    if (name.empty()) {
        return; // the root's text only: its controls are objects of their own
    }
    const std::string path = name + "*";
    for (const std::string& other : target_.Order()) {
        if (other.compare(0, path.size(), path) == 0) {
            add(other);
        }
    }
}

logic::EditStep Recording::Finish() {
    for (const std::string& name : touched_) { // it may have made itself new parts
        if (target_.Exists(name)) {
            Add(name, false);
        }
    }
    for (logic::EditStep::Text& text : step_.texts) {
        text.after = target_.Text(text.name);
    }
    std::erase_if(step_.texts, [](const logic::EditStep::Text& text) { return text.before == text.after; });
    step_.orderAfter = target_.Order();
    if (step_.orderAfter == step_.orderBefore) {
        step_.orderBefore.clear();
        step_.orderAfter.clear();
    }
    return std::move(step_);
}

// Edits.

PanelEdits::PanelEdits(HOSTINFO* root) : root_(root), target_(root) {
    a_SetEditListener(root, Listen, this);
}

PanelEdits::~PanelEdits() {
    a_SetEditListener(root_, nullptr, nullptr);
}

void PanelEdits::Do(const std::string& label, const std::vector<HOSTINFO*>& touched, const Action& action) {
    const Raised raised(applying_);
    Recording recording(target_);
    for (const HOSTINFO* object : touched) {
        recording.Touch(KeyOf(object));
    }
    const std::vector<HOSTINFO*> placed = action();
    for (const HOSTINFO* object : placed) {
        recording.Created(KeyOf(object));
    }
    ClipOverlaps(placed, recording);
    history_.Commit(recording.Finish(), label);
    ShowChanged();
}

void PanelEdits::Delete(const std::vector<HOSTINFO*>& objects) {
    Do("Delete", objects, [&] {
        for (const HOSTINFO* object : objects) {
            if (a_IsAlive(object)) { // it may have gone with what it was in
                DestroyWindow(object->window);
            }
        }
        return std::vector<HOSTINFO*>{};
    });
}

void PanelEdits::CommitPlaces(const std::string& label, const std::vector<Placement>& before, int key) {
    const Raised raised(applying_);
    std::vector<logic::EditStep::Place> places;
    std::vector<HOSTINFO*> moved;
    for (const auto& [object, place] : before) {
        if (a_IsAlive(object) && !(PlaceOf(*object) == place)) {
            places.push_back({object->name, place, PlaceOf(*object)});
            moved.push_back(object);
        }
    }
    Recording recording(target_);
    ClipOverlaps(moved, recording);
    logic::EditStep step = recording.Finish();
    step.places = std::move(places);
    history_.CommitRun(std::move(step), label, key, GetTickCount64());
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
    for (const HOSTINFO* object : overlapping) {
        if ((GetWindowLongA(object->window, GWL_STYLE) & WS_CLIPSIBLINGS) == 0) {
            recording.Touch(object->name);
            target_.SetStyle(object->name, WS_CLIPSIBLINGS, WS_CLIPSIBLINGS);
        }
    }
}

std::optional<std::vector<std::string>> PanelEdits::Undo() {
    return Apply(history_.Undo());
}

std::optional<std::vector<std::string>> PanelEdits::Redo() {
    return Apply(history_.Redo());
}

std::optional<std::vector<std::string>> PanelEdits::Apply(const std::optional<logic::EditStep>& step) {
    if (!step) {
        return std::nullopt;
    }
    {
        const Raised raised(applying_);
        logic::ApplyStep(*step, target_);
    }
    ShowChanged();
    std::vector<std::string> names;
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

void PanelEdits::MarkSaved() {
    history_.MarkSaved();
    ShowChanged();
}

void PanelEdits::ShowChanged() {
    a_SetChanged(root_, !history_.IsSaved());
}

void PanelEdits::Listen(int event, HOSTINFO* object, void* context) noexcept {
    try {
        static_cast<PanelEdits*>(context)->OnEdit(event, object);
    } catch (const std::exception& failure) {
        TRACE("Panel: an edit cannot be undone: %s\n", failure.what());
    }
}

void PanelEdits::OnEdit(int event, HOSTINFO* object) {
    if (applying_) {
        return;
    }
    switch (event) {
    case EDIT_CHANGING:
        if (dialogDepth_++ == 0) {
            dialogEdit_.emplace(target_);
            dialogEdit_->Touch(KeyOf(object));
        }
        return;
    case EDIT_CHANGED:
        if (dialogDepth_ > 0 && --dialogDepth_ == 0 && dialogEdit_) {
            history_.Commit(std::exchange(dialogEdit_, std::nullopt)->Finish(), "Change of property");
        }
        return;
    case EDIT_DELETE:
        return Delete({object});
    default:
        return;
    }
}
