#pragma once

#include "Panelhost/Hostinfo.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class BindableKind { Group, Device, LostDevice, Parameter, Control, Keyword };

// A thing that an object can be bound to, or one that holds such things.
struct Bindable {
    BindableKind kind;
    std::string label;
    std::string address; // empty: it only holds others
    std::string path;    // what a search looks in, folded
    std::vector<std::size_t> children;
    bool matches = true;    // what is searched for, by itself
    bool holdsShown = true; // something below it is shown
    bool shown = true;      // a group, or what matches or holds something that does

    bool IsFunction() const { return kind == BindableKind::Parameter; }
};

// Everything on a panel that one of its objects can be bound to, as a tree: the devices with their
// parameters, and the other controls with their keywords, each below the object that contains it.
class Bindables {
public:
    static constexpr std::size_t DEVICES = 0; // the two groups
    static constexpr std::size_t CONTROLS = 1;

    // What is on the panel of the object now.
    void Read(HOSTINFO* object);
    // Whether anything came, went or changed its state since it was read.
    bool IsOutdated(HOSTINFO* object) const { return Signature(object) != signature_; }
    // Shows what holds all words of the text somewhere between its root and itself, without regard to case.
    void Search(std::string_view text);

    const Bindable& operator[](std::size_t index) const { return all_[index]; }
    std::size_t Size() const { return all_.size(); }

private:
    static std::uint64_t Signature(HOSTINFO* object);
    std::size_t Add(std::size_t owner, BindableKind kind, const std::string& label,
                    const std::string& address);
    void AddDevice(HOSTINFO* device);
    void AddKeywords(std::size_t owner, HOSTINFO* control);

    std::vector<Bindable> all_; // owners before what they hold
    std::uint64_t signature_ = 0;
};
