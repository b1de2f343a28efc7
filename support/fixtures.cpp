// SPDX-License-Identifier: MIT
#include "support/fixtures.h"

#include "link/serialline.h"
#include "link/serialports.h"

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

BoardFixture::BoardFixture(const simulator::VirtualBoard::Options &options, Wire wire)
    : m_board(std::make_unique<simulator::VirtualBoard>(options))
{
    connect(&board(), &simulator::Board::executed, this, [this](const QString &line) { commands.append(line); });
    if (wire == Wire::Cutting)
        m_proxy = std::make_unique<CuttingProxy>(m_board->tty());
    build(m_proxy ? m_proxy->tty() : m_board->tty());
}
