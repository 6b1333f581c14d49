#pragma once

#include <string>
#include <vector>

class HOSTINFO;

// The selected controls, in the order in which they were selected; all have the same parent. Controls that
// are gone leave it by themselves. It is among the controls of the panel itself or, once that was entered,
// inside one of them; a part that is selected enters what contains it.
class Selection {
public:
    // What was entered; null for the panel itself.
    HOSTINFO* Inside() const;
    // With nothing selected there; null leaves it.
    void Enter(HOSTINFO* object);
    // What is selected, and what the user reaches, has this parent.
    const HOSTINFO* Parent(const HOSTINFO* root) const { return Inside() ? Inside() : root; }

    const std::vector<HOSTINFO*>& Objects() const;
    bool IsEmpty() const { return Objects().empty(); }
    bool Contains(const HOSTINFO* object) const;

    void Clear() { Set({}); }
    void Set(std::vector<HOSTINFO*> objects);
    // Those of another parent than the object's leave the selection.
    void Add(HOSTINFO* object);
    void Toggle(HOSTINFO* object);

private:
    mutable std::vector<HOSTINFO*> objects_;
    mutable HOSTINFO* inside_ = nullptr;
};
