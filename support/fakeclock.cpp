// SPDX-License-Identifier: MIT
// Minutes of the program's life pass in seconds or less, with every timer in its order. The wall clock that measures the
// fuzzer stays.
#include "support/fakeclock.h"

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>

#include <poll.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr int64_t kSecond = 1'000'000'000;
std::atomic<int64_t> ahead{0}; // nanoseconds
std::atomic<int> speed{FAKE_CLOCK_SPEED};
// The plain event loop: it waits by a call that is replaced here.
const int plainLoop = setenv("QT_NO_GLIB", "1", 1);

int64_t nanoseconds(const timespec &time)
{
    return time.tv_sec * kSecond + time.tv_nsec;
}

timespec timeOf(int64_t nanoseconds)
{
    return {nanoseconds / kSecond, nanoseconds % kSecond};
}

timespec shortened(const timespec &time)
{
    return timeOf(speed > 0 ? nanoseconds(time) / speed : 0);
}

// Time that was asked for and not slept.
void moveOn(const timespec &time, const timespec &slept)
{
    ahead += nanoseconds(time) - nanoseconds(slept);
}

} // namespace

void fakeclock::setSpeed(int newSpeed)
{
    speed = newSpeed;
}

extern "C" int clock_gettime(clockid_t clock, timespec *now) noexcept
{
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, now));
    if (result == 0 && clock == CLOCK_MONOTONIC)
        *now = timeOf(nanoseconds(*now) + ahead);
    return result;
}

extern "C" int gettimeofday(timeval *now, void *) noexcept
{
    timespec time = {};
    syscall(SYS_clock_gettime, CLOCK_REALTIME, &time);
    time = timeOf(nanoseconds(time) + ahead);
    *now = {time.tv_sec, time.tv_nsec / 1000};
    return 0;
}

// Reports ready descriptors. Without a time-out the caller really waits.
extern "C" int ppoll(pollfd *files, nfds_t count, const timespec *timeout, const sigset_t *signals)
{
    timespec time = timeout ? shortened(*timeout) : timespec();
    const timespec slept = time;
    const auto ready =
        static_cast<int>(syscall(SYS_ppoll, files, count, timeout ? &time : nullptr, signals, _NSIG / 8));
    if (ready == 0 && timeout)
        moveOn(*timeout, slept);
    return ready;
}

extern "C" int nanosleep(const timespec *time, timespec *)
{
    const timespec slept = shortened(*time);
    if (nanoseconds(slept) > 0)
        syscall(SYS_nanosleep, &slept, nullptr);
    moveOn(*time, slept);
    return 0;
}
