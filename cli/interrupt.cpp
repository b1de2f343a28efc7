// SPDX-License-Identifier: MIT
#include "cli/interrupt.h"

#include <QObject>
#include <QSocketNotifier>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace {

volatile sig_atomic_t noted = 0;
int wakeUp[2] = {-1, -1};

void note(int)
{
    noted = 1;
    [[maybe_unused]] const auto written = write(wakeUp[1], "", 1);
}

} // namespace

void onInterrupt(QObject *context, std::function<void()> woken)
{
    if (wakeUp[0] < 0 && pipe2(wakeUp, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [woken = std::move(woken)] {
        char bytes[16];
        while (read(wakeUp[0], bytes, sizeof bytes) > 0) {}
        woken();
    });
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

bool interrupted()
{
    return noted != 0;
}
