#pragma once

#include "logic/editing/Groups.h"

#include <set>
#include <vector>

class HOSTINFO;

// The groups of a panel: siblings that are selected as one. A control that is hidden or locked stays out of
// what the others are selected for.

// The numbers of the groups inside an object.
std::set<logic::GroupNumber> GroupsIn(HOSTINFO* root, const HOSTINFO* parent);
// Whether any of the siblings is in a group with another control.
bool AreGrouped(HOSTINFO* root, const std::vector<HOSTINFO*>& objects);
// Whether they are a group, and all of it.
bool IsGroup(HOSTINFO* root, const std::vector<HOSTINFO*>& objects);
// What is selected when the user has chosen these siblings where others were selected: whole groups. Where
// nothing but a group, or some of it, was selected, single ones of it are reached.
std::vector<HOSTINFO*> WithGroups(HOSTINFO* root, std::vector<HOSTINFO*> chosen,
                                  const std::vector<HOSTINFO*>& before);
