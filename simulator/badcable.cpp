// SPDX-License-Identifier: MIT
#include "simulator/badcable.h"

#include <utility>

namespace simulator {

namespace {

constexpr int kMinRun = 5; // between two stalls, in lengths of a stall
constexpr int kMaxRun = 15;

bool happens(double probability, std::mt19937 &chance)
{
    return probability > 0 && static_cast<double>(chance()) < probability * 4294967296.0;
}

char withNoise(char byte, double noise, std::mt19937 &chance)
{
    unsigned bits = static_cast<unsigned char>(byte);
    for (unsigned bit = 0; bit < 8; ++bit)
        bits ^= static_cast<unsigned>(happens(noise, chance)) << bit;
    return static_cast<char>(bits);
}

} // namespace

BadCable::BadCable(quint32 seed, QObject *parent)
    : QObject(parent),
      m_toProgram(seed),
      m_toBoard(seed + 1),
      m_stalls(seed + 2)
{
    for (QTimer *timer : {&m_stallTimer, &m_plugTimer})
        timer->setSingleShot(true);
    connect(&m_stallTimer, &QTimer::timeout, this, [this] { setStalled(!m_stalled); });
    connect(&m_plugTimer, &QTimer::timeout, this, [this] { setPulledOut(!m_pulledOut); });
}

void BadCable::setFaults(const CableFaults &faults)
{
    m_faults = faults;
    setStalled(false);
    if (!m_pulledOut)
        setPulledOut(false);
}

void BadCable::sendToProgram(const QByteArray &bytes)
{
    const QByteArray arriving = impaired(bytes, m_toProgram);
    if (m_stalled)
        m_held.append(arriving);
    else if (!m_pulledOut)
        emit reachedProgram(arriving);
}

void BadCable::sendToBoard(const QByteArray &bytes)
{
    if (!m_pulledOut)
        emit reachedBoard(impaired(bytes, m_toBoard));
}

QByteArray BadCable::impaired(const QByteArray &bytes, std::mt19937 &chance) const
{
    if (m_faults.noise <= 0 && m_faults.drop <= 0 && m_faults.duplicate <= 0)
        return bytes;
    QByteArray result;
    for (const char byte : bytes) {
        if (happens(m_faults.drop, chance))
            continue;
        result.append(withNoise(byte, m_faults.noise, chance));
        if (happens(m_faults.duplicate, chance))
            result.append(result.back());
    }
    return result;
}

void BadCable::setStalled(bool stalled)
{
    m_stalled = stalled;
    const QByteArray held = stalled ? QByteArray() : std::exchange(m_held, {});
    if (!held.isEmpty() && !m_pulledOut)
        emit reachedProgram(held);
    if (m_faults.stallMs <= 0)
        m_stallTimer.stop();
    else if (stalled)
        m_stallTimer.start(m_faults.stallMs);
    else
        m_stallTimer.start(m_faults.stallMs * (kMinRun + static_cast<int>(m_stalls() % (kMaxRun - kMinRun + 1))));
}

void BadCable::setPulledOut(bool out)
{
    const bool changed = std::exchange(m_pulledOut, out) != out;
    if (out)
        m_plugTimer.start(kAwayMs);
    else if (m_faults.hangUpMs > 0)
        m_plugTimer.start(m_faults.hangUpMs);
    else
        m_plugTimer.stop();
    if (!changed)
        return;
    m_held.clear();
    if (out)
        emit pulledOut();
    else
        emit pluggedIn();
}

} // namespace simulator
