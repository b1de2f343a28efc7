// SPDX-License-Identifier: MIT
// All that the window says about its line, put together: the lamp and the board's words in the status bar, the panel
// behind the lamp, the band above the pages and the veil over them.
#pragma once

#include "app/linemonitor.h"
#include "link/reconnection.h"
#include <QObject>

class Band;
class ElidedLabel;
class LineLamp;
class LinePanel;
class LineRecorder;
class QMainWindow;
class Veil;

class LineStatus : public QObject
{
    Q_OBJECT

public:
    /// For a window that has its status bar and its central widget.
    explicit LineStatus(QMainWindow &window);

    const LineMonitor &monitor() const { return m_monitor; }
    /// The panel's entry of the recorder.
    void setRecorder(LineRecorder &recorder);
    /// Why the port is closed, for the band; empty where nothing is wrong.
    void setTrouble(const QString &trouble);
    /// The user does not want a lost line back.
    void giveUp();

signals:
    /// The user wants this port.
    void portChosen(const QString &name);
    /// The device that was lost is there again; said each second until it is open.
    void portFound(const QString &name);

private:
    void showState();
    void showBand();
    void showMessages(const QStringList &texts);
    QString remedy() const;

    LineMonitor m_monitor;
    Reconnection m_reconnection;
    QString m_description; // of the port that is or was open last
    QString m_trouble;
    QStringList m_messages; // the board's latest, newest first, with their times
    ElidedLabel *m_message;
    LineLamp *m_lamp;
    LinePanel *m_panel;
    Band *m_band;
    Veil *m_veil;
};
