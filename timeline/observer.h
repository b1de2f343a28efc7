// SPDX-License-Identifier: MIT
// Keeps the chronicle: listens to reports and line from now on.
#pragma once

#include "link/commandlines.h"
#include "session/clock.h"
#include "timeline/chronicle.h"

#include <QObject>

namespace timeline {

class Observer : public QObject
{
    Q_OBJECT

public:
    explicit Observer(QObject *parent = nullptr);

    const Chronicle &chronicle() const { return m_chronicle; }
    /// Nanoseconds since 1970, UTC, as in the chronicle.
    qint64 now() const { return m_clock.now(); }

signals:
    /// The chronicle has grown.
    void grown();

private:
    void take(const QByteArray &sent);

    session::Clock m_clock;
    CommandLines m_lines;
    Chronicle m_chronicle;
};

} // namespace timeline
