// SPDX-License-Identifier: MIT
#include "session/player.h"

#include "session/clock.h"

#include <QSocketNotifier>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <utility>

#include <sys/timerfd.h>
#include <unistd.h>

namespace session {

namespace {

qint64 steadyNow()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

// The system's own timer on an absolute moment: Qt's count in whole milliseconds from now.
class Alarm
{
public:
    explicit Alarm(std::function<void()> ring)
        : m_file(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)),
          m_notifier(m_file, QSocketNotifier::Read)
    {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this, ring = std::move(ring)] {
            quint64 times;
            if (read(m_file, &times, sizeof times) == sizeof times)
                ring();
        });
    }
    ~Alarm()
    {
        m_notifier.setEnabled(false);
        close(m_file);
    }
    Alarm(const Alarm &) = delete;
    Alarm &operator=(const Alarm &) = delete;

    void set(qint64 moment)
    {
        const qint64 at = std::max<qint64>(moment, 1); // 0 would switch it off
        const itimerspec spec = {{0, 0}, {at / kPerSecond, at % kPerSecond}};
        timerfd_settime(m_file, TFD_TIMER_ABSTIME, &spec, nullptr);
    }
    void clear()
    {
        const itimerspec never = {};
        timerfd_settime(m_file, 0, &never, nullptr);
    }

private:
    int m_file;
    QSocketNotifier m_notifier;
};

Player::Player(const Tape &tape, QObject *parent)
    : QObject(parent),
      m_tape(tape),
      m_alarm(std::make_unique<Alarm>([this] { playDue(); }))
{
    anchor(0);
}

Player::~Player() = default;

qint64 Player::position() const
{
    if (!m_playing)
        return m_anchorTape;
    const auto played = static_cast<double>(steadyNow() - m_anchorClock) * m_speed;
    return std::min(m_anchorTape + static_cast<qint64>(played), m_tape.length());
}

void Player::anchor(qint64 position)
{
    m_anchorTape = position;
    m_anchorClock = steadyNow();
}

void Player::arm()
{
    if (!m_playing || isAtEnd()) {
        m_alarm->clear();
        return;
    }
    const auto &arrivals = m_tape.arrivals();
    const auto &turns = m_tape.turns();
    const qint64 never = m_tape.length();
    const qint64 next = std::min(m_next < arrivals.size() ? arrivals[m_next].time : never,
                                 m_nextTurn < turns.size() ? turns[m_nextTurn].time : never);
    const auto ahead = static_cast<double>(next - m_anchorTape) / m_speed;
    m_alarm->set(m_anchorClock + std::llround(ahead));
}

void Player::playDue()
{
    const qint64 now = position();
    const auto &turns = m_tape.turns();
    while (m_nextTurn < turns.size() && turns[m_nextTurn].time <= now) {
        const qint64 turn = turns[m_nextTurn].time;
        emitUntil(turn);
        turnTo(turn);
    }
    emitUntil(now);
    if (m_playing && isAtEnd())
        pause();
    else
        arm();
}

// Bytes are announced in bounded pieces; who listens may move the tape meanwhile.
void Player::emitUpTo(std::size_t next)
{
    constexpr std::size_t together = 1024;
    while (m_next < next) {
        const std::size_t count = std::min(together, next - m_next);
        const std::string_view bytes = m_tape.bytes(m_next, count);
        m_next += count;
        recallUpTo(m_tape.arrivals()[m_next - 1].time);
        emit arrived(QByteArray(bytes.data(), static_cast<int>(bytes.size())));
    }
}

void Player::emitUntil(qint64 time)
{
    const auto &arrivals = m_tape.arrivals();
    const auto after = std::upper_bound(arrivals.begin(), arrivals.end(), time,
                                        [](qint64 wanted, const Tape::Arrival &one) { return wanted < one.time; });
    emitUpTo(static_cast<std::size_t>(after - arrivals.begin()));
}

bool Player::isThereAt(qint64 time) const
{
    const auto &turns = m_tape.turns();
    const auto after = std::upper_bound(turns.begin(), turns.end(), time,
                                        [](qint64 wanted, const Tape::Turn &one) { return wanted < one.time; });
    return after == turns.begin() || std::prev(after)->there;
}

void Player::turnTo(qint64 time)
{
    const auto &turns = m_tape.turns();
    m_nextTurn = static_cast<std::size_t>(
        std::count_if(turns.begin(), turns.end(), [time](const Tape::Turn &turn) { return turn.time <= time; }));
    const bool there = isThereAt(time);
    if (std::exchange(m_there, there) != there)
        emit lineChanged(there);
}

void Player::recallUpTo(qint64 time)
{
    const auto &commands = m_tape.commands();
    while (m_nextCommand < commands.size() && commands[m_nextCommand].time <= time)
        emit recalled(commands[m_nextCommand++].text);
}

void Player::rewind()
{
    m_next = 0;
    m_nextCommand = 0;
}

void Player::play()
{
    if (m_playing || isAtEnd())
        return;
    m_playing = true;
    anchor(m_anchorTape);
    arm();
    emit changed();
}

void Player::pause()
{
    anchor(isAtEnd() ? m_tape.length() : position());
    m_playing = false;
    arm();
    emit changed();
}

void Player::setSpeed(double times)
{
    anchor(position());
    m_speed = times;
    arm();
    emit changed();
}

void Player::step()
{
    if (m_next >= m_tape.arrivals().size())
        return;
    m_playing = false;
    anchor(m_tape.arrivals()[m_next].time);
    turnTo(m_anchorTape);
    emitUpTo(m_next + 1);
    arm();
    emit changed();
}

void Player::moveTo(qint64 time)
{
    const qint64 target = std::clamp<qint64>(time, 0, m_tape.length());
    if (target < position())
        rewind();
    anchor(target);
    if (isThereAt(target))
        turnTo(target); // first: a line that is gone carries nothing
    emitUntil(target);
    turnTo(target);
    m_playing = m_playing && !isAtEnd();
    arm();
    emit changed();
}

void Player::moveBehind(const std::vector<Tape::Event> &events)
{
    const qint64 now = position();
    const auto next =
        std::find_if(events.begin(), events.end(), [now](const Tape::Event &event) { return event.time > now; });
    moveTo(next == events.end() ? m_tape.length() : next->time);
}

} // namespace session
