// SPDX-License-Identifier: MIT
#include "simulator/signals.h"

#include <QObject>
#include <QSocketNotifier>

#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace simulator {

void onSignals(std::initializer_list<int> numbers, QObject *context, std::function<void(int)> handler)
{
    sigset_t wanted;
    sigemptyset(&wanted);
    for (const int number : numbers)
        sigaddset(&wanted, number);
    sigprocmask(SIG_BLOCK, &wanted, nullptr);
    const int file = signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK);
    auto *notifier = new QSocketNotifier(file, QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [file, handler = std::move(handler)] {
        signalfd_siginfo signal = {};
        while (read(file, &signal, sizeof signal) == sizeof signal)
            handler(static_cast<int>(signal.ssi_signo));
    });
}

} // namespace simulator
