// SPDX-License-Identifier: MIT
#include "cli/campaign/reportfolder.h"

#include "cli/campaign/reportjson.h"

#include <QDir>
#include <QSaveFile>

namespace campaign {

namespace {

QString write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : QStringLiteral("%1: %2").arg(path, file.errorString());
}

} // namespace

QString makeFolder(const QString &path)
{
    return QDir().mkpath(path) ? QString() : QStringLiteral("%1: cannot be made a folder").arg(path);
}

QString writeReports(const QString &folder, const Plan &plan, const Outcome &outcome)
{
    return write(QDir(folder).filePath(QStringLiteral("report.json")), jsonReport(plan, outcome));
}

} // namespace campaign
