#pragma once

#include <string>
#include <vector>

class HOSTINFO;

// The selected controls, in the order in which they were selected; all have the same parent. Controls that
// are gone leave it by themselves.
class Selection {
public:
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
};
