// SPDX-License-Identifier: MIT
#include "demo/tour.h"

#include "app/mainwindow.h"
#include "link/commandchannel.h"

#include <QDir>
#include <QPushButton>
#include <QTabWidget>
#include <QTextStream>
#include <QTimer>

namespace {

constexpr int kAnswerMs = 600;

class Album
{
public:
    Album(MainWindow &window, const QString &folder) : m_window(window), m_folder(folder) { QDir().mkpath(folder); }

    void take(const QString &title)
    {
        const QString slug = title.toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
        const QString path =
            m_folder.filePath(QStringLiteral("%1-%2.png").arg(m_count + 1, 2, 10, QLatin1Char('0')).arg(slug));
        if (!m_window.grab().save(path))
            return;
        ++m_count;
        QTextStream(stdout) << path << Qt::endl;
    }
    int count() const { return m_count; }

private:
    MainWindow &m_window;
    QDir m_folder;
    int m_count = 0;
};

void takePages(QTabWidget &tabs, const QString &title, Album &album)
{
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        const QString name = title + tabs.tabText(page);
        if (auto *inner = tabs.widget(page)->findChild<QTabWidget *>()) {
            takePages(*inner, name + QLatin1Char(' '), album);
        } else {
            delayMs(kAnswerMs);
            album.take(name);
        }
    }
}

// A crossbar fault: the path that blinks, then what has been caught.
void takeFault(MainWindow &window, Album &album)
{
    auto *tabs = window.findChild<QTabWidget *>(QStringLiteral("tabWidget_function"));
    auto *safety = window.findChild<QTabWidget *>(QStringLiteral("tabWidget_safety"));
    auto *inject = window.findChild<QPushButton *>(QStringLiteral("pushButton_xbic_fault1"));
    if (!tabs || !safety || !inject)
        return;
    tabs->setCurrentIndex(0);
    safety->setCurrentIndex(1);
    delayMs(kAnswerMs);
    QTimer::singleShot(2 * kAnswerMs, &window, [&album] { album.take(QStringLiteral("fault injected")); });
    inject->click(); // returns when its path has blinked and the command is sent
    delayMs(kAnswerMs);
    album.take(QStringLiteral("fault caught"));
}

} // namespace

int takeTour(MainWindow &window, const QString &folder)
{
    Album album(window, folder);
    delayMs(kAnswerMs);
    if (auto *tabs = window.findChild<QTabWidget *>(QStringLiteral("tabWidget_function")))
        takePages(*tabs, QString(), album);
    takeFault(window, album);
    return album.count();
}
