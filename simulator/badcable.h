// SPDX-License-Identifier: MIT
// The cable between the board and its line, with what goes wrong on cables.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <random>

/// All zero: a good cable.
struct CableFaults {
    double noise = 0;     // probability of a flipped bit, for each bit
    double drop = 0;      // probability of a lost byte, for each byte
    double duplicate = 0; // probability of a byte that arrives twice, for each byte
    int stallMs = 0;      // the way to the program stops for so long, now and then; 0: never
    int hangUpMs = 0;     // a line that is plugged in lasts so long; 0: for ever
};

/// Both ways suffer the same noise, losses and doublings, each by a chance of its own. A stall keeps what the board sends
/// and lets it go afterwards; it comes after 5 to 15 times its own length. Of what is sent while the cable is pulled out
/// nothing arrives.
class BadCable : public QObject
{
    Q_OBJECT

public:
    /// How long the cable stays pulled out.
    static constexpr int kAwayMs = 1000;

    /// The same seed does the same to the same bytes.
    explicit BadCable(quint32 seed = 1, QObject *parent = nullptr);

    /// From now on; a stall under way ends, the time to the next hang-up begins.
    void setFaults(const CableFaults &faults);

    void sendToProgram(const QByteArray &bytes);
    void sendToBoard(const QByteArray &bytes);

signals:
    void reachedProgram(const QByteArray &bytes);
    void reachedBoard(const QByteArray &bytes);
    void pulledOut();
    void pluggedIn();

private:
    QByteArray impaired(const QByteArray &bytes, std::mt19937 &chance) const;
    void setStalled(bool stalled);
    void setPulledOut(bool out);

    CableFaults m_faults;
    std::mt19937 m_toProgram;
    std::mt19937 m_toBoard;
    std::mt19937 m_stalls;
    bool m_stalled = false;
    bool m_pulledOut = false;
    QByteArray m_held; // what a stall keeps
    QTimer m_stallTimer;
    QTimer m_plugTimer;
};
