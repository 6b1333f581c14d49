#pragma once

#include <atomic>
#include <exception>
#include <utility>

// How many exceptions were kept inside this library. Whoever has to know whether an answer was one for
// failure compares. Not counted by thread: that would take memory, which is what there is none of.
inline std::atomic<unsigned>& FailureCount() {
    static std::atomic<unsigned> count = 0;
    return count;
}

// Runs an action whose exceptions must not leave this library: an exception that crosses into another module
// ends the process. What can be thrown here is lack of memory; the answer is then the one for failure.
template <class Result, class Action>
Result Guarded(Result onFailure, Action&& action) noexcept {
    try {
        return std::forward<Action>(action)();
    } catch (const std::exception&) {
        ++FailureCount();
        return onFailure;
    }
}

template <class Action>
void Guarded(Action&& action) noexcept {
    try {
        std::forward<Action>(action)();
    } catch (const std::exception&) {
        ++FailureCount(); // the caller sees what was done so far
    }
}
