// SPDX-License-Identifier: MIT
#include "demo/presentation.h"

#include "app/datafiles.h"
#include "app/mainwindow.h"
#include "presenter/speaker.h"

#include <QApplication>
#include <QTextStream>
#include <QTimer>

#include <memory>

namespace {

void begin(presenter::Speaker &speaker, int rounds)
{
    const QString trouble = speaker.playByItself(dataFile(QStringLiteral("./Presentation/ten-minutes.toml")), rounds);
    if (trouble.isEmpty())
        return;
    QTextStream(stderr) << trouble << Qt::endl;
    QApplication::exit(1);
}

} // namespace

void present(MainWindow &window, int rounds, double staySeconds)
{
    auto *speaker = window.findChild<presenter::Speaker *>(QStringLiteral("speaker"));
    speaker->setStay(static_cast<int>(staySeconds * 1000));
    const auto failures = std::make_shared<int>(0);
    QObject::connect(speaker, &presenter::Speaker::sceneTaken, &window, [speaker, failures](int scene, bool whole) {
        if (whole)
            return;
        ++*failures;
        QTextStream(stderr) << "Not all of \"" << speaker->script().scenes()[static_cast<std::size_t>(scene)].title
                            << "\" was done." << Qt::endl;
    });
    QObject::connect(speaker, &presenter::Speaker::roundEnded, &window, [rounds, failures](int round) {
        QTextStream(stdout) << "round " << round << ", failures " << *failures << Qt::endl;
        if (round == rounds)
            QApplication::exit(*failures > 0 ? 1 : 0);
    });
    QTimer::singleShot(0, speaker, [speaker, rounds] { begin(*speaker, rounds); });
}
