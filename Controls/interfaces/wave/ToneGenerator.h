#pragma once

#include <atomic>

// Writes sine tones into the wave file, on the thread that runs it. All generators of the process write by
// turns, in the order of their requests: there is one file and one writer for it.
class ToneGenerator {
public:
    enum class Requested { Refused, GoesOn, NeedsThread };

    // Asks for a generation of that many seconds. While one is running another follows it, of the length
    // asked for last. Refused once stopped.
    Requested Request(int seconds);
    // Takes a request back for which there is no thread.
    void Withdraw();
    // Cuts short what is generated.
    void Stop();
    // On the thread: ends when there is nothing to generate any more.
    void Run();

    std::atomic<int> duration = 0;          // seconds, what was asked for last; 0 when all is generated
    const int bitsPerSample = 16;           // in the header of the file; its samples always have 16
    const float sampleRate = 44100.0F;      // Hz
    std::atomic<int> amplitude = 0x5FFF;    // peak sample value
    std::atomic<float> frequency = 1000.0F; // Hz

private:
    bool BeginTurn();
    void EndTurn();
    void WriteTone();
    void LeaveQueue();

    double phase_ = 0.0; // radians, of the next sample; belongs to the thread
    std::atomic<bool> stopping_ = false;
    // Guarded by the lock of the queue:
    bool queued_ = false;    // the thread is or will be there
    bool requested_ = false; // a generation that has not begun
    int seconds_ = 0;        // length of the one that has
};
