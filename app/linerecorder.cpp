// SPDX-License-Identifier: MIT
#include "app/linerecorder.h"

#include "app/messagebox.h"
#include "link/linetraffic.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QShortcut>

namespace {

QString suggestedName()
{
    return QDir::home().filePath(
        QDateTime::currentDateTime().toString(QStringLiteral("'workbench-'yyyy-MM-dd-HHmmss'.pcapng'")));
}

// A question beside the program's own course: nobody waits for its answer, and it goes with the window.
template <class Dialog> Dialog *opened(Dialog *dialog, const char *name)
{
    dialog->setObjectName(QLatin1String(name));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    return dialog;
}

} // namespace

LineRecorder::LineRecorder(QWidget &window)
    : QObject(&window),
      m_window(window),
      m_recorder([this](const session::Packet &packet) { m_packets.add(packet); })
{
    const LineTraffic &line = lineTraffic();
    connect(&line, &LineTraffic::opened, this, [this](const QString &port) { m_recorder.opened(port); });
    connect(&line, &LineTraffic::received, this, [this](const QByteArray &bytes) { m_recorder.received(bytes); });
    connect(&line, &LineTraffic::sent, this, [this](const QByteArray &bytes) { m_recorder.sent(bytes); });
    connect(&line, &LineTraffic::closed, this, [this] { m_recorder.closed(); });
    connect(&line, &LineTraffic::lost, this, [this](const QString &reason) { m_recorder.lost(reason); });
    auto *save = new QShortcut(QKeySequence(QStringLiteral("Ctrl+S")), &window);
    save->setWhatsThis(QStringLiteral("Save the recording"));
    connect(save, &QShortcut::activated, this, &LineRecorder::askAndSave);
    auto *mark = new QShortcut(QKeySequence(QStringLiteral("Ctrl+M")), &window);
    mark->setWhatsThis(QStringLiteral("Set a mark in the recording"));
    connect(mark, &QShortcut::activated, this, &LineRecorder::askAndMark);
}

QString LineRecorder::save(const QString &path) const
{
    QStringList comments;
    if (!m_recorder.firmware().isEmpty())
        comments.append(session::commentOf({session::NoteKind::Firmware, m_recorder.firmware()}));
    return m_packets.save(path, QStringLiteral("safety-workbench " WORKBENCH_VERSION), m_recorder.ports(), comments);
}

void LineRecorder::askAndSave()
{
    auto *dialog = new QFileDialog(&m_window, QStringLiteral("Save the recording"), suggestedName(),
                                   QStringLiteral("Recordings (*.pcapng);;All files (*)"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("pcapng"));
    dialog->selectFile(suggestedName());
    connect(dialog, &QFileDialog::fileSelected, this, &LineRecorder::saveOrTell);
    opened(dialog, "saveRecordingDialog");
}

void LineRecorder::askAndMark()
{
    auto *dialog = new QInputDialog(&m_window);
    dialog->setWindowTitle(QStringLiteral("Mark"));
    dialog->setLabelText(QStringLiteral("A word for this moment of the recording:"));
    connect(dialog, &QInputDialog::textValueSelected, this,
            [this, at = m_recorder.now()](const QString &word) { m_recorder.mark(word, at); });
    opened(dialog, "markDialog");
}

void LineRecorder::saveOrTell(const QString &path)
{
    const QString trouble = save(path);
    if (trouble.isEmpty())
        emit saved(path);
    else
        inform(&m_window, QStringLiteral("Warning"), QStringLiteral("The recording was not saved.\n") + trouble,
               QMessageBox::Ok);
}
