// SPDX-License-Identifier: MIT
#include "cli/transport.h"

#include "cli/complain.h"
#include "cli/exitcode.h"
#include "cli/settings.h"
#include "link/linetraffic.h"
#include "link/serialline.h"
#include "link/serialports.h"
#include "support/boardprocess.h"

#include <QSerialPort>
#include <QTcpSocket>

namespace {

class SerialTransport : public Transport
{
public:
    explicit SerialTransport(const QString &name) : m_name(name)
    {
        QObject::connect(&m_port, &QSerialPort::readyRead, &m_port, [this] { readLine(m_port); });
        QObject::connect(&m_port, &QSerialPort::errorOccurred, &m_port, [this](QSerialPort::SerialPortError error) {
            if (m_port.isOpen() && isLineLost(error))
                abandonLine(m_port);
        });
    }
    ~SerialTransport() override { closeLine(m_port); }
    QString name() const override { return m_name; }
    QString open(int) override
    {
        return openLine(m_port, m_name) ? QString() : QStringLiteral("%1: %2").arg(m_name, openFailureText(m_port));
    }
    void write(const QByteArray &bytes) override { writeLine(m_port, bytes); }

private:
    QString m_name;
    QSerialPort m_port;
};

class VirtualTransport : public Transport
{
public:
    explicit VirtualTransport(const QStringList &options) : m_board(options)
    {
        if (m_board.isRunning())
            m_line = std::make_unique<SerialTransport>(m_board.tty());
    }
    QString name() const override { return m_board.tty(); }
    QString open(int timeoutMs) override
    {
        if (!m_line)
            return QStringLiteral("no virtual board: ") + m_board.errorString();
        complain(QStringLiteral("a virtual board answers, on %1").arg(m_board.tty()));
        return m_line->open(timeoutMs);
    }
    void write(const QByteArray &bytes) override { m_line->write(bytes); }

private:
    BoardProcess m_board;
    std::unique_ptr<SerialTransport> m_line;
};

class TcpTransport : public Transport
{
public:
    TcpTransport(const QString &host, quint16 port) : m_host(host), m_port(port)
    {
        QObject::connect(&m_socket, &QTcpSocket::readyRead, &m_socket, [this] {
            const QByteArray bytes = m_socket.readAll();
            if (!bytes.isEmpty())
                emit lineTraffic().received(bytes);
        });
        QObject::connect(&m_socket, &QTcpSocket::disconnected, &m_socket,
                         [this] { emit lineTraffic().lost(m_socket.errorString()); });
    }
    ~TcpTransport() override
    {
        if (m_socket.state() != QAbstractSocket::ConnectedState)
            return;
        m_socket.disconnect(); // from its signals: this is no loss
        emit lineTraffic().closed();
    }
    QString name() const override { return QStringLiteral("%1:%2").arg(m_host).arg(m_port); }
    QString open(int timeoutMs) override
    {
        m_socket.connectToHost(m_host, m_port);
        if (!m_socket.waitForConnected(timeoutMs))
            return QStringLiteral("%1: %2").arg(name(), m_socket.errorString());
        m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        emit lineTraffic().opened(name());
        return {};
    }
    void write(const QByteArray &bytes) override
    {
        if (m_socket.write(bytes) == bytes.size())
            emit lineTraffic().sent(bytes);
    }

private:
    QString m_host;
    quint16 m_port;
    QTcpSocket m_socket;
};

Way tcpWay(const QString &address)
{
    const auto colon = address.lastIndexOf(QLatin1Char(':'));
    bool isNumber = false;
    const quint16 port = address.mid(colon + 1).toUShort(&isNumber);
    if (colon < 1 || !isNumber || port == 0)
        return {nullptr, QStringLiteral("--tcp takes HOST:PORT, not \"%1\"").arg(address), kUsageOrFile};
    return {std::make_unique<TcpTransport>(address.left(colon), port), {}, 0};
}

Way onlyPort()
{
    const QStringList names = availablePortNames();
    if (names.isEmpty())
        return {nullptr, QStringLiteral("no serial port; plug the board in, or ask for a virtual one with --virtual"),
                kLineOrBoard};
    if (names.size() > 1)
        return {nullptr,
                QStringLiteral("several serial ports; choose one with --port: %1").arg(names.join(QLatin1String(", "))),
                kUsageOrFile};
    return {std::make_unique<SerialTransport>(names.first()), {}, 0};
}

} // namespace

Way wayTo(const Settings &settings)
{
    const int ways =
        (settings.port.isEmpty() ? 0 : 1) + (settings.tcp.isEmpty() ? 0 : 1) + (settings.virtualBoard ? 1 : 0);
    if (ways > 1)
        return {nullptr, QStringLiteral("one of --port, --tcp and --virtual at a time"), kUsageOrFile};
    if (settings.seed && !settings.virtualBoard)
        return {nullptr, QStringLiteral("--seed is for --virtual"), kUsageOrFile};
    if (settings.virtualBoard) {
        const QStringList options{QStringLiteral("--seed"), settings.seed.value_or(QStringLiteral("1"))};
        return {std::make_unique<VirtualTransport>(options), {}, 0};
    }
    if (!settings.tcp.isEmpty())
        return tcpWay(settings.tcp);
    if (!settings.port.isEmpty())
        return {std::make_unique<SerialTransport>(settings.port), {}, 0};
    return onlyPort();
}
