#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Writer of PCM wave files on the system's RIFF functions. One file is open at a time; the state is that of
// the module, so its users take turns. Failures are traced and nothing else: every step is made, and reports
// for itself.

// A file ends where the system's 32-bit file positions do. Pairs of 16-bit samples that fit in any case.
constexpr std::int64_t MAXIMUM_WAVE_PAIRS = (0x7FFF0000 - 44) / 4;

// Creates the file, writes its header and gives it a buffer of that many bytes. The sample rate in Hz and the
// bits per sample go into the header. Returns 1.
int WaveFileOpen(const char* path, int bufferSize, int channels, int sampleRate, int bitsPerSample);

// Appends a pair of samples, or does nothing while no file is open. The pair that finds the buffer full is
// not stored: it makes room for those that follow. Once making room has failed nothing is stored any more.
// Returns 1.
inline int WaveFileWriteSample(std::int16_t left, std::int16_t right);

// Writes what is in the buffer and the sizes in the header, and closes the file. Returns 1.
int WaveFileClose();

// What is free of the buffer of the open file: nothing without a file, and once making room has failed.
struct WaveFileRoom {
    char* next = nullptr;
    char* end = nullptr;
};
extern WaveFileRoom waveFileRoom;
int WaveFileMakeRoom();

// Here, because it is called millions of times for one file.
int WaveFileWriteSample(std::int16_t left, std::int16_t right) {
    const std::int16_t pair[] = {left, right};
    if (waveFileRoom.end - waveFileRoom.next < static_cast<std::ptrdiff_t>(sizeof pair)) {
        return WaveFileMakeRoom();
    }
    std::memcpy(waveFileRoom.next, pair, sizeof pair);
    waveFileRoom.next += sizeof pair;
    return 1;
}
