// Undo and redo: what a step of editing changed, how it is applied, and the history of all steps.
#pragma once

#include "logic/editing/EditGeometry.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// One step of editing, in full names. Objects inside a control are listed behind it.
struct EditStep {
    // Property text of an object; empty while there is no such object.
    struct Text {
        std::string name;
        std::string before;
        std::string after;
    };
    // An object that was only moved or sized.
    struct Place {
        std::string name;
        Rectangle before;
        Rectangle after;
    };

    // A control, with all that is inside it, that got another name.
    struct Name {
        std::string before; // full names
        std::string after;
    };

    // The names come first, and all else is in the names that are then there; in a step that is taken back
    // they come last.
    std::vector<Name> names;
    bool namesComeLast = false;
    std::vector<Text> texts;
    std::vector<Place> places;
    // All controls in the order of saving, or empty where the step leaves it alone.
    std::vector<std::string> orderBefore;
    std::vector<std::string> orderAfter;

    bool IsEmpty() const {
        return names.empty() && texts.empty() && places.empty() && orderBefore == orderAfter;
    }
    EditStep Reversed() const;
    // About what it takes in memory.
    std::size_t Bytes() const;
};

// The panel that steps are applied to.
class EditTarget {
public:
    virtual ~EditTarget() = default;
    virtual bool Exists(const std::string& name) = 0;
    virtual std::string Text(const std::string& name) = 0;
    // Applies property text: headers create, connection lines come last. Whether every line was taken.
    virtual bool Load(const std::string& text) = 0;
    // Gives a control another name on the same path.
    virtual void Rename(const std::string& name, const std::string& newName) = 0;
    // Destroys an object with all that is inside it.
    virtual void Destroy(const std::string& name) = 0;
    virtual void Place(const std::string& name, const Rectangle& place) = 0;
    // Gives the window style the bits of "style" where "changed" has a bit.
    virtual void SetStyle(const std::string& name, std::uint32_t changed, std::uint32_t style) = 0;
    virtual std::vector<std::string> Order() = 0;
    // In front of another object with the same parent; behind all of them when that one's name is empty.
    virtual void MoveBefore(const std::string& name, const std::string& other) = 0;
};

// Brings the target from the state before the step to that after it. An object that exists at both ends is
// changed in place, so that it keeps what its text does not hold; it is made anew only when that does not
// give the wanted text, or when it refuses a line of it: then its text hides what it has instead.
void ApplyStep(const EditStep& step, EditTarget& target);

struct OrderMove {
    std::string name;
    std::string before; // empty: to the end
};
// The fewest moves, in sequence, that bring siblings from one order into another. Names that are only in one
// of the two are left out of account.
std::vector<OrderMove> OrderMoves(const std::vector<std::string>& from, const std::vector<std::string>& to);

// Steps that can be undone and redone. When they take more than a limit in memory the oldest ones go; the
// last one stays whatever it takes.
class EditHistory {
public:
    static constexpr std::size_t DEFAULT_LIMIT = 64 * 1024 * 1024; // bytes

    explicit EditHistory(std::size_t limit = DEFAULT_LIMIT) : limit_(limit) {}

    // Adds a step that has been done; what could be redone is forgotten. False for an empty step, which is
    // not added.
    bool Commit(EditStep step, std::string label);
    // The same for one of a run of like steps that follow each other quickly: it is joined to the one before
    // when that had the same key (not 0) and is at most 700 ms older. False when it was joined, too.
    bool CommitRun(EditStep step, std::string label, int key, std::uint64_t milliseconds);

    bool CanUndo() const { return position_ > 0; }
    bool CanRedo() const { return position_ < entries_.size(); }
    // What would be undone or redone, for a menu; empty when there is nothing.
    std::string UndoLabel() const { return CanUndo() ? entries_[position_ - 1].label : ""; }
    std::string RedoLabel() const { return CanRedo() ? entries_[position_].label : ""; }

    // The step to be applied now; nothing when there is none.
    std::optional<EditStep> Undo();
    std::optional<EditStep> Redo();

    // The panel is on disk as it is now.
    void MarkSaved();
    // What is on disk cannot be reached by undo and redo.
    void ForgetSaved() { saved_.reset(); }
    bool IsSaved() const { return saved_ == position_; }

    std::size_t Bytes() const { return bytes_; }

private:
    struct Entry {
        EditStep step;
        std::string label;
        int key = 0;
        std::uint64_t time = 0;
        std::size_t bytes = 0;
    };
    void Shorten();

    std::size_t limit_;
    std::size_t bytes_ = 0; // of all entries
    std::deque<Entry> entries_;
    std::size_t position_ = 0; // number of steps that are done
    std::optional<std::size_t> saved_ = 0;
};

} // namespace logic
