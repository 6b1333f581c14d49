#pragma once

#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

// The frame of the fault campaign: random but repeatable rounds of one topic after the other. Each round
// destroys all that it made. A topic is one file.

class Random {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <class Range>
    const auto& Pick(const Range& range) {
        return std::data(range)[Below(static_cast<int>(std::size(range)))];
    }
    char Byte() { return static_cast<char>(Below(256)); }
    // Fewer of them than the limit.
    std::string Bytes(int limit) {
        std::string bytes(static_cast<std::size_t>(Below(limit)), ' ');
        std::generate(bytes.begin(), bytes.end(), [this] { return Byte(); });
        return bytes;
    }

private:
    std::mt19937 engine_; // the same on every system, other than the distributions
};

struct Topic {
    const char* name;
    void (*round)(Random& random, int number);
};
extern const Topic recordsTopic, destructionTopic, savingTopic, filesTopic, memoryTopic, diskTopic,
    terminalTopic;

// Says what is about to be done: a crash, a hang or a failed expectation is reported with it.
void Doing(const char* format, ...) __attribute__((format(gnu_printf, 1, 2)));
// Reports a failure when the condition does not hold.
void Expect(bool holds, const char* format, ...) __attribute__((format(gnu_printf, 2, 3)));

// Folder on a volume of few bytes; empty when there is none.
extern std::string smallVolume;

// The same text, printable, and of no more characters than that.
std::string Shown(const std::string& text, std::size_t limit = 200);
