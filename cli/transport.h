// SPDX-License-Identifier: MIT
// The ways to a board: a serial port, a port that another machine shares, a virtual board of our own. Whatever the way,
// its traffic is announced by lineTraffic().
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct Settings;

class Transport
{
public:
    virtual ~Transport() = default;
    /// As a recording names it: "ttyUSB0", "localhost:3001".
    virtual QString name() const = 0;
    /// Returns why that failed, for people; empty on success. Takes `timeoutMs` at most.
    virtual QString open(int timeoutMs) = 0;
    virtual void write(const QByteArray &bytes) = 0;
};

struct Way {
    std::unique_ptr<Transport> transport; // null: there is none
    QString trouble;
    int exitCode = 0; // of the trouble
};

/// The way that the settings name.
Way wayTo(const Settings &settings);
