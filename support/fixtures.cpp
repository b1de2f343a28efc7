// SPDX-License-Identifier: MIT
#include "support/fixtures.h"

#include "link/serialline.h"
#include "link/commandchannel.h"
#include "link/serialports.h"
#include "support/wire.h"

#include <QTest>

void RealWindow::build(const QString &tty)
{
    setAvailablePortNames([tty] { return QStringList{tty}; });
    m_window = std::make_unique<MainWindow>();
    m_window->resize(1440, 900);
    m_window->show();
    if (!gSerialPort->isOpen())
        qFatal("the line did not open");
}

QString RealWindow::portState() const
{
    return driver::portState(*m_window);
}

void RealWindow::click(const char *name)
{
    auto *button = find<QWidget>(name);
    turnTo(button);
    driver::press(button);
}

WindowFixture::WindowFixture()
{
    build(m_line.tty());
}

QString WindowFixture::sent()
{
    QByteArray bytes = m_line.received();
    m_line.clear();
    return QString::fromLatin1(bytes).replace(QLatin1String("\r\n"), QLatin1String("|"));
}

QString WindowFixture::sentBy(const std::function<void()> &work)
{
    // Earlier commands may still be on their way.
    sendCommand(QStringLiteral("begin"));
    if (!QTest::qWaitFor([this] { return m_line.received().endsWith("begin\r\n"); }))
        return QStringLiteral("nothing arrives");
    m_line.clear();
    work();
    sendCommand(QStringLiteral("end"));
    if (!QTest::qWaitFor([this] { return m_line.received().endsWith("end\r\n"); }))
        return QStringLiteral("nothing arrives");
    return sent().chopped(4);
}

void WindowFixture::send(int module, int type, const char *payload)
{
    m_line.write(wire::frame(module, type, QByteArray::fromHex(payload)));
}

bool WindowFixture::show(int module, int type, const char *payload)
{
    return show(wire::frame(module, type, QByteArray::fromHex(payload)));
}

bool WindowFixture::show(const QByteArray &frames)
{
    // A report behind them says when they have been taken; the mode that stood there comes back.
    auto *mode = find<QLineEdit>("lineEdit_sysworkmode");
    const QString before = mode->text();
    mode->clear();
    m_line.write(frames + wire::frame(1, 1, QByteArray::fromHex("06")));
    const bool shown = QTest::qWaitFor([mode] { return mode->text() == QLatin1String("RUN2"); });
    mode->setText(before);
    return shown;
}

BoardFixture::BoardFixture(const simulator::VirtualBoard::Options &options, Wire wire)
    : m_board(std::make_unique<simulator::VirtualBoard>(options))
{
    connect(&board(), &simulator::Board::executed, this, [this](const QString &line) { commands.append(line); });
    if (wire == Wire::Cutting)
        m_proxy = std::make_unique<CuttingProxy>(m_board->tty());
    build(m_proxy ? m_proxy->tty() : m_board->tty());
}
