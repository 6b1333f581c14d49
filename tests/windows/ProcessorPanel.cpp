// The demo panel of a processor: every view follows the editor beside it, and the other way round.
#include "Panelhost/Root.h"
#include "tests/windows/Buttons.h"

TEST_SUITE_BEGIN("ProcessorPanel");

TEST_CASE("views and editors of the processor panel hold the same blocks") {
    const TestPanel panel(TestPanel::Visible);
    HOSTINFO* root = panel.Root();
    REQUIRE(ph_LoadDevices(root, (ProgramFolder() + "Processor.devices").c_str()) == 1);
    CHECK(a_LoadErrorCount(root) == 0);
    REQUIRE(ph_LoadPanel(root, (ProgramFolder() + "Processor.panel").c_str()) > 60);
    CHECK(a_LoadErrorCount(root) == 0);
    const auto becomes = [&](const char* control, const std::string& text) {
        return Await(
            [&] {
                PumpAll();
                ph_Tick(root);
                return Text(panel.Find(control), "value").find(text) != std::string::npos;
            },
            30'000);
    };
    const struct {
        const char* changed;
        const char* line;
        const char* follower;
        const char* value;
    } rows[] = {
        {"Gate threshold", "value=-33", "Gate curve", "-33"},
        {"Gate curve", "value=-21", "Gate threshold", "-21"},
        {"Compressor curve", "value=-30", "Compressor threshold", "-30"},
        {"Delay", "value=0,20 ms", "Delay view", "0,20 ms"},
        {"Distance", "value=1,5 ms", "Delay", "1,5 ms"},
        {"Band 2", "properties=1,PEQ,6 dB,500 Hz,3 dB,2", "Equaliser curve", "1,PEQ,6 dB,500 Hz,3 dB,2"},
        {"Equaliser curve", "value=0,PEQ,6 dB,200 Hz,1 dB,1", "Band 1", "0,PEQ,6 dB,200 Hz,1 dB,1"},
        {"High way", "value=LINK24,900 Hz", "Crossover curves", "LINK24,900 Hz"},
        {"Crossover curves", "value=OFF,20 Hz,BUTT24,700 Hz", "Low way", "OFF,20 Hz,BUTT24,700 Hz"},
        {"Gate on", "value=0", "Gate tile", "0"},
    };
    for (const auto& row : rows) {
        CAPTURE(std::string(row.line));
        CHECK(Load(panel.Find(row.changed), row.line) == 1);
        CHECK(becomes(row.follower, row.value));
    }
    Load(panel.Find("Routes"), "value=8_8");
    CHECK(panel.Parameter("DSP*route8_8") == "1");
    CHECK(panel.Parameter("DSP*route1_1") == "0");
}

TEST_SUITE_END();
