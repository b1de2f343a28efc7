// SPDX-License-Identifier: MIT
// The panel that the lamp opens: ports to choose from, counters of the line, the recorder.
#pragma once

#include "app/linemonitor.h"
#include "link/serialports.h"

#include <QFrame>

#include <array>

class LineRecorder;
class QLabel;
class QListWidget;
class QPushButton;

class LinePanel : public QFrame
{
    Q_OBJECT

public:
    explicit LinePanel(const LineMonitor &monitor, QWidget *parent = nullptr);

    /// Shows what the recorder holds, and lets it save and mark. It lives as long as the panel.
    void setRecorder(LineRecorder &recorder);
    /// Opens above `corner`, the upper right corner of what was pressed, in global coordinates.
    void open(const QPoint &corner);

signals:
    /// The user wants this port.
    void portChosen(const QString &name);

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *makePorts();
    QWidget *makeCounts();
    QWidget *makeModules();
    QWidget *makeRecorder();
    void listPorts();
    void showCounts();
    void choose();

    const LineMonitor &m_monitor;
    QList<PortInfo> m_ports;
    QLabel *m_state = nullptr;
    QListWidget *m_list = nullptr;
    QPushButton *m_use = nullptr;
    QLabel *m_received = nullptr;
    QLabel *m_sent = nullptr;
    QLabel *m_damaged = nullptr;
    QLabel *m_answer = nullptr;
    LineRecorder *m_recorder = nullptr;
    QLabel *m_held = nullptr;
    std::array<QLabel *, protocol::kModuleCount> m_modules = {};
    int m_timer = 0;
};
