// The monitor section of a desk. Its values are in SpeakerControl.cpp, what it shows in SpeakerLayout.cpp.
#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/FunctionList.h"
#include "Controls/families/HeldBlock.h"
#include "Controls/families/Strip.h"
#include "Controls/families/StripChildren.h"

#include <span>
#include <string>
#include <vector>

struct SwitchFace;

class SPEAKERCONTROLPROPERTIES : public STRIPPROPERTIES {
public:
    static constexpr float LOWEST_LEVEL = -80;
    static constexpr std::size_t MOST_SETS = 8;

    // What the keywords function to function5 are bound to.
    enum Part { SPEAKER, LEVEL, DIM, MONO, MUTE, TALK, PART_COUNT };

    // As the devices hold it.
    struct Monitor {
        int speaker = 0; // from 1 on, 0: none
        float level = LOWEST_LEVEL;
        int dim = 0;
        int mono = 0;
        int mute = 0;
        int talk = 0;

        friend bool operator==(const Monitor&, const Monitor&) = default;
        // What is no number, or neither 0 nor 1 where it should be, stays as it is held.
        friend Monitor KnownOf(const Monitor& answered, const Monitor& held);
    };

    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Poll() override;
    void BindingsChanged() override { monitor_.parts[SPEAKER].SetKnown(false); }
    void Draw(HDC dc, const RECT& client) const override;

    std::span<const StripChild> Children() const override;
    SIZE StripSize() const override;
    int Look() const override { return static_cast<int>(MAKELONG(StripSize().cx, StripSize().cy)); }
    void DrawBackground(HDC) const override {}
    POINT NotEqualPlace() const override;
    // Puts the children where they belong in a window of its size, with faces that fit.
    void Arrange();

    std::string Speakers() const;
    bool SetSpeakers(const std::string& text);
    template <int part>
    std::string PartFunctions() const {
        return lists_[part].Text();
    }
    template <int part>
    bool SetPartFunctions(const std::string& text);

    // What the children are connected to. A get of what no device answers fails: so each of them shows it.
    int SpeakerKeyword(VALUERECORD& record);
    int LevelKeyword(VALUERECORD& record);
    int DimKeyword(VALUERECORD& record);
    template <Part part, auto number>
    int SwitchKeyword(VALUERECORD& record);
    int TalkKeyword(VALUERECORD& record);

    float dim = -20;
    int talkDims = 1;

private:
    class HeldMonitor : public HeldBlock<Monitor> {
    public:
        explicit HeldMonitor(SPEAKERCONTROLPROPERTIES& control) : control_(control) {
            FunctionList* lists = control.lists_;
            parts = {NumberPart<&Monitor::speaker>(control.requests),
                     NumberPart<&Monitor::level>(lists[LEVEL].Requests(), DATATYPE_FLOAT),
                     NumberPart<&Monitor::dim>(lists[DIM].Requests()),
                     NumberPart<&Monitor::mono>(lists[MONO].Requests()),
                     NumberPart<&Monitor::mute>(lists[MUTE].Requests()),
                     NumberPart<&Monitor::talk>(lists[TALK].Requests())};
        }
        CONTROLPROPERTIES& Owner() override { return control_; }
        void ShowBlock(const Monitor& next) override { control_.Take(next); }
        bool IsThere(Part part) const {
            return parts[part].lastResult <= REQUEST_DELIVERED && !parts[part].odd;
        }

    private:
        template <auto number>
        static BlockPart<Monitor> NumberPart(REQUESTLIST& requests, int datatype = DATATYPE_INTEGER) {
            return {&requests, &requests, datatype,
                    [](Monitor& monitor) -> void* { return &(monitor.*number); },
                    [](Monitor& to, const Monitor& from) { to.*number = from.*number; }};
        }

        SPEAKERCONTROLPROPERTIES& control_;
    };

    void Take(const Monitor& next);
    // The level that the knob has: without what is taken off to dim.
    float Level() const;
    bool IsDimmedByDevice() const { return !lists_[DIM].Requests().empty(); }
    bool IsToBeDim() const { return isDim_ || (isTalking_ && talkDims != 0); }
    // Dims and undims as it is to be. False when it cannot be done now.
    bool FollowDim();
    bool IsReached(Part part);
    RECT NumberPlace() const;
    std::string NumberText() const;
    void PutButton(const char* child, RECT cell, std::span<const SwitchFace> faces, const char* colour) const;

    std::vector<std::string> names_{"A", "B"};
    FunctionList lists_[PART_COUNT]; // the first is not used
    HeldMonitor monitor_{*this};
    bool isDim_ = false;     // by its button
    bool isTalking_ = false; // from here
    // Taken off the level at present, where no device does it: the decibels, and the level without them.
    float lowered_ = 0;
    float levelBefore_ = LOWEST_LEVEL;
    bool isEditing_ = false; // what is taken comes from here
    bool isOwed_ = false;    // the talkback could not dim, or undim, when it was to
    FontProperty numberFont_;
};
