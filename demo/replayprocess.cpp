// SPDX-License-Identifier: MIT
#include "demo/replayprocess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int kStartMs = 10000;
constexpr int kStopMs = 2000;
constexpr int kSayMs = 100;

QString tool()
{
    const QString name = QStringLiteral("safety-workbench-cli");
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
    return QFileInfo(beside).isExecutable() ? beside : name;
}

} // namespace

ReplayProcess::ReplayProcess(const QString &file, const QString &speed, const QString &from, QObject *parent)
    : QObject(parent)
{
    // A name that stays when a loss in the recording brings the line back on another terminal.
    const QString link =
        QDir::temp().filePath(QStringLiteral("recorded-board-%1").arg(QCoreApplication::applicationPid()));
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel); // it says what is wrong with a file
    m_process.start(tool(),
                    {QStringLiteral("serve"), file, QStringLiteral("--control"), QStringLiteral("--json"),
                     QStringLiteral("--speed"), speed, QStringLiteral("--from"), from, QStringLiteral("--link"), link});
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kStartMs)) {}
    m_tty = QJsonDocument::fromJson(m_process.readLine()).object().value(QStringLiteral("tty")).toString();
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &ReplayProcess::readPositions);
}

ReplayProcess::~ReplayProcess()
{
    m_process.disconnect(this);
    m_process.closeWriteChannel();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kStopMs)) {
        m_process.kill();
        m_process.waitForFinished(kStopMs);
    }
}

void ReplayProcess::say(const QByteArray &command)
{
    if (m_process.state() != QProcess::Running)
        return;
    m_process.write(command + '\n');
    m_process.waitForBytesWritten(kSayMs);
}

void ReplayProcess::readPositions()
{
    while (m_process.canReadLine()) {
        const QJsonObject line = QJsonDocument::fromJson(m_process.readLine()).object();
        if (line.value(QStringLiteral("kind")) == QLatin1String("recalled"))
            emit recalled(line.value(QStringLiteral("command")).toString().toLatin1());
        if (line.value(QStringLiteral("kind")) != QLatin1String("position"))
            continue;
        m_position = {line.value(QStringLiteral("seconds")).toDouble(), line.value(QStringLiteral("length")).toDouble(),
                      line.value(QStringLiteral("speed")).toDouble(1), line.value(QStringLiteral("state")).toString()};
        emit moved(m_position);
    }
}
