#include "Controls/interfaces/wave/WaveFile.h"

#include "Panelhost/Trace.h"
#include "logic/sound/SampleFormat.h"

#include <windows.h>

#include <mmsystem.h>

WaveFileRoom waveFileRoom;

namespace {

HMMIO file = nullptr;
MMCKINFO riffChunk;
MMCKINFO chunk;     // "fmt ", then "data"
MMIOINFO buffer;    // positions in the buffer of the open file
bool stuck = false; // there is no room in the buffer and none can be made

void Check(MMRESULT result, const char* message) {
    if (result != MMSYSERR_NOERROR) {
        TRACE("%s", message);
    }
}

// Not every version of the system minds the lack of a file here.
MMRESULT Ascend(MMCKINFO& from) {
    return file == nullptr ? MMSYSERR_INVALHANDLE : mmioAscend(file, &from, 0);
}

void ShowRoom() {
    waveFileRoom =
        file == nullptr || stuck ? WaveFileRoom{} : WaveFileRoom{buffer.pchNext, buffer.pchEndWrite};
}

void WriteFormat(const logic::SampleFormat& format) {
    const std::vector<std::uint8_t> record = logic::FormatRecord(format);
    chunk = {};
    chunk.ckid = mmioFOURCC('f', 'm', 't', ' ');
    chunk.cksize = record.size();
    Check(mmioCreateChunk(file, &chunk, 0), "Error: mmioFOURCC\n");
    const auto length = static_cast<LONG>(record.size());
    if (mmioWrite(file, reinterpret_cast<const char*>(record.data()), length) != length) {
        TRACE("Error: mmioWrite\n");
    }
    Check(Ascend(chunk), "Error: mmioAscend\n");
}

} // namespace

int WaveFileOpen(const char* path, int bufferSize, int channels, int sampleRate, int bitsPerSample) {
    if (file != nullptr) {
        WaveFileClose();
    }
    file = mmioOpenA(const_cast<char*>(path), nullptr, MMIO_CREATE | MMIO_WRITE | MMIO_ALLOCBUF);
    if (file == nullptr) {
        TRACE("Error: mmioOpen\n"); // the steps that follow fail as well, each with its message
    }
    riffChunk = {};
    riffChunk.fccType = mmioFOURCC('W', 'A', 'V', 'E');
    Check(mmioCreateChunk(file, &riffChunk, MMIO_CREATERIFF), "Error: mmioCreateChunk\n");
    WriteFormat({.channels = static_cast<std::uint16_t>(channels),
                 .bits = static_cast<std::uint16_t>(bitsPerSample),
                 .rate = static_cast<std::uint32_t>(sampleRate)});
    chunk = {};
    chunk.ckid = mmioFOURCC('d', 'a', 't', 'a');
    Check(mmioCreateChunk(file, &chunk, 0), "Error: mmioCreateChunk\n");
    Check(mmioSetBuffer(file, nullptr, bufferSize, 0), "Error 0009\n");
    buffer = {};
    const MMRESULT described = mmioGetInfo(file, &buffer, 0);
    Check(described, "Error: mmioGetInfo\n");
    stuck = described != MMSYSERR_NOERROR;
    ShowRoom();
    return 1;
}

int WaveFileMakeRoom() {
    if (file == nullptr || stuck) {
        return 1;
    }
    buffer.pchNext = waveFileRoom.next;
    buffer.dwFlags |= MMIO_DIRTY;
    stuck = mmioAdvance(file, &buffer, MMIO_WRITE) != MMSYSERR_NOERROR;
    if (stuck) {
        TRACE("Error: mmioAdvance\n");
    }
    ShowRoom();
    return 1;
}

int WaveFileClose() {
    if (!stuck) {
        buffer.pchNext = waveFileRoom.next;
    }
    waveFileRoom = {};
    Check(mmioSetInfo(file, &buffer, 0), "Error: mmioSetInfo\n");
    buffer.dwFlags |= MMIO_DIRTY;
    Check(mmioSetInfo(file, &buffer, 0), "Error: mmioSetInfo\n");
    Check(Ascend(chunk), "Error: mmioAscend\n");
    Check(Ascend(riffChunk), "Error: mmioAscend ???\n");
    if (file != nullptr && mmioClose(file, 0) != MMSYSERR_NOERROR) {
        // What is left in the buffer cannot be written: without it the file can be closed.
        mmioGetInfo(file, &buffer, 0);
        buffer.dwFlags &= ~MMIO_DIRTY;
        mmioSetInfo(file, &buffer, 0);
        mmioClose(file, 0);
    }
    file = nullptr;
    return 1;
}
