// SPDX-License-Identifier: MIT
#include "cli/campaign/reportfolder.h"

#include "cli/campaign/reporthtml.h"
#include "cli/campaign/reportjson.h"
#include "cli/campaign/reportjunit.h"
#include "cli/complain.h"

#include <QDir>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

namespace campaign {

namespace {

constexpr int kLongestPdfMs = 120'000;

QString write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : QStringLiteral("%1: %2").arg(path, file.errorString());
}

QString writePdf(const QString &page, const QString &pdf)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("weasyprint"));
    if (program.isEmpty()) {
        QFile::remove(pdf); // of an earlier run
        complain(QStringLiteral("weasyprint is not installed: no %1").arg(pdf));
        return {};
    }
    QProcess process;
    process.start(program, {QStringLiteral("--quiet"), page, pdf});
    const bool written = process.waitForFinished(kLongestPdfMs) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
    return written
        ? QString()
        : QStringLiteral("%1: %2").arg(pdf, QString::fromLocal8Bit(process.readAllStandardError()).trimmed());
}

} // namespace

QString makeFolder(const QString &path)
{
    return QDir().mkpath(path) ? QString() : QStringLiteral("%1: cannot be made a folder").arg(path);
}

QString writeReports(const QString &folder, const Plan &plan, const Outcome &outcome)
{
    const QDir in(folder);
    const QString page = in.filePath(QStringLiteral("report.html"));
    QString trouble = write(in.filePath(QStringLiteral("report.json")), jsonReport(plan, outcome));
    if (trouble.isEmpty())
        trouble = write(in.filePath(QStringLiteral("junit.xml")), junitReport(plan, outcome));
    if (trouble.isEmpty())
        trouble = write(page, htmlReport(plan, outcome));
    return trouble.isEmpty() ? writePdf(page, in.filePath(QStringLiteral("report.pdf"))) : trouble;
}

} // namespace campaign
