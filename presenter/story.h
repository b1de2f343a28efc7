// SPDX-License-Identifier: MIT
// The story of the last fault: what was done to the chip, what noticed it and how fast, what the chip did about it.
#pragma once

#include "link/commandlines.h"
#include "protocol/report.h"

#include <QObject>
#include <QString>

#include <array>

namespace presenter {

struct Story {
    static constexpr int kSteps = 3;

    std::array<QString, kSteps> steps; // injected, detected, reaction; empty: has not happened yet
    QString meaning;                   // known once a fault has been detected

    /// So many steps have happened.
    int reached() const;
    bool operator==(const Story &) const = default;
};

/// Follows the line and the reports. A new injection begins a new story, and so does a fault that nobody injected.
class Teller : public QObject
{
    Q_OBJECT

public:
    explicit Teller(QObject *parent = nullptr);

    const Story &story() const { return m_story; }
    /// As before the first fault.
    void forget();

signals:
    void changed();

private:
    void take(const QByteArray &sent);
    void begin(const QString &line);
    void hear(const protocol::Report &report);
    void tell(const protocol::fccu::FaultEvent &fault);
    void tell(const protocol::fccu::UnitState &unit);
    void tell(const protocol::sys::RestartNotice &notice);
    void react();
    void set(int step, const QString &text);

    CommandLines m_lines;
    Story m_story;
    quint8 m_state = protocol::fccu::Normal;
};

} // namespace presenter
