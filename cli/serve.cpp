// SPDX-License-Identifier: MIT
// serve: the board of a recording, on a terminal.
#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "cli/jsonline.h"
#include "cli/recordingfile.h"
#include "cli/servecontrol.h"
#include "cli/settings.h"
#include "cli/terminal.h"
#include "cli/verbs.h"
#include "session/player.h"
#include "session/recorder.h"
#include "session/recordingwriter.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

constexpr int kTimeoutMs = 60000;

class Service : public QObject
{
public:
    Service(const Settings &settings, const session::Tape &tape)
        : m_settings(settings),
          m_player(tape),
          m_recorder([this](const session::Packet &packet) { m_copy.add(packet); }),
          m_terminal(settings.link)
    {
        connect(&m_player, &session::Player::arrived, this, [this](const QByteArray &bytes) {
            m_recorder.received(bytes);
            m_terminal.send(bytes);
        });
        connect(&m_terminal, &Terminal::received, this, [this](const QByteArray &bytes) { m_recorder.sent(bytes); });
        connect(&m_terminal, &Terminal::opened, this, &Service::begin);
        connect(&m_terminal, &Terminal::taken, this, &Service::endWhenPlayed);
        connect(&m_player, &session::Player::lineChanged, this,
                [this](bool there) { there ? m_terminal.plugIn() : m_terminal.hangUp(); });
        connect(&m_terminal, &Terminal::hungUp, this,
                [this] { m_recorder.lost(QStringLiteral("as in the recording")); });
        connect(&m_terminal, &Terminal::pluggedIn, this, [this] {
            m_recorder.opened(m_terminal.name());
            awaitProgram();
        });
        connect(&m_player, &session::Player::changed, this, &Service::endWhenPlayed);
        connect(&m_copy, &session::RecordingWriter::failed, this, &complain);
        onInterrupt(this, [] { QCoreApplication::exit(kInterrupted); });
        m_patience.setSingleShot(true);
        connect(&m_patience, &QTimer::timeout, this, [this] {
            complain(QStringLiteral("nobody opened the terminal within %1 s").arg(m_patience.interval() / 1000.0));
            QCoreApplication::exit(kLineOrBoard);
        });
    }

    int run()
    {
        if (m_terminal.name().isEmpty()) {
            complain(QStringLiteral("no pseudo-terminal to be had"));
            return kLineOrBoard;
        }
        if (!m_settings.record.isEmpty()
            && !m_copy.open(m_settings.record, QStringLiteral("safety-workbench-cli " WORKBENCH_VERSION),
                            m_terminal.name()))
            return kUsageOrFile;
        if (m_settings.control)
            m_control.emplace(m_player, m_settings.json);
        awaitProgram();
        return QCoreApplication::exec();
    }

private:
    void awaitProgram()
    {
        m_patience.start(m_settings.timeoutMs.value_or(kTimeoutMs));
        Output output;
        output.line(m_settings.json ? JsonLine("terminal").add("tty", m_terminal.name()).take()
                                    : "tty: " + m_terminal.name().toUtf8());
    }

    // The tape starts when somebody listens; who closes the terminal and opens it again finds it running.
    void begin()
    {
        m_patience.stop();
        if (std::exchange(m_begun, true))
            return;
        m_recorder.opened(m_terminal.name());
        m_player.setSpeed(m_settings.speed);
        m_player.moveTo(static_cast<qint64>(m_settings.fromSeconds * 1e9));
        m_player.play();
        endWhenPlayed();
    }

    void endWhenPlayed()
    {
        if (m_begun && !m_settings.control && m_player.isAtEnd() && m_terminal.isTaken())
            QCoreApplication::exit(m_copy.trouble().isEmpty() ? kAsAsked : kUsageOrFile);
    }

    const Settings &m_settings;
    session::Player m_player;
    session::RecordingWriter m_copy;
    session::Recorder m_recorder;
    Terminal m_terminal;
    std::optional<ServeControl> m_control;
    QTimer m_patience;
    bool m_begun = false;
};

} // namespace

int verbs::serve(const Settings &settings)
{
    RecordingFile file;
    if (!file.open(settings))
        return kUsageOrFile;
    session::Tape tape;
    tape.load(file.reader());
    const bool whole = file.isWhole();
    if (tape.arrivals().empty()) {
        complain(QStringLiteral("%1: nothing came from the board in it").arg(settings.arguments.first()));
        return kUsageOrFile;
    }
    Service service(settings, tape);
    const int code = service.run();
    return code == kAsAsked && !whole ? kUsageOrFile : code;
}
