#pragma once

#include "logic/EditHistory.h"

#include <string>
#include <vector>

class HOSTINFO;

// A running panel as steps of editing are applied to it. The empty name is the root's.
class PanelTarget : public logic::EditTarget {
public:
    explicit PanelTarget(HOSTINFO* root) : root_(root) {}

    HOSTINFO* Find(const std::string& name) const;

    bool Exists(const std::string& name) override;
    std::string Text(const std::string& name) override;
    bool Load(const std::string& text) override;
    void Destroy(const std::string& name) override;
    void Place(const std::string& name, const logic::Rectangle& place) override;
    void SetStyle(const std::string& name, std::uint32_t changed, std::uint32_t style) override;
    std::vector<std::string> Order() override;
    void MoveBefore(const std::string& name, const std::string& other) override;

private:
    HOSTINFO* root_;
};
