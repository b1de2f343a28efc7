// SPDX-License-Identifier: MIT
#include "simulator/terminallink.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace simulator {

QString TerminalLink::pointTo(const QString &tty)
{
    if (m_path.isEmpty() || tty.isEmpty())
        return tty;
    if (QFileInfo(m_path).isSymLink())
        QFile::remove(m_path);
    m_made = QFile::link(tty, m_path);
    return m_made ? m_path : QString();
}

void TerminalLink::remove()
{
    if (std::exchange(m_made, false))
        QFile::remove(m_path);
}

} // namespace simulator
