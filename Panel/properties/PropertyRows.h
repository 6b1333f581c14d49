#pragma once

#include "Panel/editing/PanelEdits.h"
#include "Panelhost/KeywordInfo.h"

#include <string>
#include <vector>

class HOSTINFO;

// The properties that several objects have, each with the value that all agree on, and the setting of them.

enum class PropertyGroup { Control, Place, Behaviour, Look, Bindings };
const char* GroupName(PropertyGroup group);

struct PropertyRow {
    enum class Source { Keyword, Class, Name, Left, Top, Width, Height };

    Source source = Source::Keyword;
    PropertyGroup group = PropertyGroup::Behaviour;
    std::string name; // the keyword
    // What is known of it; the library of the control may go.
    KeywordKind kind = KeywordKind::Text;
    std::string words;
    bool mayBeEmpty = false; // of words: there may be none
    std::string pictures;
    std::string help;
    bool isFixed = false; // cannot be set here
    int holders = 0;      // of the objects

    std::string value;
    bool isMixed = false; // the objects differ; the value is empty then

    bool IsNumber() const { return kind == KeywordKind::Integer || kind == KeywordKind::Number; }
    // One of two words that stand for no and yes, in this order.
    bool IsSwitch() const { return words == "0,1" || words == "no,yes"; }
};

// By groups. Of objects with different keywords all are there. The objects live.
std::vector<PropertyRow> ReadRows(const std::vector<HOSTINFO*>& objects);
// The rows of their places alone, anew.
void ReadPlaces(const std::vector<HOSTINFO*>& objects, std::vector<PropertyRow>& rows);

// Sets a property of all objects that have it to what was typed, as one step. Why it could not be, in words
// that follow the text, with everything as it was; empty when it was set. Steps of the same key (not 0)
// become one as those of PanelEdits do.
std::string SetRow(PanelEdits& edits, const std::vector<HOSTINFO*>& objects, const PropertyRow& row,
                   const std::string& typed, int key = 0);
