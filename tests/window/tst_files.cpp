// SPDX-License-Identifier: MIT
// The program finds its manual and video wherever it is started from, and says which file nobody opens.
#include "app/datafiles.h"
#include "support/fixtures.h"

#include <QDesktopServices>
#include <QDir>
#include <QStatusBar>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

namespace {

const QString kVideo = QStringLiteral("./Video/GUI Tutorial.mp4");

void put(const QTemporaryDir &folder)
{
    QDir(folder.path()).mkdir(QStringLiteral("Video"));
    QFile file(folder.filePath(kVideo));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

public slots:
    // The desktop: takes what is given to it.
    void take(const QUrl &url) { m_taken = url.toLocalFile(); }

private slots:
    void init()
    {
        m_before = QDir::currentPath();
        m_taken.clear();
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "take");
    }

    void cleanup()
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        QDir::setCurrent(m_before);
    }

    void theFirstFolderThatHasItCounts()
    {
        const QTemporaryDir first, second, third;
        const QStringList folders = {first.path(), second.path(), third.path()};
        QCOMPARE(dataFile(kVideo, folders), QDir(first.path()).absoluteFilePath(kVideo));
        put(third);
        QCOMPARE(dataFile(kVideo, folders), QDir(third.path()).absoluteFilePath(kVideo));
        put(second);
        QCOMPARE(dataFile(kVideo, folders), QDir(second.path()).absoluteFilePath(kVideo));
        put(first);
        QCOMPARE(dataFile(kVideo, folders), QDir(first.path()).absoluteFilePath(kVideo));
    }

    void theWorkingDirectoryComesFirst()
    {
        const QTemporaryDir work;
        QVERIFY(QDir::setCurrent(work.path()));
        QCOMPARE(dataFolders().constFirst(), QDir::currentPath());
        put(work);
        WindowFixture bench;
        bench.window().Open_Video();
        QCOMPARE(QFileInfo(m_taken).canonicalFilePath(), QFileInfo(work.filePath(kVideo)).canonicalFilePath());
        QCOMPARE(bench.window().statusBar()->currentMessage(), QString());
    }

    void aMissingFileIsNamed()
    {
        const QTemporaryDir work;
        QVERIFY(QDir::setCurrent(work.path()));
        const QString recorded = dataFile(kVideo); // in this build, perhaps: set aside meanwhile
        const QString aside = recorded + QStringLiteral(".aside");
        const bool isAside = QFile::rename(recorded, aside);
        const auto putBack = qScopeGuard([&] {
            if (isAside)
                QFile::rename(aside, recorded);
        });
        QVERIFY(!QFileInfo::exists(dataFile(kVideo)));
        WindowFixture bench;
        bench.window().Open_Video();
        QVERIFY(m_taken.endsWith(QStringLiteral("/Video/GUI Tutorial.mp4"))); // the desktop says what it has to say
        QCOMPARE(bench.window().statusBar()->currentMessage(), QStringLiteral("Not found: Video/GUI Tutorial.mp4"));
    }

    void aFileThatNobodyOpensIsNamed()
    {
        const QTemporaryDir work;
        QVERIFY(QDir::setCurrent(work.path()));
        put(work);
        WindowFixture bench;
        // Without a handler and without a program that opens files, as the search path has none here.
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", "");
        bench.window().Open_Video();
        qputenv("PATH", path);
        QVERIFY2(bench.window().statusBar()->currentMessage().startsWith(QStringLiteral("No program opens ")),
                 qPrintable(bench.window().statusBar()->currentMessage()));
    }

private:
    QString m_before;
    QString m_taken;
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
