// SPDX-License-Identifier: MIT
// Times of packets as texts.
#pragma once

#include <QByteArray>

/// "2026-11-21T17:40:04.123456789Z"; `time` in nanoseconds since 1970.
QByteArray isoTime(qint64 time);
void appendIsoTime(QByteArray &to, qint64 time);
/// "17:40:04.123456", the time of day here.
QByteArray clockTime(qint64 time);
