// SPDX-License-Identifier: MIT
// Putting what was decoded on the screen: only what changed, and once for all frames of one arrival.
//
// A widget takes 10 to 20 microseconds to repaint, a frame on the line about 70. So while an arrival's frames are
// decoded (a Batch lives), what they show is noted per widget and shown once at the end; outside a batch at once.
#pragma once

#include <QString>

#include <functional>

class QLabel;
class QLCDNumber;
class QLineEdit;
class QTextEdit;
class QWidget;

namespace display {

/// While one lives, what is shown waits for its end. They nest; the end of any shows all that waits.
class Batch
{
public:
    Batch();
    ~Batch();
    Batch(const Batch &) = delete;
    Batch &operator=(const Batch &) = delete;
};

/// While one lives, nothing waits: for code that processes events, so that what happens inside is seen.
class Pause
{
public:
    Pause();
    ~Pause();
    Pause(const Pause &) = delete;
    Pause &operator=(const Pause &) = delete;

private:
    int m_batches;
};

/// Runs `work` at once, or at the batch's end; of several works for one `key` only the latest.
void later(const void *key, const std::function<void()> &work);

/// Set the text where it differs.
void text(QLabel *label, const QString &text);
void text(QLineEdit *field, const QString &text);
/// Plain text, whatever it holds.
void text(QTextEdit *box, const QString &text);

} // namespace display
