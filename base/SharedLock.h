#pragma once

#include <windows.h>

// A lock that many readers or one writer hold. Never throws, other than the mutex of the standard library,
// which takes memory when it is first locked.
class SharedLock {
public:
    SharedLock() = default;
    SharedLock(const SharedLock&) = delete;
    SharedLock& operator=(const SharedLock&) = delete;

    // For std::lock_guard.
    void lock() { AcquireSRWLockExclusive(&lock_); }
    void unlock() { ReleaseSRWLockExclusive(&lock_); }

    class Reading {
    public:
        explicit Reading(SharedLock& lock) : lock_(lock) { AcquireSRWLockShared(&lock_.lock_); }
        ~Reading() { ReleaseSRWLockShared(&lock_.lock_); }
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

    private:
        SharedLock& lock_;
    };

    class Writing {
    public:
        explicit Writing(SharedLock& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_.lock_); }
        ~Writing() { ReleaseSRWLockExclusive(&lock_.lock_); }
        Writing(const Writing&) = delete;
        Writing& operator=(const Writing&) = delete;

        // Gives the lock up until the variable is woken.
        void Wait(CONDITION_VARIABLE& variable) {
            SleepConditionVariableSRW(&variable, &lock_.lock_, INFINITE, 0);
        }

    private:
        SharedLock& lock_;
    };

private:
    SRWLOCK lock_ = SRWLOCK_INIT;
};
