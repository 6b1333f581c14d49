// What doubles of system libraries that are called by several threads share: functions that fail, and that
// take their time, and the calls that were made.
#pragma once

#include <windows.h>

#include <map>
#include <mutex>
#include <string>
#include <utility>

class ScriptedCalls {
public:
    // What a function returns without doing anything; 0: it works.
    virtual void Fail(const std::string& function, unsigned long result) {
        const std::lock_guard guard(lock_);
        failures_[function] = result;
    }
    // How many milliseconds a call takes, unless the delays are ended before.
    virtual void Delay(const std::string& function, DWORD milliseconds) {
        const std::lock_guard guard(lock_);
        ResetEvent(goesOn_);
        delays_[function] = milliseconds;
    }
    // Lets the calls go on that wait, and all that come until the next Delay.
    virtual void EndDelays() {
        const std::lock_guard guard(lock_);
        delays_.clear();
        SetEvent(goesOn_);
    }
    // The calls since the last time that are worth telling; "; " stands between them.
    virtual std::string TakeCalls() {
        const std::lock_guard guard(lock_);
        return std::exchange(calls_, {});
    }
    // How many calls are waiting.
    virtual int Waiting() {
        const std::lock_guard guard(lock_);
        return waiting_;
    }

protected:
    ~ScriptedCalls() = default;

    // Notes a call and does what the test wants of it.
    unsigned long Begin(const std::string& function, const std::string& arguments = {}) {
        DWORD delay = 0;
        {
            const std::lock_guard guard(lock_);
            if (!arguments.empty()) {
                calls_ += (calls_.empty() ? "" : "; ") + function + " " + arguments;
            }
            const auto found = delays_.find(function);
            delay = found == delays_.end() ? 0 : found->second;
            waiting_ += delay != 0;
        }
        if (delay != 0) {
            WaitForSingleObject(goesOn_, delay);
        }
        const std::lock_guard guard(lock_);
        waiting_ -= delay != 0;
        const auto failure = failures_.find(function);
        return failure == failures_.end() ? 0 : failure->second;
    }
    void Forget() {
        const std::lock_guard guard(lock_);
        failures_.clear();
        delays_.clear();
        calls_.clear();
        SetEvent(goesOn_);
    }

private:
    const HANDLE goesOn_ = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::mutex lock_;
    std::map<std::string, unsigned long> failures_;
    std::map<std::string, DWORD> delays_;
    std::string calls_;
    int waiting_ = 0;
};
