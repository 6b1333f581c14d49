#pragma once

#include "logic/controls/EqBand.h"
#include "tests/windows/FormPanels.h"

#include <string>
#include <vector>

// An equaliser band beside an object that holds one, and the numbers of its children.

using logic::EqBand;

constexpr int TYPES = 100, GAIN = 101, FREQUENCY = 102, Q = 103, SLOPES = 104, BYPASS = 105;
constexpr int GAIN_SPIN = 106, FREQUENCY_SPIN = 107, Q_SPIN = 108;
constexpr const char* BAND = "0,PEQ,6 dB,1000 Hz,-3 dB,0.7";

struct EqFixture {
    explicit EqFixture(TestPanel::Visibility visibility = TestPanel::Hidden) : panel(visibility) {
        eq = panel.Create("EQ", "Band 1");
        Load(eq, "datatype=channeleq");
        Load(eq, "interval=1000000");
        Load(eq, std::string("properties=") + BAND);
        Load(eq, "connection=Target");
        target.held = {0, 0, 1000.0F, -3.0F, 0.7F, 1};
    }
    std::string Sent() { return TakeAll(sent); }
    std::string Field(int id) const { return TextOf(Item(eq, id)); }
    std::string Band() const { return Text(eq, "properties"); }

    TestPanel panel;
    std::vector<std::string> sent;
    ValueTarget<EqBand> target{panel, "Target", DATATYPE_CHANNEL_EQ, logic::EqBandText, sent};
    HWND eq = nullptr;
};
