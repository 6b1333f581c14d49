#pragma once

#include "logic/editing/EditHistory.h"

#include <stdexcept>
#include <string>
#include <vector>

class HOSTINFO;

// The text of an object could not be had, or not whole.
class TextLost : public std::runtime_error {
public:
    explicit TextLost(const std::string& names)
        : std::runtime_error("the properties of " + names + " cannot be read") {}
};

// A running panel as steps of editing are applied to it. The empty name is the root's.
class PanelTarget : public logic::EditTarget {
public:
    explicit PanelTarget(HOSTINFO* root) : root_(root) {}

    HOSTINFO* Find(const std::string& name) const;

    // One text for each name, empty where there is no such object. Throws TextLost.
    std::vector<std::string> Texts(const std::vector<std::string>& names) const;

    bool Exists(const std::string& name) override;
    std::string Text(const std::string& name) override;
    bool Load(const std::string& text) override;
    void Rename(const std::string& name, const std::string& newName) override;
    void Destroy(const std::string& name) override;
    void Place(const std::string& name, const logic::Rectangle& place) override;
    void SetStyle(const std::string& name, std::uint32_t changed, std::uint32_t style) override;
    std::vector<std::string> Order() override;
    void MoveBefore(const std::string& name, const std::string& other) override;

private:
    HOSTINFO* root_;
};
