// SPDX-License-Identifier: MIT
#include "app/linestatus.h"

#include "app/elidedlabel.h"
#include "app/linelamp.h"
#include "app/linepanel.h"
#include "app/veil.h"
#include "link/linetraffic.h"
#include "link/serialports.h"

#include <QMainWindow>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTime>

namespace {

using State = LineMonitor::State;

constexpr int kMessagesKept = 20;
constexpr int kLongestMessage = 300; // characters

// Without what moves a terminal's cursor; one line.
QString readable(const QString &message)
{
    static const QRegularExpression control(QStringLiteral("\x1B\\[[0-9;]*[A-Za-z]?|[\\x00-\\x1F\\x7F]"));
    return QString(message.left(kLongestMessage)).replace(control, QStringLiteral(" ")).simplified();
}

// A reason as a sentence.
QString sentence(const QString &words)
{
    const QString capital = words.left(1).toUpper() + words.mid(1);
    return capital.back().isLetterOrNumber() ? capital + QLatin1Char('.') : capital;
}

} // namespace

LineStatus::LineStatus(QMainWindow &window)
    : QObject(&window),
      m_message(new ElidedLabel(&window)),
      m_lamp(new LineLamp(&window)),
      m_panel(new LinePanel(m_monitor, &window)),
      m_band(new Band(window)),
      m_veil(new Veil(*window.centralWidget()))
{
    m_message->setObjectName(QStringLiteral("boardMessage"));
    m_message->setAccessibleName(QStringLiteral("The board's latest message"));
    window.statusBar()->addWidget(m_message, 1);
    window.statusBar()->addPermanentWidget(m_lamp);
    connect(m_lamp, &QToolButton::clicked, this,
            [this] { m_panel->open(m_lamp->mapToGlobal(QPoint(m_lamp->width(), -2))); });
    connect(m_panel, &LinePanel::portChosen, this, &LineStatus::portChosen);
    connect(&lineTraffic(), &LineTraffic::opened, this, [this] {
        m_description = portDescription(m_reconnection.port()); // while the port is there

        showState();
    });
    connect(&m_reconnection, &Reconnection::found, this, &LineStatus::portFound);
    connect(&m_monitor, &LineMonitor::changed, this, &LineStatus::showState);
    connect(&m_monitor, &LineMonitor::messagesArrived, this, &LineStatus::showMessages);
    showState();
}

void LineStatus::setRecorder(LineRecorder &recorder)
{
    m_panel->setRecorder(recorder);
}

void LineStatus::giveUp()
{
    m_reconnection.giveUp();
    m_monitor.giveUp();
}

void LineStatus::setTrouble(const QString &trouble)
{
    m_trouble = trouble;
    showState();
}

void LineStatus::showState()
{
    // A lost port's name is among the words.
    const bool named = m_monitor.state() == State::Lost && m_monitor.word().contains(m_monitor.port());
    QStringList port;
    if (!named && !m_monitor.port().isEmpty())
        port.append(m_monitor.port());
    if (!m_description.isEmpty())
        port.append(named || port.isEmpty() ? m_description : QLatin1Char('(') + m_description + QLatin1Char(')'));
    m_lamp->show(m_monitor.state(), m_monitor.word(), port.join(QLatin1Char(' ')));
    m_veil->cover(m_monitor.isStale());
    showBand();
}

void LineStatus::showBand()
{
    const QString since = m_monitor.since().toString(QStringLiteral("HH:mm:ss"));
    switch (m_monitor.state()) {
    case State::Closed:
        return m_band->say(QStringLiteral("Line closed since ") + since, remedy());
    case State::Console:
        return m_band->say(QStringLiteral("The console has the line since ") + since,
                           QStringLiteral("Close the console, and the pages show the board's state again."));
    case State::Lost:
        return m_band->say(QStringLiteral("Line lost at ") + since, remedy());
    case State::Silent:
        return m_band->say(QStringLiteral("No answer from the board since ") + since,
                           QStringLiteral("Held in reset? Switch its supply off and on. The wrong port? Choose another "
                                          "one at the lamp in the status bar."));
    case State::Quiet:
    case State::Receiving:
        break;
    }
    if (m_monitor.isStale())
        m_band->say(QStringLiteral("The line is open again since ") + since,
                    QStringLiteral("Waiting for the board's first report; System > Get Status asks for one."));
    else
        m_band->say({}, {});
}

// Plain text, whatever the board says: also in the tool tip, which would take markup for markup.
void LineStatus::showMessages(const QStringList &texts)
{
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss  "));
    for (const QString &text : texts.mid(qMax(0, texts.size() - kMessagesKept))) {
        const QString words = readable(text);
        if (!words.isEmpty())
            m_messages.prepend(time + QStringLiteral("Board: ") + words);
    }
    m_messages = m_messages.mid(0, kMessagesKept);
    if (m_messages.isEmpty() || m_messages.constFirst() == m_message->text())
        return;
    m_message->setText(m_messages.constFirst());
    m_message->setAccessibleDescription(m_messages.constFirst());
    m_message->setToolTip(
        QStringLiteral("<p style='white-space:pre'>")
        + m_messages.join(QLatin1Char('\n')).toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

QString LineStatus::remedy() const
{
    if (!m_trouble.isEmpty())
        return sentence(m_trouble);
    return QStringLiteral("Choose Serialport > open, or a port at the lamp in the status bar.");
}
