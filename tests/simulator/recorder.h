// SPDX-License-Identifier: MIT
// A virtual board's output as text.
#pragma once

#include "simulator/board.h"

#include <QStringList>

#include <utility>

/// Frames as "module/type payload", lower case; texts as "say TEXT".
class Recorder
{
public:
    explicit Recorder(simulator::Board &board)
    {
        QObject::connect(&board, &simulator::Board::output, &board, [this](const QByteArray &frame) {
            const QByteArray payload = frame.mid(8, frame.size() - 12);
            lines.append(frame[4] == 0 ? "say " + QString::fromLatin1(payload)
                                       : QStringLiteral("%1/%2 %3")
                                             .arg(int(frame[4]))
                                             .arg(int(frame[5]))
                                             .arg(QString::fromLatin1(payload.toHex())));
        });
    }
    QString take() { return std::exchange(lines, {}).join('\n'); }

    QStringList lines;
};
