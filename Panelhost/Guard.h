#pragma once

#include <exception>
#include <utility>

// How many exceptions were kept inside on this thread. Whoever has to know whether an answer was one for
// failure compares.
inline unsigned& FailureCount() {
    static thread_local unsigned count = 0;
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
