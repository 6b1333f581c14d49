#pragma once

#include <string>
#include <vector>

struct DemoPanel {
    std::string file;
    const wchar_t* name;
    const wchar_t* note; // what there is to see
    std::string picture; // file of it
};
// Those that lie beside the program.
std::vector<DemoPanel> DemoPanels();
