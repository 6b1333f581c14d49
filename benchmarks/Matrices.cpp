// A matrix of 64 x 64 crosspoints beside one BitBlt of its size: all of it, and what a click changes.

#include "Panelhost/HostInterface.h"
#include "Panelhost/Messages.h"
#include "Panelhost/Hostinfo.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <fstream>

namespace {

constexpr int SIDE_OF_MATRIX = 640;
constexpr int PAINTINGS = 20;
constexpr int OUTPUTS = 64;
constexpr int CELL = SIDE_OF_MATRIX / OUTPUTS;

// A device with the crosspoints, in a file that goes with it.
class MatrixFile {
public:
    MatrixFile() {
        char folder[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        GetTempFileNameA(folder, "mtx", 0, path_);
        std::ofstream file(path_, std::ios::binary);
        file << "DSP*device=simulated\r\nDSP*route%i_%o=matrix,64,64,in%i,out%o\r\n";
        for (int i = 1; i <= OUTPUTS; ++i) {
            file << "DSP*route" << i << "_" << (i * 7) % OUTPUTS + 1 << "=integer,0,1,1\r\n";
        }
    }
    ~MatrixFile() { DeleteFileA(path_); }
    MatrixFile(const MatrixFile&) = delete;
    MatrixFile& operator=(const MatrixFile&) = delete;

    const char* Path() const { return path_; }

private:
    char path_[MAX_PATH]{};
};

void Load(HWND control, const char* line) {
    SendMessageA(control, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line));
}

// Seconds for one painting.
Workload Paint(HWND window) {
    return [window] {
        Settle();
        const double start = Now();
        for (int i = 0; i < PAINTINGS; ++i) {
            InvalidateRect(window, nullptr, FALSE);
            UpdateWindow(window);
        }
        return (Now() - start) / PAINTINGS;
    };
}

// Seconds for one click and what it paints, on places side by side.
Workload Click(HWND window, int step) {
    return [=] {
        Settle();
        const double start = Now();
        for (int i = 0; i < PAINTINGS; ++i) {
            SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(i * step + CELL / 2, CELL / 2));
            SendMessageA(window, WM_LBUTTONUP, 0, 0);
            UpdateWindow(window);
        }
        return (Now() - start) / PAINTINGS;
    };
}

} // namespace

void MeasureMatrices(Report& report) {
    const MatrixFile file;
    const BenchPanel panel(true);
    ph_LoadDevices(panel.Root(), file.Path());
    const SIZE size{SIDE_OF_MATRIX, SIDE_OF_MATRIX};
    const HWND matrix = panel.Add("MINIROUTING", 0, size);
    const HWND blit = panel.Add(BLIT_CLASS, 0, size);
    for (const char* line : {"inputs=64", "outputs=64", "routes=DSP*route%i_%o", "interval=0"}) {
        Load(matrix, line);
    }
    SetWindowPos(blit, nullptr, SIDE_OF_MATRIX, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    Sleep(2);
    SendMessageA(matrix, WM_TIMER, 0, 0);
    UpdateWindow(matrix);
    report.Measure("paint a matrix of 64 x 64", Paint(matrix), "bare window, one BitBlt", Paint(blit),
                   Unit::Seconds, RatioUpTo(4), 25);
    const HWND key = panel.Add("BTRISTATEBUTTON", 0, {CELL, CELL});
    Load(key, "function=DSP*route64_64");
    report.Measure("click a crosspoint of it", Click(matrix, CELL), "a switch button of the size of one",
                   Click(key, 0), Unit::Seconds, RatioUpTo(2), 25);
}
