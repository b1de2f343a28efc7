// SPDX-License-Identifier: MIT
// Linked into a program, this makes its waits take no time: who would sleep moves the clock on instead. Minutes of the
// program's life pass in milliseconds, with every timer in its order. The wall clock that measures the fuzzer stays.
#include "support/fakeclock.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>

#include <poll.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr int64_t kSecond = 1'000'000'000;
std::atomic<int64_t> ahead{0};    // nanoseconds
std::atomic<int64_t> realWait{0}; // nanoseconds

timespec shifted(const timespec &time)
{
    const int64_t nanoseconds = time.tv_sec * kSecond + time.tv_nsec + ahead;
    return {nanoseconds / kSecond, nanoseconds % kSecond};
}

void moveOn(const timespec &time)
{
    ahead += time.tv_sec * kSecond + time.tv_nsec;
}

} // namespace

void fakeclock::setRealWait(int microseconds)
{
    realWait = microseconds * int64_t{1000};
}

extern "C" int clock_gettime(clockid_t clock, timespec *now) noexcept
{
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, now));
    if (result == 0 && clock == CLOCK_MONOTONIC)
        *now = shifted(*now);
    return result;
}

extern "C" int gettimeofday(timeval *now, void *) noexcept
{
    timespec time = {};
    syscall(SYS_clock_gettime, CLOCK_REALTIME, &time);
    time = shifted(time);
    *now = {time.tv_sec, time.tv_nsec / 1000};
    return 0;
}

// What is ready is reported; else the time-out is over at once. Without one the caller really waits.
extern "C" int ppoll(pollfd *files, nfds_t count, const timespec *timeout, const sigset_t *signals)
{
    timespec wait = {0, std::min<int64_t>(realWait, timeout ? timeout->tv_sec * kSecond + timeout->tv_nsec : 0)};
    const auto ready =
        static_cast<int>(syscall(SYS_ppoll, files, count, timeout ? &wait : nullptr, signals, _NSIG / 8));
    if (ready == 0 && timeout)
        moveOn(*timeout);
    return ready;
}

extern "C" int nanosleep(const timespec *time, timespec *)
{
    moveOn(*time);
    return 0;
}
