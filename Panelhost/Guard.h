#pragma once

#include <exception>
#include <utility>

// Runs an action whose exceptions must not leave this library: an exception that crosses into another module
// ends the process. What can be thrown here is lack of memory; the answer is then the one for failure.
template <class Result, class Action>
Result Guarded(Result onFailure, Action&& action) noexcept {
    try {
        return std::forward<Action>(action)();
    } catch (const std::exception&) {
        return onFailure;
    }
}

template <class Action>
void Guarded(Action&& action) noexcept {
    try {
        std::forward<Action>(action)();
    } catch (const std::exception&) {
        return; // the caller sees what was done so far
    }
}
