// SPDX-License-Identifier: MIT
#include "cli/recordingfile.h"

#include "cli/complain.h"
#include "cli/settings.h"

#include <QFileInfo>

namespace {

// Writing to the file being read would truncate it.
bool isSameFile(const QString &one, const QString &other)
{
    const QString path = QFileInfo(one).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(other).canonicalFilePath();
}

} // namespace

bool RecordingFile::open(const Settings &settings)
{
    m_file.setFileName(settings.arguments.first());
    if (isSameFile(m_file.fileName(), settings.record)) {
        complain(QStringLiteral("%1: cannot be read and recorded to at once").arg(m_file.fileName()));
        return false;
    }
    if (!m_file.open(QIODevice::ReadOnly)) {
        complain(QStringLiteral("%1: %2").arg(m_file.fileName(), m_file.errorString()));
        return false;
    }
    m_reader.emplace(m_file);
    return true;
}

bool RecordingFile::isWhole() const
{
    if (m_reader->foreignPackets() > 0)
        complain(QStringLiteral("%1: %2 packets of other kinds passed over")
                     .arg(m_file.fileName())
                     .arg(m_reader->foreignPackets()));
    if (!m_reader->trouble().isEmpty())
        complain(QStringLiteral("%1: %2").arg(m_file.fileName(), m_reader->trouble()));
    return m_reader->trouble().isEmpty();
}
