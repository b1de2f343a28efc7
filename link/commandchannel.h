// SPDX-License-Identifier: MIT
// Commands to the board and the waits between them.
#pragma once

#include <QString>

/// Writes `command` and "\r\n" to the port as Latin-1, in one write; a character beyond Latin-1 goes as "?".
/// Nobody waits for the bytes to leave or for an answer; with the port closed the command is lost.
void sendCommand(const QString &command);
void sendCommand(QLatin1String command);

/// Waits `milliseconds` while events of every kind are processed: anything can run inside.
/// The end is a time of day, so that a wait across midnight ends at once; 0 or less processes nothing.
void delayMs(int milliseconds);
/// True while somebody waits so, whoever asks from inside.
bool isDelayed();
