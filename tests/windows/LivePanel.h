#pragma once

#include "tests/windows/Partners.h" // has winsock2.h, which refuses to stand behind windows.h

#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

inline std::string AddressOf(int port, const std::string& rest) {
    return "osc,127.0.0.1:" + std::to_string(port) + "," + rest;
}

// The mixer, without faults, with the values of its start.
class Mixer : public Partner {
public:
    Mixer() : Partner(MixerControlPort()) {
        for (const char* word : {"drop 0", "double 0", "delay 0", "reorder 0", "garbage 0", "silent 0",
                                 "clamp 0", "otherport 0", "frozen 0", "deaf ", "model X32", "restart 0"}) {
            REQUIRE(Ask(word) == "ok");
        }
    }
    double Value(const char* address) const { return std::atof(Ask(std::string("get ") + address).c_str()); }
};

// A panel over devices, whose timer ticks while it is waited for something.
class LivePanel : public TestPanel {
public:
    // Device lines, and further files beside them.
    explicit LivePanel(const std::string& lines, const std::string& profile = "", const char* name = "") {
        if (!profile.empty()) {
            folder_.Write(std::string(name) + ".profile", profile);
        }
        devices = ph_LoadDevices(Root(), folder_.Write("Test.devices", lines).c_str());
    }

    void Tick() {
        const DWORD start = GetTickCount();
        ph_Tick(Root());
        PumpAll();
        longestTick = std::max(longestTick, GetTickCount() - start);
        Sleep(10);
    }
    bool Until(const std::function<bool()>& condition, DWORD patience = 30'000) {
        const ULONGLONG end = GetTickCount64() + patience;
        while (!condition()) {
            if (GetTickCount64() > end) {
                return false;
            }
            Tick();
        }
        return true;
    }
    bool Shows(const char* parameter, const std::string& text) {
        return Until([&] { return Parameter(parameter) == text && State(parameter) == PH_STATE_LIVE; });
    }
    // What the mixer holds of a fader, live.
    bool ShowsWhat(const Mixer& mixer) {
        return Until([&] {
            const double wire = mixer.Value("/ch/01/mix/fader");
            const double level = wire >= 0.5    ? 40 * wire - 30
                                 : wire >= 0.25 ? 80 * wire - 50
                                                : 160 * wire - 70;
            return State("FOH*ch01.fader") == PH_STATE_LIVE &&
                   std::fabs(std::atof(Parameter("FOH*ch01.fader").c_str()) - level) < 0.01;
        });
    }
    int State(const char* parameter) const { return ph_ParameterState(Root(), parameter); }
    bool Set(const char* parameter, const char* text) const {
        return ph_SetParameter(Root(), parameter, text) == 1;
    }

    int devices = 0;
    DWORD longestTick = 0;

protected:
    TestFolder folder_;
};

inline std::string Foh(const std::string& ranges = ",c=01-08") {
    return "FOH*device=" + AddressOf(MixerPort(), "x32" + ranges) + "\n";
}

inline bool HasNoPartners() {
    if (MixerPort() == 0) {
        MESSAGE("skipped: started without partners");
    }
    return MixerPort() == 0;
}
