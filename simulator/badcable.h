// SPDX-License-Identifier: MIT
// A serial cable with configurable faults.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <random>

namespace simulator {

/// All zero: a good cable.
struct CableFaults {
    double noise = 0;     // probability that a bit is flipped
    double drop = 0;      // probability that a byte is lost
    double duplicate = 0; // probability that a byte arrives twice
    int stallMs = 0;      // length of a stall on the way to the program; 0: none
    int hangUpMs = 0;     // pulled out after this many ms; 0: never
};

/// Noise, losses and doublings affect both directions independently. A stall holds back the board's bytes and releases
/// them at its end; the pause before each stall is 5 to 15 times its length. Bytes sent while the cable is pulled out are
/// lost.
class BadCable : public QObject
{
    Q_OBJECT

public:
    /// How long the cable stays pulled out.
    static constexpr int kAwayMs = 1000;

    /// The same seed harms the same bytes in the same way.
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
    QByteArray m_held; // bytes held back by a stall
    QTimer m_stallTimer;
    QTimer m_plugTimer;
};

} // namespace simulator
